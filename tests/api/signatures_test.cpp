// SPDX-License-Identifier: Apache-2.0
//
// The types of the exported functions, which their plain names do not carry, and the numbers of
// the enumerations. A function that is exported without a row here is a failure.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <type_traits>
#include <vector>

#include "tav_db_api.h"
#include "tav_db_api_inner.h"

namespace test {
namespace {

using Text = std::string;
using Texts = std::map<std::string, std::string>;
using InnerInfo = _APPS_INNER_INFO_T;

// A row of the table: the function's exported name, after its type was compared.
template <typename Expected>
const char* Typed(Expected, const char* exported_name) {
  return exported_name;
}
#define TYPED(type, function) Typed<type>(&function, #function)
#define TYPED_AS(type, function, exported_name) Typed<type>(&function, exported_name)

using OfText = int (*)(const char*);
using OfTextInt = int (*)(const char*, int);
using TextToInt = int (*)(const char*, int*);
using TextToText = int (*)(const char*, char**);
using TextsToText = int (*)(const char*, const char*, char**);
using TextToRecord = int (*)(const char*, tav_app_info_s*);
using ToInt = int (*)(int*);
using ToText = int (*)(char**);
using Size = unsigned int (*)();
using WatchInt = int (*)(void (*)(int, void*), void*);
using WatchText = int (*)(void (*)(const char*, void*), void*);
using UnwatchInt = int (*)(void (*)(int, void*));
using UnwatchText = int (*)(void (*)(const char*, void*));
using Group = void (*)(const Text&, Text&, int&);

const std::vector<std::string>& Signatures() {
  static const std::vector<std::string> names = {
      TYPED(Size, get_size_of_tav_app_filter_s),
      TYPED(Size, get_size_of_tav_app_info_s),
      TYPED(TextToRecord, tav_get_app_info),
      TYPED(TextToRecord, tav_get_app_info_by_tizenid),
      TYPED(int (*)(tav_app_filter_s*), tav_init_app_filter),
      TYPED(int (*)(tav_app_filter_s, tav_app_viewmode_e, int, int, tav_app_info_s**, int*),
            tav_get_app_list),
      TYPED(int (*)(tav_app_filter_s*, tav_app_viewmode_e, int, int, tav_app_info_s**, int*),
            tav_get_app_list_dn),
      TYPED(int (*)(tav_app_filter_s, tav_app_viewmode_e, int, int, tav_app_ms_s**, int*),
            tav_get_app_list_ms),
      TYPED(int (*)(tav_app_filter_s, int*), tav_get_app_count),
      TYPED(int (*)(tav_app_filter_s*, int*), tav_get_app_count_dn),
      TYPED(int (*)(tav_app_info_s**, int*), tav_get_all_app_list),
      TYPED(int (*)(int, tav_app_info_s**, int*), tav_get_recently_used_app_list),
      TYPED(OfText, tav_check_is_recently_used_app),
      TYPED(OfText, tav_check_is_most_used_app),
      TYPED(OfText, tav_is_isp_app),
      TYPED(OfText, tav_is_hybrid_app),
      TYPED(OfText, tav_check_is_usb_app),
      TYPED(TextToInt, tav_get_app_rating),
      TYPED(TextToText, tav_get_pkgname_by_nativeid),
      TYPED(TextsToText, tav_get_app_runtitle_by_ait_id),
      TYPED(TextsToText, tav_find_app),
      TYPED(TextToText, tav_get_appid_by_runtitle),
      TYPED(TextToInt, tav_check_app_installed_by_runtitle),
      TYPED(ToText, tav_get_emanual_id),
      TYPED(ToInt, tav_get_ticker_mode),
      TYPED(int (*)(int), tav_set_ticker_mode),
      TYPED(OfTextInt, tav_set_app_lock),
      TYPED(OfTextInt, tav_set_app_rating),
      TYPED(OfText, tav_db_update_app_use_count),
      TYPED(OfText, tav_db_set_app_updated),
      TYPED(OfText, tav_check_update_popup),
      TYPED(OfText, tav_db_check_app_installing),
      TYPED(TextToText, tav_get_app_info_json),
      TYPED(int (*)(app_control_s*, char**), tav_get_app_list_json),
      TYPED(ToText, tav_write_all_app_info_to_xml),
      TYPED(ToText, tav_get_appkey),
      TYPED(ToText, tav_get_kestrana_ver),
      TYPED(ToInt, tav_get_tv_sync_status),
      TYPED(ToInt, tav_get_factory_reset_type),
      TYPED(ToInt, tav_get_appsync_start_status),
      TYPED(ToInt, tav_get_homedeck_reset_status),
      TYPED(ToInt, tav_get_tav_boot_status),
      TYPED(ToText, tav_get_installed_appid),
      TYPED(int (*)(...), tav_get_extra_appid),
      TYPED(int (*)(), tav_set_app_change),
      TYPED(TextToText, tav_inner_config_db_api),
      TYPED(ToInt, tav_get_tv_sync_state),
      TYPED(WatchInt, tav_register_factory_reset_type_changed_cb),
      TYPED(WatchInt, tav_register_appsync_start_changed_cb),
      TYPED(WatchInt, tav_register_homedeck_reset_status_changed_cb),
      TYPED(WatchText, tav_register_installed_appid_changed_cb),
      TYPED(UnwatchInt, tav_unregister_factory_reset_type_changed_cb),
      TYPED(UnwatchInt, tav_unregister_appsync_start_changed_cb),
      TYPED(UnwatchInt, tav_unregister_homedeck_reset_status_changed_cb),
      TYPED(UnwatchText, tav_unregister_installed_appid_changed_cb),

      // The exported names of these carry the types of the arguments, not those of the results.
      TYPED_AS(int (*)(const Text&, int, tav_app_info_s**, int*), tav_get_key_list,
               "_Z16tav_get_key_listRKNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEEiPP14tav_"
               "app_info_sPi"),
      TYPED_AS(TextToRecord, tav_get_app_info_by_runtitle,
               "_Z28tav_get_app_info_by_runtitlePKcP14tav_app_info_s"),
      TYPED_AS(bool (*)(app_control_s*, Text, Text&), db_get_app_control_data,
               "_Z23db_get_app_control_dataP13app_control_sNSt7__cxx1112basic_stringIcSt11char_"
               "traitsIcESaIcEEERS6_"),
      TYPED_AS(int (*)(tav_vconf_key_e, int, void*), tav_register_value_cb,
               "_Z21tav_register_value_cb15tav_vconf_key_eiPv"),
      TYPED_AS(int (*)(tav_vconf_key_e, int), tav_unregister_value_cb,
               "_Z23tav_unregister_value_cb15tav_vconf_key_ei"),
      TYPED_AS(TextToRecord, m_tav_get_app_info, "_Z18m_tav_get_app_infoPKcP14tav_app_info_s"),
      TYPED_AS(int (*)(tav_app_info_s*, const char*), GetAppInfoByRuntitle,
               "_Z20GetAppInfoByRuntitleP14tav_app_info_sPKc"),
      TYPED_AS(int (*)(std::vector<InnerInfo>&, bool), GetBuiltInAppList,
               "_Z17GetBuiltInAppListRSt6vectorI18_APPS_INNER_INFO_TSaIS0_EEb"),
      TYPED_AS(void (*)(std::map<Text, InnerInfo>&), GetBuiltInTestAppList,
               "_Z21GetBuiltInTestAppListRSt3mapINSt7__cxx1112basic_stringIcSt11char_"
               "traitsIcESaIcEEE18_APPS_INNER_INFO_TSt4lessIS5_ESaISt4pairIKS5_S6_EEE"),
      TYPED_AS(Texts(*)(), GetUnsupportedPkgList, "_Z21GetUnsupportedPkgListB5cxx11v"),
      TYPED_AS(bool (*)(), GetBuiltInBlacklistSupport, "_Z26GetBuiltInBlacklistSupportv"),
      TYPED_AS(Group, GetAppIDFromAndroidGroupList,
               "_Z28GetAppIDFromAndroidGroupListRKNSt7__cxx1112basic_stringIcSt11char_"
               "traitsIcESaIcEEERS4_Ri"),
      TYPED_AS(Group, GetAppIDFromAppGroupList,
               "_Z24GetAppIDFromAppGroupListRKNSt7__cxx1112basic_stringIcSt11char_"
               "traitsIcESaIcEEERS4_Ri"),
      TYPED_AS(void (*)(Text, Text, Text, Texts&), ParseStringToList,
               "_Z17ParseStringToListNSt7__cxx1112basic_stringIcSt11char_traitsIcESaIcEEES4_S4_"
               "RSt3mapIS4_S4_St4lessIS4_ESaISt4pairIKS4_S4_EEE"),
  };
  return names;
}

TEST(Signatures, AreThoseOfEveryExportedFunction) {
  std::ifstream list(EXPORTED_SYMBOLS);
  std::vector<std::string> exported;
  for (std::string name; std::getline(list, name);) exported.push_back(name);
  std::sort(exported.begin(), exported.end());
  std::vector<std::string> typed = Signatures();
  std::sort(typed.begin(), typed.end());
  EXPECT_EQ(typed, exported);
}

TEST(Enumerations, AreIntsWithTheNumbersOfTheInterface) {
  static_assert(std::is_same_v<std::underlying_type_t<tav_app_viewmode_e>, int>);
  static_assert(std::is_same_v<std::underlying_type_t<tav_vconf_key_e>, int>);
  EXPECT_EQ(
      (std::vector<int>{TAV_APP_VIEWMODE_MOST_USED, TAV_APP_VIEWMODE_CATALOGUE,
                        TAV_APP_VIEWMODE_LAST_DOWNLOADED, TAV_APP_VIEWMODE_TITLE,
                        TAV_APP_VIEWMODE_TITLE_DESCENDING, TAV_APP_VIEWMODE_RECENTLY_LAUNCHED}),
      (std::vector<int>{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ((std::vector<int>{TAV_VCONF_KEY_FACTORY_RESET_TYPE, TAV_VCONF_KEY_APPSYNC_START,
                              TAV_VCONF_KEY_HOMEDECK_RESET_STATUS, TAV_VCONF_KEY_INSTALLED_APPID}),
            (std::vector<int>{0, 1, 2, 4}));
}

}  // namespace
}  // namespace test
