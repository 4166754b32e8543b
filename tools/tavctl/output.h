// SPDX-License-Identifier: Apache-2.0
//
// How texts of the device are made fit for a terminal and for JSON.
#ifndef TOOLS_TAVCTL_OUTPUT_H_
#define TOOLS_TAVCTL_OUTPUT_H_

#include <cstddef>
#include <string>
#include <vector>

namespace Json {
class Value;
}

// Valid UTF-8 made of the text: a character cut off at the end is dropped, any other invalid byte
// becomes U+FFFD.
std::string ValidUtf8(const std::string& text);

// ValidUtf8 with all that could steer a terminal or break the line written out: control
// characters, line separators and marks that turn the writing direction become \n, \x1b or
// \u202e, a backslash becomes \\.
std::string Printable(const std::string& text);

// The same with backslashes as they are: for a message that holds printable texts already.
std::string Harmless(const std::string& text);

// How many of a terminal's columns the text takes: two for a wide character, none for one that
// joins another. The text is Printable's.
std::size_t TerminalWidth(const std::string& text);

// The text, or as much of its beginning as leaves room for an ellipsis, in at most width columns.
std::string CutToWidth(const std::string& text, std::size_t width);

const char* YesOrNo(bool value);

struct NamedText {
  const char* name;
  std::string text;  // Printable's
};

// Writes one line for each text to standard output, the texts below one another.
void PrintAligned(const std::vector<NamedText>& lines);

// Writes the value to standard output, indented, with a newline at the end.
void PrintJson(const Json::Value& value);

#endif  // TOOLS_TAVCTL_OUTPUT_H_
