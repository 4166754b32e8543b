// SPDX-License-Identifier: Apache-2.0
//
// What a call of the library came to: its result, what became of the caller's pointers and
// records, and what they hold, as texts that can be compared as a whole.
#ifndef TESTS_FAULTS_OUTCOME_H_
#define TESTS_FAULTS_OUTCOME_H_

#include <cstdlib>
#include <cstring>
#include <ostream>
#include <string>
#include <vector>

#include "tav_db_api_inner.h"

namespace test {

// The status of a call that an exception left.
constexpr int kThrew = 99;
// The status of a call that returns nothing.
constexpr int kVoid = 0;

struct Outcome {
  int status = 0;
  std::string state = {};               // what became of the outputs: "untouched", "null, 0", …
  std::vector<std::string> items = {};  // what they hold

  bool operator==(const Outcome& other) const {
    return status == other.status && state == other.state && items == other.items;
  }
};

std::ostream& operator<<(std::ostream& out, const Outcome& outcome);

// One of the ways in which a call may end when something fails. Its items are some of those
// that the call gives when nothing fails, in any order, or empty records.
struct Ending {
  int status;
  const char* state;
  bool has_other_items = false;  // they may be others as well
};
using Endings = std::vector<Ending>;

constexpr char kUntouched[] = "untouched";
constexpr char kZeroed[] = "zeroed";
constexpr char kFilled[] = "filled";
constexpr char kNull[] = "null";
constexpr char kBlock[] = "a block";
constexpr char kAnything[] = "*";

// Whether the outcome is one of the endings of a call that otherwise gives whole.
bool IsOneOf(const Endings& endings, const Outcome& outcome, const Outcome& whole);

// True while a call of the library runs on this thread: the time for faults.
bool IsInsideTheLibrary();

class InsideTheLibrary {
 public:
  InsideTheLibrary();
  ~InsideTheLibrary();
  InsideTheLibrary(const InsideTheLibrary&) = delete;
  InsideTheLibrary& operator=(const InsideTheLibrary&) = delete;

 private:
  int m_cancel_state = 0;  // the thread's outside, which a test may have disabled
};

// Runs a call of the library and nothing else.
template <typename Call>
int During(const Call& call) try {
  const InsideTheLibrary inside;
  return call();
} catch (...) {
  return kThrew;
}

std::string TextOf(const _APPS_INNER_INFO_T& app);

// The record's state, and all that it holds. A text without an end is told as such.
std::string StateOf(const tav_app_info_s& record);
std::string TextOf(const tav_app_info_s& record);
std::string TextOf(const tav_app_ms_s& record);

// The calls by the kind of what they write. Each hands the call something untouched.

template <typename Call>
Outcome WithRecord(const Call& call) {
  tav_app_info_s record;
  std::memset(&record, 'x', sizeof(record));
  Outcome outcome;
  outcome.status = During([&] { return call(&record); });
  outcome.state = StateOf(record);
  if (outcome.state == kFilled) outcome.items = {TextOf(record)};
  return outcome;
}

template <typename Record, typename Call>
Outcome WithList(const Call& call) {
  constexpr int kUntouchedCount = -77;
  Record untouched = {};
  Record* list = &untouched;
  int count = kUntouchedCount;
  Outcome outcome;
  outcome.status = During([&] { return call(&list, &count); });
  const bool is_block = list != nullptr && list != &untouched;
  outcome.state = is_block ? kBlock : list == nullptr ? kNull : kUntouched;
  outcome.state += ", ";
  outcome.state += count == kUntouchedCount ? "untouched" : std::to_string(count);
  for (int i = 0; is_block && i < count; ++i) outcome.items.push_back(TextOf(list[i]));
  if (is_block) std::free(list);
  return outcome;
}

template <typename Call>
Outcome WithInt(const Call& call) {
  constexpr int kUntouchedValue = -77;
  int value = kUntouchedValue;
  Outcome outcome;
  outcome.status = During([&] { return call(&value); });
  outcome.state = value == kUntouchedValue ? kUntouched : std::to_string(value);
  return outcome;
}

template <typename Call>
Outcome WithText(const Call& call) {
  char untouched[] = "untouched";
  char* text = untouched;
  Outcome outcome;
  outcome.status = During([&] { return call(&text); });
  outcome.state = text == untouched ? kUntouched : text == nullptr ? kNull : kBlock;
  if (outcome.state != kBlock) return outcome;
  outcome.items = {text};
  std::free(text);
  return outcome;
}

template <typename Call>
Outcome WithStatus(const Call& call) {
  return {During(call)};
}

}  // namespace test

#endif  // TESTS_FAULTS_OUTCOME_H_
