// SPDX-License-Identifier: Apache-2.0
//
// The name of the calling process, from its command line.
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "tav_common/tav_handles.h"
#include "tav_common/tav_log.h"
#include "tav_common/tav_proxy.h"

namespace {

constexpr char kNoName[] = "no_name";
constexpr std::size_t kLineSize = 1024;
constexpr std::size_t kProcPathSize = 254;

// The program's path as the command line gives it; false when it cannot be read.
bool ReadCommand(std::string& command) {
  char path[kProcPathSize];
  std::snprintf(path, sizeof(path), "/proc/%d/cmdline", getpid());
  const File file(std::fopen(path, "re"));
  if (file == nullptr) {
    TAV_LOGE("fopen failed!");
    return false;
  }
  char line[kLineSize] = {};
  if (std::fgets(line, sizeof(line), file.get()) == nullptr) {
    TAV_LOGE("fgets failed!");
    return false;
  }
  command = line;  // up to the end of the first argument
  return true;
}

std::string ProgramPath() {
  char path[kProcPathSize];
  std::snprintf(path, sizeof(path), "/proc/%d/exe", getpid());
  char target[kLineSize];
  const ssize_t length = readlink(path, target, sizeof(target));  // without a terminator
  if (length < 0) {
    TAV_LOGE("readlink failed!");
    return kNoName;
  }
  std::string name(target, static_cast<std::size_t>(length));
  if (name.size() == kLineSize) {
    TAV_LOGE("error.  len == 1024, path name is %s.", name.c_str());
  } else {
    TAV_LOGI("the path name is %s.", name.c_str());
  }
  return name;
}

}  // namespace

std::string getProcessName() {
  std::string command;
  if (!ReadCommand(command)) return kNoName;

  const std::size_t bin = command.find("/bin/");
  if (bin == std::string::npos || command.find("/apps/") == std::string::npos) {
    TAV_LOGI("NOT contain /apps/ or /bin/");
    return ProgramPath();
  }
  const std::string directory = command.substr(0, bin);
  const std::size_t slash = directory.rfind('/');
  std::string name = slash == std::string::npos ? "" : directory.substr(slash + 1);
  if (name.empty()) name = directory;
  TAV_LOGI("process name is %s.", name.c_str());
  return name;
}
