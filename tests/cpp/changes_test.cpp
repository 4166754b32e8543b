// SPDX-License-Identifier: Apache-2.0
//
// Changes through the service, through the C++ layer.
#include <type_traits>

#include "answers.h"
#include "bus/on_the_bus.h"

namespace {

using tav::Status;
using test::Service;
using test::Told;

class CppChanges : public OnTheBus {
 protected:
  // The one request that reached the service since the last question, but for heartbeats.
  std::string Asked() {
    std::string asked;
    for (const test::ServiceCall& call : service.Calls()) {
      if (call.method != "heartbeat") asked += call.method + call.parameters;
    }
    service.Forget();
    return asked;
  }

  Service service{bus};
};

TEST_F(CppChanges, LockAnAppAndUnlockIt) {
  EXPECT_EQ(tav::SetAppLock("clock", true), Status::kOk);
  EXPECT_EQ(IsLocked("clock"), 1);
  EXPECT_EQ(AppChange(), 1);
  EXPECT_EQ(tav::SetAppLock("clock", false), Status::kOk);
  EXPECT_EQ(IsLocked("clock"), 0);
}

template <typename T, typename = void>
constexpr bool kLocks = false;
template <typename T>
constexpr bool kLocks<T, std::void_t<decltype(tav::SetAppLock("", std::declval<T>()))>> = true;

TEST_F(CppChanges, TakeNoNumberForWhetherToLock) {
  static_assert(kLocks<bool> && !kLocks<int> && !kLocks<const char*>);
}

TEST_F(CppChanges, RateCountAndMarkAnApp) {
  EXPECT_EQ(tav::SetAppRating("clock", 4), Status::kOk);
  EXPECT_EQ(Told(tav::GetAppRating("clock")), "0 4");
  Asked();
  EXPECT_EQ(tav::UpdateAppUseCount("clock"), Status::kOk);
  EXPECT_NE(Asked().find("'clock'"), std::string::npos);
  EXPECT_EQ(tav::GetAppInfo("clock").value().use_count, 1);
  EXPECT_EQ(tav::SetAppUpdated("clock"), Status::kOk);
  EXPECT_NE(Asked().find("'clock'"), std::string::npos);
}

TEST_F(CppChanges, SetTheTickerAndReadIt) {
  EXPECT_EQ(tav::SetTickerMode(3), Status::kOk);
  EXPECT_EQ(Told(tav::GetTickerMode()), "0 3");
}

TEST_F(CppChanges, FailWithoutAnId) {
  EXPECT_EQ(tav::SetAppLock(nullptr, true), Status::kFailed);
  EXPECT_EQ(tav::SetAppRating("", 1), Status::kFailed);
  EXPECT_EQ(tav::UpdateAppUseCount(nullptr), Status::kFailed);
  EXPECT_EQ(tav::SetAppUpdated(tav::Text()), Status::kFailed);
  EXPECT_EQ(Asked(), "");
}

TEST_F(CppChanges, FailWithoutTheService) {
  service.Stop();
  EXPECT_EQ(tav::SetAppLock("clock", true), Status::kFailed);
  EXPECT_EQ(tav::SetTickerMode(3), Status::kFailed);
  EXPECT_EQ(Told(tav::GetTickerMode()), "-1 0");
}

TEST_F(CppChanges, TellABusyDatabaseFromARefusal) {
  const auto writer = test::BusyWriter(device);
  EXPECT_EQ(tav::SetAppRating("clock", 4), Status::kBusy);
}

}  // namespace
