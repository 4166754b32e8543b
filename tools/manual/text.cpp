// SPDX-License-Identifier: Apache-2.0
#include "manual/text.h"

#include <sstream>

namespace tav_manual {
namespace {

constexpr char kIndent[] = "  ";

bool IsIndented(const std::string& line) {
  return line.rfind(kIndent, 0) == 0;
}

// The line's term and the beginning of its text; a term without a name for any other line.
Term TermOf(const std::string& line) {
  const std::size_t end = line.find(kIndent);
  if (end == 0 || end == std::string::npos) return {};
  return {line.substr(0, end), line.substr(line.find_first_not_of(' ', end))};
}

// The lines as a list of terms, empty when they are none. Deeper lines go on with the text of the
// term above them.
std::vector<Term> TermsOf(const std::vector<std::string>& lines) {
  std::vector<Term> terms;
  for (const std::string& line : lines) {
    if (line.front() == ' ' && !terms.empty()) {
      terms.back().text += " " + line.substr(line.find_first_not_of(' '));
      continue;
    }
    Term term = TermOf(line);
    if (term.name.empty()) return {};
    terms.push_back(std::move(term));
  }
  return terms;
}

void AddBlock(std::vector<std::string>& lines, bool is_indented, std::vector<Block>& blocks) {
  if (lines.empty()) return;
  Block block{Block::Kind::kParagraph, {}, {}};
  if (is_indented) {
    block.terms = TermsOf(lines);
    block.kind = block.terms.empty() ? Block::Kind::kLines : Block::Kind::kTerms;
  }
  if (block.terms.empty()) block.lines = lines;
  blocks.push_back(std::move(block));
  lines.clear();
}

}  // namespace

std::vector<Block> TakeApart(const std::string& text) {
  std::vector<Block> blocks;
  std::vector<std::string> lines;
  bool is_indented = false;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) {
    if (line.empty() || IsIndented(line) != is_indented) AddBlock(lines, is_indented, blocks);
    if (line.empty()) continue;
    is_indented = IsIndented(line);
    lines.push_back(is_indented ? line.substr(sizeof(kIndent) - 1) : line);
  }
  AddBlock(lines, is_indented, blocks);
  return blocks;
}

std::string Joined(const std::vector<std::string>& words) {
  std::string joined;
  for (const std::string& word : words) joined += (joined.empty() ? "" : " ") + word;
  return joined;
}

std::string Quoted(const std::string& text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return quoted + "'";
}

}  // namespace tav_manual
