// SPDX-License-Identifier: Apache-2.0
#include "file_calls.h"

#include <dlfcn.h>
#include <dlog.h>
#include <unistd.h>

#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace test {
namespace {

FileCalls* g_calls = nullptr;

// What is done meanwhile is not heard.
void TellBefore(FileCalls* calls, const char* function, int descriptor) {
  g_calls = nullptr;
  if (calls->before) calls->before(function, descriptor);
  g_calls = calls;
}

template <typename Call>
int Heard(const char* function, int descriptor, const Call& call) {
  FileCalls* const calls = g_calls;
  if (calls == nullptr || !calls->Concern(descriptor)) return call();
  TellBefore(calls, function, descriptor);
  const int result = call();
  const int error = calls->ErrorOf(function);
  if (error == 0) return result;
  errno = error;
  return -1;  // which EOF is too
}

template <typename Function>
Function Real(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

using FileFunction = int (*)(FILE*);

}  // namespace

FileCalls::FileCalls(std::filesystem::path file) : m_file(std::move(file)) {
  g_calls = this;
}

FileCalls::~FileCalls() {
  g_calls = nullptr;
}

bool FileCalls::Concern(int descriptor) const {
  std::error_code error;
  return std::filesystem::read_symlink("/proc/self/fd/" + std::to_string(descriptor), error) ==
         m_file;
}

int FileCalls::ErrorOf(const std::string& function) const {
  const auto found = m_errors.find(function);
  return found != m_errors.end() ? found->second : 0;
}

extern "C" {

int fsync(int file) {
  return Heard("fsync", file, [file] { return Real<int (*)(int)>("fsync")(file); });
}

int fflush(FILE* file) {
  return Heard("fflush", file != nullptr ? fileno(file) : -1,
               [file] { return Real<FileFunction>("fflush")(file); });
}

int fclose(FILE* file) {
  return Heard("fclose", fileno(file), [file] { return Real<FileFunction>("fclose")(file); });
}

int dlog_print(log_priority priority, const char* tag, const char* format, ...) {
  if (g_calls != nullptr && std::strstr(format, "mFinish%s") != nullptr) {
    TellBefore(g_calls, "Finish", -1);
  }
  std::va_list values;
  va_start(values, format);
  const int result = dlog_vprint(priority, tag, format, values);
  va_end(values);
  return result;
}

}  // extern "C"

}  // namespace test
