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

#ifdef __cplusplus
#include <string>
#endif

#if defined(__GNUC__)
#define TAV_API __attribute__((visibility("default")))
#else
#define TAV_API
#endif

/* Makes an enumeration a plain int in C++ as well, so that it may hold any value. */
#ifdef __cplusplus
#define TAV_ENUM_INT : int
#else
#define TAV_ENUM_INT
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
 * Which apps a list holds. 65535 in featured or app_type lets every app through.
 */
typedef struct tav_app_filter_s {
  int32_t featured;     /* bit set over 1, 2, 4 and 8, one of them at least; 3 stands for 11 */
  int32_t premium_game; /* accepted, and selects nothing */
  int32_t app_type;     /* bit set over 2 and 4, one of them at least; up to 127 */
} tav_app_filter_s;

/* The order of a list. Any other value is the catalogue's order. */
typedef enum tav_app_viewmode_e TAV_ENUM_INT {
  TAV_APP_VIEWMODE_MOST_USED = 0,
  TAV_APP_VIEWMODE_CATALOGUE = 1,
  /*
   * Full records: the catalogue's order, with the downloaded apps at its end moved to the
   * front, the last one first. Multi-screen records: by install date, the latest first.
   */
  TAV_APP_VIEWMODE_LAST_DOWNLOADED = 2,
  TAV_APP_VIEWMODE_TITLE = 3,
  TAV_APP_VIEWMODE_TITLE_DESCENDING = 4,
  TAV_APP_VIEWMODE_RECENTLY_LAUNCHED = 5
} tav_app_viewmode_e;

/* One app of a multi-screen list. */
typedef struct tav_app_ms_s {
  char app_id[TAV_TEXT_SIZE];
  int32_t is_multi_screen2;
} tav_app_ms_s;

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
 * when the database stayed busy. *info is untouched when the call was refused or the query could
 * not be prepared, all zero when nothing matched, and of no meaning after -2.
 */
TAV_API int tav_get_app_info(const char* app_id, tav_app_info_s* info);

/*
 * The same as tav_get_app_info, which matches Tizen ids as well; here for callers that hold
 * one. Arguments, results and errors are those of tav_get_app_info.
 */
TAV_API int tav_get_app_info_by_tizenid(const char* tizen_id, tav_app_info_s* info);

/* ---- Lists and counts ----
 *
 * A list is one malloc block of records, *realCount of them, that the caller frees. What becomes
 * of the two when there is no list:
 *   nothing matches              0; the pointer is untouched, *realCount 0
 *   refused, or a bad argument   the failure; both are untouched
 *   the count failed             the failure; the pointer is untouched, *realCount 0
 *   no memory, reading failed    the failure; the pointer is null, *realCount 0
 * A caller that frees whatever the result sets the pointer to null before the call.
 */

/* The size of tav_app_filter_s in bytes that the library was built with: 12. */
TAV_API unsigned int get_size_of_tav_app_filter_s(void);

/* Sets *filter to featured 1, premium_game 1, app_type 2. Returns 0, or -1 for null. No lock. */
TAV_API int tav_init_app_filter(tav_app_filter_s* filter);

/*
 * A page of the visible apps that the filter lets through, in the order of the view mode.
 *   index      the first app of the page, from 0; negative for no paging
 *   count      the most apps to return; 0 or less for all that there are from index on
 *   appList    receives the block
 *   realCount  receives the number of records
 *
 * Returns 0; -1 when the filter is refused, apps match but not as many as index wants
 * (*realCount is then 0), a pointer is null, memory ran out or the call is refused; -2 when the
 * database stayed busy. Apps that the service removes while the list is read leave zeroed
 * records at its end.
 */
TAV_API int tav_get_app_list(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index,
                             int count, tav_app_info_s** appList, int* realCount);

/* tav_get_app_list with the filter by pointer; a null filter is -1. */
TAV_API int tav_get_app_list_dn(tav_app_filter_s* filter, tav_app_viewmode_e viewMode, int index,
                                int count, tav_app_info_s** appList, int* realCount);

/*
 * tav_get_app_list with multi-screen records. Apps that the service removes while the list is
 * read leave zeroed records at its end, and -1 when none is left.
 */
TAV_API int tav_get_app_list_ms(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index,
                                int count, tav_app_ms_s** msList, int* realCount);

/*
 * How many visible apps the filter lets through. Counts by reading the whole list, so it costs
 * as much and is refused for the same reasons. Results as tav_get_app_list.
 */
