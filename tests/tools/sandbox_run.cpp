// SPDX-License-Identifier: Apache-2.0
#include "sandbox_run.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>

namespace test {

namespace fs = std::filesystem;

namespace {

// As ps shows it; '\0' for a process that is not there.
char StateOf(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string all;
  std::getline(file, all, '\0');  // nothing of a process that ends meanwhile
  const std::size_t name_end = all.rfind(')');
  return name_end != std::string::npos && name_end + 2 < all.size() ? all[name_end + 2] : '\0';
}

}  // namespace

SandboxRun::SandboxRun() {
  std::string name = fs::canonical(fs::temp_directory_path()) / "tav-run-XXXXXX";
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary directory");
  m_directory = name;
  fs::create_directory(m_directory / "tmp");
  environment = {{"TMPDIR", m_directory / "tmp"},
                 {"DBUS_SYSTEM_BUS_ADDRESS", std::nullopt},
                 {"TAV_DEVICE_ROOT", std::nullopt},
                 {"LC_ALL", "C.UTF-8"},
                 {"PATH", "/usr/bin:/bin"}};
}

SandboxRun::~SandboxRun() {
  if (HasFailure()) {
    for (const auto& entry : fs::directory_iterator(m_directory)) {
      if (entry.path().extension() != ".err") continue;
      std::cerr << "=== " << entry.path().stem().string() << "\n" << Read(entry.path().filename());
    }
  }
  std::error_code ignored;
  fs::remove_all(m_directory, ignored);
}

std::unique_ptr<tav_device::Child> SandboxRun::Start(const Arguments& arguments,
                                                     const std::string& name) const {
  tav_device::Launch launch;
  launch.arguments = {"/bin/sh", "-c", preparation + R"(exec "$@" >"$0.out" 2>"$0.err" </dev/null)",
                      m_directory / name, TAV_SANDBOX};
  launch.arguments.insert(launch.arguments.end(), arguments.begin(), arguments.end());
  launch.environment = environment;
  return std::make_unique<tav_device::Child>(launch);
}

int SandboxRun::Run(const Arguments& arguments) const {
  const auto status = Start(arguments)->WaitFor(kBusDeadline);
  if (!status) throw std::runtime_error("the sandbox does not end");
  return *status;
}

std::unique_ptr<tav_device::Child> SandboxRun::StartAndEnter(const Arguments& options,
                                                             Inside* inside,
                                                             const std::string& name) const {
  const std::string script = R"sh(
    printf '%s\n' "$TAV_DEVICE_ROOT" "$DBUS_SYSTEM_BUS_ADDRESS" >"$1.part"
    mv "$1.part" "$1"
    exec sleep 1000)sh";
  const fs::path told = m_directory / (name + ".inside");
  Arguments arguments = options;
  arguments.insert(arguments.end(), {"--", "/bin/sh", "-c", script, "sh", told});
  auto sandbox = Start(arguments, name);
  WaitUntil([&] { return fs::exists(told) || !sandbox->IsRunning(); });
  std::ifstream file(told);
  std::getline(file, inside->root);
  std::getline(file, inside->bus);
  if (inside->bus.empty()) throw std::runtime_error("the command does not start: " + Err(name));
  return sandbox;
}

std::string SandboxRun::Read(const std::string& name) const {
  std::ifstream file(m_directory / name, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), {});
}

fs::path SandboxRun::Write(const std::string& name, const std::string& content,
                           bool is_program) const {
  fs::path path = m_directory / name;
  fs::create_directories(path.parent_path());
  std::ofstream(path, std::ios::binary) << content;
  if (is_program) fs::permissions(path, fs::perms::owner_all);
  return path;
}

bool SandboxRun::IsClean() const {
  return fs::is_empty(m_directory / "tmp");
}

bool IsAlive(pid_t process) {
  const char state = StateOf(process);
  return state != '\0' && state != 'Z' && state != 'X';
}

bool IsAsleep(pid_t process) {
  return StateOf(process) == 'S';
}

}  // namespace test
