/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The C++ layer of tav_db_api.hpp: changes through the service, exports and settings.
 * Include tav_db_api.hpp.
 */
#ifndef TAV_DB_API_SERVICE_HPP_
#define TAV_DB_API_SERVICE_HPP_

#include <tav_db_api.h>
#include <tav_db_api_types.hpp>
#include <tav_db_api_values.hpp>

#include <string>
#include <utility>

namespace tav {

/* ---- Changes through the service ---- */

/**
 * \brief The mode of the news ticker.
 * \return The mode.
 * \see tav_get_ticker_mode
 */
inline Result<int> GetTickerMode() noexcept {
  return detail::Read<int>(tav_get_ticker_mode);
}

/**
 * \brief Sets the mode of the news ticker.
 * \param mode The mode.
 * \return The status.
 * \see tav_set_ticker_mode
 */
inline Status SetTickerMode(int mode) noexcept {
  return static_cast<Status>(tav_set_ticker_mode(mode));
}

/**
 * \brief Locks the app or unlocks it, and tells those who watch the list of apps.
 * \param app_id The app's id.
 * \param is_locked true to lock it.
 * \return The status; kOk also when only the telling failed.
 * \see tav_set_app_lock
 */
inline Status SetAppLock(TextView app_id, bool is_locked) noexcept {
  return static_cast<Status>(tav_set_app_lock(app_id.data(), is_locked ? 1 : 0));
}

/** \cond */
/* An int that is below 0 unlocks in C and would lock as a bool. */
template <typename NoBool>
Status SetAppLock(TextView app_id, NoBool is_locked) = delete;
/** \endcond */

/**
 * \brief Rates an installed app, and tells those who watch the list of apps.
 * \param app_id The app's id.
 * \param rating The rating.
 * \return The status.
 * \see tav_set_app_rating
 */
inline Status SetAppRating(TextView app_id, int rating) noexcept {
  return static_cast<Status>(tav_set_app_rating(app_id.data(), rating));
}

/**
 * \brief Counts a use of the app.
 * \param app_id The app's id.
 * \return The status.
 * \see tav_db_update_app_use_count
 */
inline Status UpdateAppUseCount(TextView app_id) noexcept {
  return static_cast<Status>(tav_db_update_app_use_count(app_id.data()));
}

/**
 * \brief Marks the app as updated.
 * \param app_id The app's id.
 * \return The status.
 * \see tav_db_set_app_updated
 */
inline Status SetAppUpdated(TextView app_id) noexcept {
  return static_cast<Status>(tav_db_set_app_updated(app_id.data()));
}

/**
 * \brief Whether the app is being updated.
 * \param app_id The app's id, platform id, package name, native id or Android id.
 * \return The answer; kYes also while the database is busy.
 * \see tav_check_update_popup
 */
inline Answer CheckUpdatePopup(TextView app_id) noexcept {
  return static_cast<Answer>(tav_check_update_popup(app_id.data()));
}

/**
 * \brief Whether the app, or one that it requires, is being installed or updated.
 * \param app_id The app's id, platform id, package name, native id or Android id.
 * \return The answer; kNo also while the database is busy.
 * \see tav_db_check_app_installing
 */
inline Answer CheckAppInstalling(TextView app_id) noexcept {
  return static_cast<Answer>(tav_db_check_app_installing(app_id.data()));
}

/* ---- Exports ---- */

/**
 * \brief One installed app as a JSON text: {"app_info": [{…}]}, every value a string.
 * \param app_id The app's id, platform id, package name, native id or Android id.
 * \return The JSON text.
 * \see tav_get_app_info_json
 */
inline Result<Text> GetAppInfoJson(TextView app_id) noexcept {
  return detail::ReadText([&](char** text) { return tav_get_app_info_json(app_id.data(), text); });
}

/**
 * \brief A list of apps as a JSON text: {"app_list": [{…}, …]}, every value a string. The extra
 * data of the request says which, as tav_get_app_list_json tells.
 * \param app_control The launch request.
 * \return The JSON text, or a Text without one when there is no app.
 * \see tav_get_app_list_json
 */
inline Result<Text> GetAppListJson(::app_control_s* app_control) noexcept {
  return detail::ReadText([&](char** text) { return tav_get_app_list_json(app_control, text); });
}

/**
 * \brief Writes all installed apps, hidden ones included, to an XML file.
 * \return The file's path, after a failure as well unless the call was refused: a failure can
 * leave the file truncated.
 * \see tav_write_all_app_info_to_xml
 */
inline Result<Text> WriteAllAppInfoToXml() noexcept {
  return detail::ReadText(tav_write_all_app_info_to_xml);
}

/**
 * \brief The extra data of a launch request under a key. Throws std::bad_alloc when the key cannot
 * be copied.
 * \param app_control The launch request.
 * \param key The key.
 * \return The data, or kFailed when there is none.
 * \see db_get_app_control_data
 */
inline Result<std::string> GetAppControlData(::app_control_s* app_control, std::string key) {
  return Result<std::string>(detail::FilledBy(), [&](std::string& value) {
    return db_get_app_control_data(app_control, std::move(key), value) ? Status::kOk
                                                                       : Status::kFailed;
  });
}

/* ---- Settings ---- */

/**
 * \brief The key of the apps' service.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_appkey
 */
inline Result<Text> GetAppkey() noexcept {
  return detail::ReadText(tav_get_appkey);
}

/**
 * \brief The version of the apps' service.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_kestrana_ver
 */
inline Result<Text> GetKestranaVer() noexcept {
  return detail::ReadText(tav_get_kestrana_ver);
}

/**
 * \brief How far the apps are synchronised with the store.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_tv_sync_status
 */
inline Result<int> GetTvSyncStatus() noexcept {
  return detail::Read<int>(tav_get_tv_sync_status);
}

/**
 * \brief The kind of factory reset that is under way; reads of the database are refused during 1
 * and 2.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_factory_reset_type
 */
inline Result<int> GetFactoryResetType() noexcept {
  return detail::Read<int>(tav_get_factory_reset_type);
}

/**
 * \brief Whether the synchronisation of the apps has started.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_appsync_start_status
 */
inline Result<int> GetAppsyncStartStatus() noexcept {
  return detail::Read<int>(tav_get_appsync_start_status);
}

/**
 * \brief The state of the home screen's reset.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_homedeck_reset_status
 */
inline Result<int> GetHomedeckResetStatus() noexcept {
  return detail::Read<int>(tav_get_homedeck_reset_status);
}

/**
 * \brief How far the service has started.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_tav_boot_status
 */
inline Result<int> GetTavBootStatus() noexcept {
  return detail::Read<int>(tav_get_tav_boot_status);
}

/**
 * \brief The id of the app that was installed last.
 * \return The value; kFailed when the setting is missing or of another type.
 * \see tav_get_installed_appid
 */
inline Result<Text> GetInstalledAppId() noexcept {
  return detail::ReadText(tav_get_installed_appid);
}

/**
 * \brief Once told the extra apps.
 * \deprecated There are no extra apps any more.
 * \return Status::kFailed.
 * \see tav_get_extra_appid
 */
[[deprecated("there are no extra apps any more")]] inline Status GetExtraAppId() {
  return static_cast<Status>(tav_get_extra_appid(static_cast<char**>(nullptr)));
}

/**
 * \brief Tells the watchers of the apps to reload.
 * \return The status; kFailed when the setting cannot be written.
 * \see tav_set_app_change
 */
inline Status SetAppChange() noexcept {
  return static_cast<Status>(tav_set_app_change());
}

/**
 * \brief A value of the service's configuration table. Its call tells no failure.
 * \param name The value's name.
 * \return The value, or no text when there is none or it cannot be read.
 * \see tav_inner_config_db_api
 */
[[nodiscard]] inline Text InnerConfig(TextView name) noexcept {
  char* value = nullptr;
  (void)tav_inner_config_db_api(name.data(), &value);  // which is always 0
  return Text(value);
}

/**
 * \brief The configuration value "SYNC_STATE" as a number, 0 for a text that is none.
 * \return The value.
 * \see tav_get_tv_sync_state
 */
inline Result<int> GetTvSyncState() noexcept {
  return detail::Read<int>(tav_get_tv_sync_state);
}

}  // namespace tav

#endif  // TAV_DB_API_SERVICE_HPP_
