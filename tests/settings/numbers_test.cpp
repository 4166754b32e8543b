// SPDX-License-Identifier: Apache-2.0
//
// The two functions that take a setting as a number and a callback as an int.
#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "settings/low_function.h"
#include "settings/watching.h"

namespace {

using test::Ignore;
using test::LowFunction;
using test::Notify;
using test::TakeWatchCalls;
using test::Texts;
using test::WatchCalls;
using test::Written;

constexpr std::uintptr_t kLow = 0x10000000;

template <int kNumber>
LowFunction LowTell(bool is_text) {
  return is_text ? LowFunction(kLow, test::TellText<kNumber>)
                 : LowFunction(kLow, test::TellInt<kNumber>);
}

class NumberedCallback : public test::WatchingEach {
 protected:
  int Add(const LowFunction& callback, void* data) {
    return tav_register_value_cb(setting.key, callback.AsInt(), data);
  }
  int Remove(const LowFunction& callback) {
    return tav_unregister_value_cb(setting.key, callback.AsInt());
  }
  static std::string Shown(const LowFunction& callback) {
    return "(" + std::to_string(callback.Address()) + ")";
  }

  const LowFunction one = LowTell<1>(setting.is_text);
  const LowFunction two = LowTell<2>(setting.is_text);
};

TEST_P(NumberedCallback, IsCalledWithTheValueAndItsUserData) {
  log.Forget();
  EXPECT_EQ(Add(one, &first), 0);
  EXPECT_EQ(Add(two, &second), 0);
  EXPECT_EQ(Add(one, &third), 0);
  EXPECT_EQ(Written(log), (Texts{std::string("I register vconf cb for key ") + setting.name,
                                 "I cb for panel_display_time registered " + Shown(one),
                                 "I cb for panel_display_time registered " + Shown(two),
                                 "W already registered cb " + Shown(one)}));
  for (const auto& line : log.Lines()) EXPECT_EQ(line.function, "tav_register_value_cb");
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &first)});
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"1 first " + setting.Value(5), "2 second " + setting.Value(5)}));
  EXPECT_TRUE(log.Has("call cb " + Shown(one)));
}

TEST_P(NumberedCallback, EndsByItsNumber) {
  ASSERT_EQ(Add(one, &first), 0);
  log.Forget();
  EXPECT_EQ(Remove(two), -1);
  EXPECT_EQ(Remove(one), 0);
  EXPECT_EQ(Remove(one), -1);
  EXPECT_EQ(Written(log), (Texts{"E not registered cb " + Shown(two),
                                 std::string("I unregister vconf cb for ") + setting.name,
                                 "I cb for tav_vconf_cb_list unregistered " + Shown(one),
                                 "W callback list is not initialized yet"}));
  for (const auto& line : log.Lines()) EXPECT_EQ(line.function, "tav_unregister_value_cb");
  EXPECT_EQ(TakeWatchCalls(), (WatchCalls{Notify(setting.name, &first), Ignore(setting.name)}));
  EXPECT_EQ(DeliveredAfter(5), Texts());
}

TEST_P(NumberedCallback, IsTheSameAsTheOneOfTheTypedFunctions) {
  ASSERT_EQ(Add(one, &first), 0);
  ASSERT_EQ(setting.add(2, &second), 0);
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"1 first " + setting.Value(5), "2 second " + setting.Value(5)}));
  if (setting.is_text) {
    EXPECT_EQ(tav_unregister_installed_appid_changed_cb(one.As<void(const char*, void*)>()), 0);
  } else if (setting.key == TAV_VCONF_KEY_APPSYNC_START) {
    EXPECT_EQ(tav_unregister_appsync_start_changed_cb(one.As<void(int, void*)>()), 0);
  } else {
    EXPECT_EQ(Remove(one), 0);
  }
  EXPECT_EQ(DeliveredAfter(6), Texts{"2 second " + setting.Value(6)});
}

