/* SPDX-License-Identifier: Apache-2.0 */
/*
 * The platform's settings: named int and string values that every process of the device shares.
 *
 * A key is a relative path such as "db/menu/language": components of [A-Za-z0-9_.-] joined by
 * single slashes, none of them "." or "..", VCONF_KEY_MAX bytes at most. Its value is the file
 * <device root>/vconf/<key>: the type ("int" or "string") on the first line, then the value and
 * one newline. A file is replaced in one step; no reader sees half a value. What is no regular
 * file cannot be read: a pipe in a file's place blocks nobody, and is replaced by the next set.
 *
 * Every function may be called from any thread and runs with cancellation disabled. Where nothing
 * else is said the result is VCONF_OK or, with the cause in the log, VCONF_ERROR. A null key,
 * value or callback is refused.
 */
#ifndef VCONF_H_
#define VCONF_H_

#define VCONF_API __attribute__((visibility("default")))

#define VCONF_OK 0
#define VCONF_ERROR (-1)
#define VCONF_KEY_MAX 240

#ifdef __cplusplus
extern "C" {
#endif

/* A snapshot of a key: its name and the value it had when the change was noticed. */
typedef struct _keynode_t keynode_t;

typedef void (*vconf_callback_fn)(keynode_t* node, void* user_data);

/* On a failure, a missing key or one of another type included, *value stays as it was. */
VCONF_API int vconf_get_int(const char* key, int* value);
VCONF_API int vconf_set_int(const char* key, const int value);

/* A malloc block that the caller frees, or null. */
VCONF_API char* vconf_get_str(const char* key);
VCONF_API int vconf_set_str(const char* key, const char* value);

/* Removes the key; fails when there is none. Its watchers are not called. */
VCONF_API int vconf_unset(const char* key);

/*
 * Calls cb whenever any process sets the key, also to the value it has, or edits its file. The
 * key need not exist yet, nor its directory, which is not made. The calls come from the main
 * context that is the calling thread's default, so somebody has to run that context; the watch
 * keeps it. Changes in quick succession may be told as one; the last value is never lost. cb runs
 * with cancellation disabled. In it, every function here may be called, on its own key too, and
 * the context be run: other watches are told meanwhile, its own afterwards. The node is valid
 * during the call alone.
 *
 * A watch stays on the path of the device root of its beginning. It goes on when a directory on
 * the way from the root to the key, the root included, is removed and made again, and cb is called
 * when another directory that holds the key is put in the place of one. A link in the place of a
 * directory is not followed when it is changed.
 *
 * All watches of a context share one inotify instance. Without the descriptors that a context and
 * an instance need, GLib would end the process: the registration fails before, unless another
 * thread takes them in between.
 *
 * In a forked child the watches of its parent are dead: they call nothing there and take none of
 * the parent's changes away. The child may begin its own, of the same keys too.
 *
 * A pair of key and cb is watched once: a second registration fails, whatever its user_data.
 */
VCONF_API int vconf_notify_key_changed(const char* key, vconf_callback_fn cb, void* user_data);

/*
 * Ends a watch; fails when there is none. On the thread that runs the watch's context cb is not
 * called again after this returned; from another thread a call under way may still be finishing.
 */
VCONF_API int vconf_ignore_key_changed(const char* key, vconf_callback_fn cb);

/* Texts belong to the node. An int is 0, and a text null, for a null node or one of another type.
 */
VCONF_API char* vconf_keynode_get_name(keynode_t* node);
VCONF_API int vconf_keynode_get_int(keynode_t* node);
VCONF_API char* vconf_keynode_get_str(keynode_t* node);

#ifdef __cplusplus
}
#endif

#endif /* VCONF_H_ */
