/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The C++ layer of tav_db_api.hpp: apps, lists, counts and single properties. Include
 * tav_db_api.hpp.
 */
#ifndef TAV_DB_API_READS_HPP_
#define TAV_DB_API_READS_HPP_

#include <tav_db_api.h>
#include <tav_db_api_types.hpp>
#include <tav_db_api_values.hpp>

#include <cstddef>
#include <string>

namespace tav {

/** \brief A list of full records. */
using AppList = List<AppInfo>;
/** \brief A list of multi-screen records. */
using MultiScreenList = List<MultiScreenApp>;

/** \cond */
/* The filter and the order of the C interface. */
namespace detail {

inline tav_app_filter_s ToC(const Filter& filter) noexcept {
  return {static_cast<int>(filter.featured), filter.premium_game,
          static_cast<int>(filter.app_types)};
}
inline tav_app_viewmode_e ToC(ViewMode mode) noexcept {
  return static_cast<tav_app_viewmode_e>(mode);
}

}  // namespace detail
/** \endcond */

/* ---- Layouts ---- */

/**
 * \brief The size of AppInfo in bytes that the library was built with.
 * \return The size: 3212.
 * \see get_size_of_tav_app_info_s
 */
[[nodiscard]] inline std::size_t GetSizeOfAppInfo() noexcept {
  return get_size_of_tav_app_info_s();
}

/**
 * \brief The size of a filter in bytes that the library was built with.
 * \return The size: 12.
 * \see get_size_of_tav_app_filter_s
 */
[[nodiscard]] inline std::size_t GetSizeOfAppFilter() noexcept {
  return get_size_of_tav_app_filter_s();
}

/**
 * \brief Whether the program and the library agree on the layouts. A library of another layout
 * would write past the program's records.
 * \return true when they agree.
 */
[[nodiscard]] inline bool HasSameLayouts() noexcept {
  return GetSizeOfAppInfo() == sizeof(AppInfo) && GetSizeOfAppFilter() == sizeof(tav_app_filter_s);
}

/* ---- One app ---- */

/**
 * \brief The app with this id or platform id.
 * \param app_id The app's id or platform id.
 * \return The record, all zero after any failure.
 * \see tav_get_app_info
 */
inline Result<AppInfo> GetAppInfo(TextView app_id) noexcept {
  return detail::Read<AppInfo>(
      [&](AppInfo* info) { return tav_get_app_info(app_id.data(), info); });
}

/**
 * \brief The same as GetAppInfo, for callers that hold a platform id.
 * \param tizen_id The app's platform id or id.
 * \return The record, all zero after any failure.
 * \see tav_get_app_info_by_tizenid
 */
inline Result<AppInfo> GetAppInfoByTizenId(TextView tizen_id) noexcept {
  return detail::Read<AppInfo>(
      [&](AppInfo* info) { return tav_get_app_info_by_tizenid(tizen_id.data(), info); });
}

/**
 * \brief The app with this run title.
 * \param run_title The app's run title.
 * \return The record, all zero after any failure.
 * \see tav_get_app_info_by_runtitle
 */
inline Result<AppInfo> GetAppInfoByRunTitle(TextView run_title) noexcept {
  return detail::Read<AppInfo>(
      [&](AppInfo* info) { return tav_get_app_info_by_runtitle(run_title.data(), info); });
}

/* ---- Lists and counts ---- */

/**
 * \brief The filter that the library starts from: kKind1, kType2. Filter() lets every app through.
 * \return The filter.
 * \see tav_init_app_filter
 */
[[nodiscard]] inline Filter InitAppFilter() noexcept {
  tav_app_filter_s filter = {};
  (void)tav_init_app_filter(&filter);  // which refuses a null pointer alone
  return {static_cast<Featured>(filter.featured), static_cast<AppTypes>(filter.app_type),
          filter.premium_game};
}

/**
 * \brief A page of the visible apps that the filter lets through. It ends before the first app that
 * cannot be read, and may then be empty; apps that the service removes meanwhile are left out.
 * \param filter Which apps.
 * \param mode The order. With ViewMode::kLastDownloaded the page is cut out of the catalogue's
 * order, and only then its apps are put into the mode's order.
 * \param page Which part of the list.
 * \return The list, empty when no app matches.
 * \see tav_get_app_list
 */
inline Result<AppList> GetAppList(const Filter& filter = {}, ViewMode mode = ViewMode::kCatalogue,
                                  Page page = {}) noexcept {
  return detail::ReadList<AppInfo>([&](AppInfo** list, int* count) {
    return tav_get_app_list(detail::ToC(filter), detail::ToC(mode), page.index, page.count, list,
                            count);
  });
}

/**
 * \brief GetAppList for callers that may have no filter.
 * \param filter Which apps; null is refused.
 * \param mode The order.
 * \param page Which part of the list.
 * \return As for GetAppList.
 * \see tav_get_app_list_dn
 */
inline Result<AppList> GetAppListDn(const Filter* filter, ViewMode mode = ViewMode::kCatalogue,
                                    Page page = {}) noexcept {
  tav_app_filter_s copy = filter != nullptr ? detail::ToC(*filter) : tav_app_filter_s();
  return detail::ReadList<AppInfo>([&](AppInfo** list, int* count) {
    return tav_get_app_list_dn(filter != nullptr ? &copy : nullptr, detail::ToC(mode), page.index,
                               page.count, list, count);
  });
}

/**
 * \brief GetAppList with multi-screen records.
 * \param filter Which apps.
 * \param mode The order.
 * \param page Which part of the list.
 * \return As for GetAppList.
 * \see tav_get_app_list_ms
 */
inline Result<MultiScreenList> GetAppListMs(const Filter& filter = {},
                                            ViewMode mode = ViewMode::kCatalogue,
                                            Page page = {}) noexcept {
  return detail::ReadList<MultiScreenApp>([&](MultiScreenApp** list, int* count) {
    return tav_get_app_list_ms(detail::ToC(filter), detail::ToC(mode), page.index, page.count, list,
                               count);
  });
}

/**
 * \brief How many visible apps the filter lets through. Costs as much as the whole list.
 * \param filter Which apps.
 * \return The number.
 * \see tav_get_app_count
 */
inline Result<int> GetAppCount(const Filter& filter = {}) noexcept {
  return detail::Read<int>(
      [&](int* count) { return tav_get_app_count(detail::ToC(filter), count); });
}

/**
 * \brief GetAppCount for callers that may have no filter.
 * \param filter Which apps; null is refused.
 * \return The number.
 * \see tav_get_app_count_dn
 */
inline Result<int> GetAppCountDn(const Filter* filter) noexcept {
  tav_app_filter_s copy = filter != nullptr ? detail::ToC(*filter) : tav_app_filter_s();
  return detail::Read<int>(
      [&](int* count) { return tav_get_app_count_dn(filter != nullptr ? &copy : nullptr, count); });
}

/**
 * \brief All apps, hidden ones included, in the order of ViewMode::kLastDownloaded.
 * \return As for GetAppList.
 * \see tav_get_all_app_list
 */
inline Result<AppList> GetAllAppList() noexcept {
  return detail::ReadList<AppInfo>(tav_get_all_app_list);
}

/**
 * \brief The visible apps that were used, the last launched first.
 * \param count The most apps; 0 or less for all of them.
 * \return As for GetAppList.
 * \see tav_get_recently_used_app_list
 */
inline Result<AppList> GetRecentlyUsedAppList(int count = 0) noexcept {
  return detail::ReadList<AppInfo>([&](AppInfo** list, int* real_count) {
    return tav_get_recently_used_app_list(count, list, real_count);
  });
}

/**
 * \brief The installed, available apps whose integer column of this name is 1, hidden ones
 * included.
 * \param key The column's name. It stands in the statement as it is: never what a user typed.
 * \param count The most apps; 0 or less for all of them.
 * \return As for GetAppList.
 * \see tav_get_key_list
 */
inline Result<AppList> GetKeyList(const std::string& key, int count = 0) noexcept {
  return detail::ReadList<AppInfo>([&](AppInfo** list, int* real_count) {
    return tav_get_key_list(key, count, list, real_count);
  });
}

/**
 * \brief Whether the app is one of the three visible apps that were launched last.
 * \param app_id The app's id.
 * \return The answer.
 * \see tav_check_is_recently_used_app
 */
inline Answer CheckIsRecentlyUsedApp(TextView app_id) noexcept {
  return static_cast<Answer>(tav_check_is_recently_used_app(app_id.data()));
}

/**
 * \brief Whether the app is one of the three visible apps with the highest use count.
 * \param app_id The app's id.
 * \return The answer.
 * \see tav_check_is_most_used_app
 */
inline Answer CheckIsMostUsedApp(TextView app_id) noexcept {
  return static_cast<Answer>(tav_check_is_most_used_app(app_id.data()));
}

/* ---- Single properties ---- */

/**
 * \brief Whether the app is bound to an internet provider.
 * \param app_id The app's id.
 * \return The answer.
 * \see tav_is_isp_app
 */
inline Answer IsIspApp(TextView app_id) noexcept {
  return static_cast<Answer>(tav_is_isp_app(app_id.data()));
}

/**
 * \brief Whether the app is a hybrid one.
 * \param app_id The app's id.
 * \return The answer.
 * \see tav_is_hybrid_app
 */
inline Answer IsHybridApp(TextView app_id) noexcept {
  return static_cast<Answer>(tav_is_hybrid_app(app_id.data()));
}

/**
 * \brief Whether the app came from a USB device.
 * \param app_id The app's id.
 * \return Whether it did.
 * \see tav_check_is_usb_app
 */
inline Result<bool> CheckIsUsbApp(TextView app_id) noexcept {
  const int mark = tav_check_is_usb_app(app_id.data());
  return {mark < 0 ? static_cast<Status>(mark) : Status::kOk, mark > 0};
}

/**
 * \brief The rating that the app was given.
 * \param app_id The app's id.
 * \return The rating.
 * \see tav_get_app_rating
 */
inline Result<int> GetAppRating(TextView app_id) noexcept {
  return detail::Read<int>([&](int* rating) { return tav_get_app_rating(app_id.data(), rating); });
}

/**
 * \brief The package name of the app with this native id.
 * \param native_id The native id.
 * \return The package name, at most 127 bytes.
 * \see tav_get_pkgname_by_nativeid
 */
inline Result<Text> GetPkgnameByNativeId(TextView native_id) noexcept {
  return detail::ReadText(
      [&](char** text) { return tav_get_pkgname_by_nativeid(native_id.data(), text); });
}

/**
 * \brief The run title of the app with this pair of broadcast ids.
 * \param org_id The organisation's broadcast id.
 * \param app_id The app's broadcast id.
 * \return The run title, at most 127 bytes.
 * \see tav_get_app_runtitle_by_ait_id
 */
inline Result<Text> GetAppRunTitleByAitId(TextView org_id, TextView app_id) noexcept {
  return detail::ReadText([&](char** text) {
    return tav_get_app_runtitle_by_ait_id(org_id.data(), app_id.data(), text);
  });
}

/**
 * \brief The same as GetAppRunTitleByAitId.
 * \param org_id The organisation's broadcast id.
 * \param app_id The app's broadcast id.
 * \return The run title, at most 127 bytes.
 * \see tav_find_app
 */
inline Result<Text> FindApp(TextView org_id, TextView app_id) noexcept {
  return detail::ReadText(
      [&](char** text) { return tav_find_app(org_id.data(), app_id.data(), text); });
}

/**
 * \brief The id of the app with this run title.
 * \param run_title The run title.
 * \return The id, at most 127 bytes.
 * \see tav_get_appid_by_runtitle
 */
inline Result<Text> GetAppIdByRunTitle(TextView run_title) noexcept {
  return detail::ReadText(
      [&](char** text) { return tav_get_appid_by_runtitle(run_title.data(), text); });
}

/**
 * \brief Whether an app with this run title is installed.
 * \param run_title The run title.
 * \return Whether one is; false also while reads are refused or the database is not usable.
 * \see tav_check_app_installed_by_runtitle
 */
inline Result<bool> CheckAppInstalledByRunTitle(TextView run_title) noexcept {
  int is_missing = 1;
  const int result = tav_check_app_installed_by_runtitle(run_title.data(), &is_missing);
  return {static_cast<Status>(result), is_missing == 0};
}

/**
 * \brief The id of the electronic manual's app.
 * \return The id; the database's may be "NONE".
 * \see tav_get_emanual_id
 */
inline Result<Text> GetEmanualId() noexcept {
  return detail::ReadText(tav_get_emanual_id);
}

}  // namespace tav

#endif  // TAV_DB_API_READS_HPP_
