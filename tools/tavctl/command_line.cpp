// SPDX-License-Identifier: Apache-2.0
//
// tavctl's command line as a whole. Each subcommand has a file of its own.
#include <CLI/CLI.hpp>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "manual/program.h"
#include "tav_db_api.hpp"

namespace {

constexpr tav_manual::Section kSections[] = {
    {"",
     R"(tavctl asks libtav_db_api what an application would ask it, and prints the answers: for people,
and with --json or --csv for programs. Changes are asked of the service over the system bus.
On a PC, tav-sandbox makes a device to try it on.)",
     tav_manual::Shown::kOnThePage},
    {"Examples",
     R"(  tavctl list --view title
  tavctl count --type 2
  tavctl info org.example.clock
  tavctl info --by run-title HarbourNews --json
  tavctl show-property org.example.clock
  tavctl lock org.example.clock
  tavctl watch
  tavctl doctor)"},
    {"Exit status",
     R"(  0  done
  1  refused, not found, or the output could not be written; the causes stand in the platform log
  2  wrong usage
  3  the database stayed busy)"},
    {"Environment",
     R"(  TAV_DEVICE_ROOT          on a PC, the directory of the device; tav-device under the user's
                           data directory when it is not set
  DBUS_SYSTEM_BUS_ADDRESS  the address of the bus that the service is on
  DLOG_LEVEL               on a PC, which lines of the platform log are shown: V, D, I, W, E, F or
                           S; W when it is not set
  DLOG_FILE                on a PC, a file that gets these lines as well)"},
    {"Files",
     R"(On a PC, under the directory of the device:

  dbspace/.tavcore.db                 the service's database
  vconf                               the settings, a file each
  data/tavcore/common/apps_info.xml   what export xml writes)",
     tav_manual::Shown::kOnThePage},
    {"See also", "tav-sandbox(1), tavcore-sim(1), tav_db_api(3)", tav_manual::Shown::kOnThePage},
};

// A library of another layout would write past the records of this program.
void CheckRecordLayout() {
  if (tav::GetSizeOfAppFilter() != sizeof(tav_app_filter_s)) {
    throw CommandError(kRefused, "the library's filter has another size than this program's");
  }
  const std::size_t theirs = tav::GetSizeOfAppInfo();
  if (theirs != sizeof(tav::AppInfo)) {
    throw CommandError(kRefused, "the library's app record has " + std::to_string(theirs) +
                                     " bytes, this program's has " +
                                     std::to_string(sizeof(tav::AppInfo)));
  }
}

}  // namespace

tav_manual::Program tav_manual::DescribeProgram() {
  const auto app = std::make_shared<CLI::App>(
      "Shows and changes what the TV's web-app service keeps.", "tavctl");
  const std::vector<tav_manual::Section> sections(std::begin(kSections), std::end(kSections));
  app->footer(tav_manual::HelpFooter(sections));
  app->set_version_flag("--version", "tavctl " TAV_VERSION);
  app->require_subcommand(1);
  app->parse_complete_callback(CheckRecordLayout);
  AddListCommand(*app);
  AddCountCommand(*app);
  AddInfoCommand(*app);
  AddShowPropertyCommand(*app);
  AddBuiltInCommand(*app);
  AddGroupCommand(*app);
  AddExportCommand(*app);
  AddChangeCommands(*app);
  AddSettingsCommand(*app);
  AddWatchCommand(*app);
  AddSetSettingCommand(*app);
  AddDoctorCommand(*app);
  return {app,
          "libtav_db_api " TAV_VERSION,
          "show and change what the TV's web-app service keeps",
          {"tavctl [--help] [--version] COMMAND [OPTIONS] [ARGUMENTS]"},
          sections};
}
