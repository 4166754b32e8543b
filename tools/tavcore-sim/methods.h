// SPDX-License-Identifier: Apache-2.0
//
// What the service does: its methods, with their effects on the device and their answers.
#ifndef TOOLS_TAVCORE_SIM_METHODS_H_
#define TOOLS_TAVCORE_SIM_METHODS_H_

#include <gio/gio.h>

#include <optional>
#include <string>

#include "database.h"

namespace tavcore {

// The statuses of the answers.
enum Status { kDone = 0, kUnknownApp = 1, kDatabaseFailed = 2, kUnknownKey = 3 };

class Methods {
 public:
  // The ids of built-in apps that are being uninstalled are taken from the text, or, without
  // one, from a file of the device.
  Methods(AppDatabase database, int ticker_mode, std::optional<std::string> uninstalling);

  // The interface as introspection has it.
  static const char* Introspection();
  static bool Has(const std::string& method);
  static bool HasStatus(const std::string& method);

  // Does what the method does and returns its answer, a floating reference. The method exists
  // and the parameters are of its types.
  GVariant* Run(const std::string& method, GVariant* parameters);

  // The answer of a method that has a status, with this one and without any effect.
  GVariant* WithStatus(const std::string& method, int status) const;
  // An answer that the method never gives.
  static GVariant* OfAnotherType(const std::string& method);

 private:
  struct Method;
  static const Method kMethods[];
  static const Method* Find(const std::string& method);

  int SetAppLock(GVariant* parameters);
  int SetAppRating(GVariant* parameters);
  int UpdateAppCount(GVariant* parameters);
  int UpdateAppByKey(GVariant* parameters);
  int SetTickerMode(GVariant* parameters);
  int Nothing(GVariant* parameters);
  std::string UninstallingApps() const;

  AppDatabase m_database;
  int m_ticker_mode;
  std::optional<std::string> m_uninstalling;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_METHODS_H_
