// SPDX-License-Identifier: Apache-2.0
#include "faults/outcome.h"

#include <pthread.h>

#include <algorithm>
#include <cstddef>

#include "catalogue/inner_members.h"

namespace test {
namespace {

thread_local int t_library_depth = 0;

constexpr std::size_t kTexts = offsetof(tav_app_info_s, size) / TAV_TEXT_SIZE;

std::string Field(const char* field) {
  const std::size_t length = strnlen(field, TAV_TEXT_SIZE);
  return length == TAV_TEXT_SIZE ? "(a text without an end)" : std::string(field, length);
}

template <typename Record>
bool IsFull(const Record& record, char byte) {
  const char* bytes = reinterpret_cast<const char*>(&record);
  return std::all_of(bytes, bytes + sizeof(record), [&](char each) { return each == byte; });
}

bool Contains(const std::vector<std::string>& items, const std::string& item) {
  return std::find(items.begin(), items.end(), item) != items.end();
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Outcome& outcome) {
  out << outcome.status << ", " << outcome.state;
  for (const std::string& item : outcome.items) out << "\n  [" << item << "]";
  return out;
}

bool IsOneOf(const Endings& endings, const Outcome& outcome, const Outcome& whole) {
  return std::any_of(endings.begin(), endings.end(), [&](const Ending& ending) {
    if (ending.status != outcome.status) return false;
    if (ending.state != outcome.state && std::strcmp(ending.state, kAnything) != 0) return false;
    return ending.has_other_items ||
           std::all_of(outcome.items.begin(), outcome.items.end(), [&](const std::string& item) {
             return item == kZeroed || Contains(whole.items, item);
           });
  });
}

bool IsInsideTheLibrary() {
  return t_library_depth > 0;
}

InsideTheLibrary::InsideTheLibrary() {
  ++t_library_depth;
  pthread_setcancelstate(PTHREAD_CANCEL_ENABLE, &m_cancel_state);
}

InsideTheLibrary::~InsideTheLibrary() {
  pthread_setcancelstate(m_cancel_state, nullptr);
  --t_library_depth;
}

std::string StateOf(const tav_app_info_s& record) {
  return IsFull(record, 'x') ? kUntouched : IsFull(record, '\0') ? kZeroed : kFilled;
}

std::string TextOf(const tav_app_info_s& record) {
  if (IsFull(record, '\0')) return kZeroed;
  const char* texts = record.app_id;
  std::string text;
  for (std::size_t i = 0; i < kTexts; ++i) text += Field(texts + i * TAV_TEXT_SIZE) + "|";
  const char* bytes = reinterpret_cast<const char*>(&record);
  for (std::size_t at = offsetof(tav_app_info_s, size); at < sizeof(record); at += sizeof(int)) {
    int number;
    std::memcpy(&number, bytes + at, sizeof(number));
    text += std::to_string(number) + "|";
  }
  return text;
}

std::string TextOf(const tav_app_ms_s& record) {
  if (IsFull(record, '\0')) return kZeroed;
  return Field(record.app_id) + "|" + std::to_string(record.is_multi_screen2);
}

std::string TextOf(const _APPS_INNER_INFO_T& app) {
  std::string text;
  for (const auto& member : MembersOf(app)) text += member.first + "=" + member.second + "|";
  return text;
}

}  // namespace test
