// SPDX-License-Identifier: Apache-2.0
//
// tav-sandbox: devices on a PC. Reads the command line and maps failures to exit statuses.
#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>

#include "create.h"
#include "default_seed.h"

namespace {

constexpr int kSuccess = 0;
constexpr int kFailed = 1;
constexpr int kUsage = 2;

constexpr char kFooter[] = R"text(Examples:
  tav-sandbox --create /tmp/tv
  tav-sandbox --create /tmp/tv --seed my-apps.json
  eval "$(tav-sandbox --create /tmp/tv)" && tavctl info org.example.clock

Exit status: 0 done, 1 failed, 2 wrong usage.)text";

int Run(int argc, char** argv) {
  CLI::App app("Makes the directory that stands for a device on a PC.");
  app.footer(kFooter);
  app.set_version_flag("--version", "tav-sandbox " TAV_VERSION);
  std::string directory;
  std::string seed;
  app.add_option("--create", directory,
                 "Make a device in DIR, which must be empty or not exist, and print the shell line "
                 "that puts it to use")
      ->option_text("DIR")
      ->required();
  app.add_option("--seed", seed, "What the device holds (default: the seed that came along)")
      ->option_text("FILE");

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kSuccess : kUsage;
  }
  CreateDevice(directory, seed.empty() ? DefaultSeedPath() : seed);
  return kSuccess;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // a reader that left is a write error like any other
  int status = kFailed;
  try {
    status = Run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "tav-sandbox: " << error.what() << "\n";
  }
  if (!std::cout.flush()) {
    std::cerr << "tav-sandbox: the output cannot be written\n";
    return kFailed;
  }
  return status;
}
