/* SPDX-License-Identifier: Apache-2.0 */
/* lock_from_test AGE ID=LOCK…: locks from this age on, then expects these apps' locks. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <tav_db_api.h>

#include "lock_from.h"

static int fails(const char* expectation) {
  const char* lock = strrchr(expectation, '=');
  char id[128];
  tav_app_info_s app;

  if (lock == NULL || lock - expectation >= (long)sizeof id) return 1;
  memcpy(id, expectation, (size_t)(lock - expectation));
  id[lock - expectation] = '\0';
  if (tav_get_app_info(id, &app) != 0) {
    printf("%s is not installed\n", id);
    return 1;
  }
  if (app.is_lock == atoi(lock + 1)) return 0;
  printf("%s: is_lock is %d, not %s\n", id, app.is_lock, lock + 1);
  return 1;
}

int main(int argc, char** argv) {
  int failures = 0;
  int expected = 0;

  if (argc < 3) return 2;
  for (int i = 2; i < argc; ++i) expected += strstr(argv[i], "=1") != NULL;
  if (lock_from(atoi(argv[1])) != expected) return 1;
  for (int i = 2; i < argc; ++i) failures += fails(argv[i]);
  return failures > 0;
}
