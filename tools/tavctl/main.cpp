// SPDX-License-Identifier: Apache-2.0
//
// tavctl: what the library knows, on the command line. Maps failures to exit statuses.
#include <poll.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <csignal>
#include <exception>
#include <iostream>
#include <string>

#include "commands.h"
#include "manual/program.h"
#include "output.h"

namespace {

int Run(int argc, char** argv) {
  const tav_manual::Program program = tav_manual::DescribeProgram();
  try {
    program.app->parse(argc, argv);
  } catch (const CLI::RuntimeError& answer) {
    return answer.get_exit_code();  // a command's own status, with its output made
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) return program.app->exit(error);  // --help, --version
    std::cerr << Harmless(error.what()) << "\nRun with --help for more information.\n";
    return kUsage;
  }
  return kSuccess;
}

// Whether standard output is a pipe or a socket that nobody reads any more.
bool HasReaderLeft() {
  pollfd out = {STDOUT_FILENO, POLLOUT, 0};
  return poll(&out, 1, 0) == 1 && (out.revents & (POLLERR | POLLHUP)) != 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);  // what has begun is done, although its output is not read
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
    if (HasReaderLeft()) {  // tavctl list | head: a quiet end, as of any other program
      std::signal(SIGPIPE, SIG_DFL);
      std::raise(SIGPIPE);
    }
    std::cerr << "tavctl: the output cannot be written\n";
    return kRefused;
  }
  return status;
}
