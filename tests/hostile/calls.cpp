// SPDX-License-Identifier: Apache-2.0
//
// The keys are those of the default seed.
#include "hostile/calls.h"

#include <app_control.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <utility>

#include "hostile/answers.h"

namespace hostile {
namespace {

constexpr char kId[] = "org.example.browser";
constexpr char kTizenId[] = "org.tizen.browser";
constexpr char kRunTitle[] = "HarbourNews";
constexpr char kNativeId[] = "native.example.teletext";
constexpr char kOrganisation[] = "1234";
constexpr char kApplication[] = "10";
constexpr char kRequiring[] = "org.example.puzzle-pack";
constexpr tav_app_filter_s kEveryApp = {65535, 0, 65535};

template <typename Lookup>
bool LooksUp(const Lookup& lookup, const char* key) {
  GuardedRecord record;
  const int result = lookup(key, record.Get());
  record.RequirePromised(result);
  return Succeeded(result);
}

tav_app_viewmode_e Mode(int mode) {
  return static_cast<tav_app_viewmode_e>(mode);
}

int Listed(tav_app_filter_s filter, int mode, int index, int count) {
  return ListOf<tav_app_info_s>([&](tav_app_info_s** list, int* real_count) {
    return tav_get_app_list(filter, Mode(mode), index, count, list, real_count);
  });
}

int ListedShort(int mode, int index, int count) {
  return ListOf<tav_app_ms_s>([&](tav_app_ms_s** list, int* real_count) {
    return tav_get_app_list_ms(kEveryApp, Mode(mode), index, count, list, real_count);
  });
}

// All orders and a page; what succeeds must tell of the same number of apps.
template <typename List>
bool ListsAgree(const List& list) {
  bool is_answered = true;
  int known = -1;
  const auto agree = [&](int count) {
    if (count < 0) is_answered = false;
    Require(count < 0 || known < 0 || count == known, "lists of different lengths");
    known = std::max(known, count);
  };
  for (int mode = -1; mode <= 6; ++mode) agree(list(mode, -1, 0));
  const int page = list(TAV_APP_VIEWMODE_CATALOGUE, 0, 3);
  if (known >= 0 && page >= 0) Require(page == std::min(known, 3), "a page of another length");
  return is_answered && page >= 0;
}

bool CountAgreesWithItsList() {
  constexpr int kUntouched = -77;
  int count = kUntouched;
  const bool is_counted = Succeeded(tav_get_app_count(kEveryApp, &count));
  Require(is_counted ? count >= 0 : count == kUntouched || count == 0, "a count and a failure");
  const int listed = Listed(kEveryApp, TAV_APP_VIEWMODE_MOST_USED, -1, 0);
  Require(!is_counted || listed < 0 || count == listed, "a count of another length");
  tav_app_filter_s filter = kEveryApp;
  int again = kUntouched;
  Require(Succeeded(tav_get_app_count_dn(&filter, &again)) == is_counted && again == count,
          "two counts");
  return is_counted;
}

int JsonList(std::initializer_list<std::pair<const char*, const char*>> extras) {
  app_control_h request = nullptr;
  Require(app_control_create(&request) == 0, "no request");
  for (const auto& [key, value] : extras) app_control_add_extra_data(request, key, value);
  char* json = nullptr;
  const int result = tav_get_app_list_json(request, &json);
  app_control_destroy(request);
  const std::unique_ptr<char, decltype(&std::free)> owner(json, &std::free);
  Require(result == 0 || result == -1, "result " + std::to_string(result));
  Require(result == 0 || json == nullptr, "a document and a failure");
  if (result != 0) return -1;
  return json == nullptr ? 0 : RequireJson(json, "app_list");
}

using FindInGroup = void (*)(const std::string& run_title, std::string& id, int& state);

bool FindsInGroup(FindInGroup find, const char* run_title) {
  constexpr int kUntouched = -77;
  std::string id;
  int state = kUntouched;
  find(run_title, id, state);
  Require(state == kUntouched || state == 0 || state == 1 || state == 3, "an unknown state");
  return state == 0 || state == 1;
}

bool ConfigurationIsRead(const char* name) {
  char* text = nullptr;
  Require(tav_inner_config_db_api(name, &text) == 0, "a failure that nobody is told of");
  const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
  if (text != nullptr) RequireText(text, malloc_usable_size(text));
  return text != nullptr;
}

bool WritesXml() {
  char* path = nullptr;
  const int result = tav_write_all_app_info_to_xml(&path);
  const std::unique_ptr<char, decltype(&std::free)> owner(path, &std::free);
  Require(path != nullptr, "no path");
  RequireText(path, TAV_TEXT_SIZE);
  return Succeeded(result);
}

bool CatalogueIsRead(bool is_test_only) {
  std::vector<_APPS_INNER_INFO_T> apps;
  const int result = GetBuiltInAppList(apps, is_test_only);
  Require(result == 0 || result == -1, "result " + std::to_string(result));
  Require(result == 0 || apps.empty(), "apps and a failure");
  return !apps.empty();
}

bool TestAppsAreRead() {
  std::map<std::string, _APPS_INNER_INFO_T> apps;
  GetBuiltInTestAppList(apps);
  return !apps.empty();
}

}  // namespace

const std::vector<Call>& Calls() {
  static const auto& calls = *new std::vector<Call>{
      {"tav_get_app_info", [] { return LooksUp(tav_get_app_info, kId); }},
      {"tav_get_app_info, platform id", [] { return LooksUp(tav_get_app_info, kTizenId); }},
      {"tav_get_app_info_by_tizenid",
       [] { return LooksUp(tav_get_app_info_by_tizenid, "Ak3Bq7Cw1D.harbournews"); }},
      {"tav_get_app_info_by_runtitle",
       [] { return LooksUp(tav_get_app_info_by_runtitle, kRunTitle); }},
      {"m_tav_get_app_info", [] { return LooksUp(m_tav_get_app_info, kId); }},
      {"GetAppInfoByRuntitle",
       [] {
         return LooksUp(
             [](const char* key, tav_app_info_s* info) { return GetAppInfoByRuntitle(info, key); },
             kRunTitle);
       }},
      {"tav_get_app_list, every order",
       [] {
         return ListsAgree(
             [](int mode, int index, int count) { return Listed(kEveryApp, mode, index, count); });
       }},
      {"tav_get_app_list, filtered",
       [] {
         return Listed({1, 1, 2}, TAV_APP_VIEWMODE_TITLE, 1, 4) >= 0;
       }},
      {"tav_get_app_list_dn",
       [] {
         tav_app_filter_s filter = {3, 1, 6};
         return ListOf<tav_app_info_s>([&](tav_app_info_s** list, int* count) {
                  return tav_get_app_list_dn(&filter, Mode(0), -1, 0, list, count);
                }) >= 0;
       }},
      {"tav_get_app_list_ms, every order", [] { return ListsAgree(ListedShort); }},
      {"tav_get_app_count", CountAgreesWithItsList},
      {"tav_get_all_app_list", [] { return ListOf<tav_app_info_s>(tav_get_all_app_list) >= 0; }},
      {"tav_get_recently_used_app_list",
       [] {
         return ListOf<tav_app_info_s>([](tav_app_info_s** list, int* count) {
                  return tav_get_recently_used_app_list(5, list, count);
                }) >= 0;
       }},
      {"tav_get_key_list",
       [] {
         return ListOf<tav_app_info_s>([](tav_app_info_s** list, int* count) {
                  return tav_get_key_list("is_ticker", 0, list, count);
                }) >= 0;
       }},
      {"tav_check_is_recently_used_app",
       [] { return Succeeded(tav_check_is_recently_used_app(kId)); }},
      {"tav_check_is_most_used_app", [] { return Succeeded(tav_check_is_most_used_app(kId)); }},
      {"tav_is_isp_app", [] { return Succeeded(tav_is_isp_app("org.example.isp-lounge")); }},
      {"tav_is_hybrid_app",
       [] { return Succeeded(tav_is_hybrid_app("org.example.broadcast-guide")); }},
      // The mark is returned as it is stored, so that any result may be one.
      {"tav_check_is_usb_app", [] { return tav_check_is_usb_app("org.example.usb-player") == 1; }},
      {"tav_get_app_rating",
       [] {
         return GetsNumber(
             [](int* rating) { return tav_get_app_rating("org.example.owl-reels", rating); });
       }},
      {"tav_get_pkgname_by_nativeid",
       [] {
         return GetsText<TAV_TEXT_SIZE>(
             [](char** text) { return tav_get_pkgname_by_nativeid(kNativeId, text); });
       }},
      {"tav_get_app_runtitle_by_ait_id",
       [] {
         return GetsText<TAV_TEXT_SIZE>([](char** text) {
           return tav_get_app_runtitle_by_ait_id(kOrganisation, kApplication, text);
         });
       }},
      {"tav_find_app",
       [] {
         return GetsText<TAV_TEXT_SIZE>(
             [](char** text) { return tav_find_app(kOrganisation, kApplication, text); });
       }},
      {"tav_get_appid_by_runtitle",
       [] {
         return GetsText<TAV_TEXT_SIZE>(
             [](char** text) { return tav_get_appid_by_runtitle(kRunTitle, text); });
       }},
      {"tav_check_app_installed_by_runtitle",
       [] {
         int status = -77;
         const int result = tav_check_app_installed_by_runtitle(kRunTitle, &status);
         Require(result == 0 || result == -2, "result " + std::to_string(result));
         Require(status == 1 || (status == 0 && result == 0), "an unknown status");
         return status == 0;
       }},
      {"tav_get_emanual_id", [] { return GetsText(tav_get_emanual_id); }},
      {"tav_get_tv_sync_state", [] { return GetsNumber(tav_get_tv_sync_state); }},
      {"tav_inner_config_db_api", [] { return ConfigurationIsRead("RESERVED_15"); }},
      {"tav_check_update_popup",
       [] { return Succeeded(tav_check_update_popup("org.example.puzzle-engine")); }},
      {"tav_db_check_app_installing",
       [] { return Succeeded(tav_db_check_app_installing(kRequiring)); }},
      {"tav_get_app_info_json",
       [] {
         std::string text;
         const bool is_answered =
             GetsText([](char** json) { return tav_get_app_info_json(kRequiring, json); }, &text);
         if (is_answered) Require(RequireJson(text, "app_info") == 1, "not one app");
         return is_answered;
       }},
      {"tav_get_app_list_json, all",
       [] {
         return JsonList({{"all_app", "true"}}) > 0;
       }},
      {"tav_get_app_list_json, filtered",
       [] {
         return JsonList({{"app_featured", "65535"}, {"view_mode", "3"}}) > 0;
       }},
      {"tav_get_app_list_json, built in",
       [] {
         return JsonList({{"built_in_app", "true"}}) > 0;
       }},
      {"tav_write_all_app_info_to_xml", WritesXml},
      {"GetBuiltInAppList", [] { return CatalogueIsRead(false); }},
      {"GetBuiltInAppList, test apps", [] { return CatalogueIsRead(true); }},
      {"GetBuiltInTestAppList", TestAppsAreRead},
      {"GetAppIDFromAndroidGroupList",
       [] { return FindsInGroup(GetAppIDFromAndroidGroupList, "Kettle"); }},
      {"GetAppIDFromAppGroupList",
       [] { return FindsInGroup(GetAppIDFromAppGroupList, "HarbourNews"); }},
  };
  return calls;
}

}  // namespace hostile
