// SPDX-License-Identifier: Apache-2.0
//
// Loads the library, makes a request, lets the library go, and lives on until its input ends.
#include <dlfcn.h>
#include <unistd.h>

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return 3;
  const auto set_mode = reinterpret_cast<int (*)(int)>(dlsym(library, "tav_set_ticker_mode"));
  if (set_mode == nullptr || set_mode(1) != 0) return 4;
  dlclose(library);
  char byte = 'x';
  if (write(STDOUT_FILENO, &byte, 1) != 1) return 5;
  while (read(STDIN_FILENO, &byte, 1) > 0) continue;
  return 0;
}
