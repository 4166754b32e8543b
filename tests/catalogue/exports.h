// SPDX-License-Identifier: Apache-2.0
//
// What the tests of the exports share: texts of files, and the answers of calls.
#ifndef TESTS_CATALOGUE_EXPORTS_H_
#define TESTS_CATALOGUE_EXPORTS_H_

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>

#include "support/device.h"
#include "tav_db_api.h"

namespace test {

inline std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << file;
  return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// One of the texts that the exports must give, byte for byte.
inline std::string Golden(const std::string& name) {
  return ReadFile(std::filesystem::path(GOLDEN) / name);
}

// What a call has answered. The text tells an untouched pointer and a null one from a text.
struct Answer {
  int result;
  std::string text;
  bool operator==(const Answer& other) const {
    return result == other.result && text == other.text;
  }
};

inline std::ostream& operator<<(std::ostream& out, const Answer& answer) {
  return out << answer.result << " with " << answer.text;
}

// The answer of a call that gives a block to be freed.
template <typename Call>
Answer Ask(const Call& call) {
  char untouched[] = "untouched";
  char* text = untouched;
  const int result = call(&text);
  if (text == untouched) return {result, "(untouched)"};
  if (text == nullptr) return {result, "(null)"};
  const Answer answer = {result, text};
  std::free(text);
  return answer;
}

inline const Answer kFails = {-1, "(untouched)"};
inline const Answer kNothing = {0, "(null)"};

}  // namespace test

#endif  // TESTS_CATALOGUE_EXPORTS_H_
