// SPDX-License-Identifier: Apache-2.0
//
// tavctl doctor: directories, guards and settings.
#include <sys/stat.h>
#include <tzplatform_config.h>
#include <unistd.h>
#include <vconf.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

#include "doctor.h"
#include "platform.h"
#include "published_settings.h"
#include "tav_db_api.hpp"

namespace {

constexpr int kDataDirectory = 2;
constexpr int kConfigurationDirectory = 27;

constexpr char kRecoveryMarker[] = "/opt/dbspace/pkgreinstall";
constexpr char kReadyMarker[] = "/run/tav_ready";
constexpr char kFactoryResetKey[] = "db/tav/factory_reset";

const char* DirectoryAdvice() {
  return kIsOnPc ? "make a device with tav-sandbox --create DIR and set TAV_DEVICE_ROOT to DIR, or "
                   "run the program in tav-sandbox"
                 : "";
}

// A directory below one that the platform names. Without it, calls fail, or only what `without`
// says.
struct Directory {
  int number;
  const char* below;
  const char* what;
  const char* without;  // null: nothing works
  bool is_written;
};

constexpr Directory kDirectories[] = {
    {kDatabaseDirectory, "", "database directory", nullptr, false},
    {kDataDirectory, "/tavcore/common", "data directory", "no XML file can be written", true},
    {kConfigurationDirectory, "", "configuration directory",
     "no built-in app is left out for a small device", false},
};

// What is wrong with it, or an empty text.
std::string Fault(const Directory& directory, const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) return path + ": " + std::strerror(errno);
  if (!S_ISDIR(status.st_mode)) return path + " is not a directory";
  if (!directory.is_written) return "";
  if (access(path.c_str(), W_OK) != 0) return path + ": " + std::strerror(errno);
  std::error_code ignored;
  const auto real = std::filesystem::canonical(path, ignored);
  return real != path ? path + " is behind a link" : "";
}

void ExamineDirectory(const Directory& directory, Findings& findings) {
  const std::string path = PlatformDirectory(directory.number);
  if (path.empty()) {
    findings.push_back(
        {Health::kProblem, directory.what, "the platform does not say where it is", ""});
    return;
  }
  const std::string fault = Fault(directory, path + directory.below);
  if (fault.empty()) {
    findings.push_back({Health::kGood, directory.what, path + directory.below, ""});
  } else if (directory.without == nullptr) {
    findings.push_back({Health::kProblem, directory.what, fault, DirectoryAdvice()});
  } else {
    findings.push_back({Health::kNote, directory.what, fault + "; " + directory.without, ""});
  }
}

bool Exists(const char* path) {
  struct stat status;
  return stat(path, &status) == 0;
}

enum class Held { kNothing, kInt, kText };

Held TypeHeldBy(const char* key) {
  int number = 0;
  if (vconf_get_int(key, &number) == 0) return Held::kInt;
  return tav::Text(vconf_get_str(key)) ? Held::kText : Held::kNothing;
}

void ExamineFactoryReset(Findings& findings) {
  static constexpr char kWhat[] = "factory reset";
  int type = 0;
  if (vconf_get_int(kFactoryResetKey, &type) != 0) {
    findings.push_back({Health::kNote, kWhat,
                        std::string(kFactoryResetKey) + " cannot be read; that counts as none",
                        ""});
  } else if (type == 1 || type == 2) {
    findings.push_back({Health::kProblem, kWhat,
                        std::string(kFactoryResetKey) + " is " + std::to_string(type) +
                            ": calls are refused until the reset is over",
                        ""});
  } else {
    findings.push_back({Health::kGood, kWhat, "none is under way", ""});
  }
}

}  // namespace

std::string PlatformDirectory(int number) {
  const char* path = tzplatform_getenv(static_cast<enum tzplatform_variable>(number));
  return path != nullptr ? path : "";
}

void ExamineDirectories(Findings& findings) {
  for (const Directory& directory : kDirectories) ExamineDirectory(directory, findings);
}

void ExamineGuards(Findings& findings) {
  ExamineFactoryReset(findings);
  static constexpr char kRecovery[] = "package recovery";
  if (Exists(kRecoveryMarker)) {
    findings.push_back({Health::kProblem, kRecovery,
                        std::string(kRecoveryMarker) +
                            " exists: calls are refused until the packages are recovered",
                        ""});
  } else {
    findings.push_back({Health::kGood, kRecovery, "none is under way", ""});
  }
  static constexpr char kReady[] = "service marker";
  if (Exists(kReadyMarker)) {
    findings.push_back({Health::kGood, kReady, kReadyMarker, ""});
  } else {
    findings.push_back({Health::kNote, kReady,
                        std::string(kReadyMarker) +
                            " does not exist: the service is not asked which built-in apps it "
                            "is removing",
                        ""});
  }
}

void ExamineSettings(Findings& findings) {
  static constexpr char kWhat[] = "settings";
  std::string unset;
  for (const PublishedSetting& setting : kPublishedSettings) {
    const Held held = TypeHeldBy(setting.key);
    if (held == Held::kNothing) {
      unset += (unset.empty() ? "" : ", ") + std::string(setting.key);
    } else if ((held == Held::kText) != setting.IsText()) {
      findings.push_back({Health::kProblem, kWhat,
                          std::string(setting.key) + " holds " +
                              (held == Held::kText ? "a string" : "an int") + ", not " +
                              (setting.IsText() ? "a string" : "an int") + ": its getter fails",
                          ""});
    }
  }
  if (unset.empty()) {
    findings.push_back({Health::kGood, kWhat, "all that the service publishes are set", ""});
  } else {
    findings.push_back({Health::kNote, kWhat, "not set, so their getters fail: " + unset, ""});
  }
}