TAV_API int tav_get_app_count(tav_app_filter_s filter, int* count);

/* tav_get_app_count with the filter by pointer; a null filter is -1. */
TAV_API int tav_get_app_count_dn(tav_app_filter_s* filter, int* count);

/*
 * All apps, hidden ones included, in the order of TAV_APP_VIEWMODE_LAST_DOWNLOADED. Results as
 * tav_get_app_list.
 */
TAV_API int tav_get_all_app_list(tav_app_info_s** appList, int* count);

/*
 * The visible apps that were used at least once, the last launched first; at most count of them
 * when count is above 0. Results as tav_get_app_list.
 */
TAV_API int tav_get_recently_used_app_list(int count, tav_app_info_s** appList, int* realCount);

/*
 * Whether the app is one of the three visible apps that were launched last, of those that were
 * used at all. Returns 0 when it is; -1 when it is not, appId is null or empty, or the package
 * manager recovers; -2 when the database stayed busy. Answers during a factory reset as well.
 */
TAV_API int tav_check_is_recently_used_app(const char* appId);

/* The same for the three visible apps with the highest use count. */
TAV_API int tav_check_is_most_used_app(const char* appId);

/* ---- Single properties ----
 *
 * Each reads one column of the one app that its key names. Besides the results named below:
 * -1 when there is no such app, an argument is null or empty, or the call is refused; -2 when
 * the database stayed busy. On any failure the out value is untouched, unless said otherwise.
 */

/* Whether the app is bound to an internet provider. Returns 0 when it is, -1 when it is not. */
TAV_API int tav_is_isp_app(const char* appId);

/* Whether the app is a hybrid one. Returns 0 when it is, -1 when it is not. */
TAV_API int tav_is_hybrid_app(const char* appId);

/* Whether the app came from a USB device. Returns the stored mark: 1 when it did, else 0. */
TAV_API int tav_check_is_usb_app(const char* appId);

/* The rating that the app was given. Returns 0 and sets *rating. */
TAV_API int tav_get_app_rating(const char* appId, int* rating);

/*
 * The package name of the app with this native id, at most 127 bytes, in a new block of 128
 * bytes that the caller frees. Returns 0 and sets *pkgName.
 */
TAV_API int tav_get_pkgname_by_nativeid(const char* nativeId, char** pkgName);

/*
 * The run title of the app with this pair of broadcast application ids, as
 * tav_get_pkgname_by_nativeid gives a package name.
 */
TAV_API int tav_get_app_runtitle_by_ait_id(const char* aitOrgId, const char* aitAppId,
                                           char** runTitle);

/* The same as tav_get_app_runtitle_by_ait_id. */
TAV_API int tav_find_app(const char* aitOrgId, const char* aitAppId, char** runTitle);

/*
 * The id of the app with this run title, as tav_get_pkgname_by_nativeid gives a package name.
 */
TAV_API int tav_get_appid_by_runtitle(const char* runTitle, char** appId);

/*
 * Whether an app with this run title is installed. Returns 0 and sets *status to 0 when it is
 * and to 1 when it is not, which is also the answer while reads are refused or the database is
 * not usable; -1 when an argument is null or empty; -2 with *status 1 when the database stayed
 * busy.
 */
TAV_API int tav_check_app_installed_by_runtitle(const char* runTitle, int* status);

/*
 * The id of the electronic manual's app, in a new block that the caller frees: the platform's,
 * or the database's when the platform has none, which is cut to 127 bytes and may be "NONE".
 * Returns 0 and sets *appId. The lock is held only while the database is read, and no state of
 * the platform refuses the call.
 */
TAV_API int tav_get_emanual_id(char** appId);

/* ---- Changes through the service ----
 *
 * Each asks the service over the system bus, which costs two round trips of at most 10 s each;
 * the first request of a process also connects, and makes the client known in up to 10 s more.
 * Connecting takes 10 s when the bus says nothing, and at the worst, with a bus that falls silent
 * in the middle, 35 s. The lock is held meanwhile, so that reads of other threads wait. -1 stands
 * for every failure: refused, no bus, no service, no answer in time, an answer of the wrong kind,
 * or the service's own refusal. A bus or a service that comes back serves the next call.
 */

/* The mode of the news ticker. Returns 0 and sets *tickerMode. */
TAV_API int tav_get_ticker_mode(int* tickerMode);

