// SPDX-License-Identifier: Apache-2.0
// Settings as files: validation of keys, parsing, replacement in one step. Leans on GLib for the
// latter, so that no reader sees half a value and writers do not disturb each other.
#include "vconf_store.h"

#include <errno.h>
#include <glib.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

#include "common/device_root.h"
#include "common/handles.h"
#include "common/parse.h"
#include "common/read_file.h"
#include "dlog.h"
#include "vconf.h"

namespace tav_host {
namespace {

bool IsKeyCharacter(char c) {
  return g_ascii_isalnum(c) || (c != '\0' && strchr("_.-/", c));
}

bool IsKey(std::string_view key) {
  if (key.size() > VCONF_KEY_MAX || !std::all_of(key.begin(), key.end(), IsKeyCharacter)) {
    return false;
  }
  // An absolute path begins with an empty component.
  for (size_t start = 0; start <= key.size();) {
    const size_t end = std::min(key.find('/', start), key.size());
    const std::string_view component = key.substr(start, end - start);
    if (component.empty() || component == "." || component == "..") return false;
    start = end + 1;
  }
  return true;
}

bool FailWithErrno(const char* what, const std::string& path) {
  dlog_print(DLOG_ERROR, kVconfTag, "cannot %s %s: %s", what, path.c_str(), g_strerror(errno));
  return false;
}

// The value in a file's content, or nothing and why.
std::optional<Value> Parse(std::string_view content, const char** fault) {
  const size_t end_of_type = std::min(content.find('\n'), content.size());
  const std::string_view type = content.substr(0, end_of_type);
  std::string text(content.substr(std::min(end_of_type + 1, content.size())));
  // The writer's newline, which an editor may have left out; one only, others are the value's.
  if (!text.empty() && text.back() == '\n') text.pop_back();

  if (type == "int") {
    const auto number = ParseInt(text);
    if (number) return *number;
    *fault = "the value is no int";
  } else if (type == "string") {
    if (text.find('\0') == std::string::npos) return text;
    *fault = "the value holds a NUL byte";
  } else {
    *fault = "the first line is neither \"int\" nor \"string\"";
  }
  return std::nullopt;
}

}  // namespace

const char* TypeName(const Value& value) {
  return std::holds_alternative<int>(value) ? "int" : "string";
}

std::optional<Place> Locate(const char* key) {
  if (key == nullptr || !IsKey(key)) {
    dlog_print(DLOG_ERROR, kVconfTag, "not a key: %s", key == nullptr ? "(null)" : key);
    return std::nullopt;
  }
  Place place;
  place.key = key;
  place.root = DeviceRoot();
  const std::string path = place.root + "/vconf/" + key;
  const size_t slash = path.rfind('/');
  place.directory = path.substr(0, slash);
  place.name = path.substr(slash + 1);
  return place;
}

std::optional<Value> ReadValue(const Place& place) {
  const std::string path = place.Path();
  GErrorPtr error;
  const auto content = ReadFile(path, error);
  if (!content) {
    const bool missing = g_error_matches(error.get(), G_FILE_ERROR, G_FILE_ERROR_NOENT) &&
                         g_file_test(place.root.c_str(), G_FILE_TEST_IS_DIR);
    dlog_print(missing ? DLOG_DEBUG : DLOG_ERROR, kVconfTag, "cannot read %s: %s",
               place.key.c_str(), error->message);
    return std::nullopt;
  }
  const char* fault = nullptr;
  auto value = Parse(*content, &fault);
  if (!value) dlog_print(DLOG_ERROR, kVconfTag, "%s is malformed: %s", path.c_str(), fault);
  return value;
}

bool WriteValue(const Place& place, const Value& value) {
  if (g_mkdir_with_parents(place.directory.c_str(), 0755) != 0) {
    return FailWithErrno("make the directory", place.directory);
  }
  const auto* number = std::get_if<int>(&value);
  const std::string content = std::string(TypeName(value)) + "\n" +
                              (number ? std::to_string(*number) : std::get<std::string>(value)) +
                              "\n";
  GErrorPtr error;
  if (!g_file_set_contents_full(place.Path().c_str(), content.data(),
                                static_cast<gssize>(content.size()), G_FILE_SET_CONTENTS_CONSISTENT,
                                0644, Out(error))) {
    dlog_print(DLOG_ERROR, kVconfTag, "cannot set %s: %s", place.key.c_str(), error->message);
    return false;
  }
  return true;
}

bool RemoveValue(const Place& place) {
  const std::string path = place.Path();
  if (unlink(path.c_str()) == 0) return true;
  if (errno != ENOENT) return FailWithErrno("remove", path);
  dlog_print(DLOG_DEBUG, kVconfTag, "no %s to remove", place.key.c_str());
  return false;
}

}  // namespace tav_host
