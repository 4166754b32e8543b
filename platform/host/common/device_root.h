// SPDX-License-Identifier: Apache-2.0
// Where the device's files lie on a PC.
#ifndef TAV_HOST_DEVICE_ROOT_H_
#define TAV_HOST_DEVICE_ROOT_H_

#include <string>

namespace tav_host {

// The directory that TAV_DEVICE_ROOT names, else "tav-device" in the user's data directory. Read
// from the environment at each call: a program may change its device. A set-user-id or
// set-group-id program, or one with file capabilities, heeds no variable: its device lies in the
// home directory that the system has for its effective user.
std::string DeviceRoot();

}  // namespace tav_host

#endif  // TAV_HOST_DEVICE_ROOT_H_
