// SPDX-License-Identifier: Apache-2.0
// The host platform when the system refuses it something, and callbacks that throw. The system's
// functions stand here before the real ones.
#include <app_control.h>
#include <dlfcn.h>
#include <sys/inotify.h>

#include <cerrno>
#include <cstring>

#include "watching.h"

namespace {

bool g_has_memory = true;
bool g_has_inotify = true;
bool g_watches = true;

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

char* strdup(const char* text) noexcept {
  return g_has_memory ? Real<decltype(strdup)>("strdup")(text) : nullptr;
}

int inotify_init1(int flags) noexcept {
  if (g_has_inotify) return Real<decltype(inotify_init1)>("inotify_init1")(flags);
  errno = EMFILE;
  return -1;
}

int inotify_add_watch(int inotify, const char* path, uint32_t mask) noexcept {
  if (g_watches) return Real<decltype(inotify_add_watch)>("inotify_add_watch")(inotify, path, mask);
  errno = ENOSPC;
  return -1;
}

}  // extern "C"

namespace {

class Faults : public Device {
 protected:
  static int Watch(Calls& calls) { return vconf_notify_key_changed(kWatchedKey, Record, &calls); }
};

TEST_F(Faults, OfMemoryLeaveTheTextOfAnExtraUntouched) {
  app_control_h control = nullptr;
  ASSERT_EQ(app_control_create(&control), APP_CONTROL_ERROR_NONE);
  ASSERT_EQ(app_control_add_extra_data(control, "key", "value"), APP_CONTROL_ERROR_NONE);
  char before[] = "before";
  char* value = before;
  g_has_memory = false;
  EXPECT_EQ(app_control_get_extra_data(control, "key", &value), APP_CONTROL_ERROR_FAILED);
  g_has_memory = true;
  EXPECT_EQ(value, before);
  EXPECT_EQ(app_control_get_extra_data(control, "key", &value), APP_CONTROL_ERROR_NONE);
  EXPECT_STREQ(value, "value");
  free(value);
  EXPECT_EQ(app_control_destroy(control), APP_CONTROL_ERROR_NONE);
}

TEST_F(Faults, OfInotifyBeginNoWatch) {
  Calls calls;
  g_has_inotify = false;
  EXPECT_EQ(Watch(calls), VCONF_ERROR);
  EXPECT_EQ(TakeLog(), std::string("E/VCONF: inotify: ") + strerror(EMFILE) + "\n");
  EXPECT_EQ(vconf_ignore_key_changed(kWatchedKey, Record), VCONF_ERROR);
  g_has_inotify = true;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 5);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
  EXPECT_EQ(calls, Calls{"memory/tav/watched=5"});
}

TEST_F(Faults, OfADirectoryThatCannotBeWatchedBeginNoWatch) {
  Calls calls;
  g_watches = false;
  EXPECT_EQ(Watch(calls), VCONF_ERROR);
  EXPECT_EQ(TakeLog(),
            std::string("E/VCONF: cannot watch ") + kWatchedKey + ": " + strerror(ENOSPC) + "\n");
  g_watches = true;
  const Watching watching(kWatchedKey, Record, &calls);
  vconf_set_int(kWatchedKey, 5);
  ASSERT_TRUE(RunUntilCalls(calls, 1));
}

TEST_F(Faults, OfACallbackThatThrowsEndWithIt) {
  const auto fail = [](keynode_t* node, void*) {
    if (vconf_keynode_get_int(node) == 1) throw 1;
    throw std::runtime_error("two");
  };
  const Watching failing(kWatchedKey, fail, nullptr);
  for (const auto& [value, line] : {std::pair(1, "E/VCONF: an exception of an unknown type\n"),
                                    std::pair(2, "E/VCONF: two\n")}) {
    vconf_set_int(kWatchedKey, value);
    ASSERT_TRUE(RunUntilQuiet());
    EXPECT_EQ(TakeLog(), line);
  }
}

}  // namespace
