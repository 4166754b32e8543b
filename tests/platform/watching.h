// SPDX-License-Identifier: Apache-2.0
// What tests of watches share: callbacks that record, a main context that runs until something is
// true, another process that sets a key.
#ifndef TAV_TESTS_PLATFORM_WATCHING_H_
#define TAV_TESTS_PLATFORM_WATCHING_H_

#include <glib.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vconf.h>

#include <string>
#include <vector>

#include "device.h"

constexpr char kWatchedKey[] = "memory/tav/watched";
constexpr char kWatchedFile[] = "vconf/memory/tav/watched";

using Calls = std::vector<std::string>;  // "key=5" or "key='text'"

inline std::string Described(keynode_t* node) {
  const std::string name = vconf_keynode_get_name(node);
  const char* text = vconf_keynode_get_str(node);
  if (text == nullptr) return name + "=" + std::to_string(vconf_keynode_get_int(node));
  EXPECT_EQ(vconf_keynode_get_int(node), 0);
  return name + "='" + text + "'";
}

inline void Record(keynode_t* node, void* calls) {
  static_cast<Calls*>(calls)->push_back(Described(node));
}

// Another callback than Record, for the same use.
inline void RecordToo(keynode_t* node, void* calls) {
  Record(node, calls);
}

// Runs the thread's default context until `done`; false when that takes too long.
template <typename Done>
bool RunUntil(Done&& done) {
  GMainContext* context = g_main_context_ref_thread_default();
  bool late = false;
  GSource* deadline = g_timeout_source_new_seconds(30);
  g_source_set_callback(
      deadline,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
      },
      &late, nullptr);
  g_source_attach(deadline, context);
  while (!late && !done()) g_main_context_iteration(context, TRUE);
  g_source_destroy(deadline);
  g_source_unref(deadline);
  g_main_context_unref(context);
  return !late;
}

inline bool RunUntilCalls(const Calls& calls, size_t count) {
  return RunUntil([&] { return calls.size() >= count; });
}

// Runs the context until a key that is set only now was told: all that happened before has been
// told by then, or never will be.
inline bool RunUntilQuiet() {
  Calls calls;
  EXPECT_EQ(vconf_notify_key_changed("quiet", RecordToo, &calls), VCONF_OK);
  EXPECT_EQ(vconf_set_int("quiet", 1), VCONF_OK);
  const bool quiet = RunUntilCalls(calls, 1);
  EXPECT_EQ(vconf_ignore_key_changed("quiet", RecordToo), VCONF_OK);
  return quiet;
}

// Another process, which sets a key to each number from 1 to `last`.
class Setter {
 public:
  Setter(const char* key, int last) {
    std::string program = SET_KEY_PROGRAM;
    std::string name = key;
    std::string number = std::to_string(last);
    char* arguments[] = {program.data(), name.data(), number.data(), nullptr};
    EXPECT_EQ(posix_spawn(&m_pid, program.c_str(), nullptr, nullptr, arguments, environ), 0);
  }
  Setter(const Setter&) = delete;
  Setter& operator=(const Setter&) = delete;
  ~Setter() {
    int status = -1;
    EXPECT_EQ(waitpid(m_pid, &status, 0), m_pid);
    EXPECT_EQ(status, 0);
  }

 private:
  pid_t m_pid = -1;
};

// Ends a watch with the scope, so that the device's directory can go.
class Watching {
 public:
  Watching(const char* key, vconf_callback_fn cb, void* user_data) : m_key(key), m_cb(cb) {
    EXPECT_EQ(vconf_notify_key_changed(key, cb, user_data), VCONF_OK);
  }
  Watching(const Watching&) = delete;
  Watching& operator=(const Watching&) = delete;
  ~Watching() { EXPECT_EQ(vconf_ignore_key_changed(m_key.c_str(), m_cb), VCONF_OK); }

 private:
  const std::string m_key;
  vconf_callback_fn m_cb;
};

#endif  // TAV_TESTS_PLATFORM_WATCHING_H_
