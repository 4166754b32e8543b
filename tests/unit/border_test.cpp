// SPDX-License-Identifier: Apache-2.0
//
// The border: what becomes of exceptions, and the tests of arguments.
#include "tav_db_api/tav_db_api_border.h"

#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <new>
#include <stdexcept>

#include "support/device.h"
#include "tav_common/tav_arguments.h"

namespace {

class Border : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
};

template <typename Body>
int Exported(const Body& body) try {
  return body();
} catch (...) {
  return AnswerException("tav_exported");
}

TEST_F(Border, TurnsAnyExceptionIntoAFailureAndItsTextIntoALogLine) {
  EXPECT_EQ(Exported([]() -> int { throw std::runtime_error("no luck"); }), -1);
  EXPECT_TRUE(log.HasError("tav_exported failed: no luck"));
  EXPECT_EQ(Exported([]() -> int { throw std::bad_alloc(); }), -1);
  EXPECT_TRUE(log.HasError("tav_exported failed: std::bad_alloc"));
  EXPECT_EQ(Exported([]() -> int { throw 7; }), -1);
  EXPECT_TRUE(log.HasError("tav_exported failed"));
}

TEST_F(Border, LetsACancelledThreadUnwind) {
  pthread_t thread;
  const auto wait_for_ever = [](void*) -> void* {
    Exported([]() -> int {
      for (;;) pause();
    });
    return nullptr;
  };
  ASSERT_EQ(pthread_create(&thread, nullptr, wait_for_ever, nullptr), 0);
  ASSERT_EQ(pthread_cancel(thread), 0);
  void* result = nullptr;
  ASSERT_EQ(pthread_join(thread, &result), 0);
  EXPECT_EQ(result, PTHREAD_CANCELED);
}

TEST_F(Border, TellsAnyNullArgument) {
  const int value = 0;
  EXPECT_FALSE(HasNull({"text", &value}));
  EXPECT_FALSE(log.Has("in param is NULL "));
  EXPECT_TRUE(HasNull({"text", static_cast<const int*>(nullptr)}));
  EXPECT_TRUE(HasNull({static_cast<const char*>(nullptr), &value}));
  EXPECT_EQ(log.Count("in param is NULL "), 2);
}

}  // namespace
