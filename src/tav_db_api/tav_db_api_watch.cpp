// SPDX-License-Identifier: Apache-2.0
//
// The registry of callbacks: one list for each setting that can be watched, and one watch of
// the platform's while the list has an entry. Takes no lock: registering, unregistering and the
// delivery of changes belong to one thread at a time.
//
// A callback may register and unregister while it is called, itself as well. An entry that is
// removed meanwhile is not called any more, one that is added is. No function is called twice for
// one change.
#include <unistd.h>
#include <vconf.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "tav_common/tav_log.h"
#include "tav_common/tav_settings_keys.h"
#include "tav_db_api.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_client_connection.h"

namespace {

// A callback of either type; its key says which.
using AnyCallback = void (*)();

struct Entry {
  AnyCallback callback;
  void* user_data;
};
using Entries = std::vector<Entry>;

struct WatchedKey {
  int key;
  const char* name;
};

constexpr WatchedKey kWatchedKeys[] = {
    {TAV_VCONF_KEY_FACTORY_RESET_TYPE, kFactoryResetKey},
    {TAV_VCONF_KEY_APPSYNC_START, kAppSyncKey},
    {TAV_VCONF_KEY_HOMEDECK_RESET_STATUS, kHomedeckResetKey},
    {TAV_VCONF_KEY_INSTALLED_APPID, kInstalledAppKey},
};
constexpr int kListCount = TAV_VCONF_KEY_INSTALLED_APPID + 1;

// Indexed by the key; never destroyed, since changes may come while the process exits. Nothing
// of it is on the heap before the first entry: unregistering cannot fail for want of memory.
union Registry {
  Registry() : tav_vconf_cb_list() {}
  ~Registry() {}
  std::array<Entries, kListCount> tav_vconf_cb_list;
};

Entries& ListOf(int key) {
  static Registry registry;
  static pid_t process = getpid();
  // In a forked child the platform no longer watches for the parent's entries.
  if (process != getpid()) {
    for (Entries& list : registry.tav_vconf_cb_list) list.clear();
    process = getpid();
  }
  return registry.tav_vconf_cb_list[static_cast<std::size_t>(key)];
}

// Null after a log for a key that cannot be watched.
const WatchedKey* FindKey(int key, const LogPlace& place = LogPlace::Here()) {
  for (const WatchedKey& watched : kWatchedKeys) {
    if (watched.key == key) return &watched;
  }
  TAV_LOGW_FOR(place, "not supported key %d", key);
  return nullptr;
}

const WatchedKey* FindKey(const char* name) {
  for (const WatchedKey& watched : kWatchedKeys) {
    if (std::strcmp(watched.name, name) == 0) return &watched;
  }
  return nullptr;
}

Entries::iterator Find(Entries& list, AnyCallback callback) {
  return std::find_if(list.begin(), list.end(),
                      [&](const Entry& entry) { return entry.callback == callback; });
}

ssize_t Address(AnyCallback callback) {
  return reinterpret_cast<ssize_t>(callback);
}

// Nothing may leave a callback towards the platform, which is C.
void Call(const Entry& entry, int key, keynode_t* node) try {
  TAV_LOGI("call cb (%zd)\n", Address(entry.callback));
  if (key == TAV_VCONF_KEY_INSTALLED_APPID) {
    reinterpret_cast<tav_text_changed_cb>(entry.callback)(vconf_keynode_get_str(node),
                                                          entry.user_data);
  } else {
    reinterpret_cast<tav_int_changed_cb>(entry.callback)(vconf_keynode_get_int(node),
                                                         entry.user_data);
  }
} catch (...) {
  AnswerException(__func__);
}

void tav_vconf_notify_cb(keynode_t* keynode, void* /*vconfUserData*/) try {
  const TavCall call;
  TAV_LOGI("tav_vconf_notify_cb");
  const char* name = vconf_keynode_get_name(keynode);
  TAV_LOGI("callback for key %s", Printable(name));
  const WatchedKey* watched = name != nullptr ? FindKey(name) : nullptr;
  if (watched == nullptr) {
    TAV_LOGW("not supported key %s", Printable(name));
    return;
  }
  const Entries& list = ListOf(watched->key);
  if (list.empty()) {
    TAV_LOGI("nothing to call");
    return;
  }
  // Each callback may change the list, so the next one is looked for anew.
  std::vector<AnyCallback> called;
  const auto is_next = [&](const Entry& entry) {
    return std::find(called.begin(), called.end(), entry.callback) == called.end();
  };
  for (auto next = list.begin(); next != list.end();
       next = std::find_if(list.begin(), list.end(), is_next)) {
    const Entry entry = *next;
    called.push_back(entry.callback);
    Call(entry, watched->key, keynode);
  }
} catch (...) {
  AnswerException(__func__);
}

int Register(int key, AnyCallback callback, void* user_data,
             const LogPlace& place = LogPlace::Here()) try {
  const TavCall call;
  if (callback == nullptr) return kFailed;
  const WatchedKey* watched = FindKey(key, place);
  if (watched == nullptr) return kFailed;
  Entries& list = ListOf(key);
  if (Find(list, callback) != list.end()) {
    TAV_LOGW_FOR(place, "already registered cb (%zd)", Address(callback));
    return 0;
  }
  // Memory comes first: once the platform watches, nothing may fail.
  list.reserve(list.size() + 1);
  if (list.empty()) {
    TAV_LOGI_FOR(place, "register vconf cb for key %s", watched->name);
    if (vconf_notify_key_changed(watched->name, tav_vconf_notify_cb, user_data) != 0) {
      TAV_LOGE_FOR(place, "failed to register callback");
      return kFailed;
    }
  }
  list.push_back({callback, user_data});
  // The text names a setting that is none of these, for every key: it is kept.
  TAV_LOGI_FOR(place, "cb for panel_display_time registered (%zd)", Address(callback));
  return 0;
} catch (...) {
  return AnswerException(place.function);
}

int Unregister(int key, AnyCallback callback, const LogPlace& place = LogPlace::Here()) {
  const TavCall call;
  const WatchedKey* watched = FindKey(key, place);
  if (watched == nullptr) return kFailed;
  if (callback == nullptr) {
    TAV_LOGW_FOR(place, "invalid input");
    return kFailed;
  }
  Entries& list = ListOf(key);
  if (list.empty()) {
    TAV_LOGW_FOR(place, "callback list is not initialized yet");
    return kFailed;
  }
  const auto entry = Find(list, callback);
  if (entry == list.end()) {
    TAV_LOGE_FOR(place, "not registered cb (%zd)", Address(callback));
    return kFailed;
  }
  list.erase(entry);
  if (list.empty()) {
    Entries().swap(list);  // releases the block
    TAV_LOGI_FOR(place, "unregister vconf cb for %s", watched->name);
    if (vconf_ignore_key_changed(watched->name, tav_vconf_notify_cb) != 0) {
      TAV_LOGE_FOR(place, "failed to unregister cb for (%s)", watched->name);
    }
  }
  TAV_LOGI_FOR(place, "cb for tav_vconf_cb_list unregistered (%zd)", Address(callback));
  return 0;
}

// A callback that is carried as an int, the address read as unsigned: it reaches functions in
// the lowest 4 GiB alone.
AnyCallback FromInt(int callback) {
  // NOLINTNEXTLINE(performance-no-int-to-ptr): the interface carries it so
  return reinterpret_cast<AnyCallback>(
      static_cast<std::uintptr_t>(static_cast<unsigned int>(callback)));
}

template <typename Callback>
AnyCallback Any(Callback callback) {
  return reinterpret_cast<AnyCallback>(callback);
}

}  // namespace

