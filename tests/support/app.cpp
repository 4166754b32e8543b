// SPDX-License-Identifier: Apache-2.0
#include "support/app.h"

#include "device/schema.h"

namespace test {

App AppWithEveryColumnSet(const std::string& id) {
  App app(id);
  int next = 1000;
  for (const auto& column : tav_device::kAppColumns) {
    const std::string name = column.name;
    if (name == "id" || name == "install_state" || name == "is_app_available" ||
        name == "is_need_reset") {
      continue;
    }
    if (column.kind == tav_device::ColumnKind::kText) {
      app.Set(name, "text " + name);
    } else {
      app.Set(name, next++);
    }
  }
  return app;
}

}  // namespace test
