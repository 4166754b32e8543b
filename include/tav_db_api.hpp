/* SPDX-License-Identifier: Apache-2.0 */
/**
 * \file
 * \brief The C interface of libtav_db_api as C++17 likes it: owned lists and texts, results,
 * enumerations, scoped callbacks. A layer of inline functions, without a logic of its own.
 *
 * A list, in an order and for a filter:
 *
 * \code{.cpp}
 * const tav::Filter some = {tav::Featured::kKind1 | tav::Featured::kKind4};
 * const tav::Result<tav::AppList> apps = tav::GetAppList(some, tav::ViewMode::kTitle);
 * if (apps.status() == tav::Status::kBusy) std::cerr << "please ask again\n";
 * for (const tav::AppInfo& app : *apps) std::cout << tav::TextOf(app.app_title) << "\n";
 * \endcode
 *
 * An app as a JSON text:
 *
 * \code{.cpp}
 * const tav::Result<tav::Text> json = tav::GetAppInfoJson("org.example.clock");
 * if (json) std::cout << json->view() << "\n";
 * \endcode
 *
 * A callable that is told of installations, for as long as the Watch lives:
 *
 * \code{.cpp}
 * const tav::Result<tav::Watch> watch = tav::WatchInstalledAppId(
 *     [](tav::TextView id) { std::cout << id.view() << " was installed\n"; });
 * if (!watch) std::cerr << "it cannot be watched\n";
 * // g_main_loop_run(loop);
 * \endcode
 *
 * Every call is that of the function of tav_db_api.h which its comment names, whose conventions
 * hold: results, visibility, threads, fork. What is said there of a null or an empty text holds
 * for a TextView. In addition:
 *
 * Results. A Result has the call's status and its value; a failed one has an empty value. Results,
 *   and a Status alone, are not to be dropped unread.
 *
 * Ownership. Lists and texts are owned by List and Text, which free the library's block: nothing
 *   is copied, and a record is filled where its Result lies.
 *
 * Exceptions. Nothing throws, unless its comment says so, and the calls are noexcept. Programs
 *   without exceptions or run-time types use it as well.
 *
 * Names. Those of the C interface, as C++ spells them: tav_get_app_info is tav::GetAppInfo.
 *   Members are named in the way of the standard library.
 */
#ifndef TAV_DB_API_HPP_
#define TAV_DB_API_HPP_

#include <tav_db_api_reads.hpp>
#include <tav_db_api_service.hpp>
#include <tav_db_api_watch.hpp>

#endif  // TAV_DB_API_HPP_
