// SPDX-License-Identifier: Apache-2.0
//
// A watch that begins without memory. The function below stands before the one that the layer
// takes its memory from.
#include <gtest/gtest.h>

#include <new>
#include <tav_db_api.hpp>

#include "settings/watching.h"

namespace {

bool g_is_memory_short = false;

}  // namespace

void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  if (g_is_memory_short) return nullptr;
  try {
    return ::operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

namespace {

using CppWatchMemory = test::Watching;

TEST_F(CppWatchMemory, FailsForWantOfItAndStoresNothing) {
  const auto note = [this](int value) { told.push_back(std::to_string(value)); };
  g_is_memory_short = true;
  const tav::Result<tav::Watch> watch = tav::WatchFactoryResetType(note);
  g_is_memory_short = false;
  EXPECT_EQ(watch.status(), tav::Status::kFailed);
  EXPECT_FALSE(*watch);
  EXPECT_EQ(test::TakeWatchCalls(), test::WatchCalls());
  const tav::Result<tav::Watch> another = tav::WatchFactoryResetType(note);
  EXPECT_TRUE(another);
  EXPECT_EQ(DeliveredAfter("db/tav/factory_reset", 4), test::Texts{"4"});
}

}  // namespace
