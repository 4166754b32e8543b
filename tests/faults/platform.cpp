// SPDX-License-Identifier: Apache-2.0
//
// The functions below stand before the platform's own.
#include "faults/platform.h"

#include <app_control.h>
#include <dlfcn.h>
#include <dlog.h>
#include <pkgmgr-info.h>
#include <system_info.h>
#include <tzplatform_config.h>
#include <vconf.h>

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <optional>

#include "faults/outcome.h"

namespace test {
namespace {

struct Plan {
  std::string function;
  PlatformFault fault;
  int nth;
};

std::optional<Plan> g_plan;
int g_calls_of_the_plan = 0;
std::map<std::string, int> g_calls;
bool g_is_counting = false;
thread_local int t_platform_depth = 0;

class InThePlatform {
 public:
  InThePlatform() { ++t_platform_depth; }
  ~InThePlatform() { --t_platform_depth; }
  InThePlatform(const InThePlatform&) = delete;
  InThePlatform& operator=(const InThePlatform&) = delete;
};

// What this call of the function ends with, if with a fault.
std::optional<PlatformFault> FaultOf(const char* function) {
  if (!IsInsideTheLibrary() || t_platform_depth > 1) return std::nullopt;
  if (g_is_counting) ++g_calls[function];
  if (!g_plan || g_plan->function != function) return std::nullopt;
  ++g_calls_of_the_plan;
  if (g_plan->nth != 0 && g_plan->nth != g_calls_of_the_plan) return std::nullopt;
  return g_plan->fault;
}

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

// A text that must be neither read nor freed: a failure has left it behind.
char* NobodysText() {
  static char text[] = "left behind by a failure";
  return text;
}

constexpr int kPlatformFailure = -1;
constexpr int kNobodysNumber = 1;

int FailedInt(PlatformFault fault, int* value) {
  if (fault == PlatformFault::kFailsAfterWriting) *value = kNobodysNumber;
  return kPlatformFailure;
}

int FailedText(PlatformFault fault, char** text) {
  if (fault == PlatformFault::kFailsAfterWriting) *text = NobodysText();
  if (fault != PlatformFault::kGivesNull) return kPlatformFailure;
  *text = nullptr;
  return 0;
}

int FailedHandle(PlatformFault fault, void** handle) {
  if (fault == PlatformFault::kFailsAfterWriting) *handle = NobodysText();
  return kPlatformFailure;
}

}  // namespace

std::map<std::string, int> PlatformCalls(const std::function<void()>& body) {
  g_calls.clear();
  g_is_counting = true;
  body();
  g_is_counting = false;
  return g_calls;
}

FailingPlatform::FailingPlatform(const std::string& function, PlatformFault fault, int nth) {
  g_calls_of_the_plan = 0;
  g_plan = {function, fault, nth};
}

FailingPlatform::~FailingPlatform() {
  g_plan.reset();
}

bool IsInThePlatform() {
  return t_platform_depth > 0;
}

extern "C" {

int dlog_print(log_priority /*priority*/, const char* /*tag*/, const char* format, ...) {
  const InThePlatform here;
  if (FaultOf(__func__)) return kPlatformFailure;
  char line[4096];
  va_list arguments;
  va_start(arguments, format);
  const int length = std::vsnprintf(line, sizeof(line), format, arguments);
  va_end(arguments);
  return length;
}

int vconf_get_int(const char* key, int* value) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedInt(*fault, value);
  return Real<decltype(vconf_get_int)>(__func__)(key, value);
}

char* vconf_get_str(const char* key) {
  const InThePlatform here;
  if (FaultOf(__func__)) return nullptr;
  return Real<decltype(vconf_get_str)>(__func__)(key);
}

int vconf_set_int(const char* key, const int value) {
  const InThePlatform here;
  if (FaultOf(__func__)) return kPlatformFailure;
  return Real<decltype(vconf_set_int)>(__func__)(key, value);
}

int vconf_notify_key_changed(const char* key, vconf_callback_fn callback, void* data) {
  const InThePlatform here;
  if (FaultOf(__func__)) return kPlatformFailure;
  return Real<decltype(vconf_notify_key_changed)>(__func__)(key, callback, data);
}

// Fails, but for the sake of the next call lets the watch go.
int vconf_ignore_key_changed(const char* key, vconf_callback_fn callback) {
  const InThePlatform here;
  const int result = Real<decltype(vconf_ignore_key_changed)>(__func__)(key, callback);
  return FaultOf(__func__) ? kPlatformFailure : result;
}

const char* tzplatform_getenv(enum tzplatform_variable id) {
  const InThePlatform here;
  if (FaultOf(__func__)) return nullptr;
  return Real<decltype(tzplatform_getenv)>(__func__)(id);
}

int system_info_get_custom_string(const char* key, char** value) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedText(*fault, value);
  return Real<decltype(system_info_get_custom_string)>(__func__)(key, value);
}

int system_info_get_custom_int(const char* key, int* value) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedInt(*fault, value);
  return Real<decltype(system_info_get_custom_int)>(__func__)(key, value);
}

int system_info_get_value_int(system_info_key_e key, int* value) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedInt(*fault, value);
  return Real<decltype(system_info_get_value_int)>(__func__)(key, value);
}

int app_control_get_extra_data(app_control_h request, const char* key, char** value) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) {
    const int result = FailedText(*fault, value);
    if (fault == PlatformFault::kFailsAfterWriting) *value = strdup(*value);  // the caller's
    return result;
  }
  return Real<decltype(app_control_get_extra_data)>(__func__)(request, key, value);
}

int pkgmgrinfo_pkginfo_get_pkginfo(const char* package, pkgmgrinfo_pkginfo_h* handle) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedHandle(*fault, handle);
  return Real<decltype(pkgmgrinfo_pkginfo_get_pkginfo)>(__func__)(package, handle);
}

int pkgmgrinfo_pkginfo_get_version(pkgmgrinfo_pkginfo_h handle, char** version) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedText(*fault, version);
  return Real<decltype(pkgmgrinfo_pkginfo_get_version)>(__func__)(handle, version);
}

int pkgmgrinfo_pkginfo_destroy_pkginfo(pkgmgrinfo_pkginfo_h handle) {
  const InThePlatform here;
  const int result = Real<decltype(pkgmgrinfo_pkginfo_destroy_pkginfo)>(__func__)(handle);
  return FaultOf(__func__) ? kPlatformFailure : result;
}

int pkgmgrinfo_appinfo_get_appinfo(const char* app, pkgmgrinfo_appinfo_h* handle) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedHandle(*fault, handle);
  return Real<decltype(pkgmgrinfo_appinfo_get_appinfo)>(__func__)(app, handle);
}

int pkgmgrinfo_appinfo_get_icon(pkgmgrinfo_appinfo_h handle, char** icon) {
  const InThePlatform here;
  if (const auto fault = FaultOf(__func__)) return FailedText(*fault, icon);
  return Real<decltype(pkgmgrinfo_appinfo_get_icon)>(__func__)(handle, icon);
}

int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle) {
  const InThePlatform here;
  const int result = Real<decltype(pkgmgrinfo_appinfo_destroy_appinfo)>(__func__)(handle);
  return FaultOf(__func__) ? kPlatformFailure : result;
}

}  // extern "C"

}  // namespace test
