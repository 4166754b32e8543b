// SPDX-License-Identifier: Apache-2.0
//
// first_call MODULE SYMBOL ID: how long a process waits for its first record, from the loading of
// the module to the answer. Prints seconds.
#include <dlfcn.h>
#include <tav_db_api.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  static tav_app_info_s info;
  const auto start = std::chrono::steady_clock::now();
  void* module = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (module == nullptr) {
    std::fprintf(stderr, "%s\n", dlerror());
    return 1;
  }
  const auto lookup =
      reinterpret_cast<int (*)(const char*, tav_app_info_s*)>(dlsym(module, argv[2]));
  if (lookup == nullptr || lookup(argv[3], &info) != 0) return 1;
  const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
  std::printf("%.9f\n", time.count());
  return 0;
}
