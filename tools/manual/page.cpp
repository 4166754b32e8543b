// SPDX-License-Identifier: Apache-2.0
//
// The manual page.
#include <algorithm>
#include <cctype>
#include <sstream>

#include "manual/text.h"
#include "manual/writers.h"

namespace tav_manual {
namespace {

constexpr std::size_t kMostValues = 16;  // of a set that is written out

// The text so that it is printed as it stands, and can be copied from the page.
std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    switch (c) {
      case '\\':
        escaped += "\\e";
        break;
      case '-':
        escaped += "\\-";
        break;
      case '\'':
        escaped += "\\(aq";
        break;
      case '"':
        escaped += "\\(dq";
        break;
      case '`':
        escaped += "\\(ga";
        break;
      case '^':
        escaped += "\\(ha";
        break;
      case '~':
        escaped += "\\(ti";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

std::string Bold(const std::string& text) {
  return "\\fB" + Escaped(text) + "\\fR";
}

std::string Italic(const std::string& text) {
  return "\\fI" + Escaped(text) + "\\fR";
}

std::string Upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  return text;
}

std::string Join(const std::vector<std::string>& words, const std::string& between) {
  std::string joined;
  for (const std::string& word : words) joined += (joined.empty() ? "" : between) + word;
  return joined;
}

bool IsNameCharacter(char c) {
  return std::isupper(static_cast<unsigned char>(c)) != 0 || c == '_';
}

// A line of usage: words in capitals stand for something, all others are typed as they are, but
// for the brackets and dots around them.
std::string StyledUsage(const std::string& usage) {
  std::string styled;
  for (std::size_t at = 0; at < usage.size();) {
    const bool is_name = IsNameCharacter(usage[at]);
    const bool is_typed =
        !is_name && (std::isalnum(static_cast<unsigned char>(usage[at])) != 0 || usage[at] == '-');
    std::size_t end = at + 1;
    if (is_name) {
      while (end < usage.size() && IsNameCharacter(usage[end])) ++end;
    } else if (is_typed) {
      end = std::min(usage.find_first_of(" []", at), usage.size());
    }
    const std::string word = usage.substr(at, end - at);
    styled += is_name ? Italic(word) : is_typed ? Bold(word) : Escaped(word);
    at = end;
  }
  return styled;
}

std::string UsageOf(const Command& command) {
  std::string usage = command.path;
  if (!command.commands.empty()) return usage + " COMMAND";
  usage += " [OPTIONS]";
  for (const Option& argument : command.arguments) {
    const std::string name = argument.names.front() + (argument.is_repeatable ? "..." : "");
    usage += argument.is_required ? " " + name : " [" + name + "]";
  }
  return usage;
}

std::string Sentence(std::string text) {
  if (text.find_first_of(".:;!?", text.size() - 1) == std::string::npos) text += '.';
  return text;
}

bool Names(const std::string& text, const std::vector<std::string>& values) {
  return std::all_of(values.begin(), values.end(), [&](const std::string& value) {
    return text.find(value) != std::string::npos;
  });
}

// Writes man(7). A heading makes its own space, which a paragraph below it must not make again.
class Page {
 public:
  void Heading(const std::string& title) { Line(".SH " + Escaped(Upper(title)), true); }
  void SubHeading(const std::string& title) { Line(".SS " + Escaped(title), true); }
  void Line(const std::string& line, bool is_heading = false) {
    m_out << line << "\n";
    m_is_below_heading = is_heading;
  }
  // A line that is no macro of the page's, even if it begins like one.
  void Words(const std::string& line) { Line(line.rfind('.', 0) == 0 ? "\\&" + line : line); }
  void Paragraph(const std::string& line) {
    Space();
    Words(line);
  }
  void Tagged(const std::string& tag, const std::string& text) {
    Line(".TP");
    Words(tag);
    Words(text);
  }
  void Text(const std::string& text);
  std::string Written() const { return m_out.str(); }

