// SPDX-License-Identifier: Apache-2.0
//
// The first lookup with SQLite itself.
#include <cstdlib>
#include <string>

#include "bare.h"

extern "C" TAV_API int first_lookup(const char* id, tav_app_info_s* info);

int first_lookup(const char* id, tav_app_info_s* info) {
  bench::Bare bare(std::string(std::getenv("TAV_DEVICE_ROOT")) + "/dbspace/.tavcore.db");
  return bare.Lookup(id, info);
}
