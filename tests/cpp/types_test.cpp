// SPDX-License-Identifier: Apache-2.0
//
// The enumerations, filters, pages and views of texts.
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <tav_db_api.hpp>
#include <type_traits>

namespace {

using tav::AppTypes;
using tav::Featured;
using tav::TextOf;
using tav::TextView;

TEST(Enumerations, HaveTheNumbersOfTheInterface) {
  EXPECT_EQ(static_cast<int>(tav::Status::kOk), 0);
  EXPECT_EQ(static_cast<int>(tav::Status::kFailed), -1);
  EXPECT_EQ(static_cast<int>(tav::Status::kBusy), -2);
  EXPECT_EQ(static_cast<int>(tav::Answer::kYes), 0);
  EXPECT_EQ(static_cast<int>(tav::Answer::kNo), -1);
  EXPECT_EQ(static_cast<int>(tav::Answer::kBusy), -2);
  EXPECT_EQ(static_cast<int>(tav::ViewMode::kMostUsed), 0);
  EXPECT_EQ(static_cast<int>(tav::ViewMode::kCatalogue), 1);
  EXPECT_EQ(static_cast<int>(tav::ViewMode::kLastDownloaded), 2);
  EXPECT_EQ(static_cast<int>(tav::ViewMode::kTitle), 3);
  EXPECT_EQ(static_cast<int>(tav::ViewMode::kTitleDescending), 4);
  EXPECT_EQ(static_cast<int>(tav::ViewMode::kRecentlyLaunched), 5);
}

template <typename Set>
constexpr Set Plus(Set set, Set more) {
  set |= more;
  return set;
}

TEST(Sets, AreJoinedAndComparedAtCompileTime) {
  static_assert(static_cast<int>(Featured::kKind1 | Featured::kKind2 | Featured::kKind8) == 11);
  static_assert(static_cast<int>(Plus(Featured::kKind2, Featured::kKind4)) == 6);
  static_assert(((Featured::kKind1 | Featured::kKind4) & Featured::kKind4) == Featured::kKind4);
  static_assert((Featured::kKind1 & Featured::kKind4) == Featured{});
  static_assert(static_cast<int>(AppTypes::kType2 | AppTypes::kType4) == 6);
  static_assert(Plus(AppTypes::kType2, AppTypes::kType4) == (AppTypes::kType4 | AppTypes::kType2));
  static_assert((AppTypes::kType2 & AppTypes::kType4) == AppTypes{});
  static_assert(static_cast<int>(Featured::kEvery) == 65535);
  static_assert(static_cast<int>(AppTypes::kEvery) == 65535);
}

template <typename Left, typename Right, typename = void>
constexpr bool kCanBeJoined = false;
template <typename Left, typename Right>
constexpr bool
    kCanBeJoined<Left, Right, std::void_t<decltype(std::declval<Left>() | std::declval<Right>())>> =
        true;

TEST(Sets, AreNotMixedUpWithOthers) {
  static_assert(kCanBeJoined<Featured, Featured>);
  static_assert(!kCanBeJoined<Featured, AppTypes>);
  static_assert(!kCanBeJoined<Featured, int>);
  static_assert(!kCanBeJoined<tav::ViewMode, tav::ViewMode>);
  static_assert(!std::is_convertible_v<Featured, int> && !std::is_convertible_v<int, Featured>);
}

TEST(Filter, LetsEveryAppThroughAtFirst) {
  const tav_app_filter_s filter = tav::detail::ToC(tav::Filter());
  EXPECT_EQ(filter.featured, 65535);
  EXPECT_EQ(filter.premium_game, 0);
  EXPECT_EQ(filter.app_type, 65535);
}

TEST(Filter, ReachesTheInterfaceMemberByMember) {
  const tav_app_filter_s filter = tav::detail::ToC({Featured::kKind4, AppTypes::kType2, 9});
  EXPECT_EQ(filter.featured, 4);
  EXPECT_EQ(filter.premium_game, 9);
  EXPECT_EQ(filter.app_type, 2);
}

TEST(Filter, OfTheLibraryIsToBeHad) {
  const tav::Filter filter = tav::InitAppFilter();
  EXPECT_EQ(filter.featured, Featured::kKind1);
  EXPECT_EQ(filter.premium_game, 1);
  EXPECT_EQ(filter.app_types, AppTypes::kType2);
}

TEST(Page, IsTheWholeListAtFirst) {
  EXPECT_EQ(tav::Page().index, -1);
  EXPECT_EQ(tav::Page().count, 0);
}

TEST(Layouts, AreTheLibrarys) {
  EXPECT_EQ(tav::GetSizeOfAppInfo(), 3212u);
  EXPECT_EQ(tav::GetSizeOfAppFilter(), 12u);
  EXPECT_TRUE(tav::HasSameLayouts());
}

TEST(TextOf, EndsAtTheTerminatorAndCopiesNothing) {
  tav::AppInfo app = {};
  EXPECT_EQ(TextOf(app.app_title), "");
  std::strcpy(app.app_title, "Harbour");
  EXPECT_EQ(TextOf(app.app_title), "Harbour");
  EXPECT_EQ(static_cast<const void*>(TextOf(app.app_title).data()), app.app_title);
}

TEST(TextOf, EndsWithTheFieldWhenThereIsNoTerminator) {
  tav::MultiScreenApp app = {};
  std::memset(app.app_id, 'x', sizeof(app.app_id));
  app.is_multi_screen2 = 0x79797979;
  EXPECT_EQ(TextOf(app.app_id), std::string(TAV_TEXT_SIZE, 'x'));
}

template <typename Record, typename = void>
constexpr bool kHasTextOf = false;
template <typename Record>
constexpr bool kHasTextOf<Record, std::void_t<decltype(TextOf(std::declval<Record>().app_id))>> =
    true;

TEST(TextOf, IsNotToBeHadOfATemporaryRecord) {
  static_assert(kHasTextOf<tav::AppInfo&> && kHasTextOf<const tav::AppInfo&>);
  static_assert(!kHasTextOf<tav::AppInfo> && !kHasTextOf<const tav::AppInfo>);
}

TEST(TextView, IsMadeOfEveryTextThatHasATerminator) {
  const std::string string = "string";
  tav::AppInfo app = {};
  std::strcpy(app.app_id, "field");
  tav::Text text(strdup("text"));
  EXPECT_EQ(TextView("literal").view(), "literal");
  EXPECT_EQ(TextView(string).data(), string.c_str());
  EXPECT_EQ(TextView(app.app_id).data(), app.app_id);
  EXPECT_EQ(TextView(text).data(), text.c_str());
  static_assert(!std::is_constructible_v<TextView, std::string_view>);
  static_assert(!std::is_convertible_v<TextView, bool>);
}

TEST(TextView, OfNoTextIsANullPointerAndReadAsAnEmptyText) {
  for (const TextView none : {TextView(nullptr), TextView(tav::Text())}) {
    EXPECT_FALSE(none.has_value());
    EXPECT_FALSE(static_cast<bool>(none));
    EXPECT_EQ(none.data(), nullptr);
    EXPECT_EQ(none.view(), "");
  }
  EXPECT_TRUE(TextView("").has_value());
}

}  // namespace
