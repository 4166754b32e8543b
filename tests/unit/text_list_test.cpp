// SPDX-License-Identifier: Apache-2.0
//
// Lists that are kept as texts.
#include <gtest/gtest.h>

#include "support/device.h"
#include "tav_db_api_inner.h"

namespace {

using Pairs = std::map<std::string, std::string>;

class TextList : public ::testing::Test {
 protected:
  static Pairs Parsed(const std::string& text, const std::string& items, const std::string& pairs) {
    Pairs out;
    ParseStringToList(text, items, pairs, out);
    return out;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(TextList, IsCutIntoItemsAndItsItemsIntoKeysAndValues) {
  EXPECT_EQ(Parsed("a:1,b:2", ",", ":"), (Pairs{{"a", "1"}, {"b", "2"}}));
  EXPECT_TRUE(log.Has("find a 1"));
  EXPECT_TRUE(log.Has("find b 2"));
}

TEST_F(TextList, NeedsNoSeparatorAfterItsLastItemButMayHaveOne) {
  EXPECT_EQ(Parsed("a:1", ",", ":"), (Pairs{{"a", "1"}}));
  EXPECT_EQ(Parsed("a:1,", ",", ":"), (Pairs{{"a", "1"}}));
}

TEST_F(TextList, CutsAnItemAtItsFirstPairSeparator) {
  EXPECT_EQ(Parsed("a:1:2,:3,b:", ",", ":"), (Pairs{{"", "3"}, {"a", "1:2"}, {"b", ""}}));
}

TEST_F(TextList, TakesTheSeparatorsForSetsOfCharacters) {
  EXPECT_EQ(Parsed("a:1;b=2,c:3", ",;", ":="), (Pairs{{"a", "1"}, {"b", "2"}, {"c", "3"}}));
}

TEST_F(TextList, KeepsTheFirstValueOfAKeyAlsoOneThatWasThereBefore) {
  EXPECT_EQ(Parsed("a:1,a:2", ",", ":"), (Pairs{{"a", "1"}}));
  Pairs out = {{"a", "before"}};
  ParseStringToList("a:1,b:2", ",", ":", out);
  EXPECT_EQ(out, (Pairs{{"a", "before"}, {"b", "2"}}));
}

TEST_F(TextList, SkipsAnItemWithoutAPairSeparator) {
  EXPECT_EQ(Parsed("a,b:2,,c", ",", ":"), (Pairs{{"b", "2"}}));
}

TEST_F(TextList, HoldsKeysAloneWithoutAPairSeparatorToCutAt) {
  EXPECT_EQ(Parsed("b,a,b", ",", ""), (Pairs{{"a", ""}, {"b", ""}}));
}

TEST_F(TextList, AddsNothingWhenItIsEmpty) {
  Pairs out = {{"a", "before"}};
  ParseStringToList("", ",", ":", out);
  EXPECT_EQ(out, (Pairs{{"a", "before"}}));
  EXPECT_TRUE(log.Has("String is empty!"));
}

TEST_F(TextList, IsOneItemWithoutAnItemSeparatorToCutAt) {
  EXPECT_EQ(Parsed("a:1,b:2", "", ":"), (Pairs{{"a", "1,b:2"}}));
}

}  // namespace
