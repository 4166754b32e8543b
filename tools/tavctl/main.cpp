// SPDX-License-Identifier: Apache-2.0
//
// tavctl: what the library knows, on the command line. Reads the arguments and maps failures to
// exit statuses; each subcommand has a file of its own.
#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>

#include "commands.h"
#include "output.h"
#include "tav_db_api.h"

namespace {

constexpr char kFooter[] = R"(Examples:
  tavctl list --view title
  tavctl count --type 2
  tavctl info org.example.clock
  tavctl info --by run-title HarbourNews --json
  tavctl show-property org.example.clock
  tavctl lock org.example.clock
  tavctl watch
  tavctl doctor

Exit status: 0 done; 1 refused, not found, or the output could not be written;
2 wrong usage; 3 the database stayed busy. The causes stand in the platform log.)";

// A library of another layout would write past the records of this program.
void CheckRecordLayout() {
  if (get_size_of_tav_app_filter_s() != sizeof(tav_app_filter_s)) {
    throw CommandError(kRefused, "the library's filter has another size than this program's");
  }
  const unsigned int theirs = get_size_of_tav_app_info_s();
  if (theirs != sizeof(tav_app_info_s)) {
    throw CommandError(kRefused, "the library's app record has " + std::to_string(theirs) +
                                     " bytes, this program's has " +
                                     std::to_string(sizeof(tav_app_info_s)));
  }
}

int Run(int argc, char** argv) {
  CLI::App app("Shows and changes what the TV's web-app service keeps.");
  app.footer(kFooter);
  app.set_version_flag("--version", "tavctl " TAV_VERSION);
  app.require_subcommand(1);
  app.parse_complete_callback(CheckRecordLayout);
  AddListCommand(app);
  AddCountCommand(app);
  AddInfoCommand(app);
  AddShowPropertyCommand(app);
  AddBuiltInCommand(app);
  AddGroupCommand(app);
  AddExportCommand(app);
  AddChangeCommands(app);
  AddSettingsCommand(app);
  AddWatchCommand(app);
  AddSetSettingCommand(app);
  AddDoctorCommand(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::RuntimeError& answer) {
    return answer.get_exit_code();  // a command's own status, with its output made
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return app.exit(error);  // --help, --version
    std::cerr << Harmless(error.what()) << "\nRun with --help for more information.\n";
    return kUsage;
  }
  return kSuccess;
}

}  // namespace

std::string CheckWholeNumber(const std::string& text) {
  const std::size_t start = text.rfind('-', 0) == 0 ? 1 : 0;
  const bool is_number = text.size() > start &&
                         text.find_first_not_of("0123456789", start) == std::string::npos &&
                         (text[start] != '0' || text.size() == start + 1);
  return is_number ? "" : "\"" + Printable(text) + "\" is not a whole number";
}

void CheckResult(int result, const std::string& refusal) {
  if (result == 0) return;
  if (result == kLibraryBusy) throw CommandError(kBusy, "the database stayed busy");
  throw CommandError(kRefused, refusal + ", or the call was refused; the platform log says why");
}

void CheckFound(int result, const std::string& kind, const std::string& key) {
  CheckResult(result, "no app with the " + kind + " \"" + Printable(key) + "\" was found");
}

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that left is a write error like any other
  int status = kRefused;
  try {
    status = Run(argc, argv);
  } catch (const CommandError& error) {
    std::cerr << "tavctl: " << error.what() << "\n";
    status = error.Status();
  } catch (const std::exception& error) {
    std::cerr << "tavctl: " << error.what() << "\n";
  }
  if (!std::cout.flush()) {
    std::cerr << "tavctl: the output cannot be written\n";
    return kRefused;
  }
  return status;
}
