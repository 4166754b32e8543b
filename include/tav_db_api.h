/* SPDX-License-Identifier: Apache-2.0 */
/**
 * @file
 * The public interface of libtav_db_api, the client library of the TV's web-app service.
 */
/**
 * @mainpage
 * Conventions that hold for every function here, unless its own comment says otherwise.
 *
 * @section results Results
 * An int: 0 is success, -1 a failure (not found, a bad argument, refused because the TV is being
 * reset or the package manager rebuilds its database, out of memory, no usable database), -2 a
 * database that stayed busy. The cause of a failure stands in the platform log under the tag
 * "TavClient". A null pointer where a value is wanted is -1, never a crash. No exception leaves
 * the library.
 *
 * @section ownership Ownership
 * Arguments are only read during the call. Records are the caller's; the library fills them.
 * Lists and texts that come back through a pointer are malloc blocks that the caller releases
 * with free(). On a failure the library keeps nothing of the caller's and leaves nothing to
 * release.
 *
 * @section texts Texts
 * Null-terminated UTF-8. A text field of a record holds at most 127 bytes and the terminator; a
 * longer text is cut at the 127th byte, which may fall inside a character. SQL NULL reads as ""
 * or 0.
 *
 * @section visibility Visibility
 * Only apps that are fully installed, available and not marked for a reset are ever returned.
 *
 * @section time Threads and time
 * Every function may be called from any thread, unless it says otherwise; none from a signal
 * handler. One lock of the process serialises all database work and all requests to the service,
 * so a call can wait for another one. What a function holds it for:
 *
 * "one statement": a busy database is polled every 10 ms, 100 times for the preparation and 100
 * times for each step, so about one second each before -2. When the database cannot be opened, or a
 * statement cannot be prepared for another reason than a busy database, the whole file is examined
 * as well, which takes the longer the larger it is.
 *
 * "one request": two round trips to the service of at most 10 s each, and more when the bus has to
 * be connected first; see @ref changes.
 *
 * @section cancellation Cancelled threads
 * A thread is not cancelled in a call, nor in a callback: the cancellation takes effect at the
 * thread's next cancellation point after the call. This holds for deferred cancellation, which is
 * what threads begin with; a thread whose cancellation is asynchronous must not call. A callback
 * returns or throws: it neither ends its thread nor enables its cancellation.
 *
 * @section fork Fork
 * Fork never waits for the library. A child may read, on a connection of its own, if no thread of
 * its parent was in a call of this library at the fork, and if the parent had one thread, or no
 * other one in libc, GLib or the platform: POSIX allows no more to any library. Otherwise the child
 * may only start a program with exec, which inherits none of this. In a child that was forked while
 * a call used the database or the service, all that needs these fails with -1, for good. The child
 * is known by its process id: one that has its parent's, in a process namespace of its own, must
 * not use the library.
 *
 * Requests to the service fail in the child of a process that has made one, since a bus connection
 * cannot be inherited. Otherwise the child connects by itself, in vain, after up to 35 s, if the
 * host has used GLib's threads before. Watched settings stay the parent's: in the child their
 * callbacks are not called. A child that outlives its parent must not read a database in WAL mode:
 * locks that the two share end with the parent.
 */
#ifndef TAV_DB_API_H_
#define TAV_DB_API_H_

#include <stdint.h>

#ifdef __cplusplus
#include <string>
#endif

/** Marks what the library exports. */
#if defined(__GNUC__)
#define TAV_API __attribute__((visibility("default")))
#else
#define TAV_API
#endif

/** Makes an enumeration a plain int in C++ as well, so that it may hold any value. */
#ifdef __cplusplus
#define TAV_ENUM_INT : int
#else
#define TAV_ENUM_INT
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** Bytes of a text field of a record, its terminator included. */
#define TAV_TEXT_SIZE 128

/**
 * One app. 24 texts, then 35 integers, 3212 bytes; the order and the sizes are part of the
 * interface, and so is the misspelt "mutlilang". But for is_lock, fields hold what the service
 * wrote; in an is_ field that is 1 for yes and 0 for no.
 */
