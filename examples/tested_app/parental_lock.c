/* SPDX-License-Identifier: Apache-2.0 */
/* parental_lock AGE: locks the apps that are for this age or an older one. */
#include <stdio.h>
#include <stdlib.h>

#include "lock_from.h"

int main(int argc, char** argv) {
  const int age = argc == 2 ? atoi(argv[1]) : 0;
  int locked;

  if (age <= 0) {
    fprintf(stderr, "usage: %s AGE\n", argv[0]);
    return 2;
  }
  locked = lock_from(age);
  if (locked < 0) return 1;
  printf("locked: %d\n", locked);
  return 0;
}
