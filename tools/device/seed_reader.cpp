// SPDX-License-Identifier: Apache-2.0
//
// From the JSON of a seed to its records: every member is known, of its type and in range, or
// the file is refused.
#include <algorithm>
#include <cctype>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "device/seed.h"
#include "device/seed_json.h"
#include "device/suggestion.h"

namespace tav_device {
namespace {

bool ContainsOnlyNameCharacters(const std::string& text, const char* more) {
  const std::string allowed = std::string("._-") + more;
  for (const char c : text) {
    if (!std::isalnum(static_cast<unsigned char>(c)) && allowed.find(c) == std::string::npos) {
      return false;
    }
  }
  return !text.empty();
}

// A setting's key is a relative path of plain names, since each key becomes a file.
bool IsSettingKey(const std::string& key) {
  if (!ContainsOnlyNameCharacters(key, "/")) return false;
  for (std::size_t begin = 0; begin <= key.size();) {
    const std::size_t end = std::min(key.find('/', begin), key.size());
    const std::string part = key.substr(begin, end - begin);
    if (part.empty() || part == "." || part == "..") return false;
    begin = end + 1;
  }
  return true;
}

class SeedReader {
 public:
  explicit SeedReader(const std::string& path) : m_json(path) {}

  Seed Read() {
    const Json::Value& root = m_json.Object(m_json.Root(), "the seed");
    for (auto it = root.begin(); it != root.end(); ++it) ReadMember(it.name(), *it);
    return std::move(m_seed);
  }

 private:
  using Handler = void (SeedReader::*)(const Json::Value&, const std::string& field);
  struct Member {
    const char* name;
    Handler read;
  };

  void ReadMember(const std::string& name, const Json::Value& value) {
    static constexpr Member kMembers[] = {
        {"apps", &SeedReader::ReadApps},         {"config", &SeedReader::ReadConfig},
        {"settings", &SeedReader::ReadSettings}, {"features", &SeedReader::ReadFeatures},
        {"packages", &SeedReader::ReadPackages}, {"blacklist", &SeedReader::ReadBlacklist},
        {"$schema", &SeedReader::CheckText},
    };
    std::vector<std::string> names;
    for (const Member& member : kMembers) {
      if (name == member.name) return (this->*member.read)(value, name);
      names.emplace_back(member.name);
    }
    FailAsUnknown(value, name, name, names);
  }

  void ReadApps(const Json::Value& apps, const std::string& field) {
    std::set<std::string> ids;
    for (Json::ArrayIndex i = 0; i < m_json.Array(apps, field).size(); ++i) {
      const std::string app_field = field + "[" + std::to_string(i) + "]";
      m_seed.apps.push_back(ReadApp(apps[i], app_field));
      if (!ids.insert(std::get<std::string>(m_seed.apps.back().cells[kIdColumn])).second) {
        m_json.Fail(apps[i]["id"], app_field + ".id", "another app has the same id");
      }
    }
  }

  App ReadApp(const Json::Value& columns, const std::string& field) {
    App app;
    for (auto it = m_json.Object(columns, field).begin(); it != columns.end(); ++it) {
      const std::string column_field = field + "." + it.name();
      const auto column = FindColumn(it.name());
      if (!column) FailAsNoColumn(*it, column_field, it.name());
      app.cells[*column] = ReadCell(kAppColumns[*column].kind, *it, column_field);
    }
    const auto* id = std::get_if<std::string>(&app.cells[kIdColumn]);
    if (id == nullptr || id->empty()) m_json.Fail(columns, field + ".id", "every app needs an id");
    return app;
  }

  Cell ReadCell(ColumnKind kind, const Json::Value& value, const std::string& field) {
    if (value.isNull()) return std::monostate();
    if (kind == ColumnKind::kText) return m_json.Text(value, field);
    return m_json.Integer(value, field);
  }

  Scalar ReadScalar(const Json::Value& value, const std::string& field) {
    if (value.isString()) return m_json.Text(value, field);
    if (value.isNumeric()) return m_json.Integer(value, field);
    m_json.FailToBe(value, field, "an integer or a text");
  }

  void ReadConfig(const Json::Value& config, const std::string& field) {
    for (auto it = m_json.Object(config, field).begin(); it != config.end(); ++it) {
      const std::string name_field = field + "." + it.name();
      if (!ContainsOnlyNameCharacters(it.name(), "")) {
        m_json.Fail(*it, name_field, "not a name of a configuration value");
      }
      m_seed.config[it.name()] = m_json.Text(*it, name_field);
    }
  }

