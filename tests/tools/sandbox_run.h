// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the running sandboxes' tests: a place for temporary files of its own, in which
// nothing may be left behind.
#ifndef TESTS_TOOLS_SANDBOX_RUN_H_
#define TESTS_TOOLS_SANDBOX_RUN_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "device/process.h"
#include "support/bus.h"

namespace test {

using Arguments = std::vector<std::string>;

class SandboxRun : public testing::Test {
 protected:
  // What a command of a sandbox has told about it.
  struct Inside {
    std::string root;
    std::string bus;
  };

  SandboxRun();
  ~SandboxRun() override;

  // Starts tav-sandbox. Its output goes to the files <name>.out and <name>.err.
  std::unique_ptr<tav_device::Child> Start(const Arguments& arguments,
                                           const std::string& name = "sandbox") const;
  // The same to its end; returns its exit status.
  int Run(const Arguments& arguments) const;

  // Starts a sandbox whose command runs until it is ended, and waits for the command.
  std::unique_ptr<tav_device::Child> StartAndEnter(const Arguments& options, Inside* inside,
                                                   const std::string& name = "sandbox") const;

  std::string Out(const std::string& name = "sandbox") const { return Read(name + ".out"); }
  std::string Err(const std::string& name = "sandbox") const { return Read(name + ".err"); }
  std::string Read(const std::string& name) const;
  std::filesystem::path Write(const std::string& name, const std::string& content,
                              bool is_program = false) const;
  bool Exists(const std::string& name) const { return std::filesystem::exists(m_directory / name); }
  const std::filesystem::path& Directory() const { return m_directory; }
  // Whether the sandboxes have left nothing behind.
  bool IsClean() const;

  // Of the sandbox, from the next start on.
  std::map<std::string, std::optional<std::string>> environment;
  // What the shell that starts it does before, "ulimit -f 8; " or the like.
  std::string preparation;

 private:
  std::filesystem::path m_directory;
};

// Whether the process runs; one that nobody has waited for yet does not.
bool IsAlive(pid_t process);
// Whether it waits for something to happen.
bool IsAsleep(pid_t process);

}  // namespace test

#endif  // TESTS_TOOLS_SANDBOX_RUN_H_
