// SPDX-License-Identifier: Apache-2.0
// Numbers as a person writes them into the device's files; see the header.
#include "parse.h"

#include <glib.h>

#include <limits>

namespace tav_host {

std::optional<int> ParseInt(const std::string& text) {
  constexpr char kBlanks[] = " \t";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return std::nullopt;
  const std::string digits = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
  // A NUL byte would end the number early for GLib.
  if (digits.find('\0') != std::string::npos) return std::nullopt;

  gint64 number = 0;
  using Limits = std::numeric_limits<int>;
  if (!g_ascii_string_to_signed(digits.c_str(), 10, Limits::min(), Limits::max(), &number,
                                nullptr)) {
    return std::nullopt;
  }
  return static_cast<int>(number);
}

}  // namespace tav_host
