// SPDX-License-Identifier: Apache-2.0
//
// How texts of the device are made fit for a terminal and for JSON.
#ifndef TOOLS_TAVCTL_OUTPUT_H_
#define TOOLS_TAVCTL_OUTPUT_H_

#include <string>

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

// Writes the value to standard output, indented, with a newline at the end.
void PrintJson(const Json::Value& value);

#endif  // TOOLS_TAVCTL_OUTPUT_H_
