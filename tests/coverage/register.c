// SPDX-License-Identifier: Apache-2.0
// A part of every library and program whose runs are counted. Each has counters of its own, which
// only it can write: it tells write_counters.c how.
void __gcov_dump(void);
void tav_coverage_register(void (*dump)(void)) __attribute__((weak));

__attribute__((constructor)) static void Register(void) {
  if (tav_coverage_register) tav_coverage_register(__gcov_dump);
}
