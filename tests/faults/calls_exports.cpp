// SPDX-License-Identifier: Apache-2.0
//
// The calls that give apps as JSON and XML, and the C++ helpers around the catalogue.
#include <app_control.h>
#include <json/reader.h>
#include <json/value.h>
#include <json/writer.h>

#include <filesystem>
#include <fstream>
#include <memory>

#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace test {
namespace {

using Apps = std::vector<_APPS_INNER_INFO_T>;
using Texts = std::map<std::string, std::string>;

const Endings kNoText = {{-1, kUntouched}};
const Endings kEmpty = {{0, "empty"}};
const Endings kNoMember = {{0, "untouched, untouched"}};

struct Destroy {
  void operator()(app_control_h request) const { app_control_destroy(request); }
};
using Request = std::unique_ptr<app_control_s, Destroy>;

Request RequestWith(const Texts& extras) {
  app_control_h request = nullptr;
  app_control_create(&request);
  for (const auto& [key, value] : extras) {
    app_control_add_extra_data(request, key.c_str(), value.c_str());
  }
  return Request(request);
}

// A list of apps, an item each.
Outcome ListJson(const Texts& extras) {
  const Request request = RequestWith(extras);
  Outcome outcome =
      WithText([&](char** json) { return tav_get_app_list_json(request.get(), json); });
  if (outcome.items.empty()) return outcome;
  const std::string text = outcome.items.front();
  outcome.items.clear();
  Json::Value root;
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  if (!reader->parse(text.data(), text.data() + text.size(), &root, nullptr)) {
    outcome.state = "no JSON: " + text;
    return outcome;
  }
  for (const Json::Value& app : root["app_list"]) {
    outcome.items.push_back(Json::writeString(Json::StreamWriterBuilder(), app));
  }
  return outcome;
}

// The path, and after a success the lines of the file.
Outcome Xml() {
  Outcome outcome = WithText([](char** path) { return tav_write_all_app_info_to_xml(path); });
  if (outcome.items.empty()) return outcome;
  const std::filesystem::path path = outcome.items.front();
  outcome.state = path.filename() == "apps_info.xml" ? "the path" : "another path";
  outcome.items.clear();
  if (outcome.status != 0) return outcome;
  std::ifstream file(path);
  for (std::string line; std::getline(file, line);) outcome.items.push_back(line);
  return outcome;
}

Outcome BuiltIn(bool is_test_only) {
  Apps list(1);
  list[0].strAppID = "an app that was in the list before";
  Outcome outcome = WithStatus([&] { return GetBuiltInAppList(list, is_test_only); });
  outcome.state = list.size() == 1 ? kUntouched : kFilled;
  for (const auto& app : list) outcome.items.push_back(TextOf(app));
  return outcome;
}

template <typename Find>
Outcome Member(const Find& find) {
  const std::string run_title = kRunTitleA;
  std::string id = kUntouched;
  int state = -77;
  Outcome outcome = WithStatus([&] {
    find(run_title, id, state);
    return kVoid;
  });
  outcome.state = id + ", " + (state == -77 ? kUntouched : std::to_string(state));
  return outcome;
}

Outcome FromMap(int status, const Texts& texts) {
  Outcome outcome = {status, texts.empty() ? "empty" : kFilled};
  for (const auto& [key, value] : texts) outcome.items.push_back(key + "=" + value);
  return outcome;
}

Outcome TestApps() {
  std::map<std::string, _APPS_INNER_INFO_T> apps;
  Outcome outcome = WithStatus([&] {
    GetBuiltInTestAppList(apps);
    return kVoid;
  });
  outcome.state = apps.empty() ? "empty" : kFilled;
  for (const auto& [id, app] : apps) outcome.items.push_back(id + ": " + TextOf(app));
  return outcome;
}

Outcome ParsedList() {
  std::string text = "the first of the keys:the first of the values;the second of the keys:";
  std::string items = ";";
  std::string pairs = ":";
  Texts out;
  const int status = During([&] {
    ParseStringToList(std::move(text), std::move(items), std::move(pairs), out);
    return kVoid;
  });
  return FromMap(status, out);
}

Outcome UnsupportedPackages() {
  Texts packages;
  const int status = During([&] {
    packages = GetUnsupportedPkgList();
    return kVoid;
  });
  return FromMap(status, packages);
}

Outcome ControlData() {
  const Request request =
      RequestWith({{"a key of the request that is long", "true and long enough"}});
  std::string key = "a key of the request that is long";
  std::string value = kUntouched;
  Outcome outcome = WithStatus(
      [&] { return db_get_app_control_data(request.get(), std::move(key), value) ? 1 : 0; });
  outcome.state = value;
  return outcome;
}

}  // namespace

