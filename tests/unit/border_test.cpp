// SPDX-License-Identifier: Apache-2.0
//
// The border: what becomes of exceptions, and the tests of arguments.
#include "tav_db_api/tav_db_api_border.h"

#include <gtest/gtest.h>
#include <pthread.h>

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

// Nested calls leave it to the outermost.
TEST_F(Border, HoldsACancellationBackUntilTheCallReturns) {
  int steps = 0;
  const auto call_twice = [](void* steps_made) -> void* {
    int& step = *static_cast<int*>(steps_made);
    pthread_cancel(pthread_self());
    {
      const TavCall call;
      Exported([]() -> int {
        const TavCall nested;
        throw std::runtime_error("logged by a cancelled thread");
      });
      pthread_testcancel();
      ++step;
    }
    pthread_testcancel();
    ++step;
    return nullptr;
  };
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, nullptr, call_twice, &steps), 0);
  void* result = nullptr;
  ASSERT_EQ(pthread_join(thread, &result), 0);
  EXPECT_EQ(result, PTHREAD_CANCELED);
  EXPECT_EQ(steps, 1);
  EXPECT_TRUE(log.HasError("tav_exported failed: logged by a cancelled thread"));
}

// The function's own TavCall has ended when its handler runs.
TEST_F(Border, LogsTheExceptionOfACancelledThreadWhole) {
  const auto fail = [](void* answer) -> void* {
    pthread_cancel(pthread_self());
    *static_cast<int*>(answer) = Exported([]() -> int { throw std::bad_alloc(); });
    pthread_testcancel();
    return nullptr;
  };
  int answer = 0;
  pthread_t thread;
  ASSERT_EQ(pthread_create(&thread, nullptr, fail, &answer), 0);
  void* result = nullptr;
  ASSERT_EQ(pthread_join(thread, &result), 0);
  EXPECT_EQ(result, PTHREAD_CANCELED);
  EXPECT_EQ(answer, -1);
  EXPECT_TRUE(log.HasError("tav_exported failed: std::bad_alloc"));
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
