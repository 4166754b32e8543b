// SPDX-License-Identifier: Apache-2.0
#include "options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iterator>
#include <memory>

namespace {

constexpr int kUsage = 2;

constexpr tav_manual::Section kSections[] = {
    {"",
     R"text(The command runs with TAV_DEVICE_ROOT and DBUS_SYSTEM_BUS_ADDRESS set: a device made from
the seed, a bus of its own, and the reference service on it. All three are gone when it ends; so
are bus and service, but not the directory under $TMPDIR or /tmp, when tav-sandbox itself is
killed with SIGKILL. Without a command a shell runs. Any number of sandboxes may run at once.)text"},
    {"Examples",
     R"text(  tav-sandbox -- tavctl list
  tav-sandbox --seed my-apps.json -- ./my-program --its-option
  tav-sandbox --service-option=--fault=set_app_lock=delay:3000 -- ./my-program
  tav-sandbox
  tav-sandbox --create /tmp/tv --seed my-apps.json
  eval "$(tav-sandbox --create /tmp/tv)" && tavctl info org.example.clock)text"},
    {"Exit status",
     R"text(That of the command, when one was run. Otherwise:

  0      done
  1      failed
  2      wrong usage
  126    the command is no program
  127    the command is not found
  128+N  the signal N ended the command, or tav-sandbox before it had started it)text"},
    {"Environment",
     R"text(  SHELL   the shell that runs without a command; /bin/sh when it is not set
  TMPDIR  where the devices are made; /tmp when it is not set)text"},
    {"Files",
     R"text(  share/tav_db_api/device.json  under the prefix, the default seed: some forty invented
                                apps
  /run/tav_ready                what the library looks for before it asks the service which
                                built-in apps are being uninstalled)text",
     tav_manual::Shown::kOnThePage},
    {"See also", "tavctl(1), tavcore-sim(1)", tav_manual::Shown::kOnThePage},
};

}  // namespace

tav_manual::Program Describe(Options& options) {
  const auto app = std::make_shared<CLI::App>(
      "Runs a command in a throw-away device: tav-sandbox [OPTIONS] -- COMMAND...\n"
      "or makes a device that stays: tav-sandbox --create DIR",
      "tav-sandbox");
  const std::vector<tav_manual::Section> sections(std::begin(kSections), std::end(kSections));
  app->footer(tav_manual::HelpFooter(sections));
  app->set_version_flag("--version", "tav-sandbox " TAV_VERSION);
  app->add_option("--seed", options.seed,
                  "What the device holds (default: the seed that came along)")
      ->option_text("FILE");
  auto* ready_file =
      app->add_option("--ready-file", options.ready_file,
                      "Let the service create this file while it is ready; the library looks for "
                      "/run/tav_ready, which all sandboxes share (default: none)")
          ->option_text("PATH|none");
  auto* service_option = app->add_option("--service-option", options.service_options,
                                         "Start the service with this option too; repeatable")
                             ->option_text("OPTION")
                             ->expected(1)
                             ->take_all();
  app->add_option(
         "--create", options.directory,
         "Make a device in DIR, which must be empty or not exist, and print the shell line "
         "that puts it to use")
      ->option_text("DIR")
      ->excludes(ready_file)
      ->excludes(service_option);
  return {app,
          "libtav_db_api " TAV_VERSION,
          "run a command in a throw-away device",
          {"tav-sandbox [OPTIONS] [-- COMMAND [ARGUMENT]...]",
           "tav-sandbox --create DIR [--seed FILE]"},
          sections};
}

CommandLine ReadCommandLine(int argc, char** argv) {
  CommandLine line;
  Options& options = line.options;
  const auto app = Describe(options).app;

  // What comes behind the first "--" is the command's, options and further "--" included.
  char** const end = argv + argc;
  char** const dashes = std::find(argv, end, std::string("--"));
  if (dashes != end) options.command.assign(dashes + 1, end);
  try {
    app->parse(static_cast<int>(dashes - argv), argv);
    if (app->count("--create") > 0 && (options.directory.empty() || !options.command.empty())) {
      throw CLI::ValidationError("--create", "needs a directory and runs no command");
    }
  } catch (const CLI::ParseError& error) {
    line.exit_status = app->exit(error) == 0 ? 0 : kUsage;
  }
  return line;
}
