// SPDX-License-Identifier: Apache-2.0
//
// tavctl settings: what the service publishes. tavctl set-setting: a change of a setting, to try
// on a PC how a program takes it.
#include <json/value.h>
#include <vconf.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <memory>
#include <string>

#include "commands.h"
#include "manual/values.h"
#include "output.h"
#include "platform.h"
#include "published_settings.h"
#include "table.h"

namespace {

constexpr TableColumn kSettingColumns[] = {{"KEY", "key"}, {"TYPE", "type"}, {"VALUE", "value"}};
constexpr char kUnset[] = "(unset)";

constexpr char kSetFooter[] =
    R"(For the PC only; a device's settings belong to its services.

Examples:
  tavctl set-setting memory/tav/app_install org.example.clock
  tavctl set-setting db/menu/system/screen --type int 3)";

// Null when the setting is missing or of another type.
Json::Value ValueOf(const PublishedSetting& setting) {
  if (setting.IsText()) {
    const tav::Result<tav::Text> text = setting.read_text();
    return text ? Json::Value(ValidUtf8(text->str())) : Json::Value();
  }
  const tav::Result<int> number = setting.read_int();
  return number ? Json::Value(*number) : Json::Value();
}

void RunSettings(bool is_json) {
  Json::Value rows(Json::arrayValue);
  for (const PublishedSetting& setting : kPublishedSettings) {
    Json::Value row(Json::objectValue);
    row["key"] = setting.key;
    row["type"] = setting.TypeName();
    row["value"] = ValueOf(setting);
    if (!is_json && row["value"].isNull()) row["value"] = kUnset;
    rows.append(row);
  }
  if (is_json) {
    PrintJson(rows);
  } else {
    PrintTable({std::begin(kSettingColumns), std::end(kSettingColumns)}, rows);
  }
}

constexpr char kInt[] = "int";
constexpr char kString[] = "string";

// The type that the service gives the setting, or that the setting has.
std::string TypeOf(const std::string& key) {
  if (const PublishedSetting* setting = FindPublishedSetting(key)) {
    return setting->TypeName();
  }
  int number = 0;
  if (vconf_get_int(key.c_str(), &number) == 0) return kInt;
  if (tav::Text(vconf_get_str(key.c_str()))) return kString;
  throw CommandError(kRefused, "there is no setting \"" + Printable(key) +
                                   "\"; to make it, say what it holds with --type");
}

int ToInt(const std::string& text) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [at, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || at != end) {
    throw CommandError(kUsage, "\"" + Printable(text) + "\" is no int");
  }
  return number;
}

void RunSetSetting(const std::string& key, const std::string& value,
                   const std::string& wanted_type) {
  if (!kIsOnPc) {
    throw CommandError(kRefused, "the settings of a device are not set from here");
  }
  const std::string type = wanted_type.empty() ? TypeOf(key) : wanted_type;
  const int result = type == kInt ? vconf_set_int(key.c_str(), ToInt(value))
                                  : vconf_set_str(key.c_str(), value.c_str());
  CheckResult(result == 0 ? tav::Status::kOk : tav::Status::kFailed,
              "the setting \"" + Printable(key) + "\" was not set");
}

}  // namespace

tav::Result<int> ReadAppChange() {
  int value = 0;
  const bool is_read = vconf_get_int("memory/tav/app_change", &value) == 0;
  return {is_read ? tav::Status::kOk : tav::Status::kFailed, value};
}

void AddSettingsCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("settings", "Show what the service publishes");
  const auto is_json = std::make_shared<bool>(false);
  command->add_flag("--json", *is_json, "Print a JSON array");
  command->callback([is_json] { RunSettings(*is_json); });
}

void AddSetSettingCommand(CLI::App& app) {
  struct Options {
    std::string key;
    std::string value;
    std::string type;
  };
  CLI::App* command = app.add_subcommand("set-setting", "Change a setting, on a PC");
  const auto options = std::make_shared<Options>();
  command->add_option("KEY", options->key, "The setting's key")
      ->required()
      ->check(tav_manual::Known(PublishedKeys()));
  command->add_option("VALUE", options->value, "The new value")->required();
  command
      ->add_option("--type", options->type,
                   "int or string, for a setting that is new and that the service does not publish")
      ->check(CLI::IsMember({kInt, kString}));
  command->footer(kSetFooter);
  command->callback([options] { RunSetSetting(options->key, options->value, options->type); });
}
