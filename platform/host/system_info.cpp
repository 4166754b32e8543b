// SPDX-License-Identifier: Apache-2.0
// What is known of the device, from its key file.
#include "system_info.h"

#include <string.h>

#include "common/border.h"
#include "common/key_file.h"

namespace {

constexpr char kTag[] = "SYSTEM_INFO";
constexpr char kFile[] = "system-info.ini";
constexpr char kCustom[] = "custom";
constexpr char kValue[] = "value";

template <typename Body>
int Answer(const void* key, const void* value, Body&& body) {
  if (key == nullptr || value == nullptr) {
    dlog_print(DLOG_ERROR, kTag, "a null argument");
    return SYSTEM_INFO_ERROR_INVALID_PARAMETER;
  }
  return tav_host::AtBorder<int>(kTag, SYSTEM_INFO_ERROR_FAILED, [&] {
    return body(tav_host::KeyFile(kTag, kFile)) ? SYSTEM_INFO_ERROR_NONE : SYSTEM_INFO_ERROR_FAILED;
  });
}

bool ReadInt(const tav_host::KeyFile& file, const char* group, const char* key, int* value) {
  const auto number = file.Int(group, key);
  if (number) *value = *number;
  return number.has_value();
}

}  // namespace

int system_info_get_custom_string(const char* key, char** value) {
  return Answer(key, value, [&](const tav_host::KeyFile& file) {
    const auto text = file.Text(kCustom, key);
    char* copy = text ? strdup(text->c_str()) : nullptr;
    if (copy != nullptr) *value = copy;
    return copy != nullptr;
  });
}

int system_info_get_custom_int(const char* key, int* value) {
  return Answer(key, value,
                [&](const tav_host::KeyFile& file) { return ReadInt(file, kCustom, key, value); });
}

int system_info_get_value_int(system_info_key_e key, int* value) {
  return Answer(&key, value, [&](const tav_host::KeyFile& file) {
    return ReadInt(file, kValue, std::to_string(key).c_str(), value);
  });
}
