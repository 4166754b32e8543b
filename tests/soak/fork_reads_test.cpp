// SPDX-License-Identifier: Apache-2.0
//
// Reads in a child that was forked from a process that reads.
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <memory>

#include "platform/threads.h"
#include "soak/child.h"
#include "support/device.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::ForkedChild;
using test::Require;

constexpr int kApps = 40;
constexpr tav_app_filter_s kEveryApp = {65535, 0, 65535};

std::string IdOf(int app) {
  return "app" + std::to_string(app);
}

void RequireRead(int app) {
  tav_app_info_s info;
  const int result = tav_get_app_info(IdOf(app).c_str(), &info);
  Require(result == 0, "lookup: " + std::to_string(result));
  Require(info.app_id == IdOf(app) && info.app_index == app, "another app");
}

void RequireList() {
  tav_app_info_s* list = nullptr;
  int count = 0;
  const int result = tav_get_app_list(kEveryApp, TAV_APP_VIEWMODE_CATALOGUE, -1, 0, &list, &count);
  const std::unique_ptr<tav_app_info_s, decltype(&std::free)> owner(list, &std::free);
  Require(result == 0 && count == kApps, "list: " + std::to_string(result));
  for (int i = 0; i < count; ++i) Require(list[i].app_id == IdOf(i), "another list");
}

void RequireReads() {
  RequireRead(7);
  RequireList();
}

// In the child of a process that may have been in a call.
void RequireReadsOrRefusals() {
  tav_app_info_s info;
  if (tav_get_app_info("app7", &info) == 0) return RequireReads();
  Require(tav_get_app_info("app7", &info) == -1, "refused for a time");
}

class ForkedReads : public ::testing::Test {
 protected:
  ForkedReads() {
    std::vector<App> apps;
    for (int app = 0; app < kApps; ++app) apps.push_back(App(IdOf(app)).Index(app));
    device.InstallAll(apps);
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(ForkedReads, WorkInTheChildOnAConnectionOfItsOwn) {
  RequireReads();
  EXPECT_EQ(log.Count("Connected to DB"), 1);
  EXPECT_EQ(ForkedChild(RequireReads).Complaint(), "");
  EXPECT_EQ(log.Count("Connected to DB"), 2);
  RequireReads();
  EXPECT_EQ(log.Count("Connected to DB"), 2);  // the parent still has its first
}

TEST_F(ForkedReads, WorkInTheChildWhenTheParentHasNotReadYet) {
  EXPECT_EQ(ForkedChild(RequireReads).Complaint(), "");
  RequireReads();
}

TEST_F(ForkedReads, WorkInTheChildsChildren) {
  RequireReads();
  ForkedChild child([] {
    RequireReads();
    Require(ForkedChild([] {
              RequireReads();
              Require(ForkedChild(RequireReads).Complaint().empty(), "in its child");
              RequireReads();
            })
                .Complaint()
                .empty(),
            "in its child");
    RequireReads();
  });
  RequireReads();
  EXPECT_EQ(child.Complaint(), "");
}

class ForkedReadsInMode : public ForkedReads, public ::testing::WithParamInterface<const char*> {};

TEST_P(ForkedReadsInMode, TellWhatTheServiceHasWrittenSince) {
  device.Sql("pragma journal_mode = " + std::string(GetParam()));
  RequireReads();
  const auto read = [] {
    tav_app_info_s info;
    return tav_get_app_info("app7", &info) == 0 ? std::string(info.app_title) : "nothing";
  };
  int ready[2];
  int go[2];
  ASSERT_EQ(pipe(ready), 0);
  ASSERT_EQ(pipe(go), 0);
  ForkedChild child([&] {
    Require(read().empty(), "not what was written before");
    close(go[1]);
    char byte = 'x';
    Require(write(ready[1], &byte, 1) == 1 && ::read(go[0], &byte, 1) == 0, "not told");
    Require(read() == "new", "not what was written since");
  });
  close(ready[1]);
  close(go[0]);
  char byte;
  ASSERT_EQ(::read(ready[0], &byte, 1), 1);
  device.Sql("update widgetinfo set title = 'new'");
  EXPECT_EQ(read(), "new");
  close(go[1]);
  close(ready[0]);
  EXPECT_EQ(child.Complaint(), "");
}

INSTANTIATE_TEST_SUITE_P(EachJournal, ForkedReadsInMode, ::testing::Values("delete", "wal"));

// Were the child to close what it has inherited, or the parent's locks to be lost, the writer
// would not be kept out, or the parent not let in again.
TEST_F(ForkedReads, LeaveTheParentsConnectionAsItWas) {
  RequireReads();
  for (int i = 0; i < 20; ++i) {
    ForkedChild child(RequireReads);
    RequireReads();
    ASSERT_EQ(child.Complaint(), "");
    device.Sql("begin exclusive; update widgetinfo set version = " + std::to_string(i) +
               "; commit");
    RequireReads();
  }
  EXPECT_EQ(log.Count("unknown type 5"), 0);
}

// Such a child can read or cannot, for good, and never hangs.
TEST_F(ForkedReads, WorkOrAreRefusedInChildrenOfThreadsBesideReadingOnes) {
  setenv("DLOG_LEVEL", "F", 1);  // too many lines to be of use
  constexpr int kThreads = 6;
  constexpr int kChildren = 40;  // of each thread that forks
  std::atomic<int> done{0};
  std::vector<std::string> complaints(kThreads);
  {
    const Threads threads(kThreads, [&](int number) {
      try {
        if (number < 2) {
          for (int i = 0; i < kChildren; ++i) {
            const std::string complaint = ForkedChild(RequireReadsOrRefusals).Complaint();
            Require(complaint.empty(), "child " + std::to_string(i) + ": " + complaint);
          }
          ++done;
        } else {
          while (done < 2) RequireReads();
        }
      } catch (const std::exception& error) {
        complaints[static_cast<std::size_t>(number)] = error.what();
        ++done;
      }
    });
  }
  EXPECT_EQ(complaints, std::vector<std::string>(kThreads));
  RequireReads();
}

}  // namespace
