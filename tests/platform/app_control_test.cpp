// SPDX-License-Identifier: Apache-2.0
// Extra data of launch requests.
#include <app_control.h>

#include "device.h"

namespace {

class LaunchRequest : public Device {
 protected:
  LaunchRequest() { EXPECT_EQ(app_control_create(&m_request), APP_CONTROL_ERROR_NONE); }
  ~LaunchRequest() override { EXPECT_EQ(app_control_destroy(m_request), APP_CONTROL_ERROR_NONE); }

  std::string Extra(const char* key) const {
    char* value = nullptr;
    if (app_control_get_extra_data(m_request, key, &value) != APP_CONTROL_ERROR_NONE) return "none";
    return Text(value).get();
  }

  app_control_h m_request = nullptr;
};

TEST_F(LaunchRequest, GivesBackWhatWasAdded) {
  EXPECT_EQ(app_control_add_extra_data(m_request, "mode", "3"), APP_CONTROL_ERROR_NONE);
  EXPECT_EQ(app_control_add_extra_data(m_request, "empty", ""), APP_CONTROL_ERROR_NONE);
  EXPECT_EQ(Extra("mode"), "3");
  EXPECT_EQ(Extra("empty"), "");
}

TEST_F(LaunchRequest, GivesACopyThatOutlivesAReplacement) {
  app_control_add_extra_data(m_request, "mode", "first");
  char* first = nullptr;
  ASSERT_EQ(app_control_get_extra_data(m_request, "mode", &first), APP_CONTROL_ERROR_NONE);
  const Text owned(first);
  EXPECT_EQ(app_control_add_extra_data(m_request, "mode", "second"), APP_CONTROL_ERROR_NONE);
  EXPECT_STREQ(first, "first");
  EXPECT_EQ(Extra("mode"), "second");
}

TEST_F(LaunchRequest, LeavesTheValueUntouchedForAMissingKey) {
  char untouched[] = "untouched";
  char* value = untouched;
  EXPECT_EQ(app_control_get_extra_data(m_request, "mode", &value), APP_CONTROL_ERROR_KEY_NOT_FOUND);
  EXPECT_EQ(value, untouched);
}

TEST_F(LaunchRequest, RefusesNullArguments) {
  char* value = nullptr;
  constexpr int kRefused = APP_CONTROL_ERROR_INVALID_PARAMETER;
  EXPECT_LT(kRefused, 0);
  EXPECT_EQ(app_control_create(nullptr), kRefused);
  EXPECT_EQ(app_control_destroy(nullptr), kRefused);
  EXPECT_EQ(app_control_add_extra_data(nullptr, "key", "value"), kRefused);
  EXPECT_EQ(app_control_add_extra_data(m_request, nullptr, "value"), kRefused);
  EXPECT_EQ(app_control_add_extra_data(m_request, "key", nullptr), kRefused);
  EXPECT_EQ(app_control_get_extra_data(nullptr, "key", &value), kRefused);
  EXPECT_EQ(app_control_get_extra_data(m_request, nullptr, &value), kRefused);
  EXPECT_EQ(app_control_get_extra_data(m_request, "key", nullptr), kRefused);
  EXPECT_EQ(TakePriorities(), "EEEEEEEE");
}

}  // namespace