TEST_P(NumberedCallback, ThatIsZeroIsNone) {
  log.Forget();
  EXPECT_EQ(tav_register_value_cb(setting.key, 0, &first), -1);
  EXPECT_EQ(Written(log), Texts());
  EXPECT_EQ(tav_unregister_value_cb(setting.key, 0), -1);
  EXPECT_EQ(Written(log), Texts{"W invalid input"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

#if UINTPTR_MAX > UINT32_MAX && !defined(TAV_NO_HIGH_BIT)
TEST_P(NumberedCallback, IsReadAsAnUnsignedAddress) {
  const LowFunction high = setting.is_text ? LowFunction(0x90000000, test::TellText<3>)
                                           : LowFunction(0x90000000, test::TellInt<3>);
  ASSERT_LT(high.AsInt(), 0);
  log.Forget();
  ASSERT_EQ(Add(high, &third), 0);
  EXPECT_TRUE(log.Has("cb for panel_display_time registered " + Shown(high)));
  EXPECT_EQ(DeliveredAfter(5), Texts{"3 third " + setting.Value(5)});
  EXPECT_EQ(Remove(high), 0);
  EXPECT_EQ(DeliveredAfter(6), Texts());
}
#endif

INSTANTIATE_TEST_SUITE_P(OfEach, NumberedCallback, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

class NumberedSetting : public test::Watching {
 protected:
  const LowFunction one = LowTell<1>(false);
  const std::vector<int> others = {3, -1, 5, 6, INT_MAX, INT_MIN};
};

TEST_F(NumberedSetting, IsRefusedUnlessItIsOneOfTheFour) {
  for (const int other : others) {
    const auto key = static_cast<tav_vconf_key_e>(other);
    const Texts expected = {"W not supported key " + std::to_string(other)};
    log.Forget();
    EXPECT_EQ(tav_register_value_cb(key, one.AsInt(), &first), -1);
    EXPECT_EQ(Written(log), expected);
    EXPECT_EQ(log.Lines().front().function, "tav_register_value_cb");
    log.Forget();
    EXPECT_EQ(tav_unregister_value_cb(key, one.AsInt()), -1);
    EXPECT_EQ(Written(log), expected);
    EXPECT_EQ(log.Lines().front().function, "tav_unregister_value_cb");
  }
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

TEST_F(NumberedSetting, IsLookedAtAfterTheCallbackToRegisterAndBeforeItToUnregister) {
  for (const int other : others) {
    const auto key = static_cast<tav_vconf_key_e>(other);
    log.Forget();
    EXPECT_EQ(tav_register_value_cb(key, 0, &first), -1);
    EXPECT_EQ(Written(log), Texts());
    EXPECT_EQ(tav_unregister_value_cb(key, 0), -1);
    EXPECT_EQ(Written(log), Texts{"W not supported key " + std::to_string(other)});
  }
}

#if INTPTR_MAX > INT32_MAX
// The overload that takes a whole address.
class WholeAddress : public test::WatchingEach {
 protected:
  intptr_t Callback(int number) const { return setting.address(number); }
};

TEST_P(WholeAddress, IsAsGoodAsTheTypedFunctions) {
  EXPECT_EQ(tav_register_value_cb(setting.key, Callback(2), &second), 0);
  EXPECT_EQ(tav_register_value_cb(setting.key, Callback(1), &first), 0);
  EXPECT_EQ(tav_register_value_cb(setting.key, Callback(1), &third), 0);
  EXPECT_TRUE(log.HasNotice("already registered cb " + setting.Address(1)));
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Notify(setting.name, &second)});
  EXPECT_EQ(DeliveredAfter(5),
            (Texts{"2 second " + setting.Value(5), "1 first " + setting.Value(5)}));

  EXPECT_EQ(tav_unregister_value_cb(setting.key, Callback(2)), 0);
  EXPECT_EQ(DeliveredAfter(6), Texts{"1 first " + setting.Value(6)});
  EXPECT_EQ(tav_unregister_value_cb(setting.key, Callback(2)), -1);
  EXPECT_TRUE(log.HasError("not registered cb " + setting.Address(2)));
  EXPECT_EQ(setting.remove(1), 0);
  EXPECT_EQ(TakeWatchCalls(), WatchCalls{Ignore(setting.name)});
}

TEST_P(WholeAddress, ThatIsZeroIsNone) {
  log.Forget();
  EXPECT_EQ(tav_register_value_cb(setting.key, intptr_t{0}, &first), -1);
  EXPECT_EQ(Written(log), Texts());
  EXPECT_EQ(tav_unregister_value_cb(setting.key, intptr_t{0}), -1);
  EXPECT_EQ(Written(log), Texts{"W invalid input"});
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}

INSTANTIATE_TEST_SUITE_P(OfEach, WholeAddress, ::testing::ValuesIn(test::WatchedSettings()),
                         test::TitleOf);

TEST_F(NumberedSetting, IsRefusedWithAWholeAddressToo) {
  const auto callback = reinterpret_cast<intptr_t>(&test::TellInt<1>);
  for (const int other : others) {
    const auto key = static_cast<tav_vconf_key_e>(other);
    const std::string expected = "W not supported key " + std::to_string(other);
    log.Forget();
    EXPECT_EQ(tav_register_value_cb(key, callback, &first), -1);
    EXPECT_EQ(Written(log), Texts{expected});
    EXPECT_EQ(tav_unregister_value_cb(key, callback), -1);
    EXPECT_EQ(Written(log), Texts(2, expected));
    EXPECT_EQ(tav_register_value_cb(key, intptr_t{0}, &first), -1);
    EXPECT_EQ(Written(log), Texts(2, expected));
    EXPECT_EQ(tav_unregister_value_cb(key, intptr_t{0}), -1);
    EXPECT_EQ(Written(log), Texts(3, expected));
  }
  EXPECT_EQ(TakeWatchCalls(), WatchCalls());
}
#endif

}  // namespace
