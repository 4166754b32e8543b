// SPDX-License-Identifier: Apache-2.0
//
// Threads that are cancelled in a read: the read comes to its end, and leaves no lock behind, none
// of this process and none on the database's file.
#include <gtest/gtest.h>
#include <pthread.h>

#include <chrono>
#include <random>

#include "soak/cancel_at_call.h"
#include "soak/child.h"
#include "support/device.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::ForkedChild;
using test::Require;

constexpr int kProcesses = 1000;
constexpr int kLongestMicroseconds = 900;

int Lookup() {
  tav_app_info_s info;
  return tav_get_app_info("clock", &info);
}

void* ReadForEver(void* /*argument*/) {
  for (;;) {
    Lookup();
    pthread_testcancel();
  }
}

void* ReadOnce(void* result) {
  *static_cast<int*>(result) = Lookup();
  pthread_testcancel();
  return nullptr;
}

// The title that a read gives.
std::string Title() {
  tav_app_info_s info;
  return tav_get_app_info("clock", &info) == 0 ? info.app_title : "nothing";
}

void EndThread(pthread_t thread) {
  void* result = nullptr;
  Require(pthread_join(thread, &result) == 0 && result == PTHREAD_CANCELED, "not cancelled");
}

class CancelledReads : public ::testing::TestWithParam<const char*> {
 protected:
  CancelledReads() {
    device.Install(App("clock").Title("old"));
    device.Sql("pragma journal_mode = " + std::string(GetParam()));
    setenv("DLOG_LEVEL", "F", 1);  // too many lines to be of use
  }

  // What a child says that has run cancel, has read, has let this process write, and has read
  // again.
  std::string ComplaintOf(const std::function<void()>& cancel, const std::string& new_title) {
    int ready[2];
    int go[2];
    if (pipe(ready) != 0 || pipe(go) != 0) return "no pipe";
    ForkedChild child([&] {
      cancel();
      Require(Title() != "nothing", "cannot read");
      char byte = 'x';
      close(go[1]);
      Require(write(ready[1], &byte, 1) == 1 && read(go[0], &byte, 1) == 0, "not told");
      Require(Title() == new_title, "cannot read what was written");
    });
    close(ready[1]);
    close(go[0]);
    char byte;
    const bool is_ready = read(ready[0], &byte, 1) == 1;
    if (is_ready) Write(new_title);
    close(go[1]);
    close(ready[0]);
    return child.Complaint();
  }

  // Throws when the database is locked.
  void Write(const std::string& title) {
    device.Sql("pragma synchronous = off; update widgetinfo set title = '" + title +
               "'; pragma wal_checkpoint(truncate)");
  }

  test::Device device;
};

TEST_P(CancelledReads, HoldNothingWhenCancelledAtAnyMoment) {
  std::mt19937 random(4711);
  std::uniform_int_distribution<int> microseconds(0, kLongestMicroseconds);
  for (int i = 0; i < kProcesses; ++i) {
    const std::chrono::microseconds moment(microseconds(random));
    const auto cancel = [&] {
      pthread_t thread;
      Require(pthread_create(&thread, nullptr, ReadForEver, nullptr) == 0, "no thread");
      const auto end = std::chrono::steady_clock::now() + moment;
      while (std::chrono::steady_clock::now() < end) continue;
      pthread_cancel(thread);
      EndThread(thread);
    };
    ASSERT_EQ(ComplaintOf(cancel, std::to_string(i)), "") << "after " << moment.count() << " us";
  }
}

TEST_P(CancelledReads, HoldNothingWhenCancelledAtAnyCallOnAFile) {
  const auto cancel_at = [](int number) {
    int result = -77;
    pthread_t thread;
    test::CancelAtCall(number);
    Require(pthread_create(&thread, nullptr, ReadOnce, &result) == 0, "no thread");
    void* end = nullptr;
    Require(pthread_join(thread, &end) == 0, "not joined");
    const bool is_reached = test::CallsMade() >= number;
    test::CancelAtCall(0);
    Require(result == 0, "the read did not end");
    Require((end == PTHREAD_CANCELED) == is_reached, "not cancelled");
    Require(is_reached, "no such call");
  };
  int number = 1;
  std::string complaint;
  for (; complaint.empty(); ++number) {
    complaint = ComplaintOf([&] { cancel_at(number); }, std::to_string(number));
  }
  EXPECT_EQ(complaint, "no such call");
  EXPECT_GE(number, 20);
}

INSTANTIATE_TEST_SUITE_P(EachJournal, CancelledReads, ::testing::Values("delete", "wal"));

}  // namespace
