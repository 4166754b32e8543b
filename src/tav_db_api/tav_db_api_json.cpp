// SPDX-License-Identifier: Apache-2.0
//
// App records as JSON texts. Every value is a JSON string. The lock is not held here: the
// records are copies.
#include <app_control.h>
#include <json/value.h>
#include <json/writer.h>

#include <cstdlib>
#include <cstring>
#include <ios>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tav_common/tav_arguments.h"
#include "tav_common/tav_handles.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_client_inner.h"
#include "tav_db_api/tav_db_client_inner_fields.h"

namespace {

constexpr std::size_t kLogPiece = 896;

Json::Value ToJson(const std::string& text) {
  return text;
}
Json::Value ToJson(int number) {
  return std::to_string(number);
}
Json::Value ToJson(bool flag) {
  return flag ? "1" : "0";
}

// The keys are literals, which the objects need not copy.
template <typename Value, std::size_t kCount>
void AddFields(const _APPS_INNER_INFO_T& app, const InnerField<Value> (&fields)[kCount],
               Json::Value& object) {
  for (const InnerField<Value>& field : fields) {
    if (field.key == nullptr) continue;
    object[Json::StaticString(field.key)] = ToJson(app.*field.member);
  }
}

Json::Value FullObject(const _APPS_INNER_INFO_T& app) {
  Json::Value object(Json::objectValue);
  AddFields(app, kInnerTexts, object);
  AddFields(app, kInnerIntegers, object);
  AddFields(app, kInnerFlags, object);
  return object;
}

// What the catalogue knows of an app.
Json::Value BuiltInObject(const _APPS_INNER_INFO_T& app) {
  Json::Value object(Json::objectValue);
  object["app_id"] = app.strAppID;
  object["icon_path"] = app.strIconPath;
  object["title"] = app.strTitle;
  object["tizen_id"] = app.strTizenID;
  object["package_name"] = app.strPackageName;
  object["version"] = app.strVersion;
  object["target_group_tag"] = app.strTargetGroupTag;
  object["target_group_type"] = app.strTargetGroupType;
  return object;
}

// The log takes lines of a limited length.
void LogInPieces(const std::string& text) {
  for (std::size_t at = 0; at < text.size(); at += kLogPiece) {
    TAV_LOGI("%.*s", static_cast<int>(kLogPiece), text.c_str() + at);
  }
}

// A stream keeps an exception to itself unless it is told not to: the text would end where the
// memory did.
std::string Render(const Json::Value& root) {
  const std::unique_ptr<Json::StreamWriter> writer(Json::StreamWriterBuilder().newStreamWriter());
  std::ostringstream out;
  out.exceptions(std::ios::badbit | std::ios::failbit);
  writer->write(root, &out);
  return out.str();
}

// Hands the document to the caller as a new block.
int Deliver(const std::string& text, char** json) {
  MallocText copy(strdup(text.c_str()));
  if (copy == nullptr) {
    TAV_LOGE("failed to malloc json");
    return kFailed;
  }
  *json = copy.release();
  return 0;
}

bool ReadExtra(app_control_h request, const char* key, std::string& value,
               const LogPlace& place = LogPlace::Here()) {
  char* text = nullptr;
  const int result = app_control_get_extra_data(request, key, &text);
  const MallocText owner(text);
  if (result != APP_CONTROL_ERROR_NONE || text == nullptr) {
    TAV_LOGI_FOR(place, "do not have key[%s]!!", key);
    return false;
  }
  value = text;
  TAV_LOGI_FOR(place, "has key[%s] value[%s]", key, value.c_str());
  return true;
}

// "" for a key that the request does not have.
std::string Extra(app_control_h request, const char* key) {
  std::string value;
  ReadExtra(request, key, value);
  return value;
}

}  // namespace

// The exported name fixes the parameters' types.
// NOLINTNEXTLINE(performance-unnecessary-value-param)
bool db_get_app_control_data(app_control_h app_control, std::string key, std::string& value) try {
  const TavCall call;
  return ReadExtra(app_control, key.c_str(), value);
} catch (...) {
  AnswerException(__func__);
  return false;
}

int tav_get_app_info_json(const char* app_id, char** json) try {
  const TavCall call;
  if (HasNull({app_id, json})) return kFailed;
  _APPS_INNER_INFO_T app;
  if (GetAppInnerInfo(app_id, &app) != 0) return kFailed;
  Json::Value root;
  root["app_info"].append(FullObject(app));
  const std::string text = Render(root);
  const int result = Deliver(text, json);
  if (result == 0) LogInPieces(text);
  return result;
} catch (...) {
  return AnswerException(__func__);
}

int tav_get_app_list_json(app_control_h app_control, char** json) try {
  const TavCall call;
  if (HasNull({json})) return kFailed;
  const std::string featured = Extra(app_control, "app_featured");
  const std::string view_mode = Extra(app_control, "view_mode");
  const bool is_built_in = Extra(app_control, "built_in_app") == "true";
  const bool is_all = Extra(app_control, "all_app") == "true";
  const bool is_test_only = Extra(app_control, "test_app_only") == "true";
  TAV_LOGI("app_featured %s, view_mode %s, built_in_app %d, all_app %d", featured.c_str(),
           view_mode.c_str(), is_built_in, is_all);

  std::vector<_APPS_INNER_INFO_T> list;
  const int result = is_built_in ? GetBuiltInAppList(list, is_test_only)
                                 : GetTAVAppList(featured, view_mode, is_all, list);
  // Deliberate: only -1 fails; after any other result the list is what was read.
  if (result == kFailed) {
    TAV_LOGE("tav_get_app_list_json fail");
    return kFailed;
  }
  if (list.empty()) {
    *json = nullptr;
    return 0;
  }
  Json::Value root;
  Json::Value& apps = root["app_list"];
  for (const _APPS_INNER_INFO_T& app : list) {
    apps.append(is_built_in ? BuiltInObject(app) : FullObject(app));
  }
  return Deliver(Render(root), json);
} catch (...) {
  return AnswerException(__func__);
}
