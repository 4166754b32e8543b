// SPDX-License-Identifier: Apache-2.0
//
// The service's changes to the apps table, each in a transaction of its own.
#ifndef TOOLS_TAVCORE_SIM_DATABASE_H_
#define TOOLS_TAVCORE_SIM_DATABASE_H_

#include <optional>
#include <string>

namespace tavcore {

enum class Change { kDone, kUnknownApp, kFailed };

// The database is opened for each change, so that it may be replaced while the service runs. An
// app is found by its id or its platform id. A failure is told on standard error.
class AppDatabase {
 public:
  // A change waits this long for others that hold the database.
  explicit AppDatabase(int busy_milliseconds) : m_busy_milliseconds(busy_milliseconds) {}

  Change SetLock(const std::string& app, bool is_lock) const;
  Change SetRating(const std::string& app, int rating) const;
  Change CountUse(const std::string& app) const;
  Change MarkUpdated(const std::string& app) const;

 private:
  Change Update(const char* assignments, const std::string& app,
                std::optional<int> value = std::nullopt) const;

  int m_busy_milliseconds;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_DATABASE_H_