int tav_register_value_cb(tav_vconf_key_e key, int callback, void* userData) {
  return Register(key, FromInt(callback), userData);
}

int tav_unregister_value_cb(tav_vconf_key_e key, int callback) {
  return Unregister(key, FromInt(callback));
}

int tav_register_factory_reset_type_changed_cb(tav_int_changed_cb callback, void* userData) {
  return Register(TAV_VCONF_KEY_FACTORY_RESET_TYPE, Any(callback), userData);
}

int tav_register_appsync_start_changed_cb(tav_int_changed_cb callback, void* userData) {
  return Register(TAV_VCONF_KEY_APPSYNC_START, Any(callback), userData);
}

int tav_register_homedeck_reset_status_changed_cb(tav_int_changed_cb callback, void* userData) {
  return Register(TAV_VCONF_KEY_HOMEDECK_RESET_STATUS, Any(callback), userData);
}

int tav_register_installed_appid_changed_cb(tav_text_changed_cb callback, void* userData) {
  return Register(TAV_VCONF_KEY_INSTALLED_APPID, Any(callback), userData);
}

int tav_unregister_factory_reset_type_changed_cb(tav_int_changed_cb callback) {
  return Unregister(TAV_VCONF_KEY_FACTORY_RESET_TYPE, Any(callback));
}

int tav_unregister_appsync_start_changed_cb(tav_int_changed_cb callback) {
  return Unregister(TAV_VCONF_KEY_APPSYNC_START, Any(callback));
}

int tav_unregister_homedeck_reset_status_changed_cb(tav_int_changed_cb callback) {
  return Unregister(TAV_VCONF_KEY_HOMEDECK_RESET_STATUS, Any(callback));
}

int tav_unregister_installed_appid_changed_cb(tav_text_changed_cb callback) {
  return Unregister(TAV_VCONF_KEY_INSTALLED_APPID, Any(callback));
}
