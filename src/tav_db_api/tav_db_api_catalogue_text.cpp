// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_api_catalogue_text.h"

#include <json/reader.h>
#include <json/value.h>

#include <algorithm>
#include <array>
#include <memory>

#include "tav_common/tav_log.h"

namespace {

// The reader gives up on a document that is nested too deeply by throwing.
bool ParseJson(const std::string& text, Json::Value& root) try {
  const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
  std::string errors;
  return reader->parse(text.data(), text.data() + text.size(), &root, &errors);
} catch (const Json::Exception&) {
  return false;
}

// The member of an object; null for anything else, which a document is free to hold.
const Json::Value& MemberOf(const Json::Value& value, const char* key) {
  return value.isObject() ? value[key] : Json::Value::nullSingleton();
}

std::string TextOf(const Json::Value& entry, const char* key) {
  const Json::Value& member = MemberOf(entry, key);
  return member.isConvertibleTo(Json::stringValue) ? member.asString() : "";
}

}  // namespace

bool ParseCatalogue(const std::string& text, std::vector<_APPS_INNER_INFO_T>& apps) {
  Json::Value root;
  if (!ParseJson(text, root)) {
    TAV_LOGE("reader.parse json err, json file is %s\n!", text.c_str());
    return false;
  }
  const Json::Value& answer = MemberOf(root, "rsp");
  if (TextOf(answer, "stat") != "ok") {
    TAV_LOGE("builtin apps Json info stat is not ok");
    return false;
  }
  const Json::Value& entries = MemberOf(answer, "apps");
  if (!entries.isArray()) return true;
  for (const Json::Value& entry : entries) {
    if (!entry.isObject()) continue;
    _APPS_INNER_INFO_T app;
    app.strAppID = TextOf(entry, "id");
    app.strTizenID = TextOf(entry, "tizenId");
    app.strPackageName = TextOf(entry, "packageId");
    app.strTitle = TextOf(entry, "title");
    apps.push_back(std::move(app));
  }
  return true;
}

void ParseTestApps(const std::string& text, std::map<std::string, _APPS_INNER_INFO_T>& apps) {
  std::size_t start = 0;
  while (start < text.size()) {
    const std::size_t end = std::min(text.find(';', start), text.size());
    const std::string entry = text.substr(start, end - start) + ",";
    start = end + 1;

    std::array<std::string, 4> fields;
    std::size_t count = 0;
    for (std::size_t from = 0, comma;
         count < fields.size() && (comma = entry.find(',', from)) != std::string::npos;
         from = comma + 1) {
      fields[count++] = entry.substr(from, comma - from);
    }
    if (count < fields.size()) continue;
    const auto& [id, version, type, tag] = fields;
    TAV_LOGI("appid %s, version %s, type %s, tag %s", id.c_str(), version.c_str(), type.c_str(),
             tag.c_str());
    _APPS_INNER_INFO_T app;
    app.strAppID = id;
    app.strVersion = version;
    app.strTargetGroupType = type;
    app.strTargetGroupTag = tag;
    apps.emplace(id, std::move(app));
  }
}
