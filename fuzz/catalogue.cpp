// SPDX-License-Identifier: Apache-2.0
//
// The document of the built-in apps. The input is its text, and the texts of an app as well.
#include <json/value.h>
#include <json/writer.h>

#include <vector>

#include "support.h"
#include "tav_db_api/tav_db_api_catalogue_text.h"

namespace {

using Apps = std::vector<_APPS_INNER_INFO_T>;

bool AreEqual(const Apps& one, const Apps& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), fuzz::AreEqual);
}

// A document of these apps, with every byte of their texts as it is.
std::string DocumentOf(const Apps& apps) {
  Json::Value root;
  root["rsp"]["stat"] = "ok";
  root["rsp"]["apps"] = Json::arrayValue;
  for (const _APPS_INNER_INFO_T& app : apps) {
    Json::Value entry;
    entry["id"] = app.strAppID;
    entry["tizenId"] = app.strTizenID;
    entry["packageId"] = app.strPackageName;
    entry["title"] = app.strTitle;
    root["rsp"]["apps"].append(entry);
  }
  Json::StreamWriterBuilder builder;
  builder["emitUTF8"] = true;
  return Json::writeString(builder, root);
}

void CheckTakesOnlyWhatAnEntryHolds(const Apps& apps) {
  for (const _APPS_INNER_INFO_T& app : apps) {
    _APPS_INNER_INFO_T expected;
    expected.strAppID = app.strAppID;
    expected.strTizenID = app.strTizenID;
    expected.strPackageName = app.strPackageName;
    expected.strTitle = app.strTitle;
    fuzz::Check(fuzz::AreEqual(app, expected), "an app has nothing but what its entry holds");
  }
}

void CheckGivesTheAppsOf(const Apps& apps) {
  Apps copies;
  fuzz::Check(ParseCatalogue(DocumentOf(apps), copies), "a document of apps is ok");
  fuzz::Check(AreEqual(copies, apps), "a document of apps gives these apps");
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string text(fuzz::TextOf(data, size));
  Apps apps;
  const bool is_ok = ParseCatalogue(text, apps);
  fuzz::Check(is_ok || apps.empty(), "a document that fails gives no apps");
  const auto objects = static_cast<std::size_t>(std::count(text.begin(), text.end(), '{'));
  fuzz::Check(apps.empty() || apps.size() + 2 <= objects, "every app has an object of its own");
  CheckTakesOnlyWhatAnEntryHolds(apps);

  Apps again(1);
  again.front().strAppID = "before";
  fuzz::Check(ParseCatalogue(text, again) == is_ok, "a document gives the same result twice");
  fuzz::Check(again.front().strAppID == "before", "the apps are added behind what is there");
  again.erase(again.begin());
  fuzz::Check(AreEqual(again, apps), "a document gives the same apps twice");

  CheckGivesTheAppsOf(apps);
  _APPS_INNER_INFO_T any;
  any.strAppID = text;
  any.strTizenID = "of Tizen, " + text;
  any.strPackageName = "of its package, " + text;
  any.strTitle = "titled " + text;
  CheckGivesTheAppsOf({any});
  return 0;
}
