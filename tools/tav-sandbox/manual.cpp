// SPDX-License-Identifier: Apache-2.0
//
// For the maker of the manual page.
#include "options.h"

tav_manual::Program tav_manual::DescribeProgram() {
  static Options unused;
  return Describe(unused);
}
