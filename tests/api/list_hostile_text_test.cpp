// SPDX-License-Identifier: Apache-2.0
//
// Texts that look like SQL: data where they are values, a failure where they are no column.
#include <gtest/gtest.h>

#include "api/listing.h"
#include "support/device.h"

namespace {

using test::App;
using test::Ids;
using test::KeyApps;
using test::Listed;
using test::Listing;

class HostileTexts : public ::testing::Test {
 protected:
  test::Device device;
  test::Log& log = device.GetLog();
  const Ids texts = {"it's",
                     "\"quoted\"",
                     "50%",
                     "%s%n%d",
                     "_",
                     "?",
                     "a' or '1'='1",
                     "x'; drop table widgetinfo; --",
                     "tab\tand\nline",
                     "\xc3\xa4\xf0\x9f\x93\xba"};
};

TEST_F(HostileTexts, AreOrdinaryIdsInEveryList) {
  std::vector<App> apps;
  for (const std::string& text : texts) {
    const int number = static_cast<int>(apps.size());
    apps.push_back(App(text)
                       .Title(text)
                       .Index(number)
                       .Set("is_ticker", 1)
                       .UseCount(1)
                       .LaunchDate(std::to_string(9 - number)));
  }
  device.InstallAll(apps);
  EXPECT_EQ(test::FullList(test::EveryApp()), Listed(texts));
  EXPECT_EQ(test::ShortList(test::EveryApp()), Listed(texts));
  EXPECT_EQ(test::AllApps(), Listed(texts));
  EXPECT_EQ(test::RecentApps(), Listed(texts));
  EXPECT_EQ(KeyApps("is_ticker"), Listed(texts));
}

TEST_F(HostileTexts, AreIdsOfAnyLengthInTheUsageTests) {
  const std::string id(5000, 'i');
  device.Install(App(id).UseCount(1));
  EXPECT_EQ(tav_check_is_recently_used_app(id.c_str()), 0);
  EXPECT_EQ(tav_check_is_recently_used_app(id.substr(0, 127).c_str()), -1);
}

TEST_F(HostileTexts, ThatAreNoColumnsFailAsKeysAndTouchNothing) {
  device.Install(App("a").Set("is_ticker", 1));
  for (const char* key : {"no_such_column", "", " ", "'", "is_ticker'", "(", "%s%n", "select",
                          "is_ticker is_hidden", "drop table widgetinfo"}) {
    log.Forget();
    EXPECT_EQ(KeyApps(key), Listing{-1}) << key;
    EXPECT_TRUE(log.HasError("failed to get AppsTable Count ")) << key;
  }
  EXPECT_EQ(KeyApps(std::string(200000, 'k')), Listing{-1});
  EXPECT_EQ(KeyApps("is_ticker"), Listed({"a"}));
}

TEST_F(HostileTexts, ThatHoldASecondStatementAsKeysNeverRunIt) {
  device.Install(App("a").Set("is_ticker", 1));
  KeyApps("is_ticker = 1; drop table widgetinfo; --");
  KeyApps("is_ticker = 1; delete from widgetinfo where 1");
  EXPECT_EQ(KeyApps("is_ticker"), Listed({"a"}));
}

}  // namespace
