// SPDX-License-Identifier: Apache-2.0
#include "soak/cancel_at_call.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/types.h>
#include <unistd.h>

#include <atomic>
#include <cstdarg>

namespace {

std::atomic<int> g_number{0};
std::atomic<int> g_calls{0};

void CountCall() {
  if (g_number != 0 && ++g_calls == g_number) pthread_cancel(pthread_self());
}

template <typename Function, typename... Arguments>
auto CallReal(const char* name, Arguments... arguments) {
  CountCall();
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name))(arguments...);
}

// The build has files of any size: open, fcntl and pread are open64, fcntl64 and pread64.
static_assert(_FILE_OFFSET_BITS == 64);

using Open = int(const char*, int, ...);
using Fcntl = int(int, int, ...);

}  // namespace

void test::CancelAtCall(int number) {
  g_number = number;
  g_calls = 0;
}

int test::CallsMade() {
  return g_calls;
}

extern "C" {

int open(const char* path, int flags, ...) {
  va_list rest;
  va_start(rest, flags);
  const mode_t mode = va_arg(rest, mode_t);
  va_end(rest);
  return CallReal<Open>("open64", path, flags, mode);
}

int fcntl(int file, int command, ...) {
  va_list rest;
  va_start(rest, command);
  void* const argument = va_arg(rest, void*);
  va_end(rest);
  return CallReal<Fcntl>("fcntl64", file, command, argument);
}

int close(int file) {
  return CallReal<decltype(close)>("close", file);
}

ssize_t read(int file, void* bytes, size_t size) {
  return CallReal<decltype(read)>("read", file, bytes, size);
}

ssize_t write(int file, const void* bytes, size_t size) {
  return CallReal<decltype(write)>("write", file, bytes, size);
}

ssize_t pread(int file, void* bytes, size_t size, off_t offset) {
  return CallReal<decltype(pread)>("pread64", file, bytes, size, offset);
}

int fsync(int file) {
  return CallReal<decltype(fsync)>("fsync", file);
}

}  // extern "C"
