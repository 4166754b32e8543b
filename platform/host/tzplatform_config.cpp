// SPDX-License-Identifier: Apache-2.0
// The platform's directories on a PC: all lie under the device root.
#include "tzplatform_config.h"

#include <mutex>
#include <set>
#include <string>

#include "common/border.h"
#include "common/device_root.h"

namespace {

constexpr char kTag[] = "TZPLATFORM_CONFIG";

constexpr struct {
  int id;
  const char* path;
} kDirectories[] = {
    {TZPLATFORM_DATA_DIRECTORY, "/data"},
    {TZPLATFORM_DATABASE_DIRECTORY, "/dbspace"},
    {TZPLATFORM_CONFIGURATION_DIRECTORY, "/etc"},
};

// One text for each path ever asked for, never freed: callers keep it for as long as they live.
// Deliberate: g_intern_string() does the same under locks that thread sanitizers cannot see.
const char* Interned(std::string path) {
  static auto& mutex = *new std::mutex;
  static auto& texts = *new std::set<std::string>;
  const std::lock_guard<std::mutex> lock(mutex);
  return texts.insert(std::move(path)).first->c_str();
}

}  // namespace

const char* tzplatform_getenv(enum tzplatform_variable id) {
  return tav_host::AtBorder<const char*>(kTag, nullptr, [&]() -> const char* {
    for (const auto& directory : kDirectories) {
      if (directory.id == id) return Interned(tav_host::DeviceRoot() + directory.path);
    }
    dlog_print(DLOG_ERROR, kTag, "no directory has the number %d", static_cast<int>(id));
    return nullptr;
  });
}