Calls ExportCalls() {
  return {
      {"tav_get_app_info_json", "",
       [] { return WithText([](char** json) { return tav_get_app_info_json(kAppA, json); }); },
       kNoText, kNoText},
      {"tav_get_app_list_json",
       "",
       [] {
         return ListJson({{"app_featured", "1"}, {"view_mode", "4"}});
       },
       kNoText,
       {{0, kNull}, {0, kBlock}},
       {{0, kNull}, {0, kBlock}},
       {{0, kBlock}}},
      {"tav_get_app_list_json",
       "OfAllApps",
       [] {
         return ListJson({{"all_app", "true"}});
       },
       kNoText,
       {{0, kNull}, {0, kBlock}},
       {{0, kNull}, {0, kBlock}}},
      {"tav_get_app_list_json",
       "OfTestApps",
       [] {
         return ListJson({{"built_in_app", "true"}, {"test_app_only", "true"}});
       },
       kNoText,
       {{-1, kUntouched}, {0, kNull}},
       {{0, kNull}},
       {{0, kBlock, true}}},
      {"tav_write_all_app_info_to_xml",
       "",
       Xml,
       {{-1, kUntouched}, {-1, kNull}, {-1, "the path"}},
       {{-2, "the path"}},
       {{0, "the path", true}}},
  };
}

Calls InnerCalls() {
  const Endings incomplete = {{0, kFilled, true}, {0, kUntouched}};
  const Endings no_catalogue = {{-1, kUntouched}};
  Endings busy = incomplete;
  busy.push_back(no_catalogue[0]);
  const Endings not_installed = {{0, "untouched, untouched"}, {0, "org.example.application.a, 1"}};
  return {
      {"GetBuiltInAppList", "", [] { return BuiltIn(false); }, no_catalogue, busy, incomplete,
       incomplete},
      {"GetBuiltInAppList", "OfTestApps", [] { return BuiltIn(true); }, no_catalogue, busy,
       incomplete, incomplete},
      {"GetBuiltInAppList", "LessThoseThatAreBeingUninstalled", [] { return BuiltIn(false); },
       no_catalogue, busy, incomplete, incomplete, true},
      {"GetBuiltInTestAppList", "", TestApps, kEmpty, kEmpty, kEmpty},
      {"GetUnsupportedPkgList", "", UnsupportedPackages, kEmpty, {}, {}, kEmpty},
      {"GetBuiltInBlacklistSupport",
       "",
       [] { return WithStatus([] { return GetBuiltInBlacklistSupport() ? 1 : 0; }); },
       {},
       {},
       {},
       {{0, ""}}},
      {"GetAppIDFromAndroidGroupList", "", [] { return Member(GetAppIDFromAndroidGroupList); },
       kNoMember, not_installed, not_installed, not_installed},
      {"GetAppIDFromAppGroupList", "", [] { return Member(GetAppIDFromAppGroupList); }, kNoMember,
       not_installed, not_installed, not_installed},
      {"ParseStringToList", "", ParsedList, kEmpty},
      {"db_get_app_control_data", "", ControlData, {{0, kUntouched}}},
  };
}

}  // namespace test
