// SPDX-License-Identifier: Apache-2.0
//
// The form of the texts that section.h tells of, taken apart; and texts for a shell.
#ifndef TOOLS_MANUAL_TEXT_H_
#define TOOLS_MANUAL_TEXT_H_

#include <string>
#include <vector>

namespace tav_manual {

struct Term {
  std::string name;
  std::string text;
};

// A paragraph, lines as they are typed, or a list of terms.
struct Block {
  enum class Kind { kParagraph, kLines, kTerms } kind;
  std::vector<std::string> lines;  // of the first two
  std::vector<Term> terms;
};

std::vector<Block> TakeApart(const std::string& text);

// The words with a blank between two.
std::string Joined(const std::vector<std::string>& words);
// As a shell takes it for one word that stands for itself.
std::string Quoted(const std::string& text);

}  // namespace tav_manual

#endif  // TOOLS_MANUAL_TEXT_H_
