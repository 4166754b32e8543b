// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include <glib.h>

#include <CLI/CLI.hpp>
#include <iterator>
#include <memory>
#include <vector>

#include "say.h"

namespace tavcore {
namespace {

constexpr int kUsage = 2;
constexpr char kNoFile[] = "none";

constexpr tav_manual::Section kSections[] = {
    {"",
     R"text(tavcore-sim owns the service's name on the system bus, answers every request of libtav_db_api,
and writes the device. tav-sandbox starts it with a device and a bus of its own; nobody needs to
start it by hand.)text",
     tav_manual::Shown::kOnThePage},
    {"Faults",
     R"text(For METHOD, or '*' for every one that has none of its own:

  delay:MS            do it at once, answer after this time
  random-delay:MAXMS  do it at once, answer after a random time up to this
  error[:NAME]        answer with a D-Bus error
  status:N            answer with this status and do nothing
  wrong-type          answer with a tuple of another type
  no-reply            never answer
  exit                end the service during the call, as a crash does
  none                nothing, also when every other method has a fault)text"},
    {"Examples",
     R"text(  tav-sandbox -- tavctl list
  tavcore-sim --verbose --ready-file none
  tavcore-sim --fault 'set_app_lock=delay:3000' --fault heartbeat=error
  tavcore-sim --uninstalling org.example.gallery,org.example.weather)text"},
    {"Exit status",
     R"text(  0  ended by a signal
  1  failed
  2  wrong usage
  3  ended by the fault exit)text"},
    {"Environment",
     R"text(  TAV_DEVICE_ROOT          the directory of the device; tav-device under the user's data directory
                           when it is not set
  DBUS_SYSTEM_BUS_ADDRESS  the address of the bus, when it is not the system's)text"},
    {"Files",
     R"text(Under the directory of the device:

  dbspace/.tavcore.db            the database that it writes
  data/tavcore/uninstalling.txt  the built-in apps being uninstalled, an id a line

And on the PC itself:

  /run/tav_ready  is there while the service runs, when it may create it)text",
     tav_manual::Shown::kOnThePage},
    {"See also", "tav-sandbox(1), tavctl(1)", tav_manual::Shown::kOnThePage},
};

}  // namespace

tav_manual::Program Describe(Options& options, std::vector<std::string>& faults) {
  const auto app = std::make_shared<CLI::App>(
      "The reference service: answers the requests of libtav_db_api on a PC.", "tavcore-sim");
  const std::vector<tav_manual::Section> sections(std::begin(kSections), std::end(kSections));
  app->footer(tav_manual::HelpFooter(sections));
  app->set_version_flag("--version", "tavcore-sim " TAV_VERSION);
  app->add_option("--ready-file", options.ready_file,
                  "Create this file while the service is ready (default: /run/tav_ready)")
      ->option_text("PATH|none")
      ->take_last();
  app->add_option("--ready-fd", options.ready_descriptor,
                  "Write a line to this descriptor when the service is ready, and close it")
      ->option_text("FD")
      ->check(CLI::NonNegativeNumber)
      ->take_last();
  app->add_option("--uninstalling", options.uninstalling,
                  "The built-in apps being uninstalled, separated by commas (default: those of "
                  "the device's data/tavcore/uninstalling.txt, one a line)")
      ->option_text("IDS")
      ->take_last();
  app->add_option("--ticker-mode", options.ticker_mode, "The ticker mode at first (default: 0)")
      ->option_text("MODE")
      ->take_last();
  app->add_option("--busy-timeout", options.busy_milliseconds,
                  "Wait this long for a database that others hold (default: 2000)")
      ->option_text("MS")
      ->check(CLI::Range(0, 3600000))
      ->take_last();
  app->add_option("--fault", faults, "What is to go wrong, see below; repeatable")
      ->option_text("METHOD=KIND[:ARG]")
      ->expected(1)
      ->take_all();
  app->add_flag("--verbose", options.is_verbose, "Show every request on standard error");
  app->add_flag("--benchmark", options.is_benchmark,
                "Also give records over the bus, for the library's benchmarks");
  return {app,
          "libtav_db_api " TAV_VERSION,
          "the reference service of libtav_db_api",
          {"tavcore-sim [OPTIONS]"},
          sections};
}

CommandLine ReadCommandLine(int argc, char** argv) {
  CommandLine line;
  Options& options = line.options;
  std::vector<std::string> faults;
  const auto app = Describe(options, faults).app;
  try {
    app->parse(argc, argv);
    if (options.uninstalling && !g_utf8_validate(options.uninstalling->c_str(), -1, nullptr)) {
      throw CLI::ValidationError("--uninstalling", "not UTF-8");
    }
    for (const std::string& fault : faults) options.faults.Set(fault);
  } catch (const CLI::ParseError& error) {
    line.exit_status = app->exit(error) == 0 ? 0 : kUsage;
  } catch (const FaultError& error) {
    Say(error.what());
    line.exit_status = kUsage;
  }
  if (options.ready_file == kNoFile) options.ready_file.clear();
  return line;
}

}  // namespace tavcore
