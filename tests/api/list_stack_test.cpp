// SPDX-License-Identifier: Apache-2.0
//
// Long lists on a short stack: nothing of a list's size may lie on it.
#include <gtest/gtest.h>
#include <pthread.h>

#include <cstdlib>
#include <functional>

#include "api/listing.h"
#include "support/device.h"

namespace {

constexpr int kRows = 20000;
constexpr std::size_t kStackSize = std::size_t{256} * 1024;

class LongLists : public ::testing::Test {
 protected:
  LongLists() {
    setenv("DLOG_LEVEL", "E", 1);  // a line for each of the rows says nothing here
    device.Sql(
        "insert into widgetinfo (id, app_index, install_state, is_app_available, is_need_reset,"
        " is_hidden, use_count, is_ticker, launch_date, install_date)"
        " with recursive number(n) as (select 0 union all select n + 1 from number where n < " +
        std::to_string(kRows - 1) +
        ") select 'app' || n, n, 3, 1, 0, 0, n + 1, 1, printf('%06d', n), printf('%06d', n)"
        " from number");
  }

  static void OnShortStack(std::function<void()> body) {
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, kStackSize), 0);
    pthread_t thread;
    const auto run = [](void* work) -> void* {
      (*static_cast<std::function<void()>*>(work))();
      return nullptr;
    };
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &body), 0);
    pthread_attr_destroy(&attributes);
    ASSERT_EQ(pthread_join(thread, nullptr), 0);
  }

  // The size of a list and the ids at its ends.
  static void ExpectEnds(const test::Listing& listing, int first, int last) {
    EXPECT_EQ(listing.result, 0);
    ASSERT_EQ(listing.count, kRows);
    EXPECT_EQ(listing.ids.front(), "app" + std::to_string(first));
    EXPECT_EQ(listing.ids.back(), "app" + std::to_string(last));
  }

  test::Device device;
};

TEST_F(LongLists, OfFullRecordsFitOnAShortStackInEveryOrder) {
  OnShortStack([] {
    ExpectEnds(test::FullList(test::EveryApp(), 0), kRows - 1, 0);
    ExpectEnds(test::FullList(test::EveryApp(), 1), 0, kRows - 1);
    ExpectEnds(test::FullList(test::EveryApp(), 2, 0, kRows), kRows - 1, 299);
    tav_app_filter_s filter = test::EveryApp();
    ExpectEnds(test::FullListByPointer(&filter, 5), kRows - 1, 0);
  });
}

TEST_F(LongLists, OfMultiScreenRecordsFitOnAShortStack) {
  OnShortStack([] {
    ExpectEnds(test::ShortList(test::EveryApp(), 1), 0, kRows - 1);
    ExpectEnds(test::ShortList(test::EveryApp(), 2), kRows - 1, 0);
  });
}

TEST_F(LongLists, OfFixedConditionsFitOnAShortStack) {
  OnShortStack([] {
    ExpectEnds(test::AllApps(), kRows - 1, 299);
    ExpectEnds(test::RecentApps(), kRows - 1, 0);
    ExpectEnds(test::KeyApps("is_ticker"), 0, kRows - 1);
  });
}

TEST_F(LongLists, CanBeCountedOnAShortStack) {
  OnShortStack([] {
    EXPECT_EQ(test::CountOf(test::EveryApp()), test::Counted(kRows));
    tav_app_filter_s filter = test::EveryApp();
    EXPECT_EQ(test::CountByPointer(&filter), test::Counted(kRows));
    EXPECT_EQ(tav_check_is_recently_used_app("app19999"), 0);
    EXPECT_EQ(tav_check_is_most_used_app("app19996"), -1);
  });
}

}  // namespace
