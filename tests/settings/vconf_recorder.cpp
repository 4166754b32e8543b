// SPDX-License-Identifier: Apache-2.0
//
// The two functions at the end stand before the platform's own and pass every call on.
#include "settings/vconf_recorder.h"

#include <dlfcn.h>

#include <sstream>
#include <utility>

namespace test {
namespace {

WatchCalls g_calls;
vconf_callback_fn g_callback = nullptr;

template <typename Function>
Function* Platform(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

std::string Notify(const std::string& key, const void* user_data) {
  std::ostringstream text;
  text << "notify " << key << " with " << user_data;
  return text.str();
}

std::string Ignore(const std::string& key) {
  return "ignore " + key;
}

WatchCalls TakeWatchCalls() {
  return std::exchange(g_calls, {});
}

vconf_callback_fn LibraryCallback() {
  return g_callback;
}

int RealNotify(const std::string& key, vconf_callback_fn callback, void* user_data) {
  return Platform<decltype(vconf_notify_key_changed)>("vconf_notify_key_changed")(
      key.c_str(), callback, user_data);
}

int RealIgnore(const std::string& key, vconf_callback_fn callback) {
  return Platform<decltype(vconf_ignore_key_changed)>("vconf_ignore_key_changed")(key.c_str(),
                                                                                  callback);
}

extern "C" {

int vconf_notify_key_changed(const char* key, vconf_callback_fn cb, void* user_data) {
  g_calls.push_back(Notify(key, user_data));
  g_callback = cb;
  return RealNotify(key, cb, user_data);
}

int vconf_ignore_key_changed(const char* key, vconf_callback_fn cb) {
  g_calls.push_back(cb == g_callback ? Ignore(key) : "ignore another callback");
  return RealIgnore(key, cb);
}

}  // extern "C"

}  // namespace test
