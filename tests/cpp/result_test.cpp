// SPDX-License-Identifier: Apache-2.0
//
// The status of a call and its value: what may be asked of a success, of a failure, and of a
// temporary.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <tav_db_api.hpp>
#include <type_traits>
#include <utility>

namespace {

using tav::Result;
using tav::Status;
using tav::Text;

template <typename T, typename = void>
constexpr bool kHasStar = false;
template <typename T>
constexpr bool kHasStar<T, std::void_t<decltype(*std::declval<T>())>> = true;
template <typename T, typename = void>
constexpr bool kHasArrow = false;
template <typename T>
constexpr bool kHasArrow<T, std::void_t<decltype(std::declval<T>().operator->())>> = true;

// Counts how often a value of its kind was copied and moved.
struct Counted {
  Counted() noexcept = default;
  Counted(const Counted& other) : copies(other.copies + 1), moves(other.moves) {}
  Counted(Counted&& other) noexcept : copies(other.copies), moves(other.moves + 1) {}
  Counted& operator=(const Counted&) = default;
  Counted& operator=(Counted&&) noexcept = default;
  int copies = 0;
  int moves = 0;
};

TEST(Result, KeepsTheStatusAndTheValueOfASuccess) {
  const Result<int> result(Status::kOk, 5);
  EXPECT_EQ(result.status(), Status::kOk);
  EXPECT_TRUE(result.has_value());
  EXPECT_TRUE(static_cast<bool>(result));
  EXPECT_EQ(result.value(), 5);
  EXPECT_EQ(*result, 5);
  EXPECT_EQ(result.value_or(7), 5);
}

TEST(Result, IsAFailureWithAnEmptyValueFromItsBeginning) {
  EXPECT_EQ(Result<int>().status(), Status::kFailed);
  EXPECT_EQ(Result<int>().value(), 0);
  EXPECT_FALSE(Result<bool>().value());
  EXPECT_TRUE(Result<tav::AppList>().value().empty());
  EXPECT_FALSE(Result<Text>().value().has_value());
  EXPECT_EQ(Result<std::string>().value(), "");
  EXPECT_FALSE(Result<tav::Watch>().value());
}

TEST(Result, OfAFailureIsReadAsAnEmptyValueInEveryWay) {
  Result<Text> result(Status::kBusy, Text());
  EXPECT_EQ(result.status(), Status::kBusy);
  EXPECT_FALSE(result.has_value());
  EXPECT_FALSE(static_cast<bool>(result));
  EXPECT_STREQ(result->c_str(), "");
  EXPECT_EQ((*result).view(), "");
  EXPECT_EQ(std::as_const(result)->view(), "");
  EXPECT_EQ(std::move(result).value().str(), "");
  EXPECT_EQ(Result<int>(Status::kFailed, 0).value_or(7), 7);
}

TEST(Result, IsAFailureWithAStatusThatHasNoNameToo) {
  const Result<int> result(static_cast<Status>(-14), 0);
  EXPECT_FALSE(result.has_value());
  EXPECT_EQ(static_cast<int>(result.status()), -14);
}

TEST(Result, EmptiesTheValueThatAFailedCallHasLeft) {
  const Result<int> failed(tav::detail::FilledBy(), [](int& value) {
    value = 12;
    return Status::kBusy;
  });
  EXPECT_EQ(failed.status(), Status::kBusy);
  EXPECT_EQ(*failed, 0);
}

TEST(Result, GivesAValueThatOutlivesATemporary) {
  const auto make = [] { return Result<std::string>(Status::kOk, "a text of more than 16 bytes"); };
  const std::string& text = make().value();
  EXPECT_EQ(text, "a text of more than 16 bytes");
  std::string letters;
  for (const char letter : make().value()) letters += letter;
  EXPECT_EQ(letters, text);
  static_assert(std::is_same_v<decltype(make().value()), std::string>);
}

TEST(Result, MovesAValueOutOfATemporaryAndCopiesNone) {
  const Counted taken = Result<Counted>(Status::kOk, Counted()).value();
  EXPECT_EQ(taken.copies, 0);
  EXPECT_EQ(Result<Counted>(Status::kOk, Counted()).value_or(Counted()).copies, 0);
  auto list = tav::Result<std::unique_ptr<int>>(Status::kOk, std::make_unique<int>(3)).value();
  EXPECT_EQ(*list, 3);
}

TEST(Result, GivesItsValueForAChange) {
  Result<std::string> result(Status::kOk, "a");
  result->append("b");
  *result += "c";
  result.value() += "d";
  EXPECT_EQ(*result, "abcd");
}

TEST(Result, GivesNoReferenceIntoATemporary) {
  static_assert(kHasStar<Result<int>&> && kHasStar<const Result<int>&>);
  static_assert(!kHasStar<Result<int>> && !kHasStar<const Result<int>>);
  static_assert(kHasArrow<Result<Text>&> && kHasArrow<const Result<Text>&>);
  static_assert(!kHasArrow<Result<Text>> && !kHasArrow<const Result<Text>>);
}

TEST(Result, IsNoConditionWhereItsValueWouldBeOne) {
  static_assert(std::is_constructible_v<bool, Result<int>>);
  static_assert(!std::is_constructible_v<bool, Result<bool>>);
}

TEST(Result, IsConvertedToNothingUnasked) {
  static_assert(!std::is_convertible_v<Result<int>, int>);
  static_assert(!std::is_convertible_v<Result<int>, bool>);
  static_assert(!std::is_convertible_v<int, Result<int>>);
  static_assert(!std::is_convertible_v<Status, Result<int>>);
  static_assert(!std::is_convertible_v<Result<Text>, tav::TextView>);
}

TEST(Result, IsMovedLikeItsValueAndCopiedLikeIt) {
  static_assert(std::is_nothrow_move_constructible_v<Result<tav::AppList>>);
  static_assert(std::is_nothrow_move_assignable_v<Result<tav::AppList>>);
  static_assert(!std::is_copy_constructible_v<Result<tav::AppList>>);
  static_assert(!std::is_copy_constructible_v<Result<tav::Watch>>);
  static_assert(std::is_trivially_copyable_v<Result<tav::AppInfo>>);
  static_assert(sizeof(Result<tav::AppInfo>) == sizeof(tav::AppInfo) + sizeof(Status));
}

}  // namespace
