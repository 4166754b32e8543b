// SPDX-License-Identifier: Apache-2.0
//
// A change that is told while another is being told, as when a callable runs a main loop. The
// functions below stand before the library's and note the callback, which the test then calls.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tav_db_api.hpp>
#include <vector>

namespace {

tav_int_changed_cb g_registered = nullptr;

}  // namespace

int tav_register_appsync_start_changed_cb(tav_int_changed_cb callback, void* /*userData*/) {
  g_registered = callback;
  return 0;
}
int tav_unregister_appsync_start_changed_cb(tav_int_changed_cb callback) {
  if (callback == g_registered) g_registered = nullptr;
  return 0;
}

namespace {

TEST(NestedWalk, LetsACallableThatItEndedRunToItsEnd) {
  std::vector<std::string> told;
  const auto data = std::make_shared<int>(0);
  tav::Watch watch;
  watch = tav::WatchAppsyncStart([&told, &watch, data,
                                  name = std::make_unique<std::string>("a")](int value) {
            told.push_back(*name + " begins " + std::to_string(value));
            if (value == 1) g_registered(2, nullptr);
            if (value == 2) watch.reset();
            told.push_back(*name + " ends " + std::to_string(value));
          }).value();
  const tav::Watch other = tav::WatchAppsyncStart([&](int value) {
                             told.push_back("b " + std::to_string(value));
                           }).value();
  g_registered(1, nullptr);
  EXPECT_EQ(told, (std::vector<std::string>{"a begins 1", "a begins 2", "a ends 2", "b 2",
                                            "a ends 1", "b 1"}));
  EXPECT_EQ(data.use_count(), 1);
  told.clear();
  g_registered(3, nullptr);
  EXPECT_EQ(told, std::vector<std::string>{"b 3"});
}

}  // namespace
