// SPDX-License-Identifier: Apache-2.0
//
// Writes a program's manual page and its completions, when the project is built. Linked with the
// options of one program, it knows that one.
#include <CLI/CLI.hpp>
#include <exception>
#include <fstream>
#include <iostream>
#include <string>

#include "manual/writers.h"

namespace {

constexpr int kFailed = 1;

void WriteFile(const std::string& path, const std::string& content) {
  std::ofstream file(path, std::ios::binary);
  file << content;
  file.close();
  if (!file) throw std::runtime_error(path + " cannot be written");
}

int Run(int argc, char** argv) {
  std::string page;
  std::string date;
  std::string bash;
  std::string zsh;
  CLI::App app("Writes the manual page and the completions of a program.");
  app.add_option("--page", page, "Where the page goes")->option_text("FILE");
  app.add_option("--date", date, "The date on it, 2026-11-21 for example")->option_text("DATE");
  app.add_option("--bash", bash, "Where the completion for bash goes")->option_text("FILE");
  app.add_option("--zsh", zsh, "Where the completion for zsh goes")->option_text("FILE");
  CLI11_PARSE(app, argc, argv);

  const tav_manual::Program program = tav_manual::DescribeProgram();
  const tav_manual::Command command = tav_manual::ReadCommand(*program.app);
  if (!page.empty()) WriteFile(page, tav_manual::ManualPage(program, command, date));
  if (!bash.empty()) WriteFile(bash, tav_manual::BashCompletion(command));
  if (!zsh.empty()) WriteFile(zsh, tav_manual::ZshCompletion(command));
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << argv[0] << ": " << error.what() << "\n";
    return kFailed;
  }
}
