// SPDX-License-Identifier: Apache-2.0
// Files of the device; see the header.
#include "read_file.h"

#include <errno.h>
#include <fcntl.h>
#include <string.h>
#include <sys/stat.h>

namespace tav_host {
namespace {

std::nullopt_t Fail(GErrorPtr& error, int number, const char* reason) {
  const auto code = static_cast<gint>(g_file_error_from_errno(number));
  error.reset(g_error_new_literal(G_FILE_ERROR, code, reason));
  return std::nullopt;
}

}  // namespace

std::optional<std::string> ReadFile(const std::string& path, GErrorPtr& error) {
  // Non-blocking, since opening a pipe waits for its other end.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
  struct stat status = {};
  if (file.Get() < 0 || fstat(file.Get(), &status) != 0) {
    return Fail(error, errno, strerror(errno));
  }
  if (!S_ISREG(status.st_mode)) return Fail(error, EINVAL, "Not a regular file");

  std::string content;
  char buffer[4096];
  while (true) {
    const ssize_t size = read(file.Get(), buffer, sizeof buffer);
    if (size == 0) return content;
    if (size > 0) {
      content.append(buffer, static_cast<size_t>(size));
    } else if (errno != EINTR) {
      return Fail(error, errno, strerror(errno));
    }
  }
}

}  // namespace tav_host
