// SPDX-License-Identifier: Apache-2.0
//
// The owners of lists and texts, over blocks of the test's own. What they leak or free twice, the
// address sanitizer tells.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <numeric>
#include <string>
#include <tav_db_api.hpp>
#include <type_traits>
#include <utility>
#include <vector>

namespace {

using tav::Text;
using Apps = tav::MultiScreenList;

// A block as the library makes it, with the numbers 0, 1, 2, …
tav::MultiScreenApp* Block(std::size_t count) {
  auto* apps = static_cast<tav::MultiScreenApp*>(std::calloc(count, sizeof(tav::MultiScreenApp)));
  for (std::size_t i = 0; i < count; ++i) apps[i].is_multi_screen2 = static_cast<int>(i);
  return apps;
}

std::vector<int> Numbers(const Apps& apps) {
  std::vector<int> numbers;
  for (const tav::MultiScreenApp& app : apps) numbers.push_back(app.is_multi_screen2);
  return numbers;
}

TEST(List, IsEmptyAtFirst) {
  const Apps apps;
  EXPECT_TRUE(apps.empty());
  EXPECT_EQ(apps.size(), 0u);
  EXPECT_EQ(apps.data(), nullptr);
  EXPECT_EQ(apps.begin(), apps.end());
}

TEST(List, HasNoRecordsWithoutABlockWhateverTheirNumber) {
  EXPECT_TRUE(Apps(nullptr, 3).empty());
}

TEST(List, WalksOverItsRecordsAndFindsThemByTheirPositions) {
  tav::MultiScreenApp* const block = Block(3);
  Apps apps(block, 3);
  EXPECT_EQ(Numbers(apps), (std::vector<int>{0, 1, 2}));
  EXPECT_EQ(apps.size(), 3u);
  EXPECT_FALSE(apps.empty());
  EXPECT_EQ(apps.data(), block);
  EXPECT_EQ(&apps[2], block + 2);
  EXPECT_EQ(&std::as_const(apps)[1], block + 1);
  EXPECT_EQ(apps.end() - apps.begin(), 3);
}

TEST(List, GivesItsRecordsForAChangeAndKeepsThemFromOneWhenItIsConst) {
  Apps apps(Block(3), 3);
  apps[0].is_multi_screen2 = 7;
  std::sort(apps.begin(), apps.end(),
            [](const auto& a, const auto& b) { return a.is_multi_screen2 > b.is_multi_screen2; });
  EXPECT_EQ(Numbers(apps), (std::vector<int>{7, 2, 1}));
  static_assert(
      std::is_same_v<decltype(*std::declval<const Apps&>().begin()), const tav::MultiScreenApp&>);
  static_assert(
      std::is_same_v<decltype(std::declval<const Apps&>()[0]), const tav::MultiScreenApp&>);
  static_assert(
      std::is_same_v<decltype(std::declval<const Apps&>().data()), const tav::MultiScreenApp*>);
}

TEST(List, ServesTheAlgorithmsOfTheStandardLibrary) {
  const Apps apps(Block(4), 4);
  EXPECT_EQ(std::size(apps), 4u);
  EXPECT_EQ(std::data(apps), apps.data());
  EXPECT_EQ(std::accumulate(std::begin(apps), std::end(apps), 0,
                            [](int sum, const auto& app) { return sum + app.is_multi_screen2; }),
            6);
}

TEST(List, IsEmptyWhenItWasMovedFrom) {
  Apps first(Block(2), 2);
  Apps second(std::move(first));
  EXPECT_TRUE(first.empty());  // NOLINT(bugprone-use-after-move): what it promises
  EXPECT_EQ(first.begin(), first.end());
  EXPECT_EQ(Numbers(second), (std::vector<int>{0, 1}));
  Apps third(Block(5), 5);
  third = std::move(second);
  EXPECT_TRUE(second.empty());  // NOLINT(bugprone-use-after-move): what it promises
  EXPECT_EQ(Numbers(third), (std::vector<int>{0, 1}));
}

TEST(List, KeepsItsRecordsWhenItIsMovedToItself) {
  Apps apps(Block(2), 2);
  Apps& same = apps;
  apps = std::move(same);
  EXPECT_EQ(Numbers(apps), (std::vector<int>{0, 1}));
}

TEST(List, HandsItsBlockOver) {
  tav::MultiScreenApp* const block = Block(2);
  Apps apps(block, 2);
  EXPECT_EQ(apps.release(), block);
  EXPECT_TRUE(apps.empty());
  EXPECT_EQ(apps.release(), nullptr);
  std::free(block);
}

TEST(List, IsMovedAndNotCopied) {
  static_assert(std::is_nothrow_move_constructible_v<Apps> &&
                std::is_nothrow_move_assignable_v<Apps>);
  static_assert(!std::is_copy_constructible_v<Apps> && !std::is_copy_assignable_v<Apps>);
  static_assert(sizeof(Apps) == sizeof(void*) + sizeof(std::size_t));
}

TEST(Text, IsNoneAtFirstAndReadAsAnEmptyText) {
  const Text none;
  EXPECT_FALSE(none.has_value());
  EXPECT_FALSE(static_cast<bool>(none));
  EXPECT_STREQ(none.c_str(), "");
  EXPECT_EQ(none.view(), "");
  EXPECT_EQ(none.str(), "");
  EXPECT_FALSE(Text(nullptr).has_value());
}

TEST(Text, TellsAnEmptyTextFromNone) {
  const Text empty(strdup(""));
  EXPECT_TRUE(empty.has_value());
  EXPECT_TRUE(static_cast<bool>(empty));
  EXPECT_EQ(empty.view(), "");
}

TEST(Text, IsReadWhereItIs) {
  char* const block = strdup("Harbour");
  const Text text(block);
  EXPECT_EQ(text.c_str(), block);
  EXPECT_EQ(text.view().data(), block);
  EXPECT_EQ(text.view(), "Harbour");
  EXPECT_EQ(text.str(), "Harbour");
}

TEST(Text, HandsItsBlockOver) {
  char* const block = strdup("Harbour");
  Text text(block);
  EXPECT_EQ(text.release(), block);
  EXPECT_FALSE(text.has_value());
  EXPECT_EQ(text.release(), nullptr);
  std::free(block);
}

TEST(Text, IsNoneWhenItWasMovedFrom) {
  Text first(strdup("Harbour"));
  Text second = std::move(first);
  EXPECT_FALSE(first.has_value());  // NOLINT(bugprone-use-after-move): what it promises
  EXPECT_EQ(second.view(), "Harbour");
  static_assert(std::is_nothrow_move_assignable_v<Text> && !std::is_copy_constructible_v<Text>);
  static_assert(sizeof(Text) == sizeof(char*));
}

template <typename T, typename = void>
constexpr bool kHasView = false;
template <typename T>
constexpr bool kHasView<T, std::void_t<decltype(std::declval<T>().view())>> = true;
template <typename T, typename = void>
constexpr bool kHasCStr = false;
template <typename T>
constexpr bool kHasCStr<T, std::void_t<decltype(std::declval<T>().c_str())>> = true;

TEST(Text, GivesATemporarysTextAsACopyAlone) {
  static_assert(kHasView<Text&> && kHasView<const Text&> && !kHasView<Text>);
  static_assert(kHasCStr<Text&> && kHasCStr<const Text&> && !kHasCStr<Text>);
  EXPECT_EQ(Text(strdup("Harbour")).str(), "Harbour");
}

TEST(Text, IsMadeOfABlockOnlyOnPurpose) {
  static_assert(!std::is_convertible_v<char*, Text>);
  static_assert(!std::is_convertible_v<Text, bool>);
  static_assert(!std::is_convertible_v<Text, std::string_view>);
}

}  // namespace
