// SPDX-License-Identifier: Apache-2.0
// Where the device's files lie on a PC; see the header.
#include "device_root.h"

#include <glib.h>
#include <stdlib.h>

namespace tav_host {

std::string DeviceRoot() {
  const char* root = getenv("TAV_DEVICE_ROOT");
  if (root != nullptr && *root != '\0') return root;
  // g_get_user_data_dir() would keep the answer of its first call. A relative XDG_DATA_HOME
  // counts as none, as that convention wants.
  const char* data = getenv("XDG_DATA_HOME");
  const std::string home = data != nullptr && g_path_is_absolute(data)
                               ? std::string(data)
                               : std::string(g_get_home_dir()) + "/.local/share";
  return home + "/tav-device";
}

}  // namespace tav_host
