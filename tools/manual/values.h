// SPDX-License-Identifier: Apache-2.0
//
// Tells the manual page and the shells which values an option takes. CLI11's own check of a set
// tells it by itself; these are for what is checked in another way, and change no --help.
#ifndef TOOLS_MANUAL_VALUES_H_
#define TOOLS_MANUAL_VALUES_H_

#include <CLI/CLI.hpp>
#include <string>
#include <utility>
#include <vector>

namespace tav_manual {

inline std::string SetOf(const std::vector<std::string>& values) {
  return "{" + CLI::detail::join(values, ",") + "}";
}

// A check, which may also change its text, and the values that it lets through.
template <typename Check>
CLI::Validator OneOf(Check check, const std::vector<std::string>& values) {
  return CLI::Validator(std::move(check), "", SetOf(values));
}

// Values that are known, where others are good as well.
inline CLI::Validator Known(std::vector<std::string> values) {
  values.emplace_back("...");
  return CLI::Validator([](std::string&) { return std::string(); }, "", SetOf(values));
}

}  // namespace tav_manual

#endif  // TOOLS_MANUAL_VALUES_H_
