// SPDX-License-Identifier: Apache-2.0
//
// The device of the benchmarks: a device root in a temporary directory with any number of
// invented apps, a bus, and the reference service with its benchmark methods.
#ifndef BENCH_DEVICE_H_
#define BENCH_DEVICE_H_

#include <memory>
#include <string>

#include "device/bus.h"
#include "device/process.h"

namespace bench {

class Device {
 public:
  // The process's device from then on: the environment points at it, and at its bus. The log
  // is as it is when nobody asks for more.
  Device();
  ~Device();
  Device(const Device&) = delete;
  Device& operator=(const Device&) = delete;

  // Replaces the apps by this many others, unless it has that many already.
  void Fill(int apps);

  // A bus for the process and the service on it; before the first thread.
  void StartService();

  std::string DatabaseFile() const;
  std::string File(const std::string& name) const { return m_root + "/" + name; }

 private:
  std::string m_directory;
  std::string m_root;
  int m_apps = 0;
  std::unique_ptr<tav_device::PrivateBus> m_bus;
  std::unique_ptr<tav_device::Child> m_service;
};

// What is asked for: the id and the run title of an app in the middle of the table.
std::string IdOf(int app);
std::string RunTitleOf(int app);

}  // namespace bench

#endif  // BENCH_DEVICE_H_
