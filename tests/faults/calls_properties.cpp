// SPDX-License-Identifier: Apache-2.0
//
// The calls that ask for one property of an app, and those that ask the service for a change.
#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace test {
Calls PropertyCalls() {
  return {
      {"tav_is_isp_app", "", [] { return WithStatus([] { return tav_is_isp_app(kAppA); }); },
       kFailure, kBusy},
      {"tav_is_hybrid_app", "", [] { return WithStatus([] { return tav_is_hybrid_app(kAppA); }); },
       kFailure, kBusy},
      {"tav_check_is_usb_app", "",
       [] { return WithStatus([] { return tav_check_is_usb_app(kAppA); }); }, kFailure, kBusy},
      {"tav_get_app_rating", "",
       [] { return WithInt([](int* rating) { return tav_get_app_rating(kAppA, rating); }); },
       kNoValue, kBusyValue},
      {"tav_get_pkgname_by_nativeid", "",
       [] {
         return WithText([](char** name) { return tav_get_pkgname_by_nativeid(kNativeIdA, name); });
       },
       kNoValue, kBusyValue},
      {"tav_get_app_runtitle_by_ait_id", "",
       [] {
         return WithText([](char** title) {
           return tav_get_app_runtitle_by_ait_id(kAitOrgIdA, kAitAppIdA, title);
         });
       },
       kNoValue, kBusyValue},
      {"tav_find_app", "",
       [] {
         return WithText([](char** title) { return tav_find_app(kAitOrgIdA, kAitAppIdA, title); });
       },
       kNoValue, kBusyValue},
      {"tav_get_appid_by_runtitle", "",
       [] { return WithText([](char** id) { return tav_get_appid_by_runtitle(kRunTitleA, id); }); },
       kNoValue, kBusyValue},
      // A database that cannot be used has no such app; running out of memory is another matter.
      {"tav_check_app_installed_by_runtitle",
       "",
       [] {
         return WithInt(
             [](int* status) { return tav_check_app_installed_by_runtitle(kRunTitleA, status); });
       },
       kNoValue,
       {{-2, "1"}},
       {{0, "1"}},
       {{0, "1"}}},
      {"tav_get_emanual_id", "",
       [] { return WithText([](char** id) { return tav_get_emanual_id(id); }); }, kNoValue,
       kBusyValue},
  };
}

Calls ChangeCalls() {
  return {
      {"tav_get_ticker_mode",
       "",
       [] { return WithInt([](int* mode) { return tav_get_ticker_mode(mode); }); },
       kNoValue,
       {},
       {},
       {},
       true},
      {"tav_set_ticker_mode",
       "",
       [] { return WithStatus([] { return tav_set_ticker_mode(1); }); },
       kFailure,
       {},
       {},
       {},
       true},
      {"tav_set_app_lock",
       "",
       [] { return WithStatus([] { return tav_set_app_lock(kAppA, 0); }); },
       kFailure,
       {},
       {},
       {},
       true},
      {"tav_set_app_rating",
       "",
       [] { return WithStatus([] { return tav_set_app_rating(kAppA, 3); }); },
       kFailure,
       kBusy,
       {},
       {},
       true},
      {"tav_db_update_app_use_count",
       "",
       [] { return WithStatus([] { return tav_db_update_app_use_count(kAppA); }); },
       kFailure,
       {},
       {},
       {},
       true},
      {"tav_db_set_app_updated",
       "",
       [] { return WithStatus([] { return tav_db_set_app_updated(kAppA); }); },
       kFailure,
       {},
       {},
       {},
       true},
      {"tav_check_update_popup",
       "",
       [] { return WithStatus([] { return tav_check_update_popup(kAppC); }); },
       kFailure,
       {{0, ""}}},
      {"tav_db_check_app_installing",
       "",
       [] { return WithStatus([] { return tav_db_check_app_installing(kAppA); }); },
       kFailure,
       // Another of the required apps may be read again.
       {{-1, ""}, {0, ""}}},
  };
}

}  // namespace test