typedef struct tav_app_info_s {
  char app_id[TAV_TEXT_SIZE];                 /**< the id */
  char app_title[TAV_TEXT_SIZE];              /**< the title that people see */
  char app_installed_path[TAV_TEXT_SIZE];     /**< the directory it is installed in */
  char app_icon_path[TAV_TEXT_SIZE];          /**< the file of its icon */
  char app_panel_icon_path[TAV_TEXT_SIZE];    /**< the same path as app_icon_path */
  char app_version[TAV_TEXT_SIZE];            /**< the version */
  char install_date[TAV_TEXT_SIZE];           /**< when it was installed */
  char app_tizen_id[TAV_TEXT_SIZE];           /**< the platform id */
  char pkgname[TAV_TEXT_SIZE];                /**< the name of its package */
  char app_widget_category[TAV_TEXT_SIZE];    /**< the category */
  char app_runtitle[TAV_TEXT_SIZE];           /**< the run title */
  char type[TAV_TEXT_SIZE];                   /**< how it was installed */
  char spare_string_1[TAV_TEXT_SIZE];         /**< always empty */
  char spare_string_2[TAV_TEXT_SIZE];         /**< always empty */
  char extra_icon_path[TAV_TEXT_SIZE];        /**< the same path as app_icon_path */
  char gamepad[TAV_TEXT_SIZE];                /**< its game pad support */
  char firstscreen_icon_dir[TAV_TEXT_SIZE];   /**< the same path as app_icon_path */
  char ambient_screen_support[TAV_TEXT_SIZE]; /**< its ambient screen support */
  char ambient_icon_path[TAV_TEXT_SIZE];      /**< the same path as app_icon_path */
  char hbbtv[TAV_TEXT_SIZE];                  /**< what it is in HbbTV */
  char native_id[TAV_TEXT_SIZE];              /**< the native id */
  char waiting_screen_type[TAV_TEXT_SIZE];    /**< the type of its waiting screen */
  char launch_user_data[TAV_TEXT_SIZE];       /**< the user data of its launch */
  char content_id[TAV_TEXT_SIZE];             /**< the content id */
  int32_t size;                               /**< the size, in the service's unit */
  int32_t use_count;                          /**< how often it was used */
  int32_t app_index;                          /**< its place; downloaded apps: above 299 */
  int32_t app_featured;                       /**< what tav_app_filter_s::featured selects */
  int32_t app_type;                           /**< what tav_app_filter_s::app_type selects */
  int32_t installState;                       /**< 3, fully installed */
  int32_t is_hidden;                          /**< left out of most lists */
  int32_t is_support_voice;                   /**< supports voice control */
  int32_t is_support_gesture;                 /**< supports gestures */
  int32_t is_network;                         /**< uses the network */
  int32_t is_removable;                       /**< may be removed */
  int32_t is_display;                         /**< is displayed */
  int32_t spare_int_1;                        /**< always 0 */
  int32_t is_lock;                            /**< by its owner or its age limit; 0 or 1 */
  int32_t spare_int_2;                        /**< always 0 */
  int32_t is_premium_game;                    /**< is a premium game */
  int32_t is_need_login;                      /**< needs a login */
  int32_t is_need_update;                     /**< needs an update */
  int32_t installed_source_type;              /**< the type of its source */
  int32_t is_updated;                         /**< is marked as updated */
  int32_t is_ticker;                          /**< is marked for the ticker */
  int32_t is_multi_screen2;                   /**< is marked for multi-screen use */
  int32_t is_multi_tasking;                   /**< supports multi-tasking */
  int32_t is_usb_app;                         /**< came from a USB device */
  int32_t is_age_auth;                        /**< asks for an authentication of age */
  int32_t app_age_limit;                      /**< the least age, in years */
  int32_t use_gamepad;                        /**< whether it uses a game pad */
  int32_t is_need_uninstall;                  /**< is to be uninstalled */
  int32_t is_icon_mutlilang_support;          /**< supports icons by language */
  int32_t is_transparent_support;             /**< supports transparency */
  int32_t is_partial_overlay_support;         /**< supports a partial overlay */
  int32_t is_websdi_support;                  /**< supports WebSDI */
  int32_t is_disk_cache;                      /**< uses a disk cache */
  int32_t is_force_launch_support;            /**< supports a forced launch */
  int32_t launch_type;                        /**< the type of its launch */
} tav_app_info_s;

/** Which apps a list holds. 65535 in featured or app_type lets every app through. */
typedef struct tav_app_filter_s {
  int32_t featured;     /**< bit set over 1, 2, 4 and 8, one of them at least; 3 stands for 11 */
  int32_t premium_game; /**< accepted, and selects nothing */
  int32_t app_type;     /**< bit set over 2 and 4, one of them at least; up to 127 */
} tav_app_filter_s;