 private:
  void Space() {
    if (!m_is_below_heading) Line(".PP");
  }

  std::ostringstream m_out;
  bool m_is_below_heading = false;
};

void Page::Text(const std::string& text) {
  for (const Block& block : TakeApart(text)) {
    switch (block.kind) {
      case Block::Kind::kParagraph:
        Space();
        for (const std::string& line : block.lines) Words(Escaped(line));
        break;
      case Block::Kind::kLines:
        Space();
        Line(".RS 4");
        Line(".nf");
        for (const std::string& line : block.lines) Words(Escaped(line));
        Line(".fi");
        Line(".RE");
        break;
      case Block::Kind::kTerms:
        for (const Term& term : block.terms) Tagged(Bold(term.name), Escaped(term.text));
        break;
    }
  }
}

std::string NamesAndValue(const Option& option) {
  std::vector<std::string> names;
  for (const std::string& name : option.names) names.push_back(Bold(name));
  std::string tag = Join(names, ", ");
  for (const std::string& argument : option.arguments) tag += " " + Italic(argument);
  return tag;
}

// The description, and what the other parts of the program do not say in words.
std::string Explanation(const Option& option, const std::string& footer) {
  std::string text = Sentence(option.description);
  const bool are_named = Names(option.description + footer, option.values);
  if (!are_named && option.values.size() <= kMostValues) {
    text +=
        (option.has_other_values ? " Known are " : " One of ") + Join(option.values, ", ") + ".";
  }
  if (!option.needed.empty()) text += " Only with " + Join(option.needed, ", ") + ".";
  if (!option.excluded.empty()) text += " Not with " + Join(option.excluded, ", ") + ".";
  return Escaped(text);
}

bool IsHelp(const Option& option) {
  return option.names.back() == "--help";
}

void AddOptions(const Command& command, Page& page) {
  for (const Option& argument : command.arguments) {
    page.Tagged(Italic(argument.names.front()), Explanation(argument, command.footer));
  }
  for (const Option& option : command.options) {
    page.Tagged(NamesAndValue(option), Explanation(option, command.footer));
  }
}

void AddCommands(const std::vector<Command>& commands, Page& page) {
  for (Command command : commands) {
    auto& options = command.options;
    options.erase(std::remove_if(options.begin(), options.end(), IsHelp), options.end());
    page.SubHeading(command.path);
    page.Paragraph(StyledUsage(UsageOf(command)));
    page.Paragraph(Escaped(Sentence(command.description)));
    AddOptions(command, page);
    page.Text(command.footer);
    AddCommands(command.commands, page);
  }
}

void AddSections(const std::vector<Section>& sections, bool is_description, Page& page) {
  for (const Section& section : sections) {
    if ((*section.title == '\0') != is_description) continue;
    if (!is_description) page.Heading(section.title);
    page.Text(section.text);
  }
}

}  // namespace

std::string ManualPage(const Program& program, const Command& command, const std::string& date) {
  Page page;
  page.Line(".\\\" Made from the program's own options, as --help is.");
  page.Line(".TH " + Escaped(Upper(command.name)) + " 1 " + date + " \"" +
            Escaped(program.version) + "\" \"User Commands\"");
  page.Heading("NAME");
  page.Line(Escaped(command.name) + " \\- " + Escaped(program.summary));
  page.Heading("SYNOPSIS");
  for (const std::string& line : program.synopsis) page.Paragraph(StyledUsage(line));
  page.Heading("DESCRIPTION");
  AddSections(program.sections, true, page);
  page.Heading("OPTIONS");
  AddOptions(command, page);
  if (!command.commands.empty()) {
    page.Heading("COMMANDS");
    page.Line("Each command has");
    page.Line(Bold("-h") + ", " + Bold("--help") + " as well.");
    AddCommands(command.commands, page);
  }
  AddSections(program.sections, false, page);
  return page.Written();
}

}  // namespace tav_manual
