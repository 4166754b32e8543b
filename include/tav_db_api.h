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
 *
 * Fork. A forked child may read, whatever the threads of its parent were doing: fork waits until
 *   the call under way has ended, and the child opens a connection of its own. A call is waited
 *   for 5 s, longer than a read waits for a busy database; in a child that is forked then, all
 *   that needs the database or the service fails. Requests to the service fail in the child of a
 *   process that has made one, since a bus connection cannot be inherited. Otherwise the child
 *   connects by itself, in vain, after up to 35 s, if the host has used GLib's threads before.
 *   Watched settings stay the parent's. A child that outlives its parent must not read a database
 *   in WAL mode: locks that the two share end with the parent. Programs that are started with
 *   exec inherit none of this.
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

/* The settings that can be watched. The numbers are part of the interface; 3 is none of them. */
typedef enum tav_vconf_key_e TAV_ENUM_INT {
  TAV_VCONF_KEY_FACTORY_RESET_TYPE = 0,
  TAV_VCONF_KEY_APPSYNC_START = 1,
  TAV_VCONF_KEY_HOMEDECK_RESET_STATUS = 2,
  TAV_VCONF_KEY_INSTALLED_APPID = 4
} tav_vconf_key_e;

/*
 * Called when a watched setting changed, with its new value and the pointer that was handed in
 * at the registration.
 */
typedef void (*tav_int_changed_cb)(int value, void* userData);
/* value is valid during the call; null when the setting holds no text. */
typedef void (*tav_text_changed_cb)(const char* value, void* userData);

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

/* ---- Settings ----
 *
 * What the service publishes of its state, each the value of one setting of the platform. A
 * getter reads it anew, takes no lock and needs no database. It returns 0; -1, with the out value
 * untouched, when the setting is missing or of another type, or the pointer is null. A text is a
 * new block that the caller frees.
 */

/* The key of the apps' service, "db/comss/appkey". */
TAV_API int tav_get_appkey(char** key);

/* The version of the apps' service, "db/comss/kestranaversion". */
TAV_API int tav_get_kestrana_ver(char** version);

/* How far the apps are synchronised with the store, "db/tav/app_sync_status". */
TAV_API int tav_get_tv_sync_status(int* status);

/*
 * The kind of factory reset that is under way, "db/tav/factory_reset"; reads of the database are
 * refused during 1 and 2.
 */
TAV_API int tav_get_factory_reset_type(int* type);

/* Whether the synchronisation of the apps has started, "memory/tav/appsync". */
TAV_API int tav_get_appsync_start_status(int* status);

/* The state of the home screen's reset, "db/homedeck/reset/tavcore". */
TAV_API int tav_get_homedeck_reset_status(int* status);

/* How far the service has started, "memory/tav/boot_status". */
TAV_API int tav_get_tav_boot_status(int* status);

/* The id of the app that was installed last, "memory/tav/app_install". */
TAV_API int tav_get_installed_appid(char** appId);

/* Deprecated: there are no extra apps any more. Always -1; the arguments are not looked at. */
#ifdef __cplusplus
TAV_API int tav_get_extra_appid(...);
#else
TAV_API int tav_get_extra_appid(char** appId);
#endif

/*
 * Tells the watchers of the apps to reload, by setting "memory/tav/app_change" to 1. Returns 0,
 * or -1 when the setting cannot be written. No lock.
 */
TAV_API int tav_set_app_change(void);

/*
 * A value of the service's configuration table as a new block that the caller frees. Always
 * returns 0; *value is untouched when there is no such value or it cannot be read, so set it to
 * null before.
 */
TAV_API int tav_inner_config_db_api(const char* name, char** value);

/*
 * The configuration value "SYNC_STATE" as a number, 0 for a text that is none. Returns 0; -1, with
 * *state untouched, when there is no such value or the database cannot be used; -2 when it stayed
 * busy.
 */
TAV_API int tav_get_tv_sync_state(int* state);

/* ---- Watching settings ----
 *
 * A callback is called whenever a process sets the setting, also to the value that it has. The
 * calls come from the main context of the thread that registered the setting's first callback:
 * somebody has to run that context, for example with g_main_loop_run. Changes in quick
 * succession may be told as one; the last value is never lost.
 *
 * Callbacks of one setting are unique by function and are called in the order of registration.
 * A callback that is registered again keeps its place and its user data, and the result is 0.
 * The library stores userData and hands it back; it neither reads nor frees it.
 *
 * During its call a callback may register and unregister, itself as well: one that is
 * unregistered is not called any more, not even for the change that is being told, and one that
 * is registered waits for the next change. An exception that leaves a callback is logged and
 * dropped.
 *
 * Unlike the rest of this interface: no lock. Registering, unregistering and the calls must not
 * happen at the same time on different threads; the thread that runs the main context is the
 * place for all three.
 *
 * Registering returns 0; -1 for a null callback, when the platform refuses the watch or memory
 * ran out, and nothing is stored then. Unregistering returns 0; -1 for a null callback or one
 * that is not registered.
 */

