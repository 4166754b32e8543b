// SPDX-License-Identifier: Apache-2.0
//
// tavctl show-property: the library's answers about one app. The app's record is read first: it
// tells a clear flag from an unknown app, and it holds the keys that some questions need.
#include <json/value.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "output.h"
#include "tav_db_api.hpp"

namespace {

struct PropertyOptions {
  std::optional<std::string> id;
  std::vector<std::string> names;
  std::optional<std::string> native_id;
  std::optional<std::string> run_title;
  std::vector<std::string> ait;  // the organisation and the app, or nothing
  bool json = false;
};

// What the questions are asked with; what nobody gave is not there.
struct Keys {
  std::optional<std::string> app_id;
  std::optional<std::string> native_id;
  std::optional<std::string> run_title;
  std::optional<std::string> own_run_title;  // of the app's record
  std::vector<std::string> ait;
};

// False for a failure that is an answer here: the app itself is known to be there.
bool Succeeded(tav::Status status) {
  if (status == tav::Status::kBusy) CheckResult(status, "");
  return status == tav::Status::kOk;
}

Json::Value TextOrNull(const std::string& text) {
  return text.empty() ? Json::Value() : Json::Value(ValidUtf8(text));
}

Json::Value Answered(const tav::Result<tav::Text>& text) {
  return Succeeded(text.status()) ? TextOrNull(text->str()) : Json::Value();
}

template <typename Value>
Json::Value Answered(const tav::Result<Value>& value) {
  return Succeeded(value.status()) ? Json::Value(*value) : Json::Value();
}

Json::Value AskUsb(const Keys& keys) {
  return Answered(tav::CheckIsUsbApp(*keys.app_id));
}

Json::Value AskRating(const Keys& keys) {
  return Answered(tav::GetAppRating(*keys.app_id));
}

Json::Value AskPackageName(const Keys& keys) {
  if (keys.native_id->empty()) return {};
  return Answered(tav::GetPkgnameByNativeId(*keys.native_id));
}

Json::Value AskRunTitle(const Keys& keys) {
  if (keys.ait.empty()) return TextOrNull(*keys.own_run_title);
  return Answered(tav::GetAppRunTitleByAitId(keys.ait[0], keys.ait[1]));
}

Json::Value AskAppId(const Keys& keys) {
  if (keys.run_title->empty()) return {};
  return Answered(tav::GetAppIdByRunTitle(*keys.run_title));
}

Json::Value AskInstalled(const Keys& keys) {
  if (keys.run_title->empty()) return {};
  return Answered(tav::CheckAppInstalledByRunTitle(*keys.run_title));
}

template <tav::Answer (*kCall)(tav::TextView app_id)>
Json::Value AskFlag(const Keys& keys) {
  const tav::Answer answer = kCall(*keys.app_id);
  if (answer == tav::Answer::kBusy) CheckResult(tav::Status::kBusy, "");
  return answer == tav::Answer::kYes;
}

enum class Key { kNone, kApp, kNativeId, kRunTitle, kAit };

struct Property {
  const char* name;
  Key key;
  Json::Value (*ask)(const Keys& keys);  // null when there is no answer
  const char* origin;
};

constexpr Property kProperties[] = {
    {"isp", Key::kApp, AskFlag<tav::IsIspApp>, "tav_is_isp_app"},
    {"hybrid", Key::kApp, AskFlag<tav::IsHybridApp>, "tav_is_hybrid_app"},
    {"usb", Key::kApp, AskUsb, "tav_check_is_usb_app"},
    {"rating", Key::kApp, AskRating, "tav_get_app_rating"},
    {"package-name", Key::kNativeId, AskPackageName,
     "tav_get_pkgname_by_nativeid with the app's native id"},
    {"run-title", Key::kAit, AskRunTitle, "the record; with --ait tav_get_app_runtitle_by_ait_id"},
    {"app-id", Key::kRunTitle, AskAppId, "tav_get_appid_by_runtitle with the app's run title"},
    {"installed", Key::kRunTitle, AskInstalled, "tav_check_app_installed_by_runtitle, the same"},
    {"recently-used", Key::kApp, AskFlag<tav::CheckIsRecentlyUsedApp>,
     "tav_check_is_recently_used_app"},
    {"most-used", Key::kApp, AskFlag<tav::CheckIsMostUsedApp>, "tav_check_is_most_used_app"},
    {"emanual", Key::kNone, [](const Keys&) { return Answered(tav::GetEmanualId()); },
     "tav_get_emanual_id, the same for every app"},
};

bool IsKnown(Key key, const Keys& keys) {
  switch (key) {
    case Key::kApp:
      return keys.app_id.has_value();
    case Key::kNativeId:
      return keys.native_id.has_value();
    case Key::kRunTitle:
      return keys.run_title.has_value();
    case Key::kAit:
      return !keys.ait.empty() || keys.own_run_title.has_value();
    case Key::kNone:
      break;
  }
  return true;
}

const char* Needed(Key key) {
  switch (key) {
    case Key::kNativeId:
      return "ID or --native-id";
    case Key::kRunTitle:
      return "ID or --run-title";
    case Key::kAit:
      return "ID or --ait";
    default:
      return "ID";
  }
}

Keys FindKeys(const PropertyOptions& options) {
  Keys keys;
  if (options.id) {
    const tav::Result<tav::AppInfo> info = tav::GetAppInfo(*options.id);
    CheckFound(info.status(), "id", *options.id);
    keys.app_id = tav::TextOf(info->app_id);
    keys.native_id = tav::TextOf(info->native_id);
    keys.run_title = tav::TextOf(info->app_runtitle);
    keys.own_run_title = keys.run_title;
  }
  if (options.native_id) keys.native_id = options.native_id;
  if (options.run_title) keys.run_title = options.run_title;
  keys.ait = options.ait;
  return keys;
}

bool IsNamed(const Property& property, const PropertyOptions& options) {
  return std::find(options.names.begin(), options.names.end(), property.name) !=
         options.names.end();
}

// All properties, or those that were named. A named one has to have an answer.
std::vector<const Property*> Selected(const PropertyOptions& options) {
  std::vector<const Property*> selected;
  for (const Property& property : kProperties) {
    if (options.names.empty() || IsNamed(property, options)) selected.push_back(&property);
  }
  return selected;
}

std::string Readable(const Json::Value& answer) {
  if (answer.isNull()) return "-";
  return answer.isBool() ? YesOrNo(answer.asBool()) : Printable(answer.asString());
}

void RunShowProperty(const PropertyOptions& options) {
  if (!options.id && options.names.empty()) throw CLI::RequiredError("ID or --property");
  const Keys keys = FindKeys(options);
  Json::Value answers(Json::objectValue);
  std::vector<NamedText> lines;
  for (const Property* property : Selected(options)) {
    if (!IsKnown(property->key, keys)) {
      throw CLI::ValidationError(property->name, std::string("needs ") + Needed(property->key));
    }
    const Json::Value answer = property->ask(keys);
    if (answer.isNull() && !options.names.empty()) {
      CheckResult(tav::Status::kFailed, std::string("there is no answer for ") + property->name);
    }
    answers[property->name] = answer;
    lines.push_back({property->name, Readable(answer)});
  }
  if (options.json) {
    PrintJson(answers);
  } else {
    PrintAligned(lines);
  }
}

std::vector<std::string> PropertyNames() {
  std::vector<std::string> names;
  for (const Property& property : kProperties) names.emplace_back(property.name);
  return names;
}

std::string Footer() {
  std::string footer = "Each property comes from one call of the library:\n";
  for (const Property& property : kProperties) {
    std::string name = property.name;
    name.resize(15, ' ');
    footer += "  " + name + property.origin + "\n";
  }
  return footer + R"(
Without --property all of them are shown, and what has no answer is - (null in
JSON). A property that was named and has no answer is a failure.

The app's record gives the native id and the run title. --native-id, --run-title
and --ait give others in their place; a property that is asked with one of them,
and emanual, need no ID.

Examples:
  tavctl show-property org.example.clock
  tavctl show-property org.example.clock --property rating --property usb --json
  tavctl show-property --property installed --run-title HarbourNews
  tavctl show-property --property run-title --ait 1234 10
  tavctl show-property --property emanual)";
}

}  // namespace

void AddShowPropertyCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("show-property", "Show single properties of an app");
  const auto options = std::make_shared<PropertyOptions>();
  command->add_option("ID", options->id, "The app's id; its platform id is found as well");
  command->add_option("--property", options->names, "Show this property alone; may be repeated")
      ->option_text("NAME")
      ->allow_extra_args(false)
      ->check(CLI::IsMember(PropertyNames()));
  command
      ->add_option("--native-id", options->native_id,
                   "The native id to ask for a package name with")
      ->option_text("TEXT");
  command
      ->add_option("--run-title", options->run_title,
                   "The run title to ask for app-id and installed with")
      ->option_text("TEXT");
  command->add_option("--ait", options->ait, "The broadcast ids to ask for a run title with")
      ->option_text("ORG APP")
      ->type_size(2)
      ->expected(1);
  command->add_flag("--json", options->json, "Print one JSON object");
  command->footer(Footer());
  command->callback([options] { RunShowProperty(*options); });
}
