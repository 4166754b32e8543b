// SPDX-License-Identifier: Apache-2.0
#include "soak/reader.h"

#include <app_control.h>
#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "soak/child.h"
#include "soak/generations.h"
#include "tav_db_api.h"

namespace soak {
namespace {

using test::Require;

constexpr tav_app_filter_s kEveryApp = {65535, 0, 65535};

template <typename T>
using Block = std::unique_ptr<T, decltype(&std::free)>;

bool IsAnswered(int result) {
  Require(result == 0 || result == -2, "result " + std::to_string(result));
  return result == 0;
}

void RequireWhole(const tav_app_info_s& record) {
  Require(record.app_index >= 0 && record.app_index < kApps, "no such app");
  const tav_app_info_s whole = RecordOf(record.app_index, record.use_count);
  Require(std::memcmp(&record, &whole, sizeof(whole)) == 0, "a record that nobody wrote");
}

// The objects of a document's list.
Json::Value Objects(const char* json, const char* list) {
  Json::Value root;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  Require(reader->parse(json, json + std::strlen(json), &root, nullptr), "a broken document");
  return root[list];
}

// The generation of an app's object.
int RequireWhole(const Json::Value& app) {
  const int generation = NumberOf(app["title"].asString());
  const std::string text = TextOf(generation);
  Require(app["title"] == text && app["version"] == text && app["content_id"] == text &&
              app["use_count"] == std::to_string(generation) &&
              app["app_id"] == IdOf(NumberOf(app["index"].asString())),
          "an object that nobody wrote");
  return generation;
}

}  // namespace

void Reader::Read() {
  const auto start = std::chrono::steady_clock::now();
  const bool is_answered = MakeCall();
  const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(
      std::chrono::steady_clock::now() - start);
  ++m_tally.calls;
  if (!is_answered) ++m_tally.busy;
  Raise(m_tally.slowest, static_cast<int>(elapsed.count()));
}

bool Reader::MakeCall() {
  ++m_turn;
  switch (m_turn % 9) {
    case 0:
      return ReadShortList();
    case 1:
      return ReadList([this](tav_app_info_s** list, int* count) {
        return tav_get_app_list(kEveryApp, static_cast<tav_app_viewmode_e>(m_turn / 9 % 6), -1, 0,
                                list, count);
      });
    case 2:
      return ReadList(tav_get_all_app_list);
    case 3:
      return ReadCount();
    case 4:
      return ReadJson();
    case 5:
      return ReadJsonList();
    case 6:
      return ReadSetting();
    default:
      return ReadOne();
  }
}

// Generations never go back.
void Reader::Saw(int generation) {
  Require(generation >= m_newest, "an old generation");
  // A transaction is noted when it is over, so that the next one may be read before.
  Require(generation <= m_tally.written + 1, "a generation of the future");
  m_newest = generation;
  Raise(m_tally.read, generation);
}

bool Reader::ReadOne() {
  tav_app_info_s record;
  if (!IsAnswered(tav_get_app_info(IdOf(m_turn % kSteadyApps).c_str(), &record))) return false;
  Require(record.app_index == m_turn % kSteadyApps, "another app");
  RequireWhole(record);
  Saw(record.use_count);
  return true;
}

template <typename Ask>
bool Reader::ReadList(const Ask& ask) {
  tav_app_info_s* records = nullptr;
  int count = 0;
  const int result = ask(&records, &count);
  const Block<tav_app_info_s> owner(records, &std::free);
  if (!IsAnswered(result)) return false;
  // Apps that went between the count and the rows leave empty records at the end.
  const tav_app_info_s empty = {};
  tav_app_info_s* const end = std::find_if(
      records, records + count, [](const auto& record) { return record.app_id[0] == '\0'; });
  for (tav_app_info_s* record = end; record != records + count; ++record) {
    Require(std::memcmp(record, &empty, sizeof(empty)) == 0, "a record without an id");
  }
  Require(end - records >= kSteadyApps, "too few records");
  std::vector<bool> is_there(kApps, false);
  for (tav_app_info_s* record = records; record != end; ++record) {
    RequireWhole(*record);
    Require(record->use_count == records->use_count, "records of two generations");
    Require(!is_there[static_cast<std::size_t>(record->app_index)], "an app twice");
    is_there[static_cast<std::size_t>(record->app_index)] = true;
  }
  Saw(records->use_count);
  return true;
}

bool Reader::ReadShortList() {
  tav_app_ms_s* records = nullptr;
  int count = 0;
  const int result =
      tav_get_app_list_ms(kEveryApp, TAV_APP_VIEWMODE_CATALOGUE, 0, kSteadyApps, &records, &count);
  const Block<tav_app_ms_s> owner(records, &std::free);
  if (!IsAnswered(result)) return false;
  Require(count == kSteadyApps, "too few short records");
  for (int i = 0; i < count; ++i) {
    Require(records[i].app_id == IdOf(i), "another short record");
    Require(records[i].is_multi_screen2 == records[0].is_multi_screen2,
            "short records of two generations");
  }
  Saw(records[0].is_multi_screen2);
  return true;
}

bool Reader::ReadCount() {
  int count = 0;
  if (!IsAnswered(tav_get_app_count(kEveryApp, &count))) return false;
  Require(count == kSteadyApps || count == kApps, "a count of no generation");
  return true;
}

bool Reader::ReadJson() {
  char* json = nullptr;
  const int result = tav_get_app_info_json(IdOf(m_turn % kSteadyApps).c_str(), &json);
  const Block<char> owner(json, &std::free);
  if (result == -1) return false;  // a busy database is a failure like any other to this one
  Require(result == 0, "result " + std::to_string(result));
  const Json::Value apps = Objects(json, "app_info");
  Require(apps.size() == 1, "not one app");
  Saw(RequireWhole(apps[0]));
  return true;
}

bool Reader::ReadJsonList() {
  app_control_h request = nullptr;
  Require(app_control_create(&request) == 0, "no request");
  app_control_add_extra_data(request, "all_app", "true");
  char* json = nullptr;
  const int result = tav_get_app_list_json(request, &json);
  app_control_destroy(request);
  const Block<char> owner(json, &std::free);
  if (!IsAnswered(result) || json == nullptr) return false;
  const Json::Value apps = Objects(json, "app_list");
  for (const Json::Value& app : apps) {
    Require(RequireWhole(app) == RequireWhole(apps[0]), "objects of two generations");
  }
  Saw(RequireWhole(apps[0]));
  return apps.size() >= kSteadyApps;  // a part of the list: the database became busy
}

bool Reader::ReadSetting() {
  char* text = nullptr;
  const int result = tav_get_emanual_id(&text);
  const Block<char> owner(text, &std::free);
  if (!IsAnswered(result)) return false;
  const int generation = NumberOf(text);
  Require(text == TextOf(generation), "a setting that nobody wrote");
  Saw(generation);
  return true;
}

}  // namespace soak
