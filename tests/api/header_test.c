/* SPDX-License-Identifier: Apache-2.0 */
/* The header as a C program uses it: compiled as C11, linked with the library, run. */
#include <dlog.h>
#include <stdio.h>
#include <stdlib.h>
#include <tav_db_api.h>

_Static_assert(sizeof(tav_app_info_s) == 3212, "the record's size is part of the interface");

int main(void) {
  tav_app_info_s info;
  setenv("DLOG_LEVEL", "S", 1);
  if (get_size_of_tav_app_info_s() != sizeof(tav_app_info_s)) {
    fprintf(stderr, "the library and the header differ in the record's size\n");
    return 1;
  }
  /* No device: the answer is a failure, and the program lives. */
  setenv("TAV_DEVICE_ROOT", "/nonexistent", 1);
  if (tav_get_app_info("org.example.clock", &info) != -1) return 1;
  if (tav_get_app_info_by_tizenid(NULL, NULL) != -1) return 1;
  return 0;
}
