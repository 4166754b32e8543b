// SPDX-License-Identifier: Apache-2.0
// A launch request's extra data, kept in memory.
#include "app_control.h"

#include <string.h>

#include <map>
#include <string>

#include "common/border.h"

struct app_control_s {
  std::map<std::string, std::string> extras;
};

namespace {

constexpr char kTag[] = "APP_CONTROL";

// Runs `body` unless an argument is null.
template <typename Body>
int Answer(std::initializer_list<const void*> arguments, Body&& body) {
  for (const void* argument : arguments) {
    if (argument == nullptr) {
      dlog_print(DLOG_ERROR, kTag, "a null argument");
      return APP_CONTROL_ERROR_INVALID_PARAMETER;
    }
  }
  return tav_host::AtBorder<int>(kTag, APP_CONTROL_ERROR_FAILED, body);
}

}  // namespace

int app_control_create(app_control_h* app_control) {
  return Answer({app_control}, [&] {
    *app_control = new app_control_s;
    return APP_CONTROL_ERROR_NONE;
  });
}

int app_control_destroy(app_control_h app_control) {
  return Answer({app_control}, [&] {
    delete app_control;
    return APP_CONTROL_ERROR_NONE;
  });
}

int app_control_add_extra_data(app_control_h app_control, const char* key, const char* value) {
  return Answer({app_control, key, value}, [&] {
    app_control->extras[key] = value;
    return APP_CONTROL_ERROR_NONE;
  });
}

int app_control_get_extra_data(app_control_h app_control, const char* key, char** value) {
  return Answer({app_control, key, value}, [&] {
    const auto found = app_control->extras.find(key);
    if (found == app_control->extras.end()) return APP_CONTROL_ERROR_KEY_NOT_FOUND;
    char* copy = strdup(found->second.c_str());
    if (copy == nullptr) return APP_CONTROL_ERROR_FAILED;
    *value = copy;
    return APP_CONTROL_ERROR_NONE;
  });
}
