// SPDX-License-Identifier: Apache-2.0
//
// The first lookup with SQLiteCpp.
#include <cstdlib>
#include <string>

#include "application.h"

extern "C" TAV_API int first_lookup(const char* id, tav_app_info_s* info);

int first_lookup(const char* id, tav_app_info_s* info) {
  bench::Application application(std::string(std::getenv("TAV_DEVICE_ROOT")) +
                                 "/dbspace/.tavcore.db");
  const auto found = application.Lookup(id);
  if (found) *info = *found;
  return found ? 0 : -1;
}
