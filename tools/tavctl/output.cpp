// SPDX-License-Identifier: Apache-2.0
//
// Texts made fit for people and programs, on GLib's Unicode tables.
#include "output.h"

#include <glib.h>
#include <json/value.h>
#include <json/writer.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <iomanip>
#include <iostream>

namespace {

// What g_utf8_get_char_validated answers for a character that the text's end cuts off.
constexpr gunichar kCutOff = static_cast<gunichar>(-2);
constexpr gunichar kInvalid = static_cast<gunichar>(-1);

bool TurnsWritingDirection(gunichar c) {
  return c == 0x061c || c == 0x200e || c == 0x200f || (c >= 0x202a && c <= 0x202e) ||
         (c >= 0x2066 && c <= 0x2069);
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

std::size_t WidthOf(gunichar c) {
  if (g_unichar_iszerowidth(c)) return 0;
  return g_unichar_iswide(c) ? 2 : 1;
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
  std::string doubled;
  for (const char c : text) doubled.append(c == '\\' ? 2 : 1, c);
  return Harmless(doubled);
}

std::string Harmless(const std::string& text) {
  const std::string valid = ValidUtf8(text);
  std::string harmless;
  for (const char* at = valid.c_str(); *at != '\0';) {
    const gunichar c = g_utf8_get_char(at);
    const char* next = g_utf8_next_char(at);
    if (IsUnsafe(c)) {
      harmless += Escaped(c);
    } else {
      harmless.append(at, next);
    }
    at = next;
  }
  return harmless;
}

std::size_t TerminalWidth(const std::string& text) {
  std::size_t width = 0;
  for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
    width += WidthOf(g_utf8_get_char(at));
  }
  return width;
}

std::string CutToWidth(const std::string& text, std::size_t width) {
  if (TerminalWidth(text) <= width) return text;
  const char* end = text.c_str();
  for (std::size_t left = width - 1; WidthOf(g_utf8_get_char(end)) <= left;) {
    left -= WidthOf(g_utf8_get_char(end));
    end = g_utf8_next_char(end);
  }
  return std::string(text.c_str(), end) + "\u2026";
}

const char* YesOrNo(bool value) {
  return value ? "yes" : "no";
}

void PrintAligned(const std::vector<NamedText>& lines) {
  std::size_t width = 0;
  for (const NamedText& line : lines) width = std::max(width, std::strlen(line.name));
  for (const NamedText& line : lines) {
    std::cout << std::left << std::setw(static_cast<int>(width)) << line.name << "  " << line.text
              << "\n";
  }
}

void PrintJson(const Json::Value& value) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  builder["emitUTF8"] = true;
  std::cout << Json::writeString(builder, value) << "\n";
}
