/* SPDX-License-Identifier: Apache-2.0 */
/*
 * The platform's directories, by number. On a PC they lie under the device root: the directory
 * that TAV_DEVICE_ROOT names, else "tav-device" in the user's data directory, which XDG_DATA_HOME
 * and HOME tell. A set-user-id or set-group-id program, or one with file capabilities, heeds none
 * of the three: its device lies in the home directory of its effective user.
 */
#ifndef TZPLATFORM_CONFIG_H_
#define TZPLATFORM_CONFIG_H_

#define TZPLATFORM_CONFIG_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

/* The lowest and the highest enumerator make room for every number that an int can carry. */
typedef enum tzplatform_variable {
  TZPLATFORM_VARIABLE_LOWEST = -2147483647 - 1,
  TZPLATFORM_DATA_DIRECTORY = 2,
  TZPLATFORM_DATABASE_DIRECTORY = 24,
  TZPLATFORM_CONFIGURATION_DIRECTORY = 27,
  TZPLATFORM_VARIABLE_HIGHEST = 2147483647
} tzplatform_variable;

/*
 * The directory's path, or null for a number without one. The text lasts as long as the process.
 * The device root is looked up anew at each call. May be called from any thread; runs with
 * cancellation disabled.
 */
TZPLATFORM_CONFIG_API const char* tzplatform_getenv(enum tzplatform_variable id);

#ifdef __cplusplus
}
#endif

#endif /* TZPLATFORM_CONFIG_H_ */
