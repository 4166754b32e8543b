// SPDX-License-Identifier: Apache-2.0
//
// Loads the library, makes a request, lets the library go, says so to the descriptor of its last
// argument, and lives on until it is asked to end.
#include <dlfcn.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

int main(int argc, char** argv) {
  constexpr char kReadyOption[] = "--ready-fd=";
  constexpr std::size_t kOptionSize = sizeof(kReadyOption) - 1;
  if (argc != 3 || std::strncmp(argv[2], kReadyOption, kOptionSize) != 0) return 2;
  sigset_t end;
  sigemptyset(&end);
  sigaddset(&end, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &end, nullptr);
  void* library = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
  if (library == nullptr) return 3;
  const auto set_mode = reinterpret_cast<int (*)(int)>(dlsym(library, "tav_set_ticker_mode"));
  if (set_mode == nullptr || set_mode(1) != 0) return 4;
  dlclose(library);
  if (write(std::atoi(argv[2] + kOptionSize), "ready\n", 6) != 6) return 5;
  int signal = 0;
  return sigwait(&end, &signal) == 0 && signal == SIGTERM ? 0 : 6;
}
