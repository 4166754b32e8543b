// SPDX-License-Identifier: Apache-2.0
//
// The methods, one row of a table for each.
#include "methods.h"

#include <tzplatform_config.h>
#include <vconf.h>

#include <fstream>

#include "say.h"

namespace tavcore {
namespace {

constexpr char kAppChangeKey[] = "memory/tav/app_change";
constexpr char kUninstallingFile[] = "/tavcore/uninstalling.txt";  // under the data directory

constexpr char kServiceIntrospection[] = R"xml(<node>
  <interface name="org.tizen.tv.tavcore.server.interface">
    <method name="heartbeat"/>
    <method name="set_app_lock">
      <arg type="s" name="app" direction="in"/>
      <arg type="i" name="is_lock" direction="in"/>
      <arg type="i" name="status" direction="out"/>
    </method>
    <method name="set_app_rating">
      <arg type="s" name="app" direction="in"/>
      <arg type="i" name="rating" direction="in"/>
      <arg type="i" name="status" direction="out"/>
    </method>
    <method name="tav_update_app_count">
      <arg type="s" name="app" direction="in"/>
      <arg type="i" name="status" direction="out"/>
    </method>
    <method name="tav_update_app_by_key">
      <arg type="s" name="app" direction="in"/>
      <arg type="i" name="key" direction="in"/>
      <arg type="s" name="value" direction="in"/>
      <arg type="i" name="status" direction="out"/>
    </method>
    <method name="set_ticker_mode_to_launch">
      <arg type="i" name="mode" direction="in"/>
      <arg type="i" name="status" direction="out"/>
    </method>
    <method name="get_ticker_mode_from_launch">
      <arg type="i" name="status" direction="out"/>
      <arg type="i" name="mode" direction="out"/>
    </method>
    <method name="get_api_uninstalling_biu_list">
      <arg type="s" name="apps" direction="out"/>
    </method>
  </interface>
</node>)xml";

int StatusOf(Change change) {
  switch (change) {
    case Change::kDone:
      return kDone;
    case Change::kUnknownApp:
      return kUnknownApp;
    case Change::kFailed:
      break;
  }
  return kDatabaseFailed;
}

// Tells everybody who watches that the list of apps looks different now.
int Published(int status) {
  if (status == kDone && vconf_set_int(kAppChangeKey, 1) != VCONF_OK) {
    Say(std::string("the setting ") + kAppChangeKey + " cannot be written");
  }
  return status;
}

}  // namespace

struct Methods::Method {
  enum class Answer { kNothing, kStatus, kStatusAndMode, kApps };

  const char* name;
  Answer answer;
  int (Methods::*run)(GVariant* parameters);
};

const Methods::Method Methods::kMethods[] = {
    {"heartbeat", Method::Answer::kNothing, &Methods::Nothing},
    {"set_app_lock", Method::Answer::kStatus, &Methods::SetAppLock},
    {"set_app_rating", Method::Answer::kStatus, &Methods::SetAppRating},
    {"tav_update_app_count", Method::Answer::kStatus, &Methods::UpdateAppCount},
    {"tav_update_app_by_key", Method::Answer::kStatus, &Methods::UpdateAppByKey},
    {"set_ticker_mode_to_launch", Method::Answer::kStatus, &Methods::SetTickerMode},
    {"get_ticker_mode_from_launch", Method::Answer::kStatusAndMode, &Methods::Nothing},
    {"get_api_uninstalling_biu_list", Method::Answer::kApps, &Methods::Nothing},
};

Methods::Methods(AppDatabase database, int ticker_mode, std::optional<std::string> uninstalling)
    : m_database(database), m_ticker_mode(ticker_mode), m_uninstalling(std::move(uninstalling)) {}

const char* Methods::Introspection() {
  return kServiceIntrospection;
}

const Methods::Method* Methods::Find(const std::string& method) {
  for (const Method& candidate : kMethods) {
    if (method == candidate.name) return &candidate;
  }
  return nullptr;
}

bool Methods::Has(const std::string& method) {
  return Find(method) != nullptr;
}

bool Methods::HasStatus(const std::string& method) {
  const Method* found = Find(method);
  return found != nullptr && (found->answer == Method::Answer::kStatus ||
                              found->answer == Method::Answer::kStatusAndMode);
}

GVariant* Methods::Run(const std::string& method, GVariant* parameters) {
  const Method* found = Find(method);
  return WithStatus(method, (this->*found->run)(parameters));
}

GVariant* Methods::WithStatus(const std::string& method, int status) const {
  switch (Find(method)->answer) {
    case Method::Answer::kStatus:
      return g_variant_new("(i)", status);
    case Method::Answer::kStatusAndMode:
      return g_variant_new("(ii)", status, m_ticker_mode);
    case Method::Answer::kApps:
      return g_variant_new("(s)", UninstallingApps().c_str());
    case Method::Answer::kNothing:
      break;
  }
  return g_variant_new("()");
}

GVariant* Methods::OfAnotherType(const std::string& method) {
  if (Find(method)->answer == Method::Answer::kApps) return g_variant_new("(i)", 0);
  return g_variant_new("(s)", "an answer of another type");
}

int Methods::SetAppLock(GVariant* parameters) {
  const char* app = nullptr;
  gint32 is_lock = 0;
  g_variant_get(parameters, "(&si)", &app, &is_lock);
  return Published(StatusOf(m_database.SetLock(app, is_lock > 0)));
}

int Methods::SetAppRating(GVariant* parameters) {
  const char* app = nullptr;
  gint32 rating = 0;
  g_variant_get(parameters, "(&si)", &app, &rating);
  return Published(StatusOf(m_database.SetRating(app, rating)));
}

// Deliberate: not published. Every launch would make every watcher read the whole list again.
int Methods::UpdateAppCount(GVariant* parameters) {
  const char* app = nullptr;
  g_variant_get(parameters, "(&s)", &app);
  return StatusOf(m_database.CountUse(app));
}

int Methods::UpdateAppByKey(GVariant* parameters) {
  constexpr int kUpdated = 0;
  const char* app = nullptr;
  gint32 key = 0;
  g_variant_get(parameters, "(&si&s)", &app, &key, nullptr);
  if (key != kUpdated) return kUnknownKey;
  return StatusOf(m_database.MarkUpdated(app));
}

int Methods::SetTickerMode(GVariant* parameters) {
  g_variant_get(parameters, "(i)", &m_ticker_mode);
  return kDone;
}

int Methods::Nothing(GVariant*) {
  return kDone;
}

std::string Methods::UninstallingApps() const {
  if (m_uninstalling) return *m_uninstalling;
  std::string list;
  const char* directory = tzplatform_getenv(TZPLATFORM_DATA_DIRECTORY);
  if (directory == nullptr) return list;
  std::ifstream file(std::string(directory) + kUninstallingFile);
  for (std::string line; std::getline(file, line);) {
    // A text that is not UTF-8 cannot be sent.
    if (line.empty() || !g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr)) {
      continue;
    }
    list += (list.empty() ? "" : ",") + line;
  }
  return list;
}

}  // namespace tavcore
