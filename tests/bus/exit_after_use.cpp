// SPDX-License-Identifier: Apache-2.0
//
// Locks the app that its argument names, and ends.
#include <cstdlib>

#include "tav_db_api.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  std::exit(tav_set_app_lock(argv[1], 1) == 0 ? 0 : 1);
}
