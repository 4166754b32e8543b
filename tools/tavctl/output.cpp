// SPDX-License-Identifier: Apache-2.0
//
// Texts made fit for people and programs, on GLib's Unicode tables.
#include "output.h"

#include <glib.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstdio>
#include <iostream>

namespace {

// What g_utf8_get_char_validated answers for a character that the text's end cuts off.
constexpr gunichar kCutOff = static_cast<gunichar>(-2);
constexpr gunichar kInvalid = static_cast<gunichar>(-1);

bool TurnsWritingDirection(gunichar c) {
  return (c >= 0x202a && c <= 0x202e) || (c >= 0x2066 && c <= 0x2069);
}

bool IsUnsafe(gunichar c) {
  const GUnicodeType type = g_unichar_type(c);
  return type == G_UNICODE_CONTROL || type == G_UNICODE_LINE_SEPARATOR ||
         type == G_UNICODE_PARAGRAPH_SEPARATOR || TurnsWritingDirection(c);
}

std::string Escaped(gunichar c) {
  if (c == '\n') return "\\n";
  if (c == '\r') return "\\r";
  if (c == '\t') return "\\t";
  char escaped[8];
  std::snprintf(escaped, sizeof(escaped), c < 0x80 ? "\\x%02x" : "\\u%04x", c & 0xffffu);
  return escaped;
}

}  // namespace

std::string ValidUtf8(const std::string& text) {
  std::string valid;
  for (const char* at = text.c_str(); *at != '\0';) {
    const gunichar c = g_utf8_get_char_validated(at, -1);
    if (c == kCutOff) break;
    if (c == kInvalid) {
      valid += "\xEF\xBF\xBD";
      ++at;
    } else {
      const char* next = g_utf8_next_char(at);
      valid.append(at, next);
      at = next;
    }
  }
  return valid;
}

std::string Printable(const std::string& text) {
  const std::string valid = ValidUtf8(text);
  std::string printable;
  for (const char* at = valid.c_str(); *at != '\0';) {
    const gunichar c = g_utf8_get_char(at);
    const char* next = g_utf8_next_char(at);
    if (c == '\\') {
      printable += "\\\\";
    } else if (IsUnsafe(c)) {
      printable += Escaped(c);
    } else {
      printable.append(at, next);
    }
    at = next;
  }
  return printable;
}

void PrintJson(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  builder["emitUTF8"] = true;
  std::cout << Json::writeString(builder, value) << "\n";
}
