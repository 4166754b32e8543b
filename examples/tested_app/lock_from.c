/* SPDX-License-Identifier: Apache-2.0 */
#include "lock_from.h"

#include <stdio.h>
#include <stdlib.h>
#include <tav_db_api.h>

int lock_from(int age) {
  tav_app_info_s* apps = NULL;
  int count = 0;
  int locked = 0;

  if (tav_get_all_app_list(&apps, &count) != 0) {
    fprintf(stderr, "no list of apps; the log says why\n");
    return -1;
  }
  for (int i = 0; i < count && locked >= 0; ++i) {
    if (apps[i].app_age_limit < age) continue;
    if (tav_set_app_lock(apps[i].app_id, 1) == 0) {
      ++locked;
    } else {
      fprintf(stderr, "the service did not lock %s\n", apps[i].app_id);
      locked = -1;
    }
  }
  free(apps);
  return locked;
}