  void ReadSettings(const Json::Value& settings, const std::string& field) {
    for (auto it = m_json.Object(settings, field).begin(); it != settings.end(); ++it) {
      const std::string key_field = field + "." + it.name();
      if (!IsSettingKey(it.name())) m_json.Fail(*it, key_field, "not a key of a setting");
      m_seed.settings[it.name()] = ReadScalar(*it, key_field);
    }
  }

  void ReadFeatures(const Json::Value& features, const std::string& field) {
    for (auto it = m_json.Object(features, field).begin(); it != features.end(); ++it) {
      const std::string group = field + "." + it.name();
      if (it.name() == "custom") {
        ReadCustomFeatures(*it, group);
      } else if (it.name() == "value") {
        ReadValueFeatures(*it, group);
      } else {
        FailAsUnknown(*it, group, it.name(), {"custom", "value"});
      }
    }
  }

  void ReadCustomFeatures(const Json::Value& features, const std::string& field) {
    for (auto it = m_json.Object(features, field).begin(); it != features.end(); ++it) {
      const std::string key_field = field + "." + it.name();
      if (!ContainsOnlyNameCharacters(it.name(), "/")) {
        m_json.Fail(*it, key_field, "not a key of a feature");
      }
      m_seed.custom_features[it.name()] = ReadScalar(*it, key_field);
    }
  }

  void ReadValueFeatures(const Json::Value& features, const std::string& field) {
    for (auto it = m_json.Object(features, field).begin(); it != features.end(); ++it) {
      const std::string key_field = field + "." + it.name();
      const std::string name = it.name();
      // Nine digits fit an int; a leading zero would let two names stand for one number.
      if (name.empty() || name.size() > 9 || (name.size() > 1 && name[0] == '0') ||
          name.find_first_not_of("0123456789") != std::string::npos) {
        m_json.Fail(*it, key_field, "not a number of a feature");
      }
      m_seed.value_features[std::stoi(name)] = m_json.Integer(*it, key_field);
    }
  }

  void ReadPackages(const Json::Value& packages, const std::string& field) {
    for (auto it = m_json.Object(packages, field).begin(); it != packages.end(); ++it) {
      const std::string package_field = field + "." + it.name();
      CheckPackageId(*it, package_field, it.name());
      Package& package = m_seed.packages[it.name()];
      for (auto member = m_json.Object(*it, package_field).begin(); member != it->end(); ++member) {
        const std::string member_field = package_field + "." + member.name();
        if (member.name() == "version") {
          package.version = m_json.Text(*member, member_field);
        } else if (member.name() == "icon") {
          package.icon = m_json.Text(*member, member_field);
        } else {
          FailAsUnknown(*member, member_field, member.name(), {"version", "icon"});
        }
      }
    }
  }

  void ReadBlacklist(const Json::Value& ids, const std::string& field) {
    for (Json::ArrayIndex i = 0; i < m_json.Array(ids, field).size(); ++i) {
      const std::string id_field = field + "[" + std::to_string(i) + "]";
      m_seed.blacklist.push_back(m_json.Text(ids[i], id_field));
      CheckPackageId(ids[i], id_field, m_seed.blacklist.back());
    }
  }

  // For editors.
  void CheckText(const Json::Value& value, const std::string& field) { m_json.Text(value, field); }

  [[noreturn]] void FailAsUnknown(const Json::Value& value, const std::string& field,
                                  const std::string& name,
                                  const std::vector<std::string>& known) const {
    m_json.Fail(value, field, "unknown member" + Suggestion(name, known));
  }

  [[noreturn]] void FailAsNoColumn(const Json::Value& value, const std::string& field,
                                   const std::string& name) const {
    std::vector<std::string> columns;
    for (const Column& column : kAppColumns) columns.emplace_back(column.name);
    m_json.Fail(value, field, "the apps table has no such column" + Suggestion(name, columns));
  }

  // A package id is a group of a key file and a line of the blacklist.
  void CheckPackageId(const Json::Value& value, const std::string& field, const std::string& id) {
    if (!ContainsOnlyNameCharacters(id, "")) m_json.Fail(value, field, "not an id of a package");
  }

  SeedJson m_json;
  Seed m_seed;
};

}  // namespace

Seed ReadSeedFile(const std::string& path) {
  return SeedReader(path).Read();
}

}  // namespace tav_device
