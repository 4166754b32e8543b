// SPDX-License-Identifier: Apache-2.0
//
// The fixture of tavctl doctor's tests: a sound device, of which each test spoils something.
#ifndef TESTS_TOOLS_TAVCTL_DOCTOR_TEST_H_
#define TESTS_TOOLS_TAVCTL_DOCTOR_TEST_H_

#include <unistd.h>

#include <filesystem>
#include <string>
#include <vector>

#include "program_test.h"

namespace test {

inline constexpr char kSoundDevice[] = R"({
  "apps": [{"id": "clock"}, {"id": "weather", "is_hidden": 1}],
  "settings": {"db/comss/appkey": "key", "db/comss/kestranaversion": "5.0",
               "db/tav/app_sync_status": 1, "db/tav/factory_reset": 0, "memory/tav/appsync": 1,
               "db/homedeck/reset/tavcore": 0, "memory/tav/app_install": "clock",
               "memory/tav/app_change": 0}})";

class TavctlDoctor : public ProgramTest {
 protected:
  TavctlDoctor() { MakeDevice(kSoundDevice); }

  // Runs it on the device with a bus that is not there; the prefix is what a shell puts before
  // the command.
  Result Doctor(const std::string& prefix = "") const {
    return Shell(
        "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nowhere/bus " + prefix + " tavctl_with_markers doctor",
        {Directory()});
  }

  // The same after a shell command in the test's directory that takes something from its owner.
  // Root runs it without the capabilities for which file modes do not count.
  Result AsAnybody(const std::string& command) const {
    const std::string bounded =
        getuid() == 0 ? "setpriv --bounding-set -dac_override,-dac_read_search " : "";
    return Shell("cd \"$1\" && " + command + " && " +
                     "DBUS_SYSTEM_BUS_ADDRESS=unix:path=/nowhere/bus " + bounded +
                     "tavctl_with_markers doctor; status=$?; chmod -R u+w .; exit $status",
                 {Directory()});
  }

  // Runs a script in a sandbox with a service; $T is tavctl.
  Result InSandbox(const std::string& script, std::vector<std::string> options = {}) const {
    std::vector<std::string> arguments = {"--seed", Write("seed.json", kSoundDevice)};
    arguments.insert(arguments.end(), options.begin(), options.end());
    for (const std::string& word : {std::string("--"), std::string("/bin/sh"), std::string("-c"),
                                    "T=tavctl_with_markers; " + script}) {
      arguments.push_back(word);
    }
    return Sandbox(arguments);
  }

  void WriteBelowDevice(const std::string& path, const std::string& content) const {
    const std::filesystem::path file = Device() / path;
    std::filesystem::create_directories(file.parent_path());
    Write(std::filesystem::relative(file, Directory()), content);
  }
};

}  // namespace test

#endif  // TESTS_TOOLS_TAVCTL_DOCTOR_TEST_H_
