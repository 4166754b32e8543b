// SPDX-License-Identifier: Apache-2.0
// Files of the device, read whole.
#ifndef TAV_HOST_READ_FILE_H_
#define TAV_HOST_READ_FILE_H_

#include <optional>
#include <string>

#include "handles.h"

namespace tav_host {

// The content of a regular file. Nothing, with the reason in `error`, for a file that cannot be
// read and for anything else in its place: a pipe, which could block the caller, a directory or a
// device.
std::optional<std::string> ReadFile(const std::string& path, GErrorPtr& error);

}  // namespace tav_host

#endif  // TAV_HOST_READ_FILE_H_
