// SPDX-License-Identifier: Apache-2.0
//
// What a program says of itself beyond its options, once, for --help and for its manual page.
//
// A text, like the footer of a subcommand, is made of paragraphs with an empty line between them.
// Lines that begin with two blanks show something as it is typed; when each has two blanks further
// on, they are a list of terms with their explanations, which deeper lines continue:
//
//   0  done
//   1  failed
#ifndef TOOLS_MANUAL_SECTION_H_
#define TOOLS_MANUAL_SECTION_H_

#include <string>
#include <vector>

namespace tav_manual {

enum class Shown { kEverywhere, kOnThePage };

struct Section {
  const char* title;  // "" for what the page says under DESCRIPTION
  const char* text;
  Shown shown = Shown::kEverywhere;
};

// What --help prints below the options.
inline std::string HelpFooter(const std::vector<Section>& sections) {
  std::string footer;
  for (const Section& section : sections) {
    if (section.shown == Shown::kOnThePage) continue;
    if (!footer.empty()) footer += "\n\n";
    if (*section.title != '\0') footer += std::string(section.title) + ":\n";
    footer += section.text;
  }
  return footer;
}

}  // namespace tav_manual

#endif  // TOOLS_MANUAL_SECTION_H_
