// SPDX-License-Identifier: Apache-2.0
//
// The device that every call of the table succeeds on: three apps, configuration values,
// settings, packages, a platform of the entry grade. Its texts are too long for a string to hold
// without memory.
#ifndef TESTS_FAULTS_SEEDED_DEVICE_H_
#define TESTS_FAULTS_SEEDED_DEVICE_H_

#include <memory>
#include <string>

#include "faults/calls.h"
#include "support/bus.h"
#include "support/device.h"
#include "support/service.h"

namespace test {

constexpr char kAppA[] = "org.example.application.a";
constexpr char kAppB[] = "org.example.application.b";
constexpr char kAppC[] = "org.example.application.c";
constexpr char kRunTitleA[] = "the run title of application a";
constexpr char kTizenIdA[] = "the.tizen.id.of.application.a";
constexpr char kNativeIdA[] = "the.native.id.of.application.a";
constexpr char kAitOrgIdA[] = "the.organisation.of.application.a";
constexpr char kAitAppIdA[] = "the.broadcast.id.of.application.a";

class SeededDevice {
 public:
  // With the bus and the service for a call that needs them.
  explicit SeededDevice(const Call& call);

  Device& Get() { return m_device; }
  const Bus* GetBus() const { return m_bus.get(); }

 private:
  Device m_device;
  std::unique_ptr<Bus> m_bus;
  std::unique_ptr<Service> m_service;
};

}  // namespace test

#endif  // TESTS_FAULTS_SEEDED_DEVICE_H_
