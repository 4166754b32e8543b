/* SPDX-License-Identifier: Apache-2.0 */
/*
 * A launch request's extra data: texts by key, in memory. A request may be used by one thread at
 * a time; a failure gives a negative result and leaves the out value as it was. Every function
 * runs with cancellation disabled.
 */
#ifndef APP_CONTROL_H_
#define APP_CONTROL_H_

#define APP_CONTROL_API __attribute__((visibility("default")))

#ifdef __cplusplus
extern "C" {
#endif

typedef enum app_control_error_e {
  APP_CONTROL_ERROR_NONE = 0,
  APP_CONTROL_ERROR_FAILED = -1,
  APP_CONTROL_ERROR_INVALID_PARAMETER = -2, /* a null argument */
  APP_CONTROL_ERROR_KEY_NOT_FOUND = -3
} app_control_error_e;

typedef struct app_control_s* app_control_h;

APP_CONTROL_API int app_control_create(app_control_h* app_control);
APP_CONTROL_API int app_control_destroy(app_control_h app_control);

/* Adding a key again replaces its value. */
APP_CONTROL_API int app_control_add_extra_data(app_control_h app_control, const char* key,
                                               const char* value);

/* *value is a malloc block that the caller frees. */
APP_CONTROL_API int app_control_get_extra_data(app_control_h app_control, const char* key,
                                               char** value);

#ifdef __cplusplus
}
#endif

#endif /* APP_CONTROL_H_ */
