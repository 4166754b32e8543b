// SPDX-License-Identifier: Apache-2.0
//
// What the fuzz targets share. An input is a text; a target may take its first lines for
// arguments, so that the inputs in corpus/ can be written and read by hand.
#ifndef FUZZ_SUPPORT_H_
#define FUZZ_SUPPORT_H_

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>

#include "tav_db_api/tav_db_client_inner_fields.h"

// What a target defines: runs it on one input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size);

namespace fuzz {

// Ends the process, which is how a target reports, when something does not hold.
inline void Check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

inline std::string_view TextOf(const uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// Cuts the first line off the text, which may be the last one, and returns it without its end.
inline std::string TakeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  const std::string line(text.substr(0, end));
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

inline bool AreEqual(const _APPS_INNER_INFO_T& one, const _APPS_INNER_INFO_T& other) {
  const auto agree = [&](const auto& field) { return one.*field.member == other.*field.member; };
  return std::all_of(std::begin(kInnerTexts), std::end(kInnerTexts), agree) &&
         std::all_of(std::begin(kInnerIntegers), std::end(kInnerIntegers), agree) &&
         std::all_of(std::begin(kInnerFlags), std::end(kInnerFlags), agree);
}

}  // namespace fuzz

#endif  // FUZZ_SUPPORT_H_
