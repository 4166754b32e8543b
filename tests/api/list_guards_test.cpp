// SPDX-License-Identifier: Apache-2.0
//
// What makes the lists and counts refuse, and that each refusal gives the lock back: were it
// kept, the call behind it would never return.
#include <gtest/gtest.h>

#include <filesystem>

#include "api/list_calls.h"
#include "support/device.h"

namespace {

using test::ListCall;
using test::Refused;
using test::Shown;

constexpr test::Nulls kNullList = {true, false};
constexpr test::Nulls kNullCount = {false, true};
constexpr test::Nulls kBothNull = {true, true};

class ListGuards : public ::testing::TestWithParam<ListCall> {
 protected:
  ListGuards() { device.InstallAll({Shown("a", 0), Shown("b", 1)}); }
  static test::Listing Ask(test::Nulls nulls = {}) { return GetParam().ask(nulls); }
  static test::Listing Both() { return GetParam().Gives({"a", "b"}); }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_P(ListGuards, GiveTheListWhenNothingRefuses) {
  EXPECT_EQ(Ask(), Both());
  device.Unset("db/tav/factory_reset");
  EXPECT_EQ(Ask(), Both());
}

TEST_P(ListGuards, RefuseDuringAFactoryReset) {
  for (const int type : {1, 2}) {
    log.Forget();
    device.FactoryReset(type);
    EXPECT_EQ(Ask(), Refused());
    EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
  for (const int type : {3, -1, 0}) {
    device.FactoryReset(type);
    EXPECT_EQ(Ask(), Both());
  }
}

TEST_P(ListGuards, RefuseDuringARecoveryOfThePackageManager) {
  device.Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Ask(), Refused());
  EXPECT_TRUE(log.Has("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("Connected to DB"));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Ask(), Both());
}

TEST_P(ListGuards, RefuseNullPointersAndWriteNothingToTheOther) {
  EXPECT_EQ(Ask(kNullCount), Refused());
  EXPECT_EQ(log.Count("in param is NULL "), 1);
  if (GetParam().has_list) {
    EXPECT_EQ(Ask(kNullList), Refused());
    EXPECT_EQ(Ask(kBothNull), Refused());
    EXPECT_EQ(log.Count("in param is NULL "), 3);
  }
  EXPECT_TRUE(log.HasNotice("in param is NULL "));
  EXPECT_FALSE(log.Has("Connected to DB"));
  EXPECT_EQ(Ask(), Both());
}

TEST_P(ListGuards, AskForTheResetFirstThenTheRecoveryThenThePointers) {
  device.FactoryReset(1).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Ask(kBothNull), Refused());
  EXPECT_TRUE(log.Has("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));
  device.FactoryReset(0);
  EXPECT_EQ(Ask(kBothNull), Refused());
  EXPECT_TRUE(log.Has("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("in param is NULL "));
  std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall");
  EXPECT_EQ(Ask(kBothNull), Refused());
  EXPECT_TRUE(log.Has("in param is NULL "));
}

TEST_P(ListGuards, SayThatNothingMatches) {
  device.Sql("delete from widgetinfo");
  EXPECT_EQ(Ask(), test::NothingMatches());
  EXPECT_EQ(log.Count(GetParam().is_empty), 1);
  EXPECT_TRUE(log.Messages('E').empty());
  device.InstallAll({Shown("a", 0), Shown("b", 1)});
  EXPECT_EQ(Ask(), Both());
}

INSTANTIATE_TEST_SUITE_P(All, ListGuards, ::testing::ValuesIn(test::kListCalls),
                         test::NameOfListCall);

class FilterGuards : public ::testing::Test {
 protected:
  FilterGuards() { device.Install(Shown("a", 0)); }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(FilterGuards, RefuseANullFilter) {
  EXPECT_EQ(test::FullListByPointer(nullptr), Refused());
  EXPECT_EQ(test::CountByPointer(nullptr), Refused());
  EXPECT_EQ(test::FullListByPointer(nullptr, 1, -1, 0, kBothNull), Refused());
  EXPECT_EQ(test::CountByPointer(nullptr, kNullCount), Refused());
  EXPECT_EQ(log.Count("in param is NULL "), 4);
  EXPECT_FALSE(log.Has("Connected to DB"));
  EXPECT_EQ(test::FullList(test::EveryApp()), test::Listed({"a"}));
}

TEST_F(FilterGuards, AskForThePointersBeforeTheFilter) {
  EXPECT_EQ(test::FullList(test::Filter(0, 256), 1, -1, 0, kNullList), Refused());
  EXPECT_EQ(test::ShortList(test::Filter(0, 256), 1, -1, 0, kNullCount), Refused());
  EXPECT_EQ(log.Count("in param is NULL "), 2);
  EXPECT_FALSE(log.Has("in param app_type is error"));
  EXPECT_FALSE(log.Has("in param featured error"));
}

TEST_F(FilterGuards, GiveTheLockBackAfterEveryRefusedFilterAndPage) {
  for (const tav_app_filter_s& filter :
       {test::Filter(0, 2), test::Filter(1, 1), test::Filter(1, 128), test::Filter(1, 256)}) {
    test::FullList(filter);
    test::ShortList(filter);
    test::CountOf(filter);
  }
  test::FullList(test::EveryApp(), 1, 1, 0);
  test::ShortList(test::EveryApp(), 1, 1, 0);
  EXPECT_EQ(test::FullList(test::EveryApp()), test::Listed({"a"}));
}

}  // namespace
