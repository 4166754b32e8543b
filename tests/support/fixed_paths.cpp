// SPDX-License-Identifier: Apache-2.0
//
// The library looks for a few marker files at fixed absolute paths. So that tests can create
// them without meeting each other or the machine, stat looks for them under the device root. It
// needs no memory: a test may be at work on a library that gets none.
#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <iterator>

namespace {

constexpr const char* kFixedPaths[] = {"/opt/dbspace/pkgreinstall", "/run/tav_ready",
                                       "/tmp/FACTORY_PRODCUTION"};

bool IsFixed(const char* path) {
  return std::any_of(std::begin(kFixedPaths), std::end(kFixedPaths),
                     [&](const char* fixed) { return std::strcmp(path, fixed) == 0; });
}

}  // namespace

extern "C" __attribute__((visibility("default"))) int stat(const char* path,
                                                           struct stat* status) noexcept {
  const char* root = std::getenv("TAV_DEVICE_ROOT");
  char moved[PATH_MAX];
  if (root != nullptr && IsFixed(path)) {
    std::snprintf(moved, sizeof(moved), "%s%s", root, path);
    path = moved;
  }
  return fstatat(AT_FDCWD, path, status, 0);
}
