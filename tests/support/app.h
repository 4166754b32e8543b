// SPDX-License-Identifier: Apache-2.0
//
// A row of the apps table, told in the words of the domain.
#ifndef TESTS_SUPPORT_APP_H_
#define TESTS_SUPPORT_APP_H_

#include <map>
#include <string>
#include <variant>

namespace test {

// What a column holds: SQL NULL, an integer or a text.
using Value = std::variant<std::monostate, int, std::string>;

class App {
 public:
  // An app that is installed, available and not marked for reset; everything else is 0 or "".
  explicit App(const std::string& id) { Set("id", id); }

  App& Set(const std::string& column, Value value) {
    m_values[column] = std::move(value);
    return *this;
  }
  App& Null(const std::string& column) { return Set(column, std::monostate{}); }

  App& Title(const std::string& text) { return Set("title", text); }
  App& RunTitle(const std::string& text) { return Set("run_title", text); }
  App& TizenId(const std::string& id) { return Set("tizen_id", id); }
  App& Package(const std::string& name) { return Set("pkgname", name); }
  App& Index(int index) { return Set("app_index", index); }
  App& Type(int type) { return Set("app_type", type); }
  App& Featured(int featured) { return Set("app_featured", featured); }
  App& UseCount(int count) { return Set("use_count", count); }
  App& LaunchDate(const std::string& date) { return Set("launch_date", date); }
  App& InstallDate(const std::string& date) { return Set("install_date", date); }
  App& Hidden() { return Set("is_hidden", 1); }
  App& Locked() { return Set("is_lock", 1); }
  App& AgeLimit(int years) { return Set("limit_age", years); }
  App& InstallState(int state) { return Set("install_state", state); }
  App& Unavailable() { return Set("is_app_available", 0); }
  App& MarkedForReset() { return Set("is_need_reset", 1); }

  const std::map<std::string, Value>& Values() const { return m_values; }

 private:
  std::map<std::string, Value> m_values;
};

// An app with a value of its own in every column of the table: texts "text <column>", integers
// counted up from 1000. install_state and the other two that make it visible stay as they are.
App AppWithEveryColumnSet(const std::string& id);

}  // namespace test

#endif  // TESTS_SUPPORT_APP_H_
