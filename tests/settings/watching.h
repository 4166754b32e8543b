// SPDX-License-Identifier: Apache-2.0
//
// What tests of watched settings share: the four settings, callbacks that note what they are
// told, and a main context that runs until something is true.
#ifndef TESTS_SETTINGS_WATCHING_H_
#define TESTS_SETTINGS_WATCHING_H_

#include <glib.h>
#include <gtest/gtest.h>
#include <sys/types.h>

#include <functional>
#include <ostream>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "settings/vconf_recorder.h"
#include "support/device.h"
#include "support/log.h"
#include "tav_db_api.h"

namespace test {

inline constexpr char kReset[] = "db/tav/factory_reset";

using Texts = std::vector<std::string>;

// The lines of the library, each behind the letter of its priority: "E not registered cb (7)".
inline Texts Written(const Log& log) {
  Texts lines;
  for (const LogLine& line : log.Lines()) {
    lines.push_back(std::string(1, line.priority) + " " + line.message);
  }
  return lines;
}

// The user data of the callbacks below.
struct Listener {
  Listener(std::string its_name, Texts& its_told) : name(std::move(its_name)), told(its_told) {}

  std::string name;
  Texts& told;
  std::function<void()> then;  // what the callback does next
};

// Each of them is a callback of its own. Tells "<number> <listener> <value>".
template <int kNumber>
void TellText(const char* value, void* data) {
  auto& listener = *static_cast<Listener*>(data);
  listener.told.push_back(std::to_string(kNumber) + " " + listener.name + " " +
                          (value != nullptr ? value : "(null)"));
  if (listener.then) listener.then();
}

template <int kNumber>
void TellInt(int value, void* data) {
  TellText<kNumber>(std::to_string(value).c_str(), data);
}

// A setting that can be watched, with its typed functions. A callback is named by its number, 1
// to 3, and 0 is none.
struct WatchedSetting {
  const char* title;
  tav_vconf_key_e key;
  const char* name;
  std::string add_function;
  std::string remove_function;
  std::function<int(int callback, void* data)> add;
  std::function<int(int callback)> remove;
  std::function<ssize_t(int callback)> address;
  bool is_text;

  // As the log shows them.
  std::string Address(int callback) const { return "(" + std::to_string(address(callback)) + ")"; }
  std::string CallLine(int callback) const { return "I call cb " + Address(callback); }
  // A value of the setting's type, and as a callback tells it.
  void Set(Device& device, int number) const {
    if (is_text) {
      device.Setting(name, Value(number));
    } else {
      device.Setting(name, number);
    }
  }
  std::string Value(int number) const {
    return (is_text ? "org.example.app" : "") + std::to_string(number);
  }
};

inline std::ostream& operator<<(std::ostream& stream, const WatchedSetting& setting) {
  return stream << setting.name;
}

template <typename Callback>
WatchedSetting MakeWatchedSetting(const char* title, tav_vconf_key_e key, const char* name,
                                  const std::string& stem, int (*add)(Callback, void*),
                                  int (*remove)(Callback), const std::vector<Callback>& callbacks) {
  const auto at = [callbacks](int number) { return callbacks[static_cast<std::size_t>(number)]; };
  return {title,
          key,
          name,
          "tav_register_" + stem + "_changed_cb",
          "tav_unregister_" + stem + "_changed_cb",
          [=](int number, void* data) { return add(at(number), data); },
          [=](int number) { return remove(at(number)); },
          [=](int number) { return reinterpret_cast<ssize_t>(at(number)); },
          std::is_same_v<Callback, tav_text_changed_cb>};
}

inline std::vector<WatchedSetting> WatchedSettings() {
  const std::vector<tav_int_changed_cb> ints = {nullptr, TellInt<1>, TellInt<2>, TellInt<3>};
  const std::vector<tav_text_changed_cb> texts = {nullptr, TellText<1>, TellText<2>, TellText<3>};
  return {
      MakeWatchedSetting("FactoryReset", TAV_VCONF_KEY_FACTORY_RESET_TYPE, kReset,
                         "factory_reset_type", tav_register_factory_reset_type_changed_cb,
                         tav_unregister_factory_reset_type_changed_cb, ints),
      MakeWatchedSetting("AppSync", TAV_VCONF_KEY_APPSYNC_START, "memory/tav/appsync",
                         "appsync_start", tav_register_appsync_start_changed_cb,
                         tav_unregister_appsync_start_changed_cb, ints),
      MakeWatchedSetting("HomedeckReset", TAV_VCONF_KEY_HOMEDECK_RESET_STATUS,
                         "db/homedeck/reset/tavcore", "homedeck_reset_status",
                         tav_register_homedeck_reset_status_changed_cb,
                         tav_unregister_homedeck_reset_status_changed_cb, ints),
      MakeWatchedSetting("InstalledApp", TAV_VCONF_KEY_INSTALLED_APPID, "memory/tav/app_install",
                         "installed_appid", tav_register_installed_appid_changed_cb,
                         tav_unregister_installed_appid_changed_cb, texts)};
}

inline std::string TitleOf(const ::testing::TestParamInfo<WatchedSetting>& info) {
  return info.param.title;
}

// Runs the default main context until `done`; false when the deadline passes before.
template <typename Done>
bool RunUntil(const Done& done) {
  bool is_late = false;
  GSource* deadline = g_timeout_source_new_seconds(20);
  g_source_set_callback(
      deadline,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_REMOVE;
      },
      &is_late, nullptr);
  g_source_attach(deadline, nullptr);
  while (!is_late && !done()) g_main_context_iteration(nullptr, TRUE);
  g_source_destroy(deadline);
  g_source_unref(deadline);
  return !is_late;
}

class Watching : public ::testing::Test {
 protected:
  // Runs the main context until a setting that is set only now was told: all that happened before
  // has been told by then, or never will be.
  void Deliver() {
    bool is_told = false;
    const auto tell = [](keynode_t*, void* flag) { *static_cast<bool*>(flag) = true; };
    ASSERT_EQ(RealNotify("quiet", tell, &is_told), 0);
    device.Setting("quiet", 1);
    EXPECT_TRUE(RunUntil([&] { return is_told; }));
    EXPECT_EQ(RealIgnore("quiet", tell), 0);
  }
  // What the callbacks were told by a delivery.
  Texts Delivered() {
    told.clear();
    Deliver();
    return told;
  }
  template <typename Value>
  Texts DeliveredAfter(const std::string& key, const Value& value) {
    device.Setting(key, value);
    return Delivered();
  }

  Device device;
  Log& log = device.GetLog();
  Texts told;
  Listener first{"first", told};
  Listener second{"second", told};
  Listener third{"third", told};
};

// The same for each of the four settings.
class WatchingEach : public Watching, public ::testing::WithParamInterface<WatchedSetting> {
 protected:
  Texts DeliveredAfter(int number) {
    setting.Set(device, number);
    return Delivered();
  }

  const WatchedSetting setting = GetParam();
};

}  // namespace test

#endif  // TESTS_SETTINGS_WATCHING_H_