/** The order of a list. Any other value is the catalogue's order. */
typedef enum tav_app_viewmode_e TAV_ENUM_INT {
  TAV_APP_VIEWMODE_MOST_USED = 0, /**< by use count, the highest first */
  TAV_APP_VIEWMODE_CATALOGUE = 1, /**< by app_index, the lowest first */
  /**
   * Full records: the catalogue's order, with the downloaded apps at its end moved to the
   * front, the last one first; of a page, which is cut out of the catalogue's order before, its
   * own apps alone. Multi-screen records: by install date, the latest first.
   */
  TAV_APP_VIEWMODE_LAST_DOWNLOADED = 2,
  TAV_APP_VIEWMODE_TITLE = 3,            /**< by title, in capitals */
  TAV_APP_VIEWMODE_TITLE_DESCENDING = 4, /**< the same, the last one first */
  TAV_APP_VIEWMODE_RECENTLY_LAUNCHED = 5 /**< by launch date, the latest first */
} tav_app_viewmode_e;

/** The settings that can be watched. The numbers are part of the interface; 3 is none of them. */
typedef enum tav_vconf_key_e TAV_ENUM_INT {
  TAV_VCONF_KEY_FACTORY_RESET_TYPE = 0,    /**< "db/tav/factory_reset", an int */
  TAV_VCONF_KEY_APPSYNC_START = 1,         /**< "memory/tav/appsync", an int */
  TAV_VCONF_KEY_HOMEDECK_RESET_STATUS = 2, /**< "db/homedeck/reset/tavcore", an int */
  TAV_VCONF_KEY_INSTALLED_APPID = 4        /**< "memory/tav/app_install", a text */
} tav_vconf_key_e;

/**
 * Called when a watched setting of a number changed.
 * @param value     the new value; 0 when the setting holds no number
 * @param userData  the pointer that was handed in at the registration
 */
typedef void (*tav_int_changed_cb)(int value, void* userData);
/**
 * Called when a watched setting of a text changed.
 * @param value     the new value, valid during the call; null when the setting holds no text
 * @param userData  the pointer that was handed in at the registration
 */
typedef void (*tav_text_changed_cb)(const char* value, void* userData);

/** One app of a multi-screen list. */
typedef struct tav_app_ms_s {
  char app_id[TAV_TEXT_SIZE]; /**< the id */
  int32_t is_multi_screen2;   /**< 1: is marked for multi-screen use */
} tav_app_ms_s;

/**
 * @defgroup lookup One app
 * @code{.c}
 * tav_app_info_s app;
 * if (get_size_of_tav_app_info_s() != sizeof app) return; // of another version
 * if (tav_get_app_info("org.example.weather", &app) == 0) puts(app.app_title);
 * @endcode
 * @{
 */

/**
 * The size of tav_app_info_s that the library was built with. A caller compares it with
 * sizeof(tav_app_info_s) to see that both agree on the layout.
 * @return 3212, in bytes; cannot fail
 * @nolock
 */
TAV_API unsigned int get_size_of_tav_app_info_s(void);

/**
 * Fills a record with the app of this id. When several apps match, the first one that the
 * database returns is taken. The ids "org.tizen.browser" and "org.tizen.netflix-app" are matched
 * on the platform id alone; "vitrine" stands for the web id of the device's demonstration app.
 * @param app_id     the app's id or platform id
 * @param[out] info  the record; untouched when the call was refused or the query could not be
 *                   prepared, all zero when nothing matched, and of no meaning after -2
 * @return 0; -1 when nothing matches, an argument is null or empty, or the call is refused; -2
 *         when the database stayed busy
 * @locks{one statement}
 */
TAV_API int tav_get_app_info(const char* app_id, tav_app_info_s* info);

/**
 * The same as tav_get_app_info, which matches platform ids as well; here for callers that hold one.
 * @param tizen_id   the app's platform id or id
 * @param[out] info  as with tav_get_app_info
 * @return as tav_get_app_info
 * @locks{one statement}
 */
TAV_API int tav_get_app_info_by_tizenid(const char* tizen_id, tav_app_info_s* info);

/** @} */

/**
 * @defgroup lists Lists and counts
 * A list is one malloc block of records, *realCount of them, that the caller frees. What becomes
 * of the two when there is no list:
 *
 *     nothing matches                     0; the pointer is untouched, *realCount 0
 *     refused, or a bad argument          the failure; both are untouched
 *     app_type without the bits 2 and 4   the failure; the pointer is untouched, *realCount 0
 *     index is behind the last match      the failure; the pointer is untouched, *realCount 0
 *     the count failed                    the failure; the pointer is untouched, *realCount 0
 *     no memory, reading failed           the failure; the pointer is null, *realCount 0
 *
 * A caller that frees whatever the result sets the pointer to null before the call.
 *
 * Records at the end of a list can be zeroed although the result is 0: as many as the service
 * removed apps while the list was read; and when an app's row cannot be read, because the file is
 * damaged there, those of that app and of all behind it, or in a list with an order all of them.
 * @code{.c}
 * tav_app_filter_s all = {65535, 0, 65535};
 * tav_app_info_s* apps = NULL;
 * int count = 0;
 * if (tav_get_app_list(all, TAV_APP_VIEWMODE_TITLE, 0, 20, &apps, &count) == 0) {
 *   for (int i = 0; i < count; ++i) puts(apps[i].app_title); // the first page of 20
 * }
 * free(apps);
 * @endcode
 * @{
 */

