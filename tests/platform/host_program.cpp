// SPDX-License-Identifier: Apache-2.0
// A host of the platform's libraries, as small as can be: opens the file that it is told, if any,
// logs one line, and prints whether that was written and where the device's database lies.
#include <dlog.h>
#include <fcntl.h>
#include <tzplatform_config.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc > 1 && open(argv[1], O_WRONLY | O_CREAT, 0600) < 0) return 1;
  const bool is_written = dlog_print(DLOG_ERROR, "TAG", "text") > 0;
  std::printf("%s %s\n", is_written ? "yes" : "no",
              tzplatform_getenv(TZPLATFORM_DATABASE_DIRECTORY));
  return 0;
}
