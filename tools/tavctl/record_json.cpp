// SPDX-License-Identifier: Apache-2.0
//
// The library's records as JSON objects.
#include "record_json.h"

#include "output.h"
#include "record_fields.h"

namespace {

constexpr char kId[] = "app_id";
constexpr char kMultiScreen[] = "is_multi_screen2";

}  // namespace

Json::Value ToJson(const tav::AppInfo& info) {
  Json::Value object(Json::objectValue);
  for (const RecordField& field : kRecordFields) {
    if (field.kind == FieldKind::kText) {
      object[field.name] = ValidUtf8(TextOf(info, field));
    } else {
      object[field.name] = IntegerOf(info, field);
    }
  }
  return object;
}

Json::Value ToJson(const tav::MultiScreenApp& app) {
  Json::Value object(Json::objectValue);
  object[kId] = ValidUtf8(std::string(tav::TextOf(app.app_id)));
  object[kMultiScreen] = app.is_multi_screen2;
  return object;
}

std::vector<std::string> InfoFieldNames() {
  std::vector<std::string> names;
  for (const RecordField& field : kRecordFields) names.emplace_back(field.name);
  return names;
}

std::vector<std::string> MultiScreenFieldNames() {
  return {kId, kMultiScreen};
}
