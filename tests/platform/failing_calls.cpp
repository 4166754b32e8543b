// SPDX-License-Identifier: Apache-2.0
#include "failing_calls.h"

#include <dlfcn.h>
#include <pwd.h>
#include <sys/types.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <utility>

FailingCalls g_failing_calls;

namespace {

// What the C library's function answers, or -1 with the error that the test asked for.
template <typename Result, typename... Arguments>
Result CallOrFail(int& error, const char* name, Arguments... arguments) {
  if (error != 0) {
    errno = std::exchange(error, 0);
    return -1;
  }
  return reinterpret_cast<Result (*)(Arguments...)>(dlsym(RTLD_NEXT, name))(arguments...);
}

}  // namespace

extern "C" {

int inotify_init1(int flags) noexcept {
  return CallOrFail<int>(g_failing_calls.inotify_init, "inotify_init1", flags);
}

int inotify_add_watch(int fd, const char* name, uint32_t mask) noexcept {
  return CallOrFail<int>(g_failing_calls.inotify_add_watch, "inotify_add_watch", fd, name, mask);
}

ssize_t read(int fd, void* buffer, size_t size) {
  return CallOrFail<ssize_t>(g_failing_calls.read, "read", fd, buffer, size);
}

int getpwuid_r(uid_t user, passwd* entry, char* texts, size_t size, passwd** found) {
  *found = nullptr;
  if (g_failing_calls.getpwuid) return 0;
  const auto real = reinterpret_cast<decltype(&getpwuid_r)>(dlsym(RTLD_NEXT, "getpwuid_r"));
  return real(user, entry, texts, size, found);
}

}  // extern "C"
