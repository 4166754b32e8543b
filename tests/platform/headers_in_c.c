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

// Programs spell an enumeration's type with its tag and without.
static void UseBothSpellings(void) {
  enum app_control_error_e control = APP_CONTROL_ERROR_KEY_NOT_FOUND;
  const app_control_error_e same_control = control;
  enum log_priority priority = DLOG_SILENT;
  const log_priority same_priority = priority;
  enum pkgmgrinfo_error_e package = PMINFO_R_EINVAL;
  const pkgmgrinfo_error_e same_package = package;
  enum system_info_error_e info = SYSTEM_INFO_ERROR_FAILED;
  const system_info_error_e same_info = info;
  enum system_info_key_e key = SYSTEM_INFO_KEY_DEVICE_GRADE;
  const system_info_key_e same_key = key;
  enum tzplatform_variable variable = TZPLATFORM_DATABASE_DIRECTORY;
  const tzplatform_variable same_variable = variable;
  Expect(same_control == -3 && same_priority == 8 && same_package == -2 && same_info == -1 &&
             same_key == 701 && same_variable == 24,
         "the numbers of the enumerations");
}

int main(void) {
  UseBothSpellings();

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