/**
 * The size of tav_app_filter_s that the library was built with.
 * @return 12, in bytes; cannot fail
 * @nolock
 */
TAV_API unsigned int get_size_of_tav_app_filter_s(void);

/**
 * Sets a filter to featured 1, premium_game 1, app_type 2.
 * @param[out] filter  the filter
 * @return 0, or -1 for null
 * @nolock
 */
TAV_API int tav_init_app_filter(tav_app_filter_s* filter);

/**
 * A page of the visible apps that the filter lets through, in the order of the view mode. With
 * TAV_APP_VIEWMODE_LAST_DOWNLOADED the page is cut out of the catalogue's order, and only then its
 * apps are put into the mode's order.
 * @param filter          which apps
 * @param viewMode        the order
 * @param index           the first app of the page, from 0; negative for no paging
 * @param count           the most apps to return; 0 or less for all that there are from index on
 * @param[out] appList    receives the block
 * @param[out] realCount  receives the number of records
 * @return 0; -1 when the filter is refused, apps match but not as many as index wants (*realCount
 *         is then 0), a pointer is null, memory ran out or the call is refused; -2 when the
 *         database stayed busy
 * @locks{two statements}
 */
TAV_API int tav_get_app_list(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index,
                             int count, tav_app_info_s** appList, int* realCount);

/**
 * tav_get_app_list with the filter by pointer.
 * @param filter          which apps; null is -1
 * @param viewMode        as with tav_get_app_list, like all that follow
 * @param index           the first app
 * @param count           the most apps
 * @param[out] appList    receives the block
 * @param[out] realCount  receives the number of records
 * @return as tav_get_app_list
 * @locks{two statements}
 */
TAV_API int tav_get_app_list_dn(tav_app_filter_s* filter, tav_app_viewmode_e viewMode, int index,
                                int count, tav_app_info_s** appList, int* realCount);

/**
 * tav_get_app_list with multi-screen records.
 * @param filter          as with tav_get_app_list, like all that follow
 * @param viewMode        the order
 * @param index           the first app
 * @param count           the most apps
 * @param[out] msList     receives the block
 * @param[out] realCount  receives the number of records
 * @return as tav_get_app_list; -1 also when all records would be zeroed
 * @locks{two statements}
 */
TAV_API int tav_get_app_list_ms(tav_app_filter_s filter, tav_app_viewmode_e viewMode, int index,
                                int count, tav_app_ms_s** msList, int* realCount);

/**
 * How many visible apps the filter lets through. Counts by reading the whole list, so it costs as
 * much and is refused for the same reasons.
 * @param filter      which apps
 * @param[out] count  receives the number, as realCount does from tav_get_app_list
 * @return as tav_get_app_list
 * @locks{two statements}
 */
TAV_API int tav_get_app_count(tav_app_filter_s filter, int* count);

/**
 * tav_get_app_count with the filter by pointer.
 * @param filter      which apps; null is -1
 * @param[out] count  receives the number
 * @return as tav_get_app_list
 * @locks{two statements}
 */
TAV_API int tav_get_app_count_dn(tav_app_filter_s* filter, int* count);

/**
 * All apps, hidden ones included, in the order of TAV_APP_VIEWMODE_LAST_DOWNLOADED.
 * @param[out] appList  receives the block
 * @param[out] count    receives the number of records
 * @return as tav_get_app_list
 * @locks{two statements}
 */
TAV_API int tav_get_all_app_list(tav_app_info_s** appList, int* count);

/**
 * The visible apps that were used at least once, the last launched first.
 * @param count           the most apps to return; 0 or less for all
 * @param[out] appList    receives the block
 * @param[out] realCount  receives the number of records
 * @return as tav_get_app_list
 * @locks{two statements}
 */
TAV_API int tav_get_recently_used_app_list(int count, tav_app_info_s** appList, int* realCount);

/**
 * Whether the app is one of the three visible apps that were launched last, of those that were
 * used at all. Answers during a factory reset as well.
 * @param appId  the app's id
 * @return 0 when it is; -1 when it is not, appId is null or empty, or the package manager
 *         recovers; -2 when the database stayed busy
 * @locks{one statement}
 */
TAV_API int tav_check_is_recently_used_app(const char* appId);

