/* SPDX-License-Identifier: Apache-2.0 */
/* Compiled as C11: what is missing from the header's part for C, or not C, ends the build. */
#include "settings/in_c.h"

#include <stdio.h>
#include <stdlib.h>
#include <tav_db_api.h>

#if defined(__cplusplus) || __STDC_VERSION__ < 201112L
#error "this is C11"
#endif

_Static_assert(TAV_VCONF_KEY_FACTORY_RESET_TYPE == 0, "the numbers are part of the interface");
_Static_assert(TAV_VCONF_KEY_APPSYNC_START == 1, "the numbers are part of the interface");
_Static_assert(TAV_VCONF_KEY_HOMEDECK_RESET_STATUS == 2, "the numbers are part of the interface");
_Static_assert(TAV_VCONF_KEY_INSTALLED_APPID == 4, "the numbers are part of the interface");

static void on_factory_reset(int value, void* told) {
  ((struct told_in_c*)told)->factory_reset = value;
  ++((struct told_in_c*)told)->calls;
}

static void on_appsync(int value, void* told) {
  ((struct told_in_c*)told)->appsync = value;
  ++((struct told_in_c*)told)->calls;
}

static void on_homedeck_reset(int value, void* told) {
  ((struct told_in_c*)told)->homedeck_reset = value;
  ++((struct told_in_c*)told)->calls;
}

static void on_installed_app(const char* value, void* told) {
  struct told_in_c* const mine = told;
  snprintf(mine->app, sizeof mine->app, "%s", value);
  ++mine->calls;
}

int watch_in_c(struct told_in_c* told) {
  int failures = 0;
  failures += tav_register_factory_reset_type_changed_cb(on_factory_reset, told) != 0;
  failures += tav_register_appsync_start_changed_cb(on_appsync, told) != 0;
  failures += tav_register_homedeck_reset_status_changed_cb(on_homedeck_reset, told) != 0;
  failures += tav_register_installed_appid_changed_cb(on_installed_app, told) != 0;
  return failures;
}

int leave_in_c(void) {
  int failures = 0;
  failures += tav_unregister_factory_reset_type_changed_cb(on_factory_reset) != 0;
  failures += tav_unregister_appsync_start_changed_cb(on_appsync) != 0;
  failures += tav_unregister_homedeck_reset_status_changed_cb(on_homedeck_reset) != 0;
  failures += tav_unregister_installed_appid_changed_cb(on_installed_app) != 0;
  return failures;
}

static int number(int (*get)(int*)) {
  int value = -77;
  const int result = get(&value);
  return result == 0 ? value : result;
}

void read_in_c(char* text, unsigned long size) {
  char* key = NULL;
  char* version = NULL;
  char* app = NULL;
  char* config = NULL;
  char* extra = NULL;
  const int texts = tav_get_appkey(&key) + tav_get_kestrana_ver(&version) +
                    tav_get_installed_appid(&app) + tav_inner_config_db_api("NAME", &config);
  snprintf(text, size, "%d %s %s %s %s %d %d %d %d %d %d %d %d", texts, key ? key : "-",
           version ? version : "-", app ? app : "-", config ? config : "-",
           number(tav_get_tv_sync_status), number(tav_get_factory_reset_type),
           number(tav_get_appsync_start_status), number(tav_get_homedeck_reset_status),
           number(tav_get_tav_boot_status), number(tav_get_tv_sync_state),
           tav_get_extra_appid(&extra), tav_set_app_change());
  free(key);
  free(version);
  free(app);
  free(config);
}
