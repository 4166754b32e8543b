// SPDX-License-Identifier: Apache-2.0
//
// A message bus that stands for the device's system bus: dbus-daemon with a policy that allows
// everybody everything, on a socket in a directory.
#ifndef TOOLS_DEVICE_BUS_H_
#define TOOLS_DEVICE_BUS_H_

#include <memory>
#include <string>

#include "device/process.h"

namespace tav_device {

// The environment variable that tells D-Bus libraries where the system bus is.
inline constexpr char kBusVariable[] = "DBUS_SYSTEM_BUS_ADDRESS";

class PrivateBus {
 public:
  // Starts the bus; its socket and its configuration go into the directory. Throws DeviceError.
  explicit PrivateBus(const std::string& directory);
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& Address() const { return m_address; }
  Child& Process() { return *m_process; }

  // Starts it again at the same address, after it has ended or ending it.
  void Start();

 private:
  std::string m_socket;
  std::string m_configuration;
  std::string m_log;
  std::string m_address;
  std::unique_ptr<Child> m_process;
};

}  // namespace tav_device

#endif  // TOOLS_DEVICE_BUS_H_