/**
 * The same for the three visible apps with the highest use count.
 * @param appId  the app's id
 * @return as tav_check_is_recently_used_app
 * @locks{one statement}
 */
TAV_API int tav_check_is_most_used_app(const char* appId);

/** @} */

/**
 * @defgroup properties Single properties
 * Each reads one column of the one app that its key names. "@@failed" below: -1 when there is no
 * such app, an argument is null or empty, the call is refused or memory ran out; -2 when the
 * database stayed busy. On any failure the out value is untouched, unless said otherwise.
 * @code{.c}
 * char* package = NULL;
 * if (tav_get_pkgname_by_nativeid("org.example.native", &package) == 0) puts(package);
 * free(package);
 * @endcode
 * @{
 */

/**
 * Whether the app is bound to an internet provider.
 * @param appId  the app's id
 * @return 0 when it is, -1 when it is not; @failed
 * @locks{one statement}
 */
TAV_API int tav_is_isp_app(const char* appId);

/**
 * Whether the app is a hybrid one.
 * @param appId  the app's id
 * @return 0 when it is, -1 when it is not; @failed
 * @locks{one statement}
 */
TAV_API int tav_is_hybrid_app(const char* appId);

/**
 * Whether the app came from a USB device.
 * @param appId  the app's id
 * @return the stored mark: 1 when it did, else 0; @failed
 * @locks{one statement}
 */
TAV_API int tav_check_is_usb_app(const char* appId);

/**
 * The rating that the app was given.
 * @param appId        the app's id
 * @param[out] rating  receives the rating
 * @return 0; @failed
 * @locks{one statement}
 */
TAV_API int tav_get_app_rating(const char* appId, int* rating);

/**
 * The package name of the app with this native id.
 * @param nativeId      the native id
 * @param[out] pkgName  receives a new block of 128 bytes with a text of at most 127, which the
 *                      caller frees
 * @return 0; @failed
 * @locks{one statement}
 */
TAV_API int tav_get_pkgname_by_nativeid(const char* nativeId, char** pkgName);

/**
 * The run title of the app with this pair of broadcast application ids.
 * @param aitOrgId       the organisation's id
 * @param aitAppId       the application's id in that organisation
 * @param[out] runTitle  receives a block as from tav_get_pkgname_by_nativeid
 * @return 0; @failed
 * @locks{one statement}
 */
TAV_API int tav_get_app_runtitle_by_ait_id(const char* aitOrgId, const char* aitAppId,
                                           char** runTitle);

/**
 * The same as tav_get_app_runtitle_by_ait_id.
 * @param aitOrgId       the organisation's id
 * @param aitAppId       the application's id in that organisation
 * @param[out] runTitle  receives a block as from tav_get_pkgname_by_nativeid
 * @return 0; @failed
 * @locks{one statement}
 */
TAV_API int tav_find_app(const char* aitOrgId, const char* aitAppId, char** runTitle);

/**
 * The id of the app with this run title.
 * @param runTitle    the run title
 * @param[out] appId  receives a block as from tav_get_pkgname_by_nativeid
 * @return 0; @failed
 * @locks{one statement}
 */
TAV_API int tav_get_appid_by_runtitle(const char* runTitle, char** appId);

/**
 * Whether an app with this run title is installed.
 * @param runTitle     the run title
 * @param[out] status  0 when it is installed; 1 when it is not, which is also the answer while
 *                     reads are refused or the database is not usable, and after -2
 * @return 0; -1, with *status untouched, when an argument is null or empty; -2 when the database
 *         stayed busy
 * @locks{one statement}
 */
TAV_API int tav_check_app_installed_by_runtitle(const char* runTitle, int* status);

/**
 * The id of the electronic manual's app: the platform's, or the database's when the platform has
 * none, which is cut to 127 bytes and may be "NONE". No state of the platform refuses the call.
 * @param[out] appId  receives a new block of the text's length, which the caller frees
 * @return 0; -1 when neither knows it, appId is null or memory ran out; -2 when the database
 *         stayed busy
 * @locks{one statement\, and not at all when the platform has the id}
 */
TAV_API int tav_get_emanual_id(char** appId);

/** @} */

/**
 * @defgroup changes Changes through the service
 * Each asks the service over the system bus, which costs two round trips of at most 10 s each;
 * the first request of a process also connects, and makes the client known in up to 10 s more.
 * Connecting takes 10 s when the bus says nothing, and at the worst, with a bus that falls silent
 * in the middle, 35 s. The lock is held meanwhile, so that reads of other threads wait. -1 stands
 * for every failure: refused, no bus, no service, no answer in time, an answer of the wrong kind,
 * or the service's own refusal. A bus or a service that comes back serves the next call.
 * @code{.c}
 * if (tav_set_app_lock("org.example.clock", 1) != 0) fputs("not locked; the log says why\n",
 * stderr);
 * @endcode
 * @{
 */

