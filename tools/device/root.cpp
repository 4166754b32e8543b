// SPDX-License-Identifier: Apache-2.0
//
// Makes a device root beside its place and moves it there when it is complete.
#include "device/root.h"

#include <vconf.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <optional>

#include "device/database.h"
#include "device/error.h"
#include "device/handles.h"

namespace tav_device {
namespace {

namespace fs = std::filesystem;

constexpr const char* kDirectories[] = {
    "dbspace",
    "data/tavcore/common",
    "etc/tavcore/built_in_app",
    "vconf",
};
constexpr char kBlacklistFile[] = "etc/tavcore/built_in_app/entry_smart_blacklist.txt";
constexpr char kXmlFile[] = "data/tavcore/common/apps_info.xml";
constexpr std::size_t kLongestXmlPath = 127;  // the library cuts a longer one
constexpr char kSystemInfoFile[] = "system-info.ini";
constexpr char kPackagesFile[] = "packages.ini";

// A directory that is removed with its content unless it is moved to its place.
class UnfinishedDirectory {
 public:
  explicit UnfinishedDirectory(const fs::path& target) : m_target(target) {
    m_path = (target.parent_path() / ("." + target.filename().string() + ".XXXXXX")).string();
    if (mkdtemp(m_path.data()) == nullptr) {
      throw DeviceError(target.string() + ": " + std::strerror(errno));
    }
  }
  ~UnfinishedDirectory() {
    std::error_code ignored;
    if (!m_placed) fs::remove_all(m_path, ignored);
  }
  UnfinishedDirectory(const UnfinishedDirectory&) = delete;
  UnfinishedDirectory& operator=(const UnfinishedDirectory&) = delete;

  const std::string& Path() const { return m_path; }

  // The kernel refuses to replace anything but an empty directory, also one filled meanwhile.
  void MoveToItsPlace() {
    fs::rename(m_path, m_target);
    m_placed = true;
  }

 private:
  fs::path m_target;
  std::string m_path;
  bool m_placed = false;
};

// Points the platform libraries at a device root and back again.
class RootInEnvironment {
 public:
  explicit RootInEnvironment(const std::string& root) {
    if (const char* before = std::getenv(kRootVariable)) m_before = before;
    setenv(kRootVariable, root.c_str(), 1);
  }
  ~RootInEnvironment() {
    if (m_before) {
      setenv(kRootVariable, m_before->c_str(), 1);
    } else {
      unsetenv(kRootVariable);
    }
  }
  RootInEnvironment(const RootInEnvironment&) = delete;
  RootInEnvironment& operator=(const RootInEnvironment&) = delete;

 private:
  std::optional<std::string> m_before;
};

fs::path CheckedTarget(const std::string& directory) {
  if (directory.empty()) throw DeviceError("the directory of the device has no name");
  fs::path target = fs::weakly_canonical(fs::absolute(directory));
  if (!target.has_filename()) target = target.parent_path();  // it was written with a "/" behind
  if (fs::exists(target) && !(fs::is_directory(target) && fs::is_empty(target))) {
    throw DeviceError(target.string() + " exists and is not an empty directory");
  }
  const std::size_t length = target.string().size() + sizeof("/") - 1 + sizeof(kXmlFile) - 1;
  if (length > kLongestXmlPath) {
    throw DeviceError(target.string() + " is too long for a device: the path of its XML file, /" +
                      kXmlFile + " behind it, has " + std::to_string(length) +
                      " bytes and may have " + std::to_string(kLongestXmlPath));
  }
  return target;
}

int SetSetting(const std::string& key, int value) {
  return vconf_set_int(key.c_str(), value);
}
int SetSetting(const std::string& key, const std::string& value) {
  return vconf_set_str(key.c_str(), value.c_str());
}

void WriteSettings(const std::string& root, const Seed& seed) {
  const RootInEnvironment environment(root);
  for (const auto& [name, value] : seed.settings) {
    const std::string& key = name;
    if (std::visit([&](const auto& plain) { return SetSetting(key, plain); }, value) != 0) {
      throw DeviceError("the setting " + key + " cannot be written");
    }
  }
}

void SetKey(GKeyFile* file, const char* group, const std::string& key, int value) {
  g_key_file_set_integer(file, group, key.c_str(), value);
}
void SetKey(GKeyFile* file, const char* group, const std::string& key, const std::string& value) {
  g_key_file_set_string(file, group, key.c_str(), value.c_str());
}

void SaveKeyFile(GKeyFile* file, const std::string& path) {
  GError* error = nullptr;
  if (!g_key_file_save_to_file(file, path.c_str(), &error)) {
    const GErrorHandle owned(error);
    throw DeviceError(error->message);
  }
}

void WriteSystemInfo(const std::string& path, const Seed& seed) {
  const GKeyFileHandle file(g_key_file_new());
  for (const auto& [name, value] : seed.custom_features) {
    const std::string& key = name;
    std::visit([&](const auto& plain) { SetKey(file.get(), "custom", key, plain); }, value);
  }
  for (const auto& [number, value] : seed.value_features) {
    SetKey(file.get(), "value", std::to_string(number), value);
  }
  SaveKeyFile(file.get(), path);
}

void WritePackages(const std::string& path, const Seed& seed) {
  const GKeyFileHandle file(g_key_file_new());
  for (const auto& [id, package] : seed.packages) {
    SetKey(file.get(), id.c_str(), "version", package.version);
    SetKey(file.get(), id.c_str(), "icon", package.icon);
  }
  SaveKeyFile(file.get(), path);
}

void WriteBlacklist(const std::string& path, const Seed& seed) {
  std::ofstream file(path);
  for (const std::string& id : seed.blacklist) file << id << '\n';
  file.close();
  if (!file) throw DeviceError(path + " cannot be written");
}

void Fill(const std::string& root, const Seed& seed) {
  for (const char* directory : kDirectories) fs::create_directories(root + "/" + directory);
  WriteDatabase(root + "/" + kDatabaseFile, seed);
  WriteSettings(root, seed);
  WriteSystemInfo(root + "/" + kSystemInfoFile, seed);
  WritePackages(root + "/" + kPackagesFile, seed);
  WriteBlacklist(root + "/" + kBlacklistFile, seed);
}

}  // namespace

std::string CreateDeviceRoot(const std::string& directory, const Seed& seed) {
  try {
    const fs::path target = CheckedTarget(directory);
    UnfinishedDirectory unfinished(target);
    Fill(unfinished.Path(), seed);
    unfinished.MoveToItsPlace();
    return target.string();
  } catch (const fs::filesystem_error& error) {
    throw DeviceError(directory + ": " + error.code().message());
  }
}

}  // namespace tav_device
