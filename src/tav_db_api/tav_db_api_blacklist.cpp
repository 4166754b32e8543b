// SPDX-License-Identifier: Apache-2.0
//
// The packages that are not offered on entry-level devices with a small flash.
#include "tav_db_api/tav_db_api_throwing.h"

#include <system_info.h>
#include <tzplatform_config.h>

#include <cstdio>
#include <cstring>

#include "tav_common/tav_handles.h"
#include "tav_common/tav_log.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api_inner.h"

namespace {

// The platform's numbers of a directory and of a feature.
constexpr int kConfigurationDirectory = 27;
constexpr int kDeviceGrade = 701;

constexpr char kBlacklistFile[] = "/tavcore/built_in_app/entry_smart_blacklist.txt";
constexpr char kFlashSizeKey[] = "com.kordyne/featureconf/flash_size";
constexpr int kEntryGrade = 1;
constexpr int kFlashOf4G = 0;
constexpr std::size_t kLineSize = 1024;

int FlashSize() {
  int size = kFlashOf4G;
  if (system_info_get_custom_int(kFlashSizeKey, &size) == 0) return size;
  TAV_LOGE("failed to get %s", kFlashSizeKey);
  return kFlashOf4G;  // deliberate: an unknown flash counts as a small one
}

}  // namespace

bool GetBuiltInBlacklistSupport() {
  const TavCall call;
  int grade = kEntryGrade;
  const int result =
      system_info_get_value_int(static_cast<system_info_key_e>(kDeviceGrade), &grade);
  if (result != 0) {
    TAV_LOGE("system_info_get_value_int error %d", result);
    return false;
  }
  if (grade != kEntryGrade) {
    TAV_LOGI("Not entry type, do not support blacklist");
    return false;
  }
  if (FlashSize() != kFlashOf4G) {
    TAV_LOGI("Not 4G type, do not support blacklist");
    return false;
  }
  TAV_LOGI("entry type and flash is 4G, support blacklist");
  return true;
}

std::map<std::string, std::string> throwing::GetUnsupportedPkgList() {
  std::map<std::string, std::string> packages;
  if (!GetBuiltInBlacklistSupport()) {
    TAV_LOGI("do not support unsupported pkg list");
    return packages;
  }
  const char* directory =
      tzplatform_getenv(static_cast<enum tzplatform_variable>(kConfigurationDirectory));
  const std::string path = std::string(directory != nullptr ? directory : "") + kBlacklistFile;
  const File file(std::fopen(path.c_str(), "re"));
  if (file == nullptr) {
    TAV_LOGI("do not have unsupported pkg file");
    return packages;
  }
  char line[kLineSize];
  while (std::fgets(line, sizeof(line), file.get()) != nullptr) {
    const std::string package(line, std::strcspn(line, "\n"));
    TAV_LOGI("pkgid %s is found in entry_smart_blacklist.txt", package.c_str());
    packages.emplace(package, package);
  }
  return packages;
}

std::map<std::string, std::string> GetUnsupportedPkgList() try {
  const TavCall call;
  return throwing::GetUnsupportedPkgList();
} catch (...) {
  AnswerException(__func__);
  return {};
}
