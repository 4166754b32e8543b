// SPDX-License-Identifier: Apache-2.0
// Where the device's files lie on a PC; see the header.
#include "device_root.h"

#include <glib.h>
#include <pwd.h>
#include <stdlib.h>
#include <unistd.h>

#include <vector>

namespace tav_host {
namespace {

constexpr char kBelowHome[] = "/.local/share/tav-device";

// The home directory that the system has for the user whose rights the program has; empty when it
// has none.
std::string HomeOfUser() {
  std::vector<char> texts(16384);
  passwd entry = {};
  passwd* found = nullptr;
  getpwuid_r(geteuid(), &entry, texts.data(), texts.size(), &found);
  return found != nullptr ? found->pw_dir : "";
}

// Null when the variable is unset or empty, and in a program that runs with more rights than its
// caller: he must not choose the files that it writes.
const char* Variable(const char* name) {
  const char* value = secure_getenv(name);
  return value != nullptr && *value != '\0' ? value : nullptr;
}

}  // namespace

std::string DeviceRoot() {
  if (const char* root = Variable("TAV_DEVICE_ROOT")) return root;
  // g_get_user_data_dir() would keep the answer of its first call, and heeds the environment of
  // every program. A relative XDG_DATA_HOME counts as none, as that convention wants.
  const char* data = Variable("XDG_DATA_HOME");
  if (data != nullptr && g_path_is_absolute(data)) return std::string(data) + "/tav-device";
  if (const char* home = Variable("HOME")) return std::string(home) + kBelowHome;
  return HomeOfUser() + kBelowHome;
}

}  // namespace tav_host
