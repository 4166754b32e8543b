// SPDX-License-Identifier: Apache-2.0
//
// The age rule: what each value of the setting locks.
#include "tav_db_api/tav_db_client_age_rating.h"

#include <gtest/gtest.h>

#include "support/device.h"

namespace {

constexpr char kKey[] = "db/appstore/ratingvalue";

class AgeRule : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(AgeRule, LocksFromTheNumberBeforeTheSuffixOn) {
  device.Setting(kKey, "18+");
  AgeRating rating;
  EXPECT_EQ(rating.Locks(17), false);
  EXPECT_EQ(rating.Locks(18), true);
  EXPECT_EQ(rating.Locks(19), true);
  EXPECT_TRUE(log.Has("got db/appstore/ratingvalue value[18+]"));
}

TEST_F(AgeRule, SetsNoLimitForTheValuesThatMeanNone) {
  for (const char* value : {"OFF", "ALL", "", "7"}) {
    device.Setting(kKey, value);
    EXPECT_EQ(AgeRating().Locks(99), std::nullopt) << value;
  }
}

TEST_F(AgeRule, SetsNoLimitWhenTheSettingIsMissingOrNoText) {
  EXPECT_EQ(AgeRating().Locks(99), std::nullopt);
  EXPECT_TRUE(log.HasError("failed to get db/appstore/ratingvalue value"));
  log.Forget();
  device.Setting(kKey, 18);
  EXPECT_EQ(AgeRating().Locks(99), std::nullopt);
  EXPECT_TRUE(log.HasError("failed to get db/appstore/ratingvalue value"));
}

TEST_F(AgeRule, ReadsWhatIsNoNumberAsZero) {
  device.Setting(kKey, "abc");
  EXPECT_EQ(AgeRating().Locks(0), true);
  EXPECT_EQ(AgeRating().Locks(-1), false);
}

TEST_F(AgeRule, TakesTheLeadingDigitsAndDropsOneByteOfTheSuffix) {
  device.Setting(kKey, "12 years");
  EXPECT_EQ(AgeRating().Locks(11), false);
  EXPECT_EQ(AgeRating().Locks(12), true);
  device.Setting(kKey, "16\xE2\x82\xAC");  // a suffix of three bytes, of which one goes
  EXPECT_EQ(AgeRating().Locks(15), false);
  EXPECT_EQ(AgeRating().Locks(16), true);
  device.Setting(kKey, "180");  // without a suffix the last digit goes
  EXPECT_EQ(AgeRating().Locks(17), false);
  EXPECT_EQ(AgeRating().Locks(18), true);
}

TEST_F(AgeRule, LocksNothingBeyondTheLargestLimit) {
  device.Setting(kKey, "99999999999999999999+");
  EXPECT_EQ(AgeRating().Locks(2147483646), false);
}

TEST_F(AgeRule, ReadsTheSettingOnceForAllRowsOfAQuery) {
  device.Setting(kKey, "18+");
  AgeRating rating;
  EXPECT_EQ(rating.Locks(18), true);
  device.Setting(kKey, "OFF");
  EXPECT_EQ(rating.Locks(18), true);
  EXPECT_EQ(log.Count("got db/appstore/ratingvalue value[18+]"), 1);
  EXPECT_EQ(AgeRating().Locks(18), std::nullopt);
}

}  // namespace
