// SPDX-License-Identifier: Apache-2.0
// Where a settings key lies on the disk, and its file's form.
#ifndef TAV_HOST_VCONF_STORE_H_
#define TAV_HOST_VCONF_STORE_H_

#include <optional>
#include <string>
#include <variant>

namespace tav_host {

constexpr char kVconfTag[] = "VCONF";

using Value = std::variant<int, std::string>;

// "int" or "string", as the first line of a file has it.
const char* TypeName(const Value& value);

// A valid key and its place under the device root that was in force when it was located.
struct Place {
  std::string key;
  std::string root;
  std::string directory;
  std::string name;  // of the file in `directory`

  std::string Path() const { return directory + "/" + name; }
};

// Each of these says a failure in the log, under kVconfTag. A key that does not exist is ordinary
// and said at debug priority alone.
std::optional<Place> Locate(const char* key);
std::optional<Value> ReadValue(const Place& place);
bool WriteValue(const Place& place, const Value& value);
bool RemoveValue(const Place& place);

}  // namespace tav_host

#endif  // TAV_HOST_VCONF_STORE_H_
