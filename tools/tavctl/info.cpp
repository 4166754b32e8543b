// SPDX-License-Identifier: Apache-2.0
//
// tavctl info: one app's record, for people or as JSON.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "output.h"
#include "record_fields.h"
#include "record_json.h"
#include "tav_db_api.hpp"

namespace {

struct Lookup {
  const char* kind;  // the word after --by
  tav::Result<tav::AppInfo> (*find)(tav::TextView id);
};

constexpr Lookup kLookups[] = {
    {"id", tav::GetAppInfo},
    {"tizen-id", tav::GetAppInfoByTizenId},
    {"run-title", tav::GetAppInfoByRunTitle},
};

// What people ask for first; the other fields follow in the record's order.
constexpr const char* kFirstFields[] = {"app_title",    "app_id", "app_version",
                                        "app_runtitle", "type",   "is_lock"};

constexpr char kInfoFooter[] =
    R"(Fields are shown by their names in tav_app_info_s, the most asked-for
first. Empty texts are left out; --json shows every field. Control characters
in texts are written out, for example \n or \x1b.

Examples:
  tavctl info org.example.clock
  tavctl info --by run-title HarbourNews
  tavctl info --json org.example.clock)";

struct InfoOptions {
  std::string id;
  std::string kind = kLookups[0].kind;
  bool json = false;
};

tav::Result<tav::AppInfo> Find(const InfoOptions& options) {
  const auto* lookup = std::find_if(std::begin(kLookups), std::end(kLookups),
                                    [&](const Lookup& l) { return options.kind == l.kind; });
  tav::Result<tav::AppInfo> info = lookup->find(options.id);
  CheckFound(info.status(), options.kind, options.id);
  return info;
}

bool IsFirst(const RecordField& field) {
  return std::any_of(std::begin(kFirstFields), std::end(kFirstFields),
                     [&](const char* name) { return std::strcmp(name, field.name) == 0; });
}

std::vector<const RecordField*> ReadingOrder() {
  std::vector<const RecordField*> order;
  for (const char* name : kFirstFields) {
    for (const RecordField& field : kRecordFields) {
      if (std::strcmp(name, field.name) == 0) order.push_back(&field);
    }
  }
  for (const RecordField& field : kRecordFields) {
    if (!IsFirst(field)) order.push_back(&field);
  }
  return order;
}

void PrintReadable(const tav::AppInfo& info) {
  std::vector<NamedText> lines;
  for (const RecordField* field : ReadingOrder()) {
    const std::string value = field->kind == FieldKind::kText
                                  ? Printable(TextOf(info, *field))
                                  : std::to_string(IntegerOf(info, *field));
    if (!value.empty()) lines.push_back({field->name, value});
  }
  PrintAligned(lines);
}

void RunInfo(const InfoOptions& options) {
  const tav::Result<tav::AppInfo> info = Find(options);
  if (options.json) {
    PrintJson(ToJson(*info));
  } else {
    PrintReadable(*info);
  }
}

std::vector<std::string> LookupKinds() {
  std::vector<std::string> kinds;
  for (const Lookup& lookup : kLookups) kinds.push_back(lookup.kind);
  return kinds;
}

}  // namespace

void AddInfoCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("info", "Show one app's record");
  const auto options = std::make_shared<InfoOptions>();
  command->add_option("ID", options->id, "The app's id; its platform id is found as well")
      ->required();
  command->add_option("--by", options->kind, "What ID is: id (the default), tizen-id or run-title")
      ->option_text("KIND")
      ->check(CLI::IsMember(LookupKinds()));
  command->add_flag("--json", options->json, "Print one JSON object with all fields");
  command->footer(kInfoFooter);
  command->callback([options] { RunInfo(*options); });
}
