/* SPDX-License-Identifier: Apache-2.0 */
/*
 * installed_apps [COUNT]: lists the visible apps by title, then says which one was installed
 * whenever that happens. Ends after COUNT installations, or with Ctrl-C.
 */
#include <glib-unix.h>
#include <glib.h>
#include <signal.h>
#include <stdio.h>
#include <stdlib.h>
#include <tav_db_api.h>

struct watcher {
  GMainLoop* loop;
  long left; /* installations to wait for; below 0: without end */
};

static int list_apps(void) {
  const tav_app_filter_s every_app = {.featured = 65535, .premium_game = 0, .app_type = 65535};
  tav_app_info_s* apps = NULL;
  int count = 0;
  const int result = tav_get_app_list(every_app, TAV_APP_VIEWMODE_TITLE, -1, 0, &apps, &count);

  if (result != 0) {
    fprintf(stderr, "%s\n", result == -2 ? "the database is busy" : "no list; the log says why");
    return -1;
  }
  for (int i = 0; i < count; ++i) {
    printf("%-40s %s %s\n", apps[i].app_id, apps[i].app_title, apps[i].app_version);
  }
  free(apps);
  return 0;
}

/* Called from the main loop. The record is there when the setting tells of the app. */
static void on_installed(const char* app_id, void* user_data) {
  struct watcher* watcher = user_data;
  tav_app_info_s app;

  if (app_id != NULL && tav_get_app_info(app_id, &app) == 0) {
    printf("installed: %s, version %s\n", app.app_title, app.app_version);
  } else {
    printf("installed: %s, which is not to be seen\n", app_id != NULL ? app_id : "nothing");
  }
  fflush(stdout);
  if (watcher->left > 0 && --watcher->left == 0) g_main_loop_quit(watcher->loop);
}

static gboolean on_interrupt(gpointer loop) {
  g_main_loop_quit(loop);
  return G_SOURCE_CONTINUE;
}

int main(int argc, char** argv) {
  struct watcher watcher = {.loop = NULL, .left = -1};
  guint interrupt;
  int result;

  if (argc > 1 && (watcher.left = strtol(argv[1], NULL, 10)) < 1) {
    fprintf(stderr, "usage: %s [COUNT]\n", argv[0]);
    return 2;
  }
  if (get_size_of_tav_app_info_s() != sizeof(tav_app_info_s)) {
    fprintf(stderr, "built against another version of the library\n");
    return 1;
  }
  /* The calls come from the main context of the thread that registers. */
  watcher.loop = g_main_loop_new(NULL, FALSE);
  if (tav_register_installed_appid_changed_cb(on_installed, &watcher) != 0) {
    fprintf(stderr, "installations cannot be watched; the log says why\n");
    g_main_loop_unref(watcher.loop);
    return 1;
  }
  interrupt = g_unix_signal_add(SIGINT, on_interrupt, watcher.loop);
  result = list_apps();
  if (result == 0) {
    printf("waiting for installations\n");
    fflush(stdout);
    g_main_loop_run(watcher.loop);
  }
  g_source_remove(interrupt);
  tav_unregister_installed_appid_changed_cb(on_installed);
  g_main_loop_unref(watcher.loop);
  return result == 0 ? 0 : 1;
}
