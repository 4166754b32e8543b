// SPDX-License-Identifier: Apache-2.0
//
// The calls around settings: the getters, and the registrations of callbacks.
#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace test {
namespace {

const Endings kNotStored = {{-1, "not registered"}};

template <int (*kGet)(int*)>
Outcome GetInt() {
  return WithInt(kGet);
}

template <int (*kGet)(char**)>
Outcome GetText() {
  return WithText(kGet);
}

void OnNumber(int /*value*/, void* /*data*/) {}
void OnText(const char* /*value*/, void* /*data*/) {}

// The two functions that register a callback and take it away again.
struct Pair {
  int (*add)();
  int (*remove)();
};

constexpr Pair kFactoryReset = {
    [] { return tav_register_factory_reset_type_changed_cb(OnNumber, nullptr); },
    [] { return tav_unregister_factory_reset_type_changed_cb(OnNumber); }};
constexpr Pair kAppSync = {[] { return tav_register_appsync_start_changed_cb(OnNumber, nullptr); },
                           [] { return tav_unregister_appsync_start_changed_cb(OnNumber); }};
constexpr Pair kHomedeck = {
    [] { return tav_register_homedeck_reset_status_changed_cb(OnNumber, nullptr); },
    [] { return tav_unregister_homedeck_reset_status_changed_cb(OnNumber); }};
constexpr Pair kInstalled = {
    [] { return tav_register_installed_appid_changed_cb(OnText, nullptr); },
    [] { return tav_unregister_installed_appid_changed_cb(OnText); }};
// Nobody sets the setting, so that the address is never called.
constexpr int kAddress = 0x1000;
constexpr Pair kByNumber = {
    [] { return tav_register_value_cb(TAV_VCONF_KEY_APPSYNC_START, kAddress, nullptr); },
    [] { return tav_unregister_value_cb(TAV_VCONF_KEY_APPSYNC_START, kAddress); }};

// Whether the callback is registered, in the end; takes it away.
const char* StateOf(const Pair& pair) {
  return pair.remove() == 0 ? "registered" : "not registered";
}

template <const Pair& kPair>
Outcome Add() {
  Outcome outcome = WithStatus(kPair.add);
  outcome.state = StateOf(kPair);
  return outcome;
}

template <const Pair& kPair>
Outcome Remove() {
  kPair.add();
  Outcome outcome = WithStatus(kPair.remove);
  outcome.state = StateOf(kPair);
  return outcome;
}

template <const Pair& kPair>
Outcome RemoveNothing() {
  return WithStatus(kPair.remove);
}

}  // namespace

Calls SettingCalls() {
  return {
      {"tav_get_appkey", "", GetText<tav_get_appkey>, kNoValue},
      {"tav_get_kestrana_ver", "", GetText<tav_get_kestrana_ver>, kNoValue},
      {"tav_get_installed_appid", "", GetText<tav_get_installed_appid>, kNoValue},
      {"tav_get_tv_sync_status", "", GetInt<tav_get_tv_sync_status>, kNoValue},
      {"tav_get_factory_reset_type", "", GetInt<tav_get_factory_reset_type>, kNoValue},
      {"tav_get_appsync_start_status", "", GetInt<tav_get_appsync_start_status>, kNoValue},
      {"tav_get_homedeck_reset_status", "", GetInt<tav_get_homedeck_reset_status>, kNoValue},
      {"tav_get_tav_boot_status", "", GetInt<tav_get_tav_boot_status>, kNoValue},
      {"tav_get_extra_appid", "",
       [] { return WithText([](char** id) { return tav_get_extra_appid(id); }); }},
      {"tav_set_app_change", "", [] { return WithStatus([] { return tav_set_app_change(); }); },
       kFailure},
      {"tav_inner_config_db_api",
       "",
       [] {
         return WithText(
             [](char** value) { return tav_inner_config_db_api("RESERVED_16", value); });
       },
       {{0, kUntouched}},
       {{0, kUntouched}}},
      {"tav_get_tv_sync_state", "", GetInt<tav_get_tv_sync_state>, kNoValue, kBusyValue},
  };
}

Calls WatchCalls() {
  return {
      {"tav_register_value_cb", "", Add<kByNumber>, kNotStored},
      {"tav_unregister_value_cb", "", Remove<kByNumber>, {}, {}, {}, kNotStored},
      {"tav_unregister_value_cb", "OfNothing", RemoveNothing<kByNumber>, {}},
      {"tav_register_factory_reset_type_changed_cb", "", Add<kFactoryReset>, kNotStored},
      {"tav_unregister_factory_reset_type_changed_cb",
       "",
       Remove<kFactoryReset>,
       {},
       {},
       {},
       kNotStored},
      {"tav_unregister_factory_reset_type_changed_cb", "OfNothing", RemoveNothing<kFactoryReset>},
      {"tav_register_appsync_start_changed_cb", "", Add<kAppSync>, kNotStored},
      {"tav_unregister_appsync_start_changed_cb", "", Remove<kAppSync>, {}, {}, {}, kNotStored},
      {"tav_unregister_appsync_start_changed_cb", "OfNothing", RemoveNothing<kAppSync>},
      {"tav_register_homedeck_reset_status_changed_cb", "", Add<kHomedeck>, kNotStored},
      {"tav_unregister_homedeck_reset_status_changed_cb",
       "",
       Remove<kHomedeck>,
       {},
       {},
       {},
       kNotStored},
      {"tav_unregister_homedeck_reset_status_changed_cb", "OfNothing", RemoveNothing<kHomedeck>},
      {"tav_register_installed_appid_changed_cb", "", Add<kInstalled>, kNotStored},
      {"tav_unregister_installed_appid_changed_cb", "", Remove<kInstalled>, {}, {}, {}, kNotStored},
      {"tav_unregister_installed_appid_changed_cb", "OfNothing", RemoveNothing<kInstalled>},
  };
}

}  // namespace test
