// SPDX-License-Identifier: Apache-2.0
//
// tavctl lock, unlock, rate, use, mark-updated and ticker: changes that the service is asked
// for. tavctl installing and updating: whether it is at work on an app.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "commands.h"
#include "output.h"
#include "tav_db_api.hpp"

namespace {

constexpr char kNoAnswer[] =
    R"(The service must be on the system bus; on a PC, tav-sandbox starts one:
  tav-sandbox -- sh -c 'tavctl lock org.example.clock && tavctl info org.example.clock')";

// What differs between the changes of an app that need no value.
struct AppChange {
  const char* name;
  const char* description;
  tav::Status (*call)(tav::TextView id);
};

constexpr AppChange kChanges[] = {
    {"lock", "Lock an app", [](tav::TextView id) { return tav::SetAppLock(id, true); }},
    {"unlock", "Take an app's lock away",
     [](tav::TextView id) { return tav::SetAppLock(id, false); }},
    {"use", "Count one more use of an app", tav::UpdateAppUseCount},
    {"mark-updated", "Mark an app as updated", tav::SetAppUpdated},
};

// What differs between the questions whether the service is at work on an app.
struct AppState {
  const char* name;
  const char* description;
  tav::Answer (*call)(tav::TextView id);
};

constexpr AppState kStates[] = {
    {"installing", "Tell whether an app, or one that it requires, is being installed or updated",
     tav::CheckAppInstalling},
    {"updating", "Tell whether an app is being updated", tav::CheckUpdatePopup},
};

void CheckChanged(tav::Status status, const std::string& id) {
  CheckResult(status, "the service did not change \"" + Printable(id) + "\"");
}

void AddChange(CLI::App& app, const AppChange& change) {
  CLI::App* command = app.add_subcommand(change.name, change.description);
  const auto id = std::make_shared<std::string>();
  command->add_option("ID", *id, "The app's id")->required();
  command->footer(kNoAnswer);
  command->callback([id, &change] { CheckChanged(change.call(*id), *id); });
}

void AddRate(CLI::App& app) {
  struct Options {
    std::string id;
    int rating = 0;
  };
  CLI::App* command = app.add_subcommand("rate", "Rate an app");
  const auto options = std::make_shared<Options>();
  command->add_option("ID", options->id, "The app's id")->required();
  command->add_option("RATING", options->rating, "A whole number")
      ->required()
      ->check(CheckWholeNumber);
  command->footer(kNoAnswer);
  command->callback(
      [options] { CheckChanged(tav::SetAppRating(options->id, options->rating), options->id); });
}

void RunTicker(const std::optional<int>& mode) {
  constexpr char kRefusal[] = "the service did not answer";
  if (mode) {
    CheckResult(tav::SetTickerMode(*mode), kRefusal);
    return;
  }
  const tav::Result<int> current = tav::GetTickerMode();
  CheckResult(current.status(), kRefusal);
  std::cout << *current << "\n";
}

void AddTicker(CLI::App& app) {
  CLI::App* command = app.add_subcommand("ticker", "Show the mode of the ticker, or set it");
  const auto mode = std::make_shared<std::optional<int>>();
  command->add_option("MODE", *mode, "The mode to set, a whole number")->check(CheckWholeNumber);
  command->footer(kNoAnswer);
  command->callback([mode] { RunTicker(*mode); });
}

void AddState(CLI::App& app, const AppState& state) {
  CLI::App* command = app.add_subcommand(state.name, state.description);
  const auto id = std::make_shared<std::string>();
  command->add_option("ID", *id, "The app's id, platform id, package name, native or Android id")
      ->required();
  command->footer(
      "Prints yes with exit status 0, or no with 1. An app that is not there is a no, and so is\n"
      "a refused call; while the database is busy, updating says yes and installing says no.");
  command->callback([id, &state] {
    const bool is_so = state.call(*id) == tav::Answer::kYes;
    std::cout << (is_so ? "yes" : "no") << "\n";
    if (!is_so) throw CLI::RuntimeError(kRefused);
  });
}

}  // namespace

void AddChangeCommands(CLI::App& app) {
  for (const AppChange& change : kChanges) AddChange(app, change);
  AddRate(app);
  AddTicker(app);
  for (const AppState& state : kStates) AddState(app, state);
}
