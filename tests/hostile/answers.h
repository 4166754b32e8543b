// SPDX-License-Identifier: Apache-2.0
//
// What holds for the answers of the library, whatever stands in the database. Each check throws
// what is wrong.
#ifndef TESTS_HOSTILE_ANSWERS_H_
#define TESTS_HOSTILE_ANSWERS_H_

#include <malloc.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <string>

#include "tav_db_api_inner.h"

namespace hostile {

inline void Require(bool is_right, const std::string& what) {
  if (!is_right) throw std::runtime_error(what);
}

inline bool Succeeded(int result) {
  Require(result == 0 || result == -1 || result == -2, "result " + std::to_string(result));
  return result == 0;
}

inline bool IsFilledWith(const void* memory, std::size_t size, char value) {
  const char* bytes = static_cast<const char*>(memory);
  for (std::size_t i = 0; i < size; ++i) {
    if (bytes[i] != value) return false;
  }
  return true;
}

inline void RequireText(const char* text, std::size_t size) {
  Require(strnlen(text, size) < size, "a text without its end");
}

// The rules of a record that came out of a row.
void RequireSound(const tav_app_info_s& record);
void RequireSound(const tav_app_ms_s& record);

// A record of the caller's, with something before and behind it that must stay.
class GuardedRecord {
 public:
  GuardedRecord() { std::memset(static_cast<void*>(&m_memory), kMark, sizeof(m_memory)); }

  tav_app_info_s* Get() { return &m_memory.record; }
  // What the lookups promise of the record for each of their results.
  void RequirePromised(int result) const;

 private:
  static constexpr char kMark = 'x';
  struct {
    char before[256];
    tav_app_info_s record;
    char behind[256];
  } m_memory;
};

// Asks for a list. How many records came; -1 when it failed.
template <typename Record, typename Ask>
int ListOf(const Ask& ask) {
  constexpr int kUntouched = -77;
  static Record untouched;
  Record* list = &untouched;
  int count = kUntouched;
  const bool is_answered = Succeeded(ask(&list, &count));
  const std::unique_ptr<Record, decltype(&std::free)> owner(list == &untouched ? nullptr : list,
                                                            &std::free);
  if (!is_answered) {
    Require(list == &untouched || list == nullptr, "a list and a failure");
    Require(count == kUntouched || count == 0, "a count and a failure");
    return -1;
  }
  if (list == &untouched) {
    Require(count == 0, "a count without a list");
    return 0;
  }
  Require(list != nullptr && count > 0, "a list without a record");
  Require(malloc_usable_size(list) / sizeof(Record) >= static_cast<std::size_t>(count),
          "a block that is smaller than its list");
  // Rows that could not be read leave empty records, behind all the others.
  int filled = count;
  while (filled > 0 && IsFilledWith(&list[filled - 1], sizeof(Record), 0)) --filled;
  for (int i = 0; i < filled; ++i) RequireSound(list[i]);
  return count;
}

// Asks for a text. kSize is that of its block, or 0 when the block is as long as the text.
template <std::size_t kSize = 0, typename Ask>
bool GetsText(const Ask& ask, std::string* out = nullptr) {
  char untouched = '\0';
  char* text = &untouched;
  const bool is_answered = Succeeded(ask(&text));
  const std::unique_ptr<char, decltype(&std::free)> owner(text == &untouched ? nullptr : text,
                                                          &std::free);
  if (!is_answered) {
    Require(text == &untouched, "a text and a failure");
    return false;
  }
  Require(text != &untouched && text != nullptr, "success without a text");
  RequireText(text, kSize != 0 ? kSize : malloc_usable_size(text));
  if (kSize != 0) Require(malloc_usable_size(text) >= kSize, "too small a block");
  if (out != nullptr) *out = text;
  return true;
}

// Asks for a number, which stays as it was on a failure.
template <typename Ask>
bool GetsNumber(const Ask& ask) {
  constexpr int kUntouched = -77;
  int number = kUntouched;
  const bool is_answered = Succeeded(ask(&number));
  Require(is_answered || number == kUntouched, "a number and a failure");
  return is_answered;
}

// A JSON document whose lists of this name hold objects of texts alone. How many objects.
int RequireJson(const std::string& text, const char* list);

}  // namespace hostile

#endif  // TESTS_HOSTILE_ANSWERS_H_
