// SPDX-License-Identifier: Apache-2.0
//
// The lists when memory runs out. malloc below stands before the C library's own and fails from
// a size on that a test sets.
#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <cstdint>

#include "api/list_calls.h"
#include "support/device.h"

namespace {

std::atomic<std::size_t> g_fails_from{SIZE_MAX};

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
  if (size < g_fails_from) return __libc_malloc(size);
  errno = ENOMEM;
  return nullptr;
}

}  // extern "C"

namespace {

using test::ListCall;
using test::Shown;

class MemoryFailsFrom {
 public:
  explicit MemoryFailsFrom(std::size_t size) { g_fails_from = size; }
  ~MemoryFailsFrom() { g_fails_from = SIZE_MAX; }
  MemoryFailsFrom(const MemoryFailsFrom&) = delete;
  MemoryFailsFrom& operator=(const MemoryFailsFrom&) = delete;
};

class ListMemory : public ::testing::TestWithParam<ListCall> {
 protected:
  ListMemory() {
    for (int i = 0; i < 100; ++i) ids.push_back("app" + std::to_string(i));
    std::vector<test::App> apps;
    for (int i = 0; i < 100; ++i) apps.push_back(Shown(ids[static_cast<std::size_t>(i)], i));
    device.InstallAll(apps);
  }
  std::size_t BlockSize() const { return ids.size() * call.RecordSize(); }

  test::Device device;
  test::Log& log = device.GetLog();
  const ListCall& call = GetParam();
  test::Ids ids;
};

TEST_P(ListMemory, GivesANullListAndNoRecordsWhenTheBlockCannotBeMade) {
  ASSERT_EQ(call.ask({}), call.Gives(ids));
  log.Forget();
  {
    const MemoryFailsFrom failing(BlockSize());
    EXPECT_EQ(call.ask({}), call.CannotRead(-1));
  }
  EXPECT_EQ(log.Count(call.no_memory), 1);
  EXPECT_TRUE(log.HasError(call.no_memory));
  EXPECT_EQ(log.Messages('E').size(), 1U);
  EXPECT_EQ(call.ask({}), call.Gives(ids));
}

TEST_P(ListMemory, AsksForNoMoreThanTheBlockItGives) {
  ASSERT_EQ(call.ask({}), call.Gives(ids));
  const MemoryFailsFrom failing(BlockSize() + 1);
  EXPECT_EQ(call.ask({}), call.Gives(ids));
}

INSTANTIATE_TEST_SUITE_P(All, ListMemory, ::testing::ValuesIn(test::kListCalls),
                         test::NameOfListCall);

TEST(ListExceptions, BecomeAFailureThatWritesNothingAndGivesTheLockBack) {
  test::Device device;
  device.Install(Shown("a", 0));
  ASSERT_EQ(test::KeyApps("is_ticker"), test::Listed({"a"}));
  const std::string key(100000, 'k');
  {
    const MemoryFailsFrom failing(key.size());  // no room for the text of the statement
    EXPECT_EQ(test::KeyApps(key), test::Refused());
  }
  EXPECT_TRUE(device.GetLog().HasError("tav_get_key_list failed: std::bad_alloc"));
  EXPECT_EQ(test::KeyApps("is_ticker"), test::Listed({"a"}));
}

TEST(UsageExceptions, BecomeAFailureThatGivesTheLockBack) {
  test::Device device;
  const std::string id(100000, 'i');
  device.Install(Shown(id, 0));
  for (const auto check : {tav_check_is_recently_used_app, tav_check_is_most_used_app}) {
    ASSERT_EQ(check(id.c_str()), 0);
    {
      const MemoryFailsFrom failing(id.size());  // no room for a copy of the id
      EXPECT_EQ(check(id.c_str()), -1);
    }
    EXPECT_EQ(check(id.c_str()), 0);
  }
}

}  // namespace
