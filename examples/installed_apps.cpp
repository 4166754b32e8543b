// SPDX-License-Identifier: Apache-2.0
//
// installed_apps_cpp [COUNT]: the same program as installed_apps.c, in C++17.
#include <glib-unix.h>
#include <glib.h>

#include <csignal>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <memory>
#include <tav_db_api.hpp>

namespace {

using tav::TextOf;

int Fail(const char* text) {
  std::cerr << text << "\n";
  return 1;
}

// The record is there when the setting tells of the app.
void TellOf(tav::TextView app_id) {
  const tav::Result<tav::AppInfo> app = tav::GetAppInfo(app_id);
  if (app) {
    std::cout << "installed: " << TextOf(app->app_title) << ", version " << TextOf(app->app_version)
              << std::endl;
  } else {
    std::cout << "installed: " << (app_id ? app_id.view() : "nothing")
              << ", which is not to be seen" << std::endl;
  }
}

gboolean OnInterrupt(gpointer loop) {
  g_main_loop_quit(static_cast<GMainLoop*>(loop));
  return G_SOURCE_REMOVE;
}

}  // namespace

int main(int argc, char** argv) {
  long left = argc > 1 ? std::strtol(argv[1], nullptr, 10) : -1;  // below 0: without end
  if (argc > 1 && left < 1) {
    std::cerr << "usage: " << argv[0] << " [COUNT]\n";
    return 2;
  }
  if (!tav::HasSameLayouts()) return Fail("built against another version of the library");

  // The calls come from the main context of the thread that watches.
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(
      g_main_loop_new(nullptr, FALSE), g_main_loop_unref);
  const auto watch = tav::WatchInstalledAppId([&](tav::TextView app_id) {
    TellOf(app_id);
    if (left > 0 && --left == 0) g_main_loop_quit(loop.get());
  });
  if (!watch) return Fail("installations cannot be watched; the log says why");
  g_unix_signal_add(SIGINT, OnInterrupt, loop.get());

  const auto apps = tav::GetAppList({}, tav::ViewMode::kTitle);
  if (apps.status() == tav::Status::kBusy) return Fail("the database is busy");
  if (!apps) return Fail("no list; the log says why");
  for (const tav::AppInfo& app : *apps) {
    std::cout << std::left << std::setw(40) << TextOf(app.app_id) << ' ' << TextOf(app.app_title)
              << ' ' << TextOf(app.app_version) << '\n';
  }
  std::cout << "waiting for installations" << std::endl;
  g_main_loop_run(loop.get());
}
