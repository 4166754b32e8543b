// SPDX-License-Identifier: Apache-2.0
//
// The lists over a database that fails, is busy, or changes: at the count, at the rows, and
// between the two. After each failure a call gives the whole list again.
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <new>

#include "api/list_calls.h"
#include "support/device.h"
#include "support/unreadable_row.h"
#include "support/writer.h"

namespace {

using test::BeforePreparing;
using test::ExclusiveWriter;
using test::Ids;
using test::ListCall;
using test::Listing;
using test::Shown;

class ListFaults : public ::testing::TestWithParam<ListCall> {
 protected:
  ListFaults() { device.InstallAll({Shown("a", 0), Shown("b", 1), Shown("c", 2)}); }

  Listing Ask() const { return call.ask({}); }
  Listing Whole() const { return call.Gives({"a", "b", "c"}); }
  // A full list keeps the size of its count; a multi-screen list needs at least one row.
  Listing GivesNoRows() const {
    return call.is_short ? call.CannotRead(-1) : call.Gives({"", "", ""});
  }
  std::unique_ptr<ExclusiveWriter> Writer() const {
    return std::make_unique<ExclusiveWriter>(device.DatabaseFile(), std::chrono::seconds(30));
  }
  void ExpectComplaint(const char* message) const {
    EXPECT_EQ(log.Count(message), 1) << message;
    EXPECT_TRUE(log.HasError(message)) << message;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  const ListCall& call = GetParam();
};

TEST_P(ListFaults, FailAtACountThatCannotBePrepared) {
  device.Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(Ask(), call.CannotPrepareItsCount(-1));
  ExpectComplaint(call.count_failed);
  device.Sql("alter table aside rename to widgetinfo");
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, FailAtACountWhoseTableHasGone) {
  ASSERT_EQ(Ask(), Whole());
  log.Forget();
  device.Sql("alter table widgetinfo rename to aside");
  EXPECT_EQ(Ask(), test::NotCounted(-1));
  ExpectComplaint(call.count_failed);
  device.Sql("alter table aside rename to widgetinfo");
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, AreBusyAtTheCountsPreparationOnTheFirstQuery) {
  auto writer = Writer();
  EXPECT_EQ(Ask(), call.CannotPrepareItsCount(-2));
  EXPECT_TRUE(log.Has("prepare retry is up to MAX_RETRY_COUNT"));
  ExpectComplaint(call.count_failed);
  writer.reset();
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, AreBusyAtTheCountsRowOnALaterQuery) {
  ASSERT_EQ(Ask(), Whole());
  auto writer = Writer();
  EXPECT_EQ(Ask(), test::NotCounted(-2));
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
  ExpectComplaint(call.count_failed);
  writer.reset();
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, FailAtRowsThatCannotBePrepared) {
  device.Sql("alter table widgetinfo rename column " + call.SelectedColumn() + " to aside");
  EXPECT_EQ(Ask(), call.CannotRead(-1));
  ExpectComplaint(call.not_read);
  device.Sql("alter table widgetinfo rename column aside to " + call.SelectedColumn());
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, AreBusyAtTheRows) {
  ASSERT_EQ(Ask(), Whole());
  std::unique_ptr<ExclusiveWriter> writer;
  BeforePreparing(call.Select(), [&] { writer = Writer(); });
  EXPECT_EQ(Ask(), call.CannotRead(-2));
  ASSERT_NE(writer, nullptr);
  EXPECT_TRUE(log.Has("step retry is up to MAX_RETRY_COUNT"));
  EXPECT_TRUE(log.Has("Get DB fail:sql busy"));
  ExpectComplaint(call.not_read);
  writer.reset();
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, SucceedLateWhenTheWriterIsDoneInTime) {
  ASSERT_EQ(Ask(), Whole());
  std::unique_ptr<ExclusiveWriter> writer;
  BeforePreparing(call.Select(), [&] {
    writer =
        std::make_unique<ExclusiveWriter>(device.DatabaseFile(), std::chrono::milliseconds(200));
  });
  EXPECT_EQ(Ask(), Whole());
  EXPECT_TRUE(log.Has("retry step"));
  EXPECT_FALSE(log.Has("step retry is up to MAX_RETRY_COUNT"));
}

TEST_P(ListFaults, TakeATableThatGoesAfterTheCountForTheEndOfItsRows) {
  ASSERT_EQ(Ask(), Whole());
  BeforePreparing(call.Select(), [&] { device.Sql("alter table widgetinfo rename to aside"); });
  EXPECT_EQ(Ask(), GivesNoRows());
  device.Sql("alter table aside rename to widgetinfo");
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, LeaveEmptyRecordsAtTheEndForRowsThatGoAfterTheCount) {
  BeforePreparing(call.Select(), [&] { device.Sql("delete from widgetinfo where id = 'b'"); });
  EXPECT_EQ(Ask(), call.Gives({"a", "c", ""}));
  EXPECT_EQ(Ask(), call.Gives({"a", "c"}));
}

TEST_P(ListFaults, LeaveOnlyEmptyRecordsOrFailWhenAllRowsGoAfterTheCount) {
  BeforePreparing(call.Select(), [&] { device.Sql("delete from widgetinfo"); });
  EXPECT_EQ(Ask(), GivesNoRows());
  EXPECT_EQ(log.Count(call.not_read), call.is_short ? 1 : 0);
  EXPECT_EQ(Ask(), test::NothingMatches());
}

// Where the rows are put in order, none of them comes before all have been read.
TEST_P(ListFaults, LeaveEmptyRecordsFromTheFirstRowOnThatCannotBeRead) {
  test::MakeUnreadable(device, "b");
  const bool is_ordered = std::string(call.name) != "tav_get_key_list";
  EXPECT_EQ(Ask(), is_ordered ? GivesNoRows() : call.Gives({"a", "", ""}));
  EXPECT_TRUE(log.HasError("unknown type 11"));
}

TEST_P(ListFaults, DropRowsThatComeAfterTheCount) {
  BeforePreparing(call.Select(), [&] { device.Install(Shown("d", 3)); });
  EXPECT_EQ(Ask(), Whole());
  EXPECT_EQ(Ask(), call.Gives({"a", "b", "c", "d"}));
}

TEST_P(ListFaults, FailWhenAnExceptionEndsTheCount) {
  BeforePreparing("select count(id)", [] { throw std::bad_alloc(); });
  const Listing listing = Ask();
  EXPECT_EQ(listing.result, -1);
  EXPECT_EQ(listing.pointer, test::Pointer::kUntouched);
  EXPECT_EQ(Ask(), Whole());
}

TEST_P(ListFaults, GiveNothingWhenAnExceptionEndsTheRows) {
  BeforePreparing(call.Select(), [] { throw std::bad_alloc(); });
  EXPECT_EQ(Ask(), call.CannotRead(-1));
  const std::vector<std::string> errors = log.Messages('E');
  ASSERT_FALSE(errors.empty());
  EXPECT_NE(errors.back().find(" failed: std::bad_alloc"), std::string::npos) << errors.back();
  EXPECT_EQ(Ask(), Whole());
}

INSTANTIATE_TEST_SUITE_P(All, ListFaults, ::testing::ValuesIn(test::kListCalls),
                         test::NameOfListCall);

class ChangingList : public ::testing::Test {
 protected:
  test::Device device;
};

TEST_F(ChangingList, KeepsTheCatalogueOrderWhenEmptyRecordsStopTheLastDownloadOrder) {
  device.InstallAll(
      {test::App("1").Index(1), test::App("300").Index(300), test::App("301").Index(301)});
  ASSERT_EQ(test::AllApps(), test::Listed({"301", "300", "1"}));
  for (const bool is_filtered : {true, false}) {
    BeforePreparing(test::kSelectApps,
                    [&] { device.Sql("delete from widgetinfo where id = '1'"); });
    EXPECT_EQ(is_filtered ? test::FullList(test::EveryApp(), 2) : test::AllApps(),
              test::Listed({"300", "301", ""}));
    device.Install(test::App("1").Index(1));
  }
}

TEST_F(ChangingList, FailsWhereTheOrdersColumnIsMissing) {
  device.Install(Shown("a", 0)).Sql("alter table widgetinfo drop column launch_date");
  EXPECT_EQ(test::FullList(test::EveryApp(), 5), test::NotRead(-1));
  EXPECT_EQ(test::ShortList(test::EveryApp(), 5), test::NotRead(-1));
  EXPECT_EQ(test::RecentApps(), test::NotRead(-1));
  EXPECT_EQ(test::FullList(test::EveryApp(), 0), test::Listed({"a"}));
}

}  // namespace
