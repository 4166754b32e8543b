// SPDX-License-Identifier: Apache-2.0
//
// Callables that are called for changes of settings: what they are told, which may be handed
// over, and what becomes of their exceptions.
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <tav_db_api.hpp>
#include <utility>

#include "settings/watching.h"

namespace {

using tav::Result;
using tav::Status;
using tav::TextView;
using tav::Watch;
using test::Ignore;
using test::kReset;
using test::Notify;
using test::TakeWatchCalls;
using test::Texts;
using test::WatchCalls;

constexpr char kInstalled[] = "memory/tav/app_install";

class CppWatch : public test::Watching {
 protected:
  // A callable that notes a name and what it is told.
  auto Noting(const std::string& name) {
    return [this, name](int value) { told.push_back(name + " " + std::to_string(value)); };
  }
  auto NotingText() {
    return [this](TextView value) {
      told.push_back(value ? "text " + std::string(value.view()) : "no text");
    };
  }
};

struct IntSetting {
  const char* key;
  Result<Watch> (*watch)(std::function<void(int)>&&);
};
constexpr IntSetting kIntSettings[] = {
    {kReset, tav::WatchFactoryResetType},
    {"memory/tav/appsync", tav::WatchAppsyncStart},
    {"db/homedeck/reset/tavcore", tav::WatchHomedeckResetStatus},
};

TEST_F(CppWatch, TellsOfItsSettingAndOfNoOther) {
  for (const IntSetting& setting : kIntSettings) {
    const Result<Watch> watch = setting.watch(Noting(setting.key));
    ASSERT_TRUE(watch) << setting.key;
    EXPECT_TRUE(static_cast<bool>(*watch));
    for (const IntSetting& other : kIntSettings) device.Setting(other.key, 5);
    device.Setting(kInstalled, std::string("org.example.clock"));
    EXPECT_EQ(Delivered(), Texts{std::string(setting.key) + " 5"});
  }
}

TEST_F(CppWatch, TellsOfAnInstalledAppAndOfNoText) {
  const Result<Watch> watch = tav::WatchInstalledAppId(NotingText());
  ASSERT_TRUE(watch);
  EXPECT_EQ(DeliveredAfter(kInstalled, std::string("org.example.clock")),
            Texts{"text org.example.clock"});
  EXPECT_EQ(DeliveredAfter(kInstalled, std::string()), Texts{"text "});
  EXPECT_EQ(DeliveredAfter(kInstalled, 5), Texts{"no text"});
}

TEST_F(CppWatch, CallsManyOfOneTypeInTheOrderOfTheirComing) {
  std::vector<Watch> watches;
  for (const char* name : {"a", "b", "c"}) {
    watches.push_back(tav::WatchFactoryResetType(Noting(name)).value());
  }
  EXPECT_EQ(DeliveredAfter(kReset, 4), (Texts{"a 4", "b 4", "c 4"}));
}

TEST_F(CppWatch, AsksThePlatformOnceAndEndsItWithTheLast) {
  Result<Watch> one = tav::WatchFactoryResetType(Noting("a"));
  Result<Watch> two = tav::WatchFactoryResetType(Noting("b"));
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(kReset, nullptr)});
  one->reset();
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
  two->reset();
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(kReset)});
  const Result<Watch> three = tav::WatchFactoryResetType(Noting("c"));
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(kReset, nullptr)});
  EXPECT_EQ(DeliveredAfter(kReset, 4), Texts{"c 4"});
}

TEST_F(CppWatch, LeavesTheCallbacksOfTheInterfaceAlone) {
  ASSERT_EQ(tav_register_factory_reset_type_changed_cb(test::TellInt<1>, &first), 0);
  {
    const Result<Watch> watch = tav::WatchFactoryResetType(Noting("a"));
    EXPECT_EQ(DeliveredAfter(kReset, 4), (Texts{"1 first 4", "a 4"}));
  }
  EXPECT_EQ(DeliveredAfter(kReset, 5), Texts{"1 first 5"});
  EXPECT_EQ(tav_unregister_factory_reset_type_changed_cb(test::TellInt<1>), 0);
}

int g_last_value = 0;
int g_values = 0;
void AddValue(int value) {
  g_values += value;
}

TEST_F(CppWatch, TakesWhateverCanBeCalled) {
  const Result<Watch> function =
      tav::WatchFactoryResetType(+[](int value) { g_last_value = value; });
  const Result<Watch> named = tav::WatchFactoryResetType(AddValue);
  std::function<void(int)> noting = Noting("copied");
  const Result<Watch> copied = tav::WatchFactoryResetType(noting);
  noting = Noting("not this one");
  auto counter = std::make_unique<int>(0);
  const int* count = counter.get();
  const Result<Watch> moved = tav::WatchFactoryResetType(
      [counter = std::move(counter)](long) mutable { return ++*counter; });
  EXPECT_EQ(DeliveredAfter(kReset, 4), Texts{"copied 4"});
  EXPECT_EQ(g_last_value, 4);
  EXPECT_EQ(g_values, 4);
  EXPECT_EQ(*count, 1);
}

TEST_F(CppWatch, FailsForNothingToCall) {
  void (*const no_function)(int) = nullptr;
  EXPECT_EQ(tav::WatchFactoryResetType(no_function).status(), Status::kFailed);
  const Result<Watch> empty = tav::WatchFactoryResetType(std::function<void(int)>());
  EXPECT_EQ(empty.status(), Status::kFailed);
  EXPECT_FALSE(*empty);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_F(CppWatch, FailsWhenThePlatformRefusesAndStoresNothing) {
  const std::filesystem::path directory = device.Root() / "vconf/memory/tav";
  device.Write("vconf/memory/tav", "in the way");
  {
    const Result<Watch> watch = tav::WatchAppsyncStart(Noting("a"));
    EXPECT_EQ(watch.status(), Status::kFailed);
    EXPECT_FALSE(*watch);
  }
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify("memory/tav/appsync", nullptr)});
  std::filesystem::remove(directory);
  const Result<Watch> watch = tav::WatchAppsyncStart(Noting("b"));
  EXPECT_TRUE(watch);
  EXPECT_EQ(DeliveredAfter("memory/tav/appsync", 4), Texts{"b 4"});
}

// Copied once more than it can be.
struct Uncopyable {
  Uncopyable() = default;
  Uncopyable(const Uncopyable& /*other*/) { throw std::runtime_error("no copy"); }
  void operator()(int /*value*/) const {}
};

TEST_F(CppWatch, LetsOutWhatCopyingTheCallableThrowsAndStoresNothing) {
  const Uncopyable callable;
  EXPECT_THROW((void)tav::WatchFactoryResetType(callable), std::runtime_error);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_F(CppWatch, LogsWhatACallableThrowsAfterAllHaveBeenCalled) {
  const Result<Watch> a = tav::WatchFactoryResetType([&](int) {
    told.push_back("a");
    throw std::runtime_error("a careless callable");
  });
  const Result<Watch> b = tav::WatchFactoryResetType([&](int) {
    told.push_back("b");
    throw 7;
  });
  const Result<Watch> c = tav::WatchFactoryResetType(Noting("c"));
  for (const int value : {4, 5}) {
    log.Forget();
    EXPECT_EQ(DeliveredAfter(kReset, value), (Texts{"a", "b", "c " + std::to_string(value)}));
    EXPECT_EQ(log.Messages('E'), Texts{"Call failed: a careless callable"});
  }
}

}  // namespace
