/* SPDX-License-Identifier: Apache-2.0 */
/*
 * What the platform knows of the device. On a PC it is the key file <device root>/system-info.ini:
 * custom keys in the group [custom], numbered features, by their decimal number, in [value].
 *
 * Every function may be called from any thread and runs with cancellation disabled. A failure
 * leaves *value as it was and its cause in the log.
 */
#ifndef SYSTEM_INFO_H_
#define SYSTEM_INFO_H_

#define SYSTEM_INFO_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

typedef enum system_info_error_e {
  SYSTEM_INFO_ERROR_NONE = 0,
  SYSTEM_INFO_ERROR_FAILED = -1,           /* missing, unreadable or of another type */
  SYSTEM_INFO_ERROR_INVALID_PARAMETER = -2 /* a null argument */
} system_info_error_e;

/* The lowest and the highest enumerator make room for every number that an int can carry. */
typedef enum system_info_key_e {
  SYSTEM_INFO_KEY_LOWEST = -2147483647 - 1,
  SYSTEM_INFO_KEY_DEVICE_GRADE = 701,
  SYSTEM_INFO_KEY_HIGHEST = 2147483647
} system_info_key_e;

/* *value is a malloc block that the caller frees. */
SYSTEM_INFO_API int system_info_get_custom_string(const char* key, char** value);
SYSTEM_INFO_API int system_info_get_custom_int(const char* key, int* value);
SYSTEM_INFO_API int system_info_get_value_int(system_info_key_e key, int* value);

#ifdef __cplusplus
}
#endif

#endif /* SYSTEM_INFO_H_ */
