// SPDX-License-Identifier: Apache-2.0
//
// Callbacks in a forked child: its parent's are not there, and it may register its own.
#include <gtest/gtest.h>

#include "settings/watching.h"
#include "soak/child.h"

namespace {

using test::ForkedChild;
using test::Require;
using test::Texts;

class WatchInAChild : public test::WatchingEach {};

TEST_P(WatchInAChild, BeginsAnewWhereTheParentWatches) {
  ASSERT_EQ(setting.add(1, &first), 0);
  ForkedChild child([&] {
    Require(setting.remove(1) == -1, "the parent's callback");
    Require(setting.add(2, &second) == 0, "not registered");
    setting.Set(device, 5);
    Require(test::RunUntil([&] { return !told.empty(); }), "not told");
    Require(told == Texts{"2 second " + setting.Value(5)}, "told " + told.front());
    Require(setting.remove(2) == 0, "not unregistered");
  });
  EXPECT_EQ(child.Complaint(), "");
  EXPECT_FALSE(log.Has(std::string("failed to unregister cb for (") + setting.name + ")"));
  EXPECT_EQ(Delivered(), Texts{"1 first " + setting.Value(5)});
  EXPECT_EQ(setting.remove(1), 0);
}

INSTANTIATE_TEST_SUITE_P(OfEach, WatchInAChild, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

}  // namespace
