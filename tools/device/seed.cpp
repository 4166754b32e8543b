// SPDX-License-Identifier: Apache-2.0
//
// The first values of an app's row.
#include "device/seed.h"

namespace tav_device {

App::App() {
  for (std::size_t i = 0; i < kAppColumnCount; ++i) {
    const Column& column = kAppColumns[i];
    if (column.kind == ColumnKind::kText) {
      cells[i] = std::string();
    } else {
      cells[i] = column.initial;
    }
  }
}

}  // namespace tav_device
