// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the bus tests: a device with two apps, its bus, and the service on it.
#ifndef TESTS_BUS_ON_THE_BUS_H_
#define TESTS_BUS_ON_THE_BUS_H_

#include <gtest/gtest.h>
#include <unistd.h>
#include <vconf.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <string>

#include "support/bus.h"
#include "support/device.h"
#include "support/service.h"
#include "tav_db_api.h"

class OnTheBus : public ::testing::Test {
 protected:
  OnTheBus() { device.Install(test::App("clock")).Install(test::App("weather")); }

  static std::string ClientName(pid_t process = getpid()) {
    return "org.tizen.tv.tavcore.client.obj" + std::to_string(process);
  }
  static std::string ClientPath(pid_t process = getpid()) {
    return "/org/tizen/tv/tavcore/client/obj" + std::to_string(process);
  }

  // One column of an app, read past the library.
  int IsLocked(const std::string& id) {
    tav_app_info_s info;
    EXPECT_EQ(tav_get_app_info(id.c_str(), &info), 0);
    return info.is_lock;
  }
  // The setting that tells of a change; -1 when nobody has told.
  int AppChange() const {
    int value = 0;
    return vconf_get_int("memory/tav/app_change", &value) == 0 ? value : -1;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  test::Bus bus;
};

// How long a test's own steps took.
// An upper bound of a time; a tool that makes every program slower says how many times in
// TAV_SLOWNESS.
inline std::chrono::seconds AtMost(std::chrono::seconds bound) {
  const char* slowness = std::getenv("TAV_SLOWNESS");
  return slowness != nullptr ? bound * std::max(std::atoi(slowness), 1) : bound;
}

class Stopwatch {
 public:
  std::chrono::milliseconds Elapsed() const {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - m_start);
  }

 private:
  using Clock = std::chrono::steady_clock;
  Clock::time_point m_start = Clock::now();
};

#endif  // TESTS_BUS_ON_THE_BUS_H_
