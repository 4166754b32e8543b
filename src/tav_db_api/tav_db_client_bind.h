// SPDX-License-Identifier: Apache-2.0
//
// The values of a statement's parameters, and a query: the text that follows a table's name
// together with the values for its marks.
#ifndef TAV_DB_API_TAV_DB_CLIENT_BIND_H_
#define TAV_DB_API_TAV_DB_CLIENT_BIND_H_

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

constexpr int32_t kBindText = 1;
constexpr int32_t kBindInteger = 2;

struct _TAVDB_BIND_T {
  int32_t type;
  std::string strValue;
  int32_t intValue;
};

void save_db_bind(std::vector<_TAVDB_BIND_T>& binds, const std::string& value);
void save_db_bind(std::vector<_TAVDB_BIND_T>& binds, int value);

// What makes an app visible to callers.
constexpr int kInstalled = 3;
constexpr int kAvailable = 1;
constexpr int kNotMarkedForReset = 0;
constexpr int kNotHidden = 0;
constexpr int kNeverUsed = 0;

// A condition and the values for its marks, built together so that they cannot part ways.
class Query {
 public:
  explicit Query(std::string condition) : m_condition(std::move(condition)) {}

  Query& Append(const std::string& text) {
    m_condition += text;
    return *this;
  }
  template <typename Value>
  Query& Bind(const Value& value) {
    save_db_bind(m_binds, value);
    return *this;
  }
  // How the condition of every app lookup ends.
  Query& AndVisible() {
    Append("and install_state = ? and is_app_available = ? and is_need_reset = ? ");
    return Bind(kInstalled).Bind(kAvailable).Bind(kNotMarkedForReset);
  }

  const std::string& Condition() const { return m_condition; }
  const std::vector<_TAVDB_BIND_T>& Binds() const { return m_binds; }
  // For pieces whose marks and values come from elsewhere together.
  std::vector<_TAVDB_BIND_T>& Binds() { return m_binds; }

 private:
  std::string m_condition;
  std::vector<_TAVDB_BIND_T> m_binds;
};

#endif  // TAV_DB_API_TAV_DB_CLIENT_BIND_H_