/* "db/tav/factory_reset": a factory reset begins or has ended. */
TAV_API int tav_register_factory_reset_type_changed_cb(tav_int_changed_cb callback, void* userData);
TAV_API int tav_unregister_factory_reset_type_changed_cb(tav_int_changed_cb callback);

/* "memory/tav/appsync": the synchronisation of the apps starts. */
TAV_API int tav_register_appsync_start_changed_cb(tav_int_changed_cb callback, void* userData);
TAV_API int tav_unregister_appsync_start_changed_cb(tav_int_changed_cb callback);

/* "db/homedeck/reset/tavcore": the state of the home screen's reset. */
TAV_API int tav_register_homedeck_reset_status_changed_cb(tav_int_changed_cb callback,
                                                          void* userData);
TAV_API int tav_unregister_homedeck_reset_status_changed_cb(tav_int_changed_cb callback);

/* "memory/tav/app_install": an app was installed; the value is its id. */
TAV_API int tav_register_installed_appid_changed_cb(tav_text_changed_cb callback, void* userData);
TAV_API int tav_unregister_installed_appid_changed_cb(tav_text_changed_cb callback);

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
 * except that a failed count leaves *realCount untouched, 0 or at what had been counted.
 */
TAV_API int tav_get_key_list(const std::string& key, int count, tav_app_info_s** appList,
                             int* realCount);

/*
 * The extra data of a launch request under a key. Returns true and sets value, or false with
 * value untouched. No lock.
 */
TAV_API bool db_get_app_control_data(struct app_control_s* app_control, std::string key,
                                     std::string& value);

/*
 * The typed registrations with the setting as a number and the callback as an int, its address
 * read as unsigned; -1 for any other number. Where addresses are wider than an int only those
 * below 4 GiB fit, so prefer the typed functions: they take any.
 */
TAV_API int tav_register_value_cb(tav_vconf_key_e key, int callback, void* userData);
TAV_API int tav_unregister_value_cb(tav_vconf_key_e key, int callback);

#if INTPTR_MAX > INT32_MAX
/* NOLINTBEGIN(performance-no-int-to-ptr): carrying an address as a number is their purpose. */

/* The same with the callback's whole address. */
inline int tav_register_value_cb(tav_vconf_key_e key, intptr_t callback, void* userData) {
  const tav_int_changed_cb int_cb = reinterpret_cast<tav_int_changed_cb>(callback);
  switch (key) {
    case TAV_VCONF_KEY_FACTORY_RESET_TYPE:
      return tav_register_factory_reset_type_changed_cb(int_cb, userData);
    case TAV_VCONF_KEY_APPSYNC_START:
      return tav_register_appsync_start_changed_cb(int_cb, userData);
    case TAV_VCONF_KEY_HOMEDECK_RESET_STATUS:
      return tav_register_homedeck_reset_status_changed_cb(int_cb, userData);
    case TAV_VCONF_KEY_INSTALLED_APPID:
      return tav_register_installed_appid_changed_cb(
          reinterpret_cast<tav_text_changed_cb>(callback), userData);
  }
  return tav_register_value_cb(key, callback != 0 ? 1 : 0, userData); /* refuses the key */
}

inline int tav_unregister_value_cb(tav_vconf_key_e key, intptr_t callback) {
  const tav_int_changed_cb int_cb = reinterpret_cast<tav_int_changed_cb>(callback);
  switch (key) {
    case TAV_VCONF_KEY_FACTORY_RESET_TYPE:
      return tav_unregister_factory_reset_type_changed_cb(int_cb);
    case TAV_VCONF_KEY_APPSYNC_START:
      return tav_unregister_appsync_start_changed_cb(int_cb);
    case TAV_VCONF_KEY_HOMEDECK_RESET_STATUS:
      return tav_unregister_homedeck_reset_status_changed_cb(int_cb);
    case TAV_VCONF_KEY_INSTALLED_APPID:
      return tav_unregister_installed_appid_changed_cb(
          reinterpret_cast<tav_text_changed_cb>(callback));
  }
  return tav_unregister_value_cb(key, 0); /* refuses the key */
}

/* NOLINTEND(performance-no-int-to-ptr) */
#endif /* INTPTR_MAX > INT32_MAX */

#endif /* __cplusplus */

#endif /* TAV_DB_API_H_ */
