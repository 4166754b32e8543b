// SPDX-License-Identifier: Apache-2.0
//
// tavctl count: how many apps there are.
#include <json/value.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "commands.h"
#include "filter_options.h"
#include "output.h"
#include "tav_db_api.hpp"

namespace {

constexpr char kCountFooter[] = R"(Hidden apps are not counted.

Examples:
  tavctl count
  tavctl count --featured 1 --type 2
  tavctl count --json)";

struct CountOptions {
  tav::Filter filter;
  bool json = false;
};

void RunCount(const CountOptions& options) {
  const tav::Result<int> count = tav::GetAppCount(options.filter);
  CheckResult(count.status(), "the filter is not valid");
  if (options.json) {
    Json::Value object(Json::objectValue);
    object["count"] = *count;
    PrintJson(object);
  } else {
    std::cout << *count << "\n";
  }
}

}  // namespace

void AddCountCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("count", "Show how many apps there are");
  const auto options = std::make_shared<CountOptions>();
  AddFilterOptions(*command, options->filter);
  command->add_flag("--json", options->json, "Print one JSON object with the member count");
  command->footer(kCountFooter);
  command->callback([options] { RunCount(*options); });
}
