// SPDX-License-Identifier: Apache-2.0
//
// The group lists: configuration values that map a run title to an app's id.
#include <map>
#include <string>
#include <utility>

#include "tav_common/tav_log.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api/tav_db_api_throwing.h"
#include "tav_db_api/tav_db_client_values.h"
#include "tav_db_api_inner.h"

namespace {

constexpr char kAndroidGroupKey[] = "RESERVED_37";
constexpr char kAppGroupKey[] = "RESERVED_27";

constexpr int kMemberInstalled = 0;
constexpr int kMemberNotInstalled = 1;
constexpr int kNoMember = 3;

void FindMember(const char* list_key, const std::string& run_title, std::string& app_id, int& state,
                const LogPlace& place = LogPlace::Here()) try {
  const TavCall call;
  const DatabaseLock lock;
  std::string text;
  if (!GetConfigText(list_key, text)) return;
  TAV_LOGI("the runtitle list %s", text.c_str());
  std::map<std::string, std::string> members;
  throwing::ParseStringToList(text, ",", ":", members);
  const auto member = members.find(run_title);
  if (member == members.end()) {
    state = kNoMember;
    return;
  }
  std::string& id = member->second;
  tav_app_info_s info;
  const bool is_installed = throwing::m_tav_get_app_info(id.c_str(), &info) == 0;
  app_id = std::move(id);
  state = is_installed ? kMemberInstalled : kMemberNotInstalled;
} catch (...) {
  AnswerException(place.function);
}

}  // namespace

void GetAppIDFromAndroidGroupList(const std::string& runTitle, std::string& appId, int& state) {
  FindMember(kAndroidGroupKey, runTitle, appId, state);
}

void GetAppIDFromAppGroupList(const std::string& runTitle, std::string& appId, int& state) {
  FindMember(kAppGroupKey, runTitle, appId, state);
}