/* Sets the mode of the news ticker. */
TAV_API int tav_set_ticker_mode(int tickerMode);

/*
 * Locks the app for isLock above 0, else unlocks it, and tells those who watch the list of apps.
 * Refused during a factory reset and while the package manager recovers. Returns 0 also when
 * only the telling failed.
 */
TAV_API int tav_set_app_lock(const char* appId, int isLock);

/*
 * Rates an installed app, and tells those who watch the list of apps. Refused as
 * tav_set_app_lock. Returns 0, -1, or -2 when the database stayed busy.
 */
TAV_API int tav_set_app_rating(const char* appId, int rating);

/* Counts a use of the app. Refused while the package manager recovers. */
TAV_API int tav_db_update_app_use_count(const char* appId);

/* Marks the app as updated. Refused while the package manager recovers. */
TAV_API int tav_db_set_app_updated(const char* appId);

/* ---- Whether an app is being installed ----
 *
 * These two read the database, one lock for each app they look at. appId may be the app's id,
 * Tizen id, package name, native id or Android id.
 */

/*
 * Whether the app is being updated. Returns 0 when it is, and also when the database stayed
 * busy; -1 when it is not, there is no such app, the id is null or empty, or reads are refused.
 */
TAV_API int tav_check_update_popup(const char* appId);

/*
 * Whether the app, or one that it requires, is being installed or updated. Returns 0 when one
 * of them is; -1 when none is, there is no such app, the id is null or empty, reads are refused
 * or the database stayed busy.
 */
TAV_API int tav_db_check_app_installing(const char* appId);

/* ---- Exports ---- */

/* A launch request of the platform. */
struct app_control_s;

/*
 * One installed app as a JSON text: {"app_info": [{…}]}, every value a string. app_id may be the
 * app's id, Tizen id, package name, native id or Android id. *json receives a new block that the
 * caller frees. Returns 0; -1, with *json untouched, when there is no such app, the database
 * stayed busy, memory ran out or the call is refused.
 */
TAV_API int tav_get_app_info_json(const char* app_id, char** json);

/*
 * A list of apps as a JSON text: {"app_list": [{…}, …]}, every value a string. The extra data of
 * app_control says which: "built_in_app" "true" asks for the built-in catalogue, with
 * "test_app_only" "true" for its test apps alone; else "all_app" "true" asks for all installed
 * apps, or "app_featured" and "view_mode" for those that tav_get_app_list would give, both
 * decimal numbers. *json receives a new block that the caller frees, or null when there is no
 * app. Returns 0, also with a part of the list when the database became busy; -1, with *json
 * untouched, when the list is refused or memory ran out.
 */
TAV_API int tav_get_app_list_json(struct app_control_s* app_control, char** json);

/*
 * Writes all installed apps, hidden ones included, to the XML file
 * "/tavcore/common/apps_info.xml" under the platform's data directory, and gives its path. No
 * character of a value is escaped. The file is empty when there is no app.
 *
 * Returns 0; -1 when the call is refused, the path leads through a link, the file cannot be
 * opened or written, or memory ran out; -2 when the database stayed busy. Whatever is returned,
 * *path holds a new block that the caller frees, unless the call was refused by the state of the
 * platform, path is null or no memory was left for it. A failure can leave the file truncated.
 */
TAV_API int tav_write_all_app_info_to_xml(char** path);

#ifdef __cplusplus
}

/* Functions whose exported names carry their parameter types: for C++ alone. */

/*
 * Fills *info with the app whose run title is run_title. Results, errors and what becomes of
 * *info are those of tav_get_app_info.
 */
TAV_API int tav_get_app_info_by_runtitle(const char* run_title, tav_app_info_s* info);

/*
 * The installed, available apps whose integer column named key is 1, hidden ones included, in the
 * database's order; at most count of them when count is above 0. key stands in the statement as
 * it is: hand over names of columns only, never what a user typed. Results as tav_get_app_list,
 * except that a failed count leaves *realCount 0 or untouched.
 */
TAV_API int tav_get_key_list(const std::string& key, int count, tav_app_info_s** appList,
                             int* realCount);

/*
 * The extra data of a launch request under a key. Returns true and sets value, or false with
 * value untouched. No lock.
 */
TAV_API bool db_get_app_control_data(struct app_control_s* app_control, std::string key,
                                     std::string& value);

#endif /* __cplusplus */

#endif /* TAV_DB_API_H_ */
