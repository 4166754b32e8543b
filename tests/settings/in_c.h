/* SPDX-License-Identifier: Apache-2.0 */
/* A program in C that reads and watches settings, in the pieces that a test calls. */
#ifndef TESTS_SETTINGS_IN_C_H_
#define TESTS_SETTINGS_IN_C_H_

#ifdef __cplusplus
extern "C" {
#endif

/* What the callbacks were told last, and how many calls there were. */
struct told_in_c {
  int factory_reset;
  int appsync;
  int homedeck_reset;
  char app[64];
  int calls;
};

/* Both return how many calls gave another result than 0. */
int watch_in_c(struct told_in_c* told);
int leave_in_c(void);

/* Every getter once, and what was read as one text. */
void read_in_c(char* text, unsigned long size);

#ifdef __cplusplus
}
#endif

#endif /* TESTS_SETTINGS_IN_C_H_ */
