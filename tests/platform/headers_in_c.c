// SPDX-License-Identifier: Apache-2.0
// The platform headers as a C program sees them: each is included, and each library called, on a
// device that does not exist.
#include <app_control.h>
#include <dlog.h>
#include <pkgmgr-info.h>
#include <stdio.h>
#include <string.h>
#include <system_info.h>
#include <tzplatform_config.h>
#include <vconf.h>

static int failures = 0;

static void Expect(int condition, const char* what) {
  if (condition) return;
  fprintf(stderr, "failed: %s\n", what);
  ++failures;
}

int main(void) {
  app_control_h request = NULL;
  Expect(app_control_create(&request) == APP_CONTROL_ERROR_NONE, "a request");
  Expect(app_control_destroy(request) == APP_CONTROL_ERROR_NONE, "the end of a request");

  Expect(dlog_print(DLOG_INFO, "C", "%s", "filtered") == 0, "a filtered line");

  pkgmgrinfo_pkginfo_h package = NULL;
  Expect(pkgmgrinfo_pkginfo_get_pkginfo("org.example.clock", &package) < 0, "no package");

  int grade = 7;
  Expect(system_info_get_value_int(SYSTEM_INFO_KEY_DEVICE_GRADE, &grade) < 0, "no grade");
  Expect(grade == 7, "an untouched grade");

  const char* directory = tzplatform_getenv(TZPLATFORM_DATABASE_DIRECTORY);
  Expect(directory != NULL && strstr(directory, "/dbspace") != NULL, "a directory");

  int number = 7;
  Expect(vconf_get_int("db/tav/factory_reset", &number) == VCONF_ERROR, "no setting");
  Expect(vconf_keynode_get_int(NULL) == 0, "no node");
  return failures == 0 ? 0 : 1;
}
