// SPDX-License-Identifier: Apache-2.0
//
// The one exception of the device tools: its text is a whole message for the person who asked.
#ifndef TOOLS_DEVICE_ERROR_H_
#define TOOLS_DEVICE_ERROR_H_

#include <stdexcept>

namespace tav_device {

class DeviceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace tav_device

#endif  // TOOLS_DEVICE_ERROR_H_
