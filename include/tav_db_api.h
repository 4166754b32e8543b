/* SPDX-License-Identifier: Apache-2.0 */
/*
 * The public interface of libtav_db_api, the client library of the TV's web-app service.
 *
 * Conventions that hold for every function here, unless its own comment says otherwise:
 *
 * Results. An int: 0 is success, -1 a failure (not found, a bad argument, refused because the
 *   TV is being reset or the package manager rebuilds its database, out of memory, no usable
 *   database), -2 a database that stayed busy. The cause of a failure stands in the platform
 *   log under the tag "TavClient". A null pointer where a value is wanted is -1, never a crash.
 *   No exception leaves the library.
 *
 * Ownership. Arguments are only read during the call. Records are the caller's; the library
 *   fills them. Lists and texts that come back through a pointer are malloc blocks that the
 *   caller releases with free(). On a failure the library keeps nothing of the caller's and
 *   leaves nothing to release.
 *
 * Texts. Null-terminated UTF-8. A text field of a record holds at most 127 bytes and the
 *   terminator; a longer text is cut at the 127th byte, which may fall inside a character.
 *   SQL NULL reads as "" or 0.
 *
 * Visibility. Only apps that are fully installed, available and not marked for a reset are
 *   ever returned.
 *
 * Threads. Every function may be called from any thread. One lock of the process serialises
 *   all database work, so a call can wait for another one. A busy database is polled every
 *   10 ms, 100 times for a statement's preparation and 100 times for each of its steps: about
 *   one second each before -2. Not for use in a signal handler.
 */
#ifndef TAV_DB_API_H_
#define TAV_DB_API_H_

#include <stdint.h>

#if defined(__GNUC__)
#define TAV_API __attribute__((visibility("default")))
#else
#define TAV_API
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Bytes of a text field of a record, its terminator included. */
#define TAV_TEXT_SIZE 128

/*
 * One app. 24 texts, then 35 integers, 3212 bytes; the order and the sizes are part of the
 * interface. The misspelt "mutlilang" is part of it as well.
 */
typedef struct tav_app_info_s {
  char app_id[TAV_TEXT_SIZE];
  char app_title[TAV_TEXT_SIZE];
  char app_installed_path[TAV_TEXT_SIZE];
  char app_icon_path[TAV_TEXT_SIZE];
  char app_panel_icon_path[TAV_TEXT_SIZE]; /* the same path as app_icon_path */
  char app_version[TAV_TEXT_SIZE];
  char install_date[TAV_TEXT_SIZE];
  char app_tizen_id[TAV_TEXT_SIZE];
  char pkgname[TAV_TEXT_SIZE];
  char app_widget_category[TAV_TEXT_SIZE];
  char app_runtitle[TAV_TEXT_SIZE];
  char type[TAV_TEXT_SIZE];
  char spare_string_1[TAV_TEXT_SIZE];  /* always empty */
  char spare_string_2[TAV_TEXT_SIZE];  /* always empty */
  char extra_icon_path[TAV_TEXT_SIZE]; /* the same path as app_icon_path */
  char gamepad[TAV_TEXT_SIZE];
  char firstscreen_icon_dir[TAV_TEXT_SIZE]; /* the same path as app_icon_path */
  char ambient_screen_support[TAV_TEXT_SIZE];
  char ambient_icon_path[TAV_TEXT_SIZE]; /* the same path as app_icon_path */
  char hbbtv[TAV_TEXT_SIZE];
  char native_id[TAV_TEXT_SIZE];
  char waiting_screen_type[TAV_TEXT_SIZE];
  char launch_user_data[TAV_TEXT_SIZE];
  char content_id[TAV_TEXT_SIZE];
  int32_t size;
  int32_t use_count;
  int32_t app_index;
  int32_t app_featured;
  int32_t app_type;
  int32_t installState;
  int32_t is_hidden;
  int32_t is_support_voice;
  int32_t is_support_gesture;
  int32_t is_network;
  int32_t is_removable;
  int32_t is_display;
  int32_t spare_int_1; /* always 0 */
  int32_t is_lock;     /* 1: locked by its owner or by the age-rating setting, else 0 */
  int32_t spare_int_2; /* always 0 */
  int32_t is_premium_game;
  int32_t is_need_login;
  int32_t is_need_update;
  int32_t installed_source_type;
  int32_t is_updated;
  int32_t is_ticker;
  int32_t is_multi_screen2;
  int32_t is_multi_tasking;
  int32_t is_usb_app;
  int32_t is_age_auth;
  int32_t app_age_limit; /* years */
  int32_t use_gamepad;
  int32_t is_need_uninstall;
  int32_t is_icon_mutlilang_support;
  int32_t is_transparent_support;
  int32_t is_partial_overlay_support;
  int32_t is_websdi_support;
  int32_t is_disk_cache;
  int32_t is_force_launch_support;
  int32_t launch_type;
} tav_app_info_s;

/*
 * The size of tav_app_info_s in bytes that the library was built with: 3212. A caller compares
 * it with sizeof(tav_app_info_s) to see that both agree on the layout. Cannot fail; no lock.
 */
TAV_API unsigned int get_size_of_tav_app_info_s(void);

/*
 * Fills *info with the app whose id or Tizen id is app_id. When several apps match, the first
 * one that the database returns is taken. The ids "org.tizen.browser" and
 * "org.tizen.netflix-app" are matched on the Tizen id alone; "vitrine" stands for the web id
 * of the device's demonstration app.
 *
 * Returns 0; -1 when nothing matches, an argument is null or empty, or the call is refused; -2
 * when the database stayed busy. *info is all zero when nothing matched or the database was
 * busy during the reading, and untouched on any failure before that.
 */
TAV_API int tav_get_app_info(const char* app_id, tav_app_info_s* info);

/*
 * The same as tav_get_app_info, which matches Tizen ids as well; here for callers that hold
 * one. Arguments, results and errors are those of tav_get_app_info.
 */
TAV_API int tav_get_app_info_by_tizenid(const char* tizen_id, tav_app_info_s* info);

#ifdef __cplusplus
}

/* Functions whose exported names carry their parameter types: for C++ alone. */

/*
 * Fills *info with the app whose run title is run_title. Results, errors and what becomes of
 * *info are those of tav_get_app_info.
 */
TAV_API int tav_get_app_info_by_runtitle(const char* run_title, tav_app_info_s* info);

#endif /* __cplusplus */

#endif /* TAV_DB_API_H_ */
