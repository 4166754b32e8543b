// SPDX-License-Identifier: Apache-2.0
#include "hostile/answers.h"

#include <glib.h>
#include <json/reader.h>
#include <json/value.h>

namespace hostile {

void RequireSound(const tav_app_info_s& record) {
  constexpr std::size_t kTexts = offsetof(tav_app_info_s, size) / TAV_TEXT_SIZE;
  const char* texts = reinterpret_cast<const char*>(&record);
  for (std::size_t i = 0; i < kTexts; ++i) RequireText(texts + i * TAV_TEXT_SIZE, TAV_TEXT_SIZE);
  for (const char* path : {record.app_panel_icon_path, record.extra_icon_path,
                           record.firstscreen_icon_dir, record.ambient_icon_path}) {
    Require(std::strcmp(path, record.app_icon_path) == 0, "two icons");
  }
  Require(record.spare_string_1[0] == '\0' && record.spare_string_2[0] == '\0' &&
              record.spare_int_1 == 0 && record.spare_int_2 == 0,
          "a spare field that is not empty");
  Require(record.is_lock == 0 || record.is_lock == 1, "a lock that is neither 0 nor 1");
}

void RequireSound(const tav_app_ms_s& record) {
  RequireText(record.app_id, sizeof(record.app_id));
}

void GuardedRecord::RequirePromised(int result) const {
  Require(IsFilledWith(m_memory.before, sizeof(m_memory.before), kMark) &&
              IsFilledWith(m_memory.behind, sizeof(m_memory.behind), kMark),
          "written outside the record");
  if (result == 0) RequireSound(m_memory.record);
  if (result == -1) {
    Require(IsFilledWith(&m_memory.record, sizeof(m_memory.record), kMark) ||
                IsFilledWith(&m_memory.record, sizeof(m_memory.record), 0),
            "a failure and a record that is neither untouched nor zero");
  }
}

int RequireJson(const std::string& text, const char* list) {
  Require(g_utf8_validate(text.c_str(), -1, nullptr) != FALSE, "a document that is not UTF-8");
  Json::Value root;
  std::string errors;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Require(reader->parse(text.data(), text.data() + text.size(), &root, &errors), errors);
  const Json::Value& objects = root[list];
  Require(objects.isArray(), "a document without its list");
  for (const Json::Value& object : objects) {
    for (const Json::Value& value : object) Require(value.isString(), "a value that is no text");
  }
  return static_cast<int>(objects.size());
}

}  // namespace hostile