/**
 * The mode of the news ticker.
 * @param[out] tickerMode  receives the mode; 0 when the service refuses to tell it, untouched on
 *                         any other failure
 * @return 0 or -1
 * @locks{one request}
 */
TAV_API int tav_get_ticker_mode(int* tickerMode);

/**
 * Sets the mode of the news ticker.
 * @param tickerMode  the mode, which the service knows
 * @return 0 or -1
 * @locks{one request}
 */
TAV_API int tav_set_ticker_mode(int tickerMode);

/**
 * Locks or unlocks an app, and tells those who watch the list of apps. Refused during a factory
 * reset and while the package manager recovers.
 * @param appId   the app's id
 * @param isLock  above 0 to lock it, else to unlock it
 * @return 0, also when only the telling failed; or -1
 * @locks{one request}
 */
TAV_API int tav_set_app_lock(const char* appId, int isLock);

/**
 * Rates an installed app, and tells those who watch the list of apps. Refused as
 * tav_set_app_lock.
 * @param appId   the app's id
 * @param rating  the rating, whose range is the service's
 * @return 0, also when only the telling failed; -1; or -2 when the database stayed busy
 * @locks{one statement and one request}
 */
TAV_API int tav_set_app_rating(const char* appId, int rating);

/**
 * Counts a use of the app. Refused while the package manager recovers.
 * @param appId  the app's id
 * @return 0 or -1
 * @locks{one request}
 */
TAV_API int tav_db_update_app_use_count(const char* appId);

/**
 * Marks the app as updated. Refused while the package manager recovers.
 * @param appId  the app's id
 * @return 0 or -1
 * @locks{one request}
 */
TAV_API int tav_db_set_app_updated(const char* appId);

/** @} */

/**
 * @defgroup installing Whether an app is being installed
 * These two read the database. appId may be the app's id, platform id, package name, native id or
 * Android id.
 * @code{.c}
 * if (tav_check_update_popup("org.example.clock") == 0) puts("it is being updated, please wait");
 * @endcode
 * @{
 */

/**
 * Whether the app is being updated.
 * @param appId  any of its ids
 * @return 0 when it is, and also when the database stayed busy; -1 when it is not, there is no
 *         such app, the id is null or empty, or reads are refused
 * @locks{one statement}
 */
TAV_API int tav_check_update_popup(const char* appId);

/**
 * Whether the app, or one that it requires, is being installed or updated.
 * @param appId  any of its ids
 * @return 0 when one of them is; -1 when none is, there is no such app, the id is null or empty,
 *         reads are refused or the database stayed busy
 * @locks{one statement for each app that it looks at\, and not between them}
 */
TAV_API int tav_db_check_app_installing(const char* appId);

/** @} */

/**
 * @defgroup exports Exports
 * @code{.c}
 * char* json = NULL;
 * if (tav_get_app_info_json("org.example.clock", &json) == 0) puts(json);
 * free(json);
 * @endcode
 * @{
 */

/** A launch request of the platform. */
struct app_control_s;

/**
 * One installed app as a JSON text: {"app_info": [{…}]}, every value a string.
 * @param app_id     the app's id, platform id, package name, native id or Android id
 * @param[out] json  receives a new block of the text's length, which the caller frees
 * @return 0; -1, with *json untouched, when there is no such app, the database stayed busy,
 *         memory ran out or the call is refused
 * @locks{one statement}
 */
TAV_API int tav_get_app_info_json(const char* app_id, char** json);

/**
 * A list of apps as a JSON text: {"app_list": [{…}, …]}, every value a string.
 * @param app_control  says which, by its extra data: "built_in_app" "true" asks for the built-in
 *                     catalogue, with "test_app_only" "true" for its test apps alone; else
 *                     "all_app" "true" asks for all installed apps, hidden ones included, in the
 *                     database's order, or "app_featured" and "view_mode", both decimal numbers,
 *                     for those that are not hidden and featured so, of every type. The view modes
 *                     2 and 5 give the catalogue's order. Null is a request without extra data,
 *                     which is refused
 * @param[out] json    receives a new block of the text's length, which the caller frees, or null
 *                     when there is no app
 * @return 0, also with a part of the list, or null, when the database became busy or a row cannot
 *         be read; -1, with *json untouched, when json is null, app_featured has none of its
 *         bits, the list is refused, the database cannot be used or memory ran out
 * @locks{one statement\, for the built-in catalogue two and one request}
 */
TAV_API int tav_get_app_list_json(struct app_control_s* app_control, char** json);

