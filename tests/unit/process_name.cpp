// SPDX-License-Identifier: Apache-2.0
//
// Prints the name that the library finds for the process it runs in.
#include <cstdio>

#include "tav_common/tav_proxy.h"

int main() {
  std::puts(getProcessName().c_str());
  return 0;
}
