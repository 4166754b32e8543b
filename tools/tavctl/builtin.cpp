// SPDX-License-Identifier: Apache-2.0
//
// tavctl builtin: the catalogue of built-in apps. tavctl group: the app that a run title stands
// for in the group lists.
#include <json/value.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "output.h"
#include "table.h"
#include "tav_db_api_inner.h"

namespace {

constexpr TableColumn kBuiltinColumns[] = {
    {"ID", "app_id"},
    {"TITLE", "title", Shown::kText, 40},
    {"VERSION", "version"},
    {"PACKAGE", "package_name"},
    {"GROUP", "target_group_tag"},
    {"GROUP TYPE", "target_group_type"},
};

constexpr int kMemberInstalled = 0;
constexpr int kNoMember = 3;

constexpr char kBuiltInFooter[] =
    R"(Apps that are being uninstalled, and packages that are not offered on this device,
are left out. A version, an icon and a group are shown for installed packages.

Examples:
  tavctl builtin
  tavctl builtin --test-only --json)";

constexpr char kGroupFooter[] =
    R"(Prints the app's id and whether it is installed. Exit status 1 when the list does not
know the run title.

Examples:
  tavctl group HarbourNews
  tavctl group --android Kettle)";

Json::Value ToJson(const _APPS_INNER_INFO_T& app) {
  Json::Value object(Json::objectValue);
  object["app_id"] = ValidUtf8(app.strAppID);
  object["title"] = ValidUtf8(app.strTitle);
  object["version"] = ValidUtf8(app.strVersion);
  object["package_name"] = ValidUtf8(app.strPackageName);
  object["tizen_id"] = ValidUtf8(app.strTizenID);
  object["icon_path"] = ValidUtf8(app.strIconPath);
  object["target_group_tag"] = ValidUtf8(app.strTargetGroupTag);
  object["target_group_type"] = ValidUtf8(app.strTargetGroupType);
  return object;
}

void RunBuiltIn(bool is_test_only, bool is_json) {
  std::vector<_APPS_INNER_INFO_T> apps;
  CheckResult(static_cast<tav::Status>(GetBuiltInAppList(apps, is_test_only)),
              "the catalogue cannot be read");
  Json::Value rows(Json::arrayValue);
  for (const _APPS_INNER_INFO_T& app : apps) rows.append(ToJson(app));
  if (is_json) {
    PrintJson(rows);
  } else {
    PrintTable({std::begin(kBuiltinColumns), std::end(kBuiltinColumns)}, rows);
  }
}

void RunGroup(const std::string& run_title, bool is_android) {
  std::string app_id;
  int state = kNoMember;
  (is_android ? GetAppIDFromAndroidGroupList : GetAppIDFromAppGroupList)(run_title, app_id, state);
  if (state == kNoMember) {
    throw CommandError(kRefused,
                       "no group list holds the run title \"" + Printable(run_title) + "\"");
  }
  std::cout << Printable(app_id) << "  "
            << (state == kMemberInstalled ? "installed" : "not installed") << "\n";
}

}  // namespace

void AddBuiltInCommand(CLI::App& app) {
  struct Options {
    bool is_test_only = false;
    bool is_json = false;
  };
  CLI::App* command = app.add_subcommand("builtin", "Show the catalogue of built-in apps");
  const auto options = std::make_shared<Options>();
  command->add_flag("--test-only", options->is_test_only, "Show its test apps alone");
  command->add_flag("--json", options->is_json, "Print a JSON array");
  command->footer(kBuiltInFooter);
  command->callback([options] { RunBuiltIn(options->is_test_only, options->is_json); });
}

void AddGroupCommand(CLI::App& app) {
  struct Options {
    std::string run_title;
    bool is_android = false;
  };
  CLI::App* command = app.add_subcommand("group", "Show the app that a run title stands for");
  const auto options = std::make_shared<Options>();
  command->add_option("RUNTITLE", options->run_title, "The run title")->required();
  command->add_flag("--android", options->is_android, "Look in the list of Android apps");
  command->footer(kGroupFooter);
  command->callback([options] { RunGroup(options->run_title, options->is_android); });
}