/**
 * Writes all installed apps, hidden ones included, to the XML file
 * "/tavcore/common/apps_info.xml" under the platform's data directory. No character of a value is
 * escaped. The file is empty when there is no app. A failure can leave it truncated. The zeroed
 * records that a list can have at its end are elements with empty values.
 * @param[out] path  receives its path in a new block of 128 bytes, which the caller frees, whatever
 *                   is returned; unless the call was refused by the state of the platform, path is
 *                   null or no memory was left for it. A longer path is cut to 127 bytes, and the
 *                   file of that name is written
 * @return 0; -1 when the call is refused, the path leads through a link, the file cannot be opened
 *         or written, or memory ran out; -2 when the database stayed busy. A link in the file's
 *         place that leads to nothing yet is followed: the file is made where it leads
 * @locks{two statements and the writing of the file}
 */
TAV_API int tav_write_all_app_info_to_xml(char** path);

/** @} */

/**
 * @defgroup settings Settings
 * What the service publishes of its state, each the value of one setting of the platform. A
 * getter reads it anew and needs no database. It returns 0; -1, with the out value untouched,
 * when the setting is missing or of another type, or the pointer is null. A text is a new block of
 * its own length that the caller frees.
 * @code{.c}
 * int reset = 0;
 * if (tav_get_factory_reset_type(&reset) == 0 && reset != 0) puts("a factory reset is under way");
 * @endcode
 * @{
 */

/** The key of the apps' service, "db/comss/appkey". @setting{key,text} */
TAV_API int tav_get_appkey(char** key);

/** The version of the apps' service, "db/comss/kestranaversion". @setting{version,text} */
TAV_API int tav_get_kestrana_ver(char** version);

/**
 * How far the apps are synchronised with the store, "db/tav/app_sync_status".
 * @setting{status,number}
 */
TAV_API int tav_get_tv_sync_status(int* status);

/**
 * The kind of factory reset that is under way, "db/tav/factory_reset"; reads of the database are
 * refused during 1 and 2.
 * @setting{type,number}
 */
TAV_API int tav_get_factory_reset_type(int* type);

/**
 * Whether the synchronisation of the apps has started, "memory/tav/appsync".
 * @setting{status,number}
 */
TAV_API int tav_get_appsync_start_status(int* status);

/** The state of the home screen's reset, "db/homedeck/reset/tavcore". @setting{status,number} */
TAV_API int tav_get_homedeck_reset_status(int* status);

/** How far the service has started, "memory/tav/boot_status". @setting{status,number} */
TAV_API int tav_get_tav_boot_status(int* status);

/** The id of the app that was installed last, "memory/tav/app_install". @setting{appId,text} */
TAV_API int tav_get_installed_appid(char** appId);

/**
 * Deprecated: there are no extra apps any more. The arguments, in C one char**, are not looked at.
 * @return -1, always
 * @nolock
 */
#ifdef __cplusplus
TAV_API int tav_get_extra_appid(...);
#else
TAV_API int tav_get_extra_appid(char** appId);
#endif

/**
 * Tells the watchers of the apps to reload, by setting "memory/tav/app_change" to 1.
 * @return 0, or -1 when the setting cannot be written
 * @nolock
 */
TAV_API int tav_set_app_change(void);

/**
 * A value of the service's configuration table.
 * @param name        the value's name
 * @param[out] value  receives a new block of the text's length, which the caller frees; untouched
 *                    when there is no such value or it cannot be read, so set it to null before
 * @return 0, always
 * @locks{one statement}
 */
TAV_API int tav_inner_config_db_api(const char* name, char** value);

/**
 * The configuration value "SYNC_STATE".
 * @param[out] state  receives it as a number, 0 for a text that is none
 * @return 0; -1, with *state untouched, when there is no such value or the database cannot be
 *         used; -2 when it stayed busy
 * @locks{one statement}
 */
TAV_API int tav_get_tv_sync_state(int* state);

/** @} */

/**
 * @defgroup watching Watching settings
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
 * is registered is told that change too. No function is called twice for one change: one that
 * unregisters and registers itself waits for the next. An exception that leaves a callback is
 * logged and dropped.
 *
 * Unlike the rest of this interface: no lock. Registering, unregistering and the calls must not
 * happen at the same time on different threads; the thread that runs the main context is the
 * place for all three.
 *
 * Registering returns 0; -1 for a null callback, when the platform refuses the watch or memory
 * ran out, and nothing is stored then. Unregistering returns 0; -1 for a null callback or one
 * that is not registered.
 * @code{.c}
 * extern void OnInstalled(const char* id, void* userData);
 * if (tav_register_installed_appid_changed_cb(OnInstalled, NULL) != 0) return;
 * // g_main_loop_run(loop);
 * tav_unregister_installed_appid_changed_cb(OnInstalled);
 * @endcode
 * @{
 */

