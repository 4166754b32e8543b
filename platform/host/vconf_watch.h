// SPDX-License-Identifier: Apache-2.0
// Watches of settings keys, and the node that a watcher is given.
#ifndef TAV_HOST_VCONF_WATCH_H_
#define TAV_HOST_VCONF_WATCH_H_

#include <string>

#include "vconf.h"
#include "vconf_store.h"

struct _keynode_t {
  std::string name;
  tav_host::Value value;
};

namespace tav_host {

bool StartWatch(Place place, vconf_callback_fn cb, void* user_data);
bool EndWatch(const std::string& key, vconf_callback_fn cb);

}  // namespace tav_host

#endif  // TAV_HOST_VCONF_WATCH_H_
