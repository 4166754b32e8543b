// SPDX-License-Identifier: Apache-2.0
//
// The properties that an integer column answers: flags, the USB mark and the rating.
#include <gtest/gtest.h>

#include <string>

#include "api/log_texts.h"
#include "support/device.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::kNoRecord;

struct NumberCall {
  const char* name;
  int (*ask)(const char* app_id);
  const char* column;
};

void PrintTo(const NumberCall& property, std::ostream* out) {
  *out << property.name;
}

class NumberProperty : public ::testing::TestWithParam<NumberCall> {
 protected:
  static int Ask(const char* app_id) { return GetParam().ask(app_id); }
  void Reinstall(const test::Value& value) {
    device.Sql("delete from widgetinfo").Install(App("a").Set(GetParam().column, value));
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

// 4711 where the rating was left alone.
int RatingOrFailure(const char* app_id) {
  int rating = 4711;
  const int result = tav_get_app_rating(app_id, &rating);
  if (result == 0) return rating;
  EXPECT_EQ(rating, 4711);
  return result;
}

constexpr NumberCall kIsp = {"Isp", tav_is_isp_app, "is_ispbound"};
constexpr NumberCall kHybrid = {"Hybrid", tav_is_hybrid_app, "is_hybrid_tv"};
constexpr NumberCall kUsb = {"Usb", tav_check_is_usb_app, "is_usb_app"};
constexpr NumberCall kRating = {"Rating", RatingOrFailure, "rating"};

std::string NameOfNumberCall(const ::testing::TestParamInfo<NumberCall>& property) {
  return property.param.name;
}

// ---- What the four share ----

TEST_P(NumberProperty, IsReadFromItsOwnColumn) {
  device.Install(App("none set"))
      .Install(App("it alone").Set(GetParam().column, 1))
      .Install(test::AppWithEveryColumnSet("all others").Set(GetParam().column, 0));
  EXPECT_EQ(Ask("none set"), Ask("all others"));
  EXPECT_NE(Ask("none set"), Ask("it alone"));
}

TEST_P(NumberProperty, IsThatOfTheAppWithThisIdAlone) {
  device.Install(App("clock").Set(GetParam().column, 1).TizenId("t").Package("p").RunTitle("r"));
  for (const char* id : {"t", "p", "r", "Clock", "cloc", "clock2", "vitrine"}) {
    EXPECT_EQ(Ask(id), -1) << id;
  }
}

TEST_P(NumberProperty, IsAFailureForAnUnknownApp) {
  Reinstall(1);
  EXPECT_EQ(Ask("none"), -1);
  EXPECT_TRUE(log.HasError(kNoRecord));
}

TEST_P(NumberProperty, IsAFailureOverADatabaseWithoutItsColumn) {
  Reinstall(1);
  device.Sql(std::string("alter table widgetinfo drop column ") + GetParam().column);
  EXPECT_EQ(Ask("a"), -1);
  EXPECT_TRUE(log.HasError(kNoRecord));
}

INSTANTIATE_TEST_SUITE_P(All, NumberProperty, ::testing::Values(kIsp, kHybrid, kUsb, kRating),
                         NameOfNumberCall);

// ---- The two flags ----

class Flag : public NumberProperty {};

TEST_P(Flag, IsZeroWhenTheFlagIsSet) {
  for (const int set : {1, 2, 255, -1, -2}) {
    Reinstall(set);
    EXPECT_EQ(Ask("a"), 0) << set;
  }
  EXPECT_TRUE(log.Has("Finish,app_id:[a],result:[0]"));
  EXPECT_FALSE(log.Has(kNoRecord));
}

TEST_P(Flag, IsAFailureThatOnlyTheLogTellsFromAnUnknownAppWhenTheFlagIsClear) {
  for (const test::Value& clear : {test::Value(0), test::Value()}) {
    Reinstall(clear);
    log.Forget();
    EXPECT_EQ(Ask("a"), -1);
    EXPECT_TRUE(log.Has("Finish,app_id:[a],result:[-1]"));
    EXPECT_FALSE(log.Has(kNoRecord));
  }
  log.Forget();
  EXPECT_EQ(Ask("none"), -1);
  EXPECT_FALSE(log.Has("Finish,app_id:[none],result:[-1]"));
  EXPECT_TRUE(log.Has(kNoRecord));
}

INSTANTIATE_TEST_SUITE_P(All, Flag, ::testing::Values(kIsp, kHybrid), NameOfNumberCall);

// ---- The USB mark and the rating ----

class PlainNumber : public NumberProperty {};

TEST_P(PlainNumber, IsTheColumnAsItIs) {
  for (const int value : {0, 1, 7, -1, -2, 2147483647}) {
    Reinstall(value);
    EXPECT_EQ(Ask("a"), value);
  }
  EXPECT_FALSE(log.Has(kNoRecord));
}

TEST_P(PlainNumber, IsZeroForNull) {
  Reinstall(test::Value());
  EXPECT_EQ(Ask("a"), 0);
  EXPECT_FALSE(log.Has(kNoRecord));
}

INSTANTIATE_TEST_SUITE_P(All, PlainNumber, ::testing::Values(kUsb, kRating), NameOfNumberCall);

class NumberLog : public ::testing::Test {
 protected:
  NumberLog() { device.Install(App("a").Set("is_usb_app", 1).Set("rating", 5)).Install(App("b")); }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(NumberLog, NamesTheTypeOfTheTable) {
  for (const auto ask : {tav_is_isp_app, tav_check_is_usb_app}) {
    log.Forget();
    ask("a");
    EXPECT_TRUE(log.Has("Start, tableType:[0]"));
  }
  tav_is_hybrid_app("a");
  EXPECT_TRUE(log.Has("Start, tableType:[1]"));
}

TEST_F(NumberLog, ClosesTheUsbMarkWithItsResultAndItsValue) {
  EXPECT_EQ(tav_check_is_usb_app("a"), 1);
  EXPECT_EQ(tav_check_is_usb_app("b"), 0);
  EXPECT_TRUE(log.Has("Finish,app_id:[a],ret:[0],iUsbApp:[1]"));
  EXPECT_TRUE(log.Has("Finish,app_id:[b],ret:[0],iUsbApp:[0]"));
}

TEST_F(NumberLog, ClosesTheRatingWithItsValue) {
  int rating = 4711;
  EXPECT_EQ(tav_get_app_rating("a", &rating), 0);
  EXPECT_EQ(rating, 5);
  EXPECT_TRUE(log.Has("Finish, app_id:[a] ,rating:[5] "));
}

}  // namespace
