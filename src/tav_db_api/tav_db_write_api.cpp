// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_write_api.h"

#include <sys/stat.h>

#include <cstdlib>

#include "tav_common/tav_glib_handles.h"
#include "tav_common/tav_log.h"
#include "tav_common/tav_proxy.h"

namespace {

constexpr char kIntrospection[] =
    "<node>  <interface name='org.tizen.tv.tavcore.tavdbclient.interface.%s'>  </interface></node>";
constexpr char kReadyMarker[] = "/run/tav_ready";
constexpr int kTimeoutMsec = 10000;

// The client's object answers no methods and has no properties.
constexpr GDBusInterfaceVTable tav_db_vtable = {};

// The proxy, when it is of use and the bus, which takes UTF-8 alone, can carry the text; null after
// a log. The text may be null.
CTAVGdbus* ReadyProxy(const char* text, const LogPlace& place = LogPlace::Here()) {
  if (text != nullptr && g_utf8_validate(text, -1, nullptr) == FALSE) {
    TAV_LOGE_FOR(place, "the text is not UTF-8, so it cannot be sent");
    return nullptr;
  }
  CTAVGdbus* proxy = get_db_proxy();
  if (proxy->GetProxy(kIntrospection, tav_db_vtable)) return proxy;
  TAV_LOGE_FOR(place, "get_db_proxy() error");
  return nullptr;
}

// Calls a method of the service. The reply, which is of the type that the method has; null
// after a log on any failure. Takes over parameters that float; they may be null.
GVariantPtr Call(CTAVGdbus* proxy, const char* method, GVariant* parameters,
                 const char* reply_type) {
  const GVariantPtr owned(parameters != nullptr ? g_variant_ref_sink(parameters) : nullptr);
  GVariant* answer = nullptr;
  const bool is_answered = proxy->MethodCall(method, owned.get(), &answer, kTimeoutMsec, nullptr);
  GVariantPtr reply(answer);
  if (!is_answered || reply == nullptr) return nullptr;
  if (g_variant_is_of_type(reply.get(), G_VARIANT_TYPE(reply_type)) == FALSE) {
    TAV_LOGE("%s was answered with %s, not with %s", method, g_variant_get_type_string(reply.get()),
             reply_type);
    return nullptr;
  }
  return reply;
}

// Calls a method whose reply is a status.
int CallForStatus(CTAVGdbus* proxy, const char* method, GVariant* parameters,
                  const LogPlace& place = LogPlace::Here()) {
  gint32 result = -1;
  if (const GVariantPtr reply = Call(proxy, method, parameters, "(i)")) {
    g_variant_get(reply.get(), "(i)", &result);
    TAV_LOGI_FOR(place, "result : %d", result);
  }
  TAV_LOGI_FOR(place, "Finish");
  return result == 0 ? 0 : -1;
}

}  // namespace

CTAVGdbus* get_db_proxy() {
  // Never freed: while the process exits, the monitor and other threads may still be at work.
  static CTAVGdbus* db_proxy = nullptr;
  static const bool is_made = [] {
    db_proxy = new CTAVGdbus("db", "tavcore", nullptr, nullptr);
    // Without memory for the handler the bus takes the object away with the connection.
    return std::atexit([] { db_proxy->Withdraw(); }) == 0;
  }();
  static_cast<void>(is_made);
  return db_proxy;
}

int TavSetAppLock(const char* appId, int isLock) {
  TAV_LOGI("Start");
  CTAVGdbus* proxy = ReadyProxy(appId);
  if (proxy == nullptr) return -1;
  const gint32 lock = isLock > 0 ? 1 : 0;
  TAV_LOGI("appid: %s, is_lock: %d,ilock: %d ", appId, isLock, lock);
  return CallForStatus(proxy, "set_app_lock", g_variant_new("(si)", appId, lock));
}

int TavSetAppRating(const char* appId, int rating) {
  TAV_LOGI("Start, rating:%d", rating);
  CTAVGdbus* proxy = ReadyProxy(appId);
  if (proxy == nullptr) return -1;
  return CallForStatus(proxy, "set_app_rating", g_variant_new("(si)", appId, rating));
}

int TavUpdateAppUseCount(const char* appId) {
  TAV_LOGI("Start, app_id:%s", appId);
  CTAVGdbus* proxy = ReadyProxy(appId);
  if (proxy == nullptr) return -1;
  return CallForStatus(proxy, "tav_update_app_count", g_variant_new("(s)", appId));
}

int TavSetAppUpdted(const char* appId) {
  TAV_LOGI("Start, app_id:%s", appId);
  CTAVGdbus* proxy = ReadyProxy(appId);
  if (proxy == nullptr) return -1;
  // The service is always asked for key 0 with an empty value.
  return CallForStatus(proxy, "tav_update_app_by_key", g_variant_new("(sis)", appId, 0, ""));
}

int SetTickerModeToLaunch(int mode) {
  TAV_LOGI("Start");
  CTAVGdbus* proxy = ReadyProxy(nullptr);
  if (proxy == nullptr) return -1;
  return CallForStatus(proxy, "set_ticker_mode_to_launch", g_variant_new("(i)", mode));
}

int GetTickerModeFromLaunch(int* mode) {
  TAV_LOGI("Start");
  CTAVGdbus* proxy = ReadyProxy(nullptr);
  if (proxy == nullptr) return -1;
  gint32 result = -1;
  if (const GVariantPtr reply = Call(proxy, "get_ticker_mode_from_launch", nullptr, "(ii)")) {
    gint32 ticker_mode = 0;
    g_variant_get(reply.get(), "(ii)", &result, &ticker_mode);
    TAV_LOGI("result : %d, TickerModeValue : %d", result, ticker_mode);
    *mode = result == 0 ? ticker_mode : 0;
  }
  TAV_LOGI("Finish");
  return result == 0 ? 0 : -1;
}

int TavGetUninstallingBuiltInApp(char** list) {
  struct stat status;
  if (stat(kReadyMarker, &status) != 0) {
    TAV_LOGW("/run/tav_ready doesnt exist");
    return 0;
  }
  TAV_LOGI("Start");
  CTAVGdbus* proxy = ReadyProxy(nullptr);
  if (proxy == nullptr) return -1;
  const GVariantPtr reply = Call(proxy, "get_api_uninstalling_biu_list", nullptr, "(s)");
  if (reply != nullptr) {
    g_variant_get(reply.get(), "(s)", list);
    TAV_LOGI("result : %s", *list);
  }
  TAV_LOGI("Finish");
  return reply != nullptr ? 0 : -1;
}

void GetUninstallingBuiltInAppID(std::vector<std::string>& appIds) {
  char* list = nullptr;
  TavGetUninstallingBuiltInApp(&list);
  const GTextPtr owner(list);
  if (list == nullptr || *list == '\0') return;
  // Every comma ends an id, and so does the end of the text: an id may be empty.
  const std::string text = std::string(list) + ",";
  for (std::size_t start = 0, comma; (comma = text.find(',', start)) != std::string::npos;
       start = comma + 1) {
    appIds.push_back(text.substr(start, comma - start));
  }
}
