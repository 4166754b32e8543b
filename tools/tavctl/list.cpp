// SPDX-License-Identifier: Apache-2.0
//
// tavctl list: the library's lists as a table, as JSON or as comma-separated values.
#include <json/value.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "commands.h"
#include "device/schema.h"
#include "filter_options.h"
#include "manual/values.h"
#include "output.h"
#include "record_json.h"
#include "table.h"
#include "tav_db_api.hpp"

namespace {

struct View {
  const char* name;
  tav::ViewMode mode;
};

constexpr View kViews[] = {
    {"most-used", tav::ViewMode::kMostUsed},
    {"catalogue", tav::ViewMode::kCatalogue},
    {"last-downloaded", tav::ViewMode::kLastDownloaded},
    {"title", tav::ViewMode::kTitle},
    {"title-desc", tav::ViewMode::kTitleDescending},
    {"recent", tav::ViewMode::kRecentlyLaunched},
};

constexpr std::size_t kWidestTitle = 40;

constexpr TableColumn kInfoColumns[] = {
    {"ID", "app_id"},
    {"TITLE", "app_title", Shown::kText, kWidestTitle},
    {"VERSION", "app_version"},
    {"RUN TITLE", "app_runtitle"},
    {"TYPE", "type"},
    {"LOCK", "is_lock", Shown::kFlag},
    {"INDEX", "app_index", Shown::kNumber},
    {"USES", "use_count", Shown::kNumber},
};
constexpr TableColumn kHiddenColumn = {"HIDDEN", "is_hidden", Shown::kFlag};
constexpr TableColumn kMultiScreenColumns[] = {
    {"ID", "app_id"},
    {"MULTI SCREEN", "is_multi_screen2", Shown::kNumber},
};

constexpr char kUnreadable[] = "the list cannot be read";
constexpr char kRefusedPage[] = "the filter is not valid, or the offset is past the last app";

constexpr char kListFooter[] =
    R"(VIEW is most-used, catalogue, last-downloaded, title, title-desc or recent, or
the number 0 to 5 that stands for it. With last-downloaded, --offset and --limit
cut the catalogue first, and what is left is put in order; with --multi-screen
as well, the order is that of the install dates.

COLUMN is the exact name of a column of the service's apps table, for example
is_lock, is_usb_app or is_hidden. Like --all, --key shows hidden apps.

The table writes control characters in titles out, for example \n or \x1b, and
cuts long titles on a terminal. --csv is RFC 4180: a header, lines that end in
CR LF, quotes where they are needed, texts as valid UTF-8 and not escaped. --json
and --csv hold every field of the record, by its name there. An empty list is
no failure.

Examples:
  tavctl list
  tavctl list --view title --offset 20 --limit 10
  tavctl list --type 4 --csv
  tavctl list --all --json
  tavctl list --recent 3
  tavctl list --key is_usb_app)";

struct ListOptions {
  tav::Filter filter;
  tav::ViewMode view = tav::ViewMode::kCatalogue;
  tav::Page page;
  bool all = false;
  bool multi_screen = false;
  std::optional<int> recent;
  std::optional<std::string> key;
  bool json = false;
  bool csv = false;
};

// A list as JSON objects, and how people and programs see it.
struct Listing {
  Json::Value rows = Json::Value(Json::arrayValue);
  std::vector<TableColumn> columns;
  std::vector<std::string> names;
};

template <typename Record>
Json::Value Rows(const tav::Result<tav::List<Record>>& list, const char* refusal) {
  CheckResult(list.status(), refusal);
  Json::Value rows(Json::arrayValue);
  for (const Record& record : *list) rows.append(ToJson(record));
  return rows;
}

Json::Value ReadInfos(const ListOptions& options) {
  if (options.all) return Rows(tav::GetAllAppList(), kUnreadable);
  if (options.recent) return Rows(tav::GetRecentlyUsedAppList(*options.recent), kUnreadable);
  if (options.key) return Rows(tav::GetKeyList(*options.key, options.page.count), kUnreadable);
  return Rows(tav::GetAppList(options.filter, options.view, options.page), kRefusedPage);
}

