// SPDX-License-Identifier: Apache-2.0
//
// What the tests of the C++ layer share: results as texts, which are compared whole.
#ifndef TESTS_CPP_ANSWERS_H_
#define TESTS_CPP_ANSWERS_H_

#include <chrono>
#include <memory>
#include <ostream>
#include <string>
#include <tav_db_api.hpp>
#include <vector>

#include "support/device.h"
#include "support/writer.h"

namespace tav {

// For the test runner's messages.
inline void PrintTo(Status status, std::ostream* out) {
  *out << "Status " << static_cast<int>(status);
}
inline void PrintTo(Answer answer, std::ostream* out) {
  *out << "Answer " << static_cast<int>(answer);
}

}  // namespace tav

namespace test {

using Ids = std::vector<std::string>;

// "0 Harbour", "-1 (none)": the status and the value.
inline std::string Told(tav::Status status, const std::string& value) {
  return std::to_string(static_cast<int>(status)) + " " + value;
}
inline std::string Told(const tav::Text& text) {
  return text ? text.str() : "(none)";
}
inline std::string Told(const tav::Result<tav::Text>& text) {
  return Told(text.status(), Told(*text));
}
inline std::string Told(const tav::Result<int>& number) {
  return Told(number.status(), std::to_string(*number));
}
inline std::string Told(const tav::Result<bool>& answer) {
  return Told(answer.status(), *answer ? "yes" : "no");
}
template <typename Record>
std::string Told(const tav::Result<tav::List<Record>>& list) {
  std::string ids;
  for (const Record& app : *list) ids += std::string(tav::TextOf(app.app_id)) + ",";
  return Told(list.status(), ids);
}

// What keeps the database busy for longer than a call waits for it.
inline std::unique_ptr<ExclusiveWriter> BusyWriter(const Device& device) {
  return std::make_unique<ExclusiveWriter>(device.DatabaseFile(), std::chrono::seconds(30));
}

}  // namespace test

#endif  // TESTS_CPP_ANSWERS_H_
