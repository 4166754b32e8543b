// SPDX-License-Identifier: Apache-2.0
//
// tavctl watch: a line for each change of a setting. Those that the library can watch are watched
// through it, all others through the platform.
#include <glib-unix.h>
#include <json/value.h>
#include <json/writer.h>
#include <vconf.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <csignal>
#include <iostream>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "manual/values.h"
#include "output.h"
#include "published_settings.h"

namespace {

constexpr char kWatchFooter[] =
    R"(Without a KEY, everything that the service publishes is watched. Says on standard error
when the watch has begun, and ends with Ctrl-C. Changes in quick succession may be
shown as one, which has the last value.

Examples:
  tavctl watch
  tavctl watch --json memory/tav/app_install
  tavctl watch --count 1 memory/tav/app_change)";

constexpr int kEndless = -1;

class Watch {
 public:
  Watch(bool is_json, int most_changes);
  ~Watch();
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  void Begin(const std::string& key);
  void Run() { g_main_loop_run(m_loop.get()); }

 private:
  struct Key {
    Watch* watch;
    std::string name;
    const PublishedSetting* setting;  // null for a setting that the service does not publish
    tav::Watch registration;          // of a setting that the library watches

    bool IsWatchedByLibrary() const { return setting != nullptr && setting->IsWatchable(); }
    bool Begin();
    void End();

    void OnInt(int value);
    void OnText(tav::TextView value);
  };

  static void OnNode(keynode_t* node, void* key);
  static gboolean OnSignal(void* watch);

  void Tell(const std::string& key, const Json::Value& value);

  const bool m_is_json;
  int m_changes_left;  // or kEndless
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> m_loop;
  const guint m_interrupt;
  const guint m_termination;
  std::vector<std::unique_ptr<Key>> m_keys;
};

Watch::Watch(bool is_json, int most_changes)
    : m_is_json(is_json),
      m_changes_left(most_changes),
      m_loop(g_main_loop_new(nullptr, FALSE), g_main_loop_unref),
      m_interrupt(g_unix_signal_add(SIGINT, OnSignal, this)),
      m_termination(g_unix_signal_add(SIGTERM, OnSignal, this)) {}

Watch::~Watch() {
  for (const auto& key : m_keys) key->End();
  g_source_remove(m_termination);
  g_source_remove(m_interrupt);
}

bool Watch::Key::Begin() {
  if (!IsWatchedByLibrary()) return vconf_notify_key_changed(name.c_str(), OnNode, this) == 0;
  registration = (setting->IsText() ? setting->watch_text([this](auto value) { OnText(value); })
                                    : setting->watch_int([this](int value) { OnInt(value); }))
                     .value();
  return static_cast<bool>(registration);
}

void Watch::Key::End() {
  if (IsWatchedByLibrary()) {
    registration.reset();
  } else {
    vconf_ignore_key_changed(name.c_str(), OnNode);
  }
}

void Watch::Begin(const std::string& name) {
  const bool is_there =
      std::any_of(m_keys.begin(), m_keys.end(), [&](const auto& key) { return key->name == name; });
  if (is_there) return;
  auto key = std::make_unique<Key>(Key{this, name, FindPublishedSetting(name), {}});
  CheckResult(key->Begin() ? tav::Status::kOk : tav::Status::kFailed,
              "the setting \"" + Printable(name) + "\" cannot be watched");
  m_keys.push_back(std::move(key));
}

// The library hands over 0 when the setting holds no int: the getter knows better.
void Watch::Key::OnInt(int value) {
  const bool is_int = !IsWatchedByLibrary() || setting->read_int().has_value();
  watch->Tell(name, is_int ? Json::Value(value) : Json::Value());
}

void Watch::Key::OnText(tav::TextView value) {
  watch->Tell(name, value ? Json::Value(ValidUtf8(std::string(value.view()))) : Json::Value());
}

void Watch::OnNode(keynode_t* node, void* key) {
  const char* const text = vconf_keynode_get_str(node);
  if (text != nullptr) {
    static_cast<Key*>(key)->OnText(text);
  } else {
    static_cast<Key*>(key)->OnInt(vconf_keynode_get_int(node));
  }
}

gboolean Watch::OnSignal(void* watch) {
  g_main_loop_quit(static_cast<Watch*>(watch)->m_loop.get());
  return G_SOURCE_CONTINUE;
}

std::string Now() {
  const std::unique_ptr<GDateTime, decltype(&g_date_time_unref)> now(g_date_time_new_now_local(),
                                                                     g_date_time_unref);
  const std::unique_ptr<char, decltype(&g_free)> text(g_date_time_format(now.get(), "%FT%T.%f%:z"),
                                                      g_free);
  return text.get();
}

void Watch::Tell(const std::string& key, const Json::Value& value) {
  if (m_changes_left == 0) return;  // what else came with the last change
  if (m_is_json) {
    Json::StreamWriterBuilder builder;
    builder["indentation"] = "";
    builder["emitUTF8"] = true;
    Json::Value line(Json::objectValue);
    line["time"] = Now();
    line["key"] = key;
    line["value"] = value;
    std::cout << Json::writeString(builder, line);
  } else {
    std::cout << Now() << "  " << Printable(key) << "  " << Printable(value.asString());
  }
  std::cout << std::endl;  // whoever reads it waits for it
  if (m_changes_left > 0) --m_changes_left;
  if (m_changes_left == 0 || !std::cout) g_main_loop_quit(m_loop.get());
}

struct WatchOptions {
  std::vector<std::string> keys;
  bool is_json = false;
  int count = kEndless;
};

void RunWatch(const WatchOptions& options) {
  Watch watch(options.is_json, options.count);
  for (const std::string& key : options.keys) watch.Begin(key);
  if (options.keys.empty()) {
    for (const PublishedSetting& setting : kPublishedSettings) watch.Begin(setting.key);
  }
  std::cerr << "tavctl: watching\n";
  watch.Run();
}

}  // namespace

void AddWatchCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("watch", "Show the changes of settings as they come");
  const auto options = std::make_shared<WatchOptions>();
  command->add_option("KEY", options->keys, "The keys of the settings to watch")
      ->check(tav_manual::Known(PublishedKeys()));
  command->add_flag("--json", options->is_json, "Print one JSON object a line");
  command->add_option("--count", options->count, "End after so many changes")
      ->check(CheckWholeNumber)
      ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""));
  command->footer(kWatchFooter);
  command->callback([options] { RunWatch(*options); });
}
