// SPDX-License-Identifier: Apache-2.0
//
// The exported changes: the order of their checks, their messages, and what they tell watchers.
#include "on_the_bus.h"
#include "support/writer.h"

namespace {

using test::App;
using test::Service;

struct ExportedChange {
  const char* name;
  int (*call)(const char* app_id);
  bool asks_for_reset;  // refused during a factory reset
};

std::ostream& operator<<(std::ostream& out, const ExportedChange& change) {
  return out << change.name;
}

const ExportedChange kChanges[] = {
    {"tav_set_app_lock", [](const char* id) { return tav_set_app_lock(id, 1); }, true},
    {"tav_set_app_rating", [](const char* id) { return tav_set_app_rating(id, 1); }, true},
    {"tav_db_update_app_use_count", tav_db_update_app_use_count, false},
    {"tav_db_set_app_updated", tav_db_set_app_updated, false},
};

class Change : public OnTheBus, public ::testing::WithParamInterface<ExportedChange> {
 protected:
  int Call(const char* id) { return GetParam().call(id); }
  std::string NullComplaint() const {
    return GetParam().asks_for_reset ? "app_id is NULL " : "in param is NULL ";
  }
  std::string EmptyComplaint() const {
    return GetParam().asks_for_reset ? "app_id is empty " : "in param is NULL ";
  }

  Service service{bus};
};

TEST_P(Change, IsDoneAndTellsWatchersOfTheListWhereItChangesTheList) {
  EXPECT_EQ(Call("clock"), 0);
  EXPECT_EQ(log.Count("Set app changed to vconf succesfully."), GetParam().asks_for_reset ? 1 : 0);
}

TEST_P(Change, IsRefusedDuringAFactoryResetWhereItAsksForOne) {
  device.FactoryReset(1);
  EXPECT_EQ(Call("clock"), GetParam().asks_for_reset ? -1 : 0);
  EXPECT_EQ(log.Has("FactoryReset is true"), GetParam().asks_for_reset);
  EXPECT_EQ(service.Calls().empty(), GetParam().asks_for_reset);
}

TEST_P(Change, IsRefusedDuringARecoveryOfThePackageManager) {
  device.Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Call("clock"), -1);
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  EXPECT_TRUE(service.Calls().empty());
}

TEST_P(Change, IsRefusedWithoutAnId) {
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_TRUE(log.HasError(NullComplaint()));
  log.Forget();
  EXPECT_EQ(Call(""), -1);
  EXPECT_TRUE(log.HasError(EmptyComplaint()));
  EXPECT_TRUE(service.Calls().empty());
}

TEST_P(Change, AsksForTheStatesOfThePlatformBeforeTheId) {
  device.FactoryReset(2).Write("opt/dbspace/pkgreinstall", "");
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_EQ(log.Has("FactoryReset is true"), GetParam().asks_for_reset);
  EXPECT_EQ(log.Has("Pkgmgr is recovering"), !GetParam().asks_for_reset);
  device.FactoryReset(0);
  EXPECT_EQ(Call(nullptr), -1);
  EXPECT_TRUE(log.Has("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has(NullComplaint()));
}

TEST_P(Change, ReleasesTheLockOnEveryPath) {
  // Were it kept on one of them, the last call would never return.
  Call(nullptr);
  Call("");
  Call("no such app");
  device.FactoryReset(1);
  Call("clock");
  device.FactoryReset(0);
  service.Fault("*", "status:1");
  Call("clock");
  EXPECT_EQ(IsLocked("weather"), 0);
}

INSTANTIATE_TEST_SUITE_P(All, Change, ::testing::ValuesIn(kChanges),
                         [](const auto& change) { return std::string(change.param.name); });

class Rating : public OnTheBus {
 protected:
  Service service{bus};
};

TEST_F(Rating, OfAnAppThatIsNotThereForCallersFailsWithoutAWordOnTheBus) {
  device.Install(App("half").InstallState(2)).Install(App("gone").Unavailable());
  device.Install(App("reset").MarkedForReset());
  for (const std::string id : {"half", "gone", "reset", "none"}) {
    EXPECT_EQ(tav_set_app_rating(id.c_str(), 1), -1);
    EXPECT_TRUE(log.Has("app:" + id + " isn't exit or unavailable"));
  }
  EXPECT_TRUE(service.Calls().empty());
  EXPECT_EQ(bus.Owner(ClientName()), "");
}

TEST_F(Rating, IsBusyWhenTheDatabaseStaysBusyAndSaysNothingOnTheBus) {
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(tav_set_app_rating("clock", 1), -2);
  EXPECT_TRUE(log.Has("app:clock isn't exit or unavailable"));
  EXPECT_TRUE(service.Calls().empty());
}

TEST_F(Rating, AndLockTellOfTheirFinish) {
  EXPECT_EQ(tav_set_app_rating("clock", 4), 0);
  EXPECT_EQ(tav_set_app_lock("clock", 2), 0);
  EXPECT_TRUE(log.Has("app_id :[clock],rating:[4]"));
  EXPECT_TRUE(log.Has("Finish,app_id :[clock],rating:[4] "));
  EXPECT_TRUE(log.Has("app_id :[clock],is_lock:[2]"));
  EXPECT_TRUE(log.Has("Finish,app_id :[clock],is_lock:[2] "));
}

TEST_F(Rating, AndLockSucceedAlsoWhenWatchersCannotBeTold) {
  // A directory where the setting's file should be: the service and the library fail alike.
  std::filesystem::create_directories(device.Root() / "vconf/memory/tav/app_change/x");
  EXPECT_EQ(tav_set_app_lock("clock", 1), 0);
  EXPECT_EQ(tav_set_app_rating("clock", 4), 0);
  EXPECT_EQ(IsLocked("clock"), 1);
  EXPECT_EQ(log.Count("Set app changed to vconf fail."), 2);
  EXPECT_TRUE(log.HasError("Set app changed to vconf fail."));
}

TEST_F(Rating, OfAnAppFoundByAnotherNameIsRefused) {
  device.Install(App("other").TizenId("tizen"));
  EXPECT_EQ(tav_set_app_rating("tizen", 1), -1);
}

TEST(TickerMode, IsRefusedANullPlaceForItsValue) {
  const test::Device device;
  EXPECT_EQ(tav_get_ticker_mode(nullptr), -1);
  EXPECT_TRUE(device.GetLog().Has("in param is NULL "));
}

}  // namespace
