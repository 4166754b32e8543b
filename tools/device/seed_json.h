// SPDX-License-Identifier: Apache-2.0
//
// A JSON document that knows where its values stand in the file, so that a complaint about one
// of them can name its place. Leans on jsoncpp, whose exceptions end here.
#ifndef TOOLS_DEVICE_SEED_JSON_H_
#define TOOLS_DEVICE_SEED_JSON_H_

#include <json/value.h>

#include <cstddef>
#include <string>

namespace tav_device {

class SeedJson {
 public:
  // Reads and parses the file; throws DeviceError when it cannot or the text is not strict JSON.
  explicit SeedJson(const std::string& path);

  const Json::Value& Root() const { return m_root; }

  // Throws a DeviceError "file:line:column: field: why" about a value of this document.
  [[noreturn]] void Fail(const Json::Value& value, const std::string& field,
                         const std::string& why) const;

  // The same with "must be <what>, not <the value>".
  [[noreturn]] void FailToBe(const Json::Value& value, const std::string& field,
                             const std::string& what) const;

  // The value as what it has to be; Fail()s otherwise.
  const Json::Value& Object(const Json::Value& value, const std::string& field) const;
  const Json::Value& Array(const Json::Value& value, const std::string& field) const;
  std::string Text(const Json::Value& value, const std::string& field) const;
  int Integer(const Json::Value& value, const std::string& field) const;

 private:
  void Parse();

  std::string m_path;
  std::string m_text;
  Json::Value m_root;
};

}  // namespace tav_device

#endif  // TOOLS_DEVICE_SEED_JSON_H_
