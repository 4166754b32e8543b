/* SPDX-License-Identifier: Apache-2.0 */
/* Prints the id of the app that its argument names. */
#include <stdio.h>
#include <tav_db_api.h>

int main(int argc, char** argv) {
  tav_app_info_s app;
  if (argc != 2 || tav_get_app_info(argv[1], &app) != 0) return 1;
  printf("%s\n", app.app_id);
  return 0;
}
