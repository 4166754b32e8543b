// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the reference service's tests: a device with one app, a bus, and a client that
// asks the way the library does.
#ifndef TESTS_TOOLS_SIM_TEST_H_
#define TESTS_TOOLS_SIM_TEST_H_

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/bus.h"
#include "support/device.h"
#include "support/service.h"

namespace test {

// The answer of a request as text: "(0,)", or the name of the D-Bus error.
using Answer = std::string;

inline constexpr char kInvalidArguments[] = "org.freedesktop.DBus.Error.InvalidArgs";

class SimTest : public testing::Test {
 protected:
  static constexpr char kClock[] = "org.example.clock";

  SimTest();

  // Sends a request; the parameters are a tuple in GVariant's text form, "" for none.
  Answer Ask(const std::string& method, const std::string& parameters = "",
             int timeout_milliseconds = 20000, GDBusCallFlags flags = G_DBUS_CALL_FLAGS_NONE) const;
  // The same for the control interface.
  Answer Steer(const std::string& method, const std::string& parameters = "") const;

  // A value of the app kClock, as SQLite prints it.
  std::string Column(const std::string& name) const;
  // What a setting's file holds: "int\n1\n", "" without one.
  std::string Setting(const std::string& key) const;

  Device device;
  Bus bus;
  Peer peer;

 private:
  Answer Send(const std::string& interface, const std::string& method,
              const std::string& parameters, int timeout_milliseconds, GDBusCallFlags flags) const;
};

}  // namespace test

#endif  // TESTS_TOOLS_SIM_TEST_H_