Listing InfoListing(const ListOptions& options) {
  Listing listing;
  listing.rows = ReadInfos(options);
  listing.columns.assign(std::begin(kInfoColumns), std::end(kInfoColumns));
  if (options.all || options.key) listing.columns.push_back(kHiddenColumn);
  listing.names = InfoFieldNames();
  return listing;
}

Listing MultiScreenListing(const ListOptions& options) {
  Listing listing;
  listing.rows = Rows(tav::GetAppListMs(options.filter, options.view, options.page), kRefusedPage);
  listing.columns.assign(std::begin(kMultiScreenColumns), std::end(kMultiScreenColumns));
  listing.names = MultiScreenFieldNames();
  return listing;
}

void RunList(const ListOptions& options) {
  const Listing listing = options.multi_screen ? MultiScreenListing(options) : InfoListing(options);
  if (options.json) {
    PrintJson(listing.rows);
  } else if (options.csv) {
    PrintCsv(listing.names, listing.rows);
  } else {
    PrintTable(listing.columns, listing.rows);
  }
}

// The library puts the name into its statement as it is: no other text may reach it.
std::string CheckColumn(std::string& name) {
  const bool is_known =
      std::any_of(std::begin(tav_device::kAppColumns), std::end(tav_device::kAppColumns),
                  [&](const tav_device::Column& column) { return name == column.name; });
  return is_known ? "" : "the apps table has no column \"" + Printable(name) + "\"";
}

std::vector<std::string> ColumnNames() {
  std::vector<std::string> names;
  for (const tav_device::Column& column : tav_device::kAppColumns) names.emplace_back(column.name);
  return names;
}

std::vector<std::string> ViewNames() {
  std::vector<std::string> names;
  for (const View& view : kViews) names.emplace_back(view.name);
  return names;
}

// Puts the mode in a view's place, as a number. Returns what is wrong, or nothing.
std::string TranslateView(std::string& view) {
  for (const View& known : kViews) {
    const std::string mode = std::to_string(static_cast<int>(known.mode));
    if (view != known.name && view != mode) continue;
    view = mode;
    return "";
  }
  return "there is no view \"" + Printable(view) + "\"";
}

void Exclude(CLI::Option* option, const std::vector<CLI::Option*>& others) {
  for (CLI::Option* other : others) option->excludes(other);
}

void AddSelection(CLI::App& command, ListOptions& options) {
  const CLI::Range from_zero(0, std::numeric_limits<int>::max());
  std::vector<CLI::Option*> paged = AddFilterOptions(command, options.filter);
  paged.push_back(command.add_option("--view", options.view, "The order (default: catalogue)")
                      ->type_name("INT")
                      ->option_text("VIEW")
                      ->transform(tav_manual::OneOf(TranslateView, ViewNames())));
  paged.push_back(command.add_option("--offset", options.page.index, "Leave the first N apps out")
                      ->option_text("N")
                      ->check(from_zero));
  CLI::Option* limit =
      command.add_option("--limit", options.page.count, "At most N apps (default: 0, all)")
          ->option_text("N")
          ->check(from_zero);
  paged.push_back(
      command.add_flag("--multi-screen", options.multi_screen, "Multi-screen records instead"));

  CLI::Option* all = command.add_flag("--all", options.all,
                                      "All apps, hidden ones as well, the last downloaded first");
  CLI::Option* recent =
      command
          .add_option("--recent", options.recent,
                      "The N used apps that were launched last; 0: all that were used")
          ->option_text("N")
          ->check(from_zero);
  CLI::Option* key = command.add_option("--key", options.key, "The apps whose COLUMN is 1")
                         ->option_text("COLUMN")
                         ->check(tav_manual::OneOf(CheckColumn, ColumnNames()));
  Exclude(key, paged);
  paged.push_back(limit);
  Exclude(recent, paged);
  Exclude(all, paged);
  Exclude(all, {recent, key});
  recent->excludes(key);
}

}  // namespace

void AddListCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("list", "List the apps");
  const auto options = std::make_shared<ListOptions>();
  AddSelection(*command, *options);
  CLI::Option* json =
      command->add_flag("--json", options->json, "Print a JSON array of objects with all fields");
  command->add_flag("--csv", options->csv, "Print comma-separated values with all fields")
      ->excludes(json);
  command->footer(kListFooter);
  command->callback([options] { RunList(*options); });
}
