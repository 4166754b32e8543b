// SPDX-License-Identifier: Apache-2.0
//
// What main and the subcommands agree on: the exit statuses, and one function for each
// subcommand that adds it to the command line.
#ifndef TOOLS_TAVCTL_COMMANDS_H_
#define TOOLS_TAVCTL_COMMANDS_H_

#include <stdexcept>
#include <string>

#include "tav_db_api.hpp"

namespace CLI {
class App;
}

enum ExitStatus {
  kSuccess = 0,
  kRefused = 1,  // refused, not found, or the output could not be written
  kUsage = 2,
  kBusy = 3,
};

// Ends a subcommand: main prints the text and exits with the status.
class CommandError : public std::runtime_error {
 public:
  CommandError(ExitStatus status, const std::string& text)
      : std::runtime_error(text), m_status(status) {}
  ExitStatus Status() const { return m_status; }

 private:
  ExitStatus m_status;
};

// A check for CLI11: a decimal number, as people write it.
std::string CheckWholeNumber(const std::string& text);

// Throws what a failed call of the library means: busy, or the refusal; every failure but busy has
// its cause in the platform log alone. Does nothing for a success.
void CheckResult(tav::Status status, const std::string& refusal);

// CheckResult for a lookup by one kind of key.
void CheckFound(tav::Status status, const std::string& kind, const std::string& key);

// Each runs its work from CLI11's callback and throws CommandError.
void AddBuiltInCommand(CLI::App& app);
void AddChangeCommands(CLI::App& app);
void AddCountCommand(CLI::App& app);
void AddDoctorCommand(CLI::App& app);
void AddExportCommand(CLI::App& app);
void AddGroupCommand(CLI::App& app);
void AddInfoCommand(CLI::App& app);
void AddListCommand(CLI::App& app);
void AddSetSettingCommand(CLI::App& app);
void AddSettingsCommand(CLI::App& app);
void AddShowPropertyCommand(CLI::App& app);
void AddWatchCommand(CLI::App& app);

#endif  // TOOLS_TAVCTL_COMMANDS_H_
