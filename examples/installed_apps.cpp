// SPDX-License-Identifier: Apache-2.0
//
// installed_apps_cpp [COUNT]: the same program as installed_apps.c, in C++17.
#include <glib-unix.h>
#include <glib.h>
#include <tav_db_api.h>

#include <csignal>
#include <cstdlib>
#include <iomanip>
#include <iostream>
#include <memory>
#include <stdexcept>

namespace {

struct Free {
  void operator()(void* block) const { std::free(block); }
};

// The visible apps by title, in one block that the library has allocated.
class AppList {
 public:
  AppList() {
    const tav_app_filter_s every_app = {65535, 0, 65535};
    tav_app_info_s* apps = nullptr;
    const int result = tav_get_app_list(every_app, TAV_APP_VIEWMODE_TITLE, -1, 0, &apps, &m_count);
    m_apps.reset(apps);
    if (result == -2) throw std::runtime_error("the database is busy");
    if (result != 0) throw std::runtime_error("no list; the log says why");
  }
  const tav_app_info_s* begin() const { return m_apps.get(); }
  const tav_app_info_s* end() const { return m_apps.get() + m_count; }

 private:
  std::unique_ptr<tav_app_info_s[], Free> m_apps;
  int m_count = 0;
};

// Tells of installations from the main loop while it lives.
class Watcher {
 public:
  // most: the installations to wait for; below 0: without end.
  explicit Watcher(long most) : m_left(most), m_loop(g_main_loop_new(nullptr, FALSE)) {
    if (tav_register_installed_appid_changed_cb(OnInstalled, this) != 0) {
      g_main_loop_unref(m_loop);
      throw std::runtime_error("installations cannot be watched; the log says why");
    }
    m_interrupt = g_unix_signal_add(SIGINT, OnInterrupt, m_loop);
  }
  ~Watcher() {
    g_source_remove(m_interrupt);
    tav_unregister_installed_appid_changed_cb(OnInstalled);
    g_main_loop_unref(m_loop);
  }
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  void Run() { g_main_loop_run(m_loop); }

 private:
  static void OnInstalled(const char* app_id, void* user_data) {
    auto* const watcher = static_cast<Watcher*>(user_data);
    tav_app_info_s app;
    if (app_id != nullptr && tav_get_app_info(app_id, &app) == 0) {
      std::cout << "installed: " << app.app_title << ", version " << app.app_version << std::endl;
    } else {
      std::cout << "installed: " << (app_id != nullptr ? app_id : "nothing")
                << ", which is not to be seen" << std::endl;
    }
    if (watcher->m_left > 0 && --watcher->m_left == 0) g_main_loop_quit(watcher->m_loop);
  }

  static gboolean OnInterrupt(gpointer loop) {
    g_main_loop_quit(static_cast<GMainLoop*>(loop));
    return G_SOURCE_CONTINUE;
  }

  long m_left;
  GMainLoop* m_loop;
  guint m_interrupt = 0;
};

}  // namespace

int main(int argc, char** argv) try {
  const long most = argc > 1 ? std::strtol(argv[1], nullptr, 10) : -1;
  if (argc > 1 && most < 1) {
    std::cerr << "usage: " << argv[0] << " [COUNT]\n";
    return 2;
  }
  if (get_size_of_tav_app_info_s() != sizeof(tav_app_info_s)) {
    throw std::runtime_error("built against another version of the library");
  }
  Watcher watcher(most);
  for (const tav_app_info_s& app : AppList()) {
    std::cout << std::left << std::setw(40) << app.app_id << ' ' << app.app_title << ' '
              << app.app_version << '\n';
  }
  std::cout << "waiting for installations" << std::endl;
  watcher.Run();
} catch (const std::exception& error) {
  std::cerr << error.what() << "\n";
  return 1;
}
