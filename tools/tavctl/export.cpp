// SPDX-License-Identifier: Apache-2.0
//
// tavctl export: the library's own JSON text of a list of apps or of one, and its XML file.
#include <app_control.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "commands.h"
#include "tav_db_api.hpp"

namespace {

struct ExportOptions {
  std::optional<int> featured;
  std::optional<int> view;
  bool is_all = false;
  bool is_built_in = false;
  bool is_test_only = false;
  std::string app;
};

struct DestroyRequest {
  void operator()(app_control_h request) const { app_control_destroy(request); }
};
using Request = std::unique_ptr<app_control_s, DestroyRequest>;

constexpr char kExportFooter[] = R"(Examples:
  tavctl export json --featured 65535 --view 3
  tavctl export json --all
  tavctl export json --built-in --test-only
  tavctl export json --app org.example.clock
  tavctl export xml)";

void AddExtra(const Request& request, const char* key, const std::string& value) {
  if (app_control_add_extra_data(request.get(), key, value.c_str()) != APP_CONTROL_ERROR_NONE) {
    throw CommandError(kRefused, std::string("the request cannot carry ") + key);
  }
}

Request MakeRequest(const ExportOptions& options) {
  app_control_h created = nullptr;
  if (app_control_create(&created) != APP_CONTROL_ERROR_NONE) {
    throw CommandError(kRefused, "no request can be made");
  }
  Request request(created);
  if (options.featured) AddExtra(request, "app_featured", std::to_string(*options.featured));
  if (options.view) AddExtra(request, "view_mode", std::to_string(*options.view));
  if (options.is_all) AddExtra(request, "all_app", "true");
  if (options.is_built_in) AddExtra(request, "built_in_app", "true");
  if (options.is_test_only) AddExtra(request, "test_app_only", "true");
  return request;
}

void ExportApp(const std::string& id) {
  const tav::Result<tav::Text> json = tav::GetAppInfoJson(id);
  CheckFound(json.status(), "id", id);
  std::cout << json->view() << "\n";
}

void ExportList(const ExportOptions& options) {
  const Request request = MakeRequest(options);
  const tav::Result<tav::Text> json = tav::GetAppListJson(request.get());
  CheckResult(json.status(), "the list cannot be exported");
  // The library gives no text for no app; a program that reads the output wants a document.
  std::cout << (json->has_value() ? json->view() : R"({"app_list" : []})") << "\n";
}

void ExportXml() {
  const tav::Result<tav::Text> path = tav::WriteAllAppInfoToXml();
  CheckResult(path.status(), "the file cannot be written");
  std::cout << path->view() << "\n";
}

}  // namespace

void AddExportCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("export", "Export the apps as JSON or XML");
  command->require_subcommand(1);
  command->footer(kExportFooter);

  const auto options = std::make_shared<ExportOptions>();
  CLI::App* json =
      command->add_subcommand("json", "Print the library's JSON text of a list or an app");
  auto* featured = json->add_option("--featured", options->featured,
                                    "Bit set over 1, 2, 4 and 8; 65535 for every app");
  auto* view = json->add_option("--view", options->view, "The view mode, 0 to 4");
  auto* all = json->add_flag("--all", options->is_all, "All installed apps, hidden ones too");
  auto* built_in = json->add_flag("--built-in", options->is_built_in, "The built-in catalogue");
  json->add_flag("--test-only", options->is_test_only, "Its test apps alone")->needs(built_in);
  auto* app_id = json->add_option("--app", options->app, "One app, by any of its ids");
  for (auto* other : {featured, view}) other->excludes(all)->excludes(built_in);
  all->excludes(built_in);
  for (auto* other : {featured, view, all, built_in}) app_id->excludes(other);
  json->callback([options, app_id] {
    if (app_id->count() > 0) {
      ExportApp(options->app);
    } else {
      ExportList(*options);
    }
  });

  CLI::App* xml = command->add_subcommand("xml", "Write the XML file and print its path");
  xml->callback(ExportXml);
}
