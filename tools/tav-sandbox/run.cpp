// SPDX-License-Identifier: Apache-2.0
//
// One after the other: directory, device, bus, service, command; and back in the other order.
#include "run.h"

#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "device/bus.h"
#include "device/process.h"
#include "device/root.h"
#include "device/seed.h"
#include "signals.h"

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;
using Environment = std::map<std::string, std::optional<std::string>>;

constexpr std::chrono::seconds kStartTime(20);
constexpr std::chrono::seconds kEndTime(5);
constexpr Clock::time_point kNever = Clock::time_point::max();
constexpr int kSignalled = 128;
constexpr int kRemovals = 100;

class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    m_path = (fs::absolute(fs::temp_directory_path()) / "tav-sandbox-XXXXXX").string();
    if (mkdtemp(m_path.data()) == nullptr) {
      throw tav_device::DeviceError(m_path + " cannot be made");
    }
  }
  ~TemporaryDirectory() {
    std::error_code error;
    // What outlives the command by moments may still write here.
    for (int attempt = 0; attempt < kRemovals; ++attempt) {
      fs::remove_all(m_path, error);
      if (error != std::errc::directory_not_empty) break;
    }
    if (error) std::cerr << "tav-sandbox: " << m_path << " stays: " << error.message() << "\n";
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

// A child of the sandbox that ends in peace.
class Service {
 public:
  Service(const Options& options, const Environment& environment) {
    // Beside this program, so that an installed tree may be moved.
    const fs::path program = fs::read_symlink("/proc/self/exe").parent_path() / "tavcore-sim";
    tav_device::Launch launch;
    launch.arguments = {program.string(), "--ready-file", options.ready_file};
    launch.arguments.insert(launch.arguments.end(), options.service_options.begin(),
                            options.service_options.end());
    launch.environment = environment;
    m_child = tav_device::StartUntilReady(launch, "--ready-fd", kStartTime).child;
  }
  ~Service() { m_child->End(kEndTime); }
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  // Tells once that it has ended although nobody asked it to.
  void Watch() {
    const std::optional<int> status = m_child->Status();
    if (!status || m_is_end_told) return;
    m_is_end_told = true;
    std::cerr << "tav-sandbox: the service has ended with status " << *status << "\n";
  }

 private:
  std::unique_ptr<tav_device::Child> m_child;
  bool m_is_end_told = false;
};

// As poll takes them: -1 for no limit.
int MillisecondsUntil(Clock::time_point deadline) {
  if (deadline == kNever) return -1;
  const auto left =
      std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
  return left < 0 ? 0 : static_cast<int>(left);
}

// Returns when the command has ended. Signals are passed on to it; one that means the end gives
// it some time, then it is killed.
int WaitForCommand(tav_device::Child& command, Service& service, Signals& signals) {
  Clock::time_point deadline = kNever;
  while (true) {
    if (const auto status = command.Status()) return *status;
    service.Watch();
    const auto signal = signals.Wait(MillisecondsUntil(deadline));
    if (Clock::now() >= deadline) {
      command.Signal(SIGKILL);
      deadline = kNever;
    }
    if (!signal || signal->number == SIGCHLD) continue;
    if (!signal->is_from_terminal || signal->number == SIGHUP) command.Signal(signal->number);
    const bool is_the_end = signal->number == SIGTERM || signal->number == SIGHUP;
    if (is_the_end && deadline == kNever) deadline = Clock::now() + kEndTime;
  }
}

tav_device::Launch CommandLaunch(const Options& options, const Environment& environment) {
  tav_device::Launch launch;
  launch.arguments = options.command;
  launch.environment = environment;
  if (options.command.empty()) {
    const char* shell = std::getenv("SHELL");
    launch.arguments = {shell == nullptr || *shell == '\0' ? "/bin/sh" : shell};
    launch.death_signal = SIGHUP;  // a shell at a terminal does not heed SIGTERM
  }
  return launch;
}

}  // namespace

int RunInSandbox(const Options& options) {
  const tav_device::Seed seed = tav_device::ReadSeedFile(options.seed);
  Signals signals;
  const TemporaryDirectory place;
  const std::string root = tav_device::CreateDeviceRoot(place.Path() + "/device", seed);
  tav_device::PrivateBus bus(place.Path());
  const Environment environment = {{tav_device::kRootVariable, root},
                                   {tav_device::kBusVariable, bus.Address()}};
  Service service(options, environment);
  while (const auto signal = signals.Wait(0)) {  // it came during the start
    if (signal->number != SIGCHLD) return kSignalled + signal->number;
  }

  const tav_device::Launch launch = CommandLaunch(options, environment);
  if (options.command.empty() && isatty(STDIN_FILENO) == 1) {
    std::cerr << "tav-sandbox: the device is " << root << "; it goes when this shell ends\n";
  }
  try {
    tav_device::Child command(launch);
    return WaitForCommand(command, service, signals);
  } catch (const tav_device::StartError& error) {
    std::cerr << "tav-sandbox: " << error.what() << "\n";
    return error.Status();
  }
}
