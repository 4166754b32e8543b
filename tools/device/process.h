// SPDX-License-Identifier: Apache-2.0
//
// Other programs as children: started with a changed environment, ended with their parent.
#ifndef TOOLS_DEVICE_PROCESS_H_
#define TOOLS_DEVICE_PROCESS_H_

#include <sys/types.h>

#include <chrono>
#include <csignal>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "device/error.h"

namespace tav_device {

// A program that could not be started, with the exit status that shells have for it: 127 when it
// was not found, 126 when it is no program.
class StartError : public DeviceError {
 public:
  StartError(const std::string& program, int error_number);
  int Status() const { return m_status; }
  bool IsMissing() const;

 private:
  int m_status;
};

struct Launch {
  // The first is the program, looked for in PATH unless it is a path.
  std::vector<std::string> arguments;
  // Changes to this process's environment; one without a value is removed.
  std::map<std::string, std::optional<std::string>> environment;
  // In the background: a session of its own, no input, and its output goes to standard error.
  bool is_background = false;
  // In the background, a file that takes all output instead; empty: none.
  std::string output_file;
  // What the child gets when the thread that started it ends.
  int death_signal = SIGTERM;
  // A descriptor that the child inherits, or -1.
  int kept_descriptor = -1;
};

class Child {
 public:
  // Starts the program. Throws StartError.
  explicit Child(const Launch& launch);
  ~Child();  // kills what still runs
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t Id() const { return m_id; }
  bool IsRunning() { return !Status(); }
  // What a shell would call its exit status, 128 and the signal's number after a signal; nothing
  // while it runs.
  std::optional<int> Status();
  // Nothing happens to a child that has ended.
  void Signal(int signal);
  int Wait();
  std::optional<int> WaitFor(std::chrono::milliseconds time);
  // Asks it to end, and kills it when it has not after the time.
  int End(std::chrono::milliseconds time);

 private:
  void Ask(int options);

  pid_t m_id = -1;
  std::optional<int> m_status;
};

struct ReadyChild {
  std::unique_ptr<Child> child;
  std::string line;
};

// Starts a program in the background and waits until it has written a line to the descriptor
// whose number it gets behind `option` ("--ready-fd=7"). Throws StartError, and DeviceError when
// the program ends before or the time passes.
ReadyChild StartUntilReady(Launch launch, const std::string& option,
                           std::chrono::milliseconds time);

}  // namespace tav_device

#endif  // TOOLS_DEVICE_PROCESS_H_