/** Watches "db/tav/factory_reset": a factory reset begins or has ended. @registers */
TAV_API int tav_register_factory_reset_type_changed_cb(tav_int_changed_cb callback, void* userData);
/** Ends what tav_register_factory_reset_type_changed_cb began. @unregisters */
TAV_API int tav_unregister_factory_reset_type_changed_cb(tav_int_changed_cb callback);

/** Watches "memory/tav/appsync": the synchronisation of the apps starts. @registers */
TAV_API int tav_register_appsync_start_changed_cb(tav_int_changed_cb callback, void* userData);
/** Ends what tav_register_appsync_start_changed_cb began. @unregisters */
TAV_API int tav_unregister_appsync_start_changed_cb(tav_int_changed_cb callback);

/** Watches "db/homedeck/reset/tavcore": the state of the home screen's reset. @registers */
TAV_API int tav_register_homedeck_reset_status_changed_cb(tav_int_changed_cb callback,
                                                          void* userData);
/** Ends what tav_register_homedeck_reset_status_changed_cb began. @unregisters */
TAV_API int tav_unregister_homedeck_reset_status_changed_cb(tav_int_changed_cb callback);

/** Watches "memory/tav/app_install": an app was installed; the value is its id. @registers */
TAV_API int tav_register_installed_appid_changed_cb(tav_text_changed_cb callback, void* userData);
/** Ends what tav_register_installed_appid_changed_cb began. @unregisters */
TAV_API int tav_unregister_installed_appid_changed_cb(tav_text_changed_cb callback);

/** @} */

#ifdef __cplusplus
}

/**
 * @defgroup cpp For C++ alone
 * Functions whose exported names carry their parameter types.
 * @code{.cpp}
 * tav_app_info_s app;
 * if (tav_get_app_info_by_runtitle("HarbourNews", &app) == 0) std::puts(app.app_id);
 * @endcode
 * @{
 */

/**
 * Fills a record with the app of this run title.
 * @param run_title  the run title
 * @param[out] info  as with tav_get_app_info
 * @return as tav_get_app_info
 * @locks{one statement}
 */
TAV_API int tav_get_app_info_by_runtitle(const char* run_title, tav_app_info_s* info);

/**
 * The installed, available apps of which an integer column is 1, hidden ones included, in the
 * database's order.
 * @param key             the name of the column. It stands in the statement as it is: hand over
 *                        names of columns only, never what a user typed
 * @param count           the most apps to return; 0 or less for all
 * @param[out] appList    receives the block
 * @param[out] realCount  receives the number of records; a failed count leaves it untouched, 0 or
 *                        at what had been counted
 * @return as tav_get_app_list
 * @locks{two statements}
 */
TAV_API int tav_get_key_list(const std::string& key, int count, tav_app_info_s** appList,
                             int* realCount);

/**
 * The extra data of a launch request under a key.
 * @param app_control  the request
 * @param key          the key
 * @param[out] value   receives the data
 * @return true, or false with value untouched
 * @nolock
 */
TAV_API bool db_get_app_control_data(struct app_control_s* app_control, std::string key,
                                     std::string& value);

/**
 * The typed registrations with the setting as a number and the callback as an int, its address
 * read as unsigned. Where addresses are wider than an int only those below 4 GiB fit, so prefer
 * the typed functions: they take any.
 * @param key       the setting
 * @param callback  what is called, of the type that goes with the setting
 * @param userData  handed back to it
 * @return 0 or -1, as the typed functions; -1 for any other number as well
 * @onethread
 */
TAV_API int tav_register_value_cb(tav_vconf_key_e key, int callback, void* userData);
/**
 * Ends what tav_register_value_cb began.
 * @param key       the setting
 * @param callback  what was registered
 * @return 0 or -1
 * @onethread
 */
TAV_API int tav_unregister_value_cb(tav_vconf_key_e key, int callback);

#if INTPTR_MAX > INT32_MAX
/* NOLINTBEGIN(performance-no-int-to-ptr): carrying an address as a number is their purpose. */

/**
 * The same with the callback's whole address.
 * @param key       the setting
 * @param callback  what is called, of the type that goes with the setting
 * @param userData  handed back to it
 * @return as the function with an int
 * @onethread
 */
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

/**
 * Ends what tav_register_value_cb began.
 * @param key       the setting
 * @param callback  what was registered
 * @return 0 or -1
 * @onethread
 */
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

/** @} */

#endif /* __cplusplus */

#endif /* TAV_DB_API_H_ */
