// SPDX-License-Identifier: Apache-2.0
// Package data from the device's key file. Both kinds of handle are one record: a kind's handle
// carries the one text that can be asked of it.
#include "pkgmgr-info.h"

#include <utility>

#include "common/border.h"
#include "common/key_file.h"

namespace {

constexpr char kTag[] = "PKGMGR_INFO";
constexpr char kFile[] = "packages.ini";

// Numbers that stray memory is unlikely to hold: a handle is a bare void* to the caller.
enum class Kind : unsigned { kPackage = 0x7061636bU, kApp = 0x61707069U };

struct Record {
  Kind kind;
  std::optional<std::string> text;
};

Record* RecordOf(Kind kind, void* handle) {
  auto* record = static_cast<Record*>(handle);
  if (record != nullptr && record->kind == kind) return record;
  dlog_print(DLOG_ERROR, kTag, "a null handle or one of another kind");
  return nullptr;
}

int RefuseNull() {
  dlog_print(DLOG_ERROR, kTag, "a null argument");
  return PMINFO_R_EINVAL;
}

int Open(Kind kind, const char* id, const char* key, void** handle) {
  if (id == nullptr || handle == nullptr) return RefuseNull();
  return tav_host::AtBorder<int>(kTag, PMINFO_R_ERROR, [&] {
    const tav_host::KeyFile file(kTag, kFile);
    if (!file.HasGroup(id)) {
      if (file) dlog_print(DLOG_DEBUG, kTag, "no package %s", id);
      return PMINFO_R_ERROR;
    }
    auto text = file.Text(id, key);
    *handle = new Record{kind, std::move(text)};
    return PMINFO_R_OK;
  });
}

int Text(Kind kind, void* handle, char** text) {
  if (text == nullptr) return RefuseNull();
  Record* record = RecordOf(kind, handle);
  if (record == nullptr) return PMINFO_R_EINVAL;
  if (!record->text) return PMINFO_R_ERROR;
  *text = record->text->data();
  return PMINFO_R_OK;
}

int Close(Kind kind, void* handle) {
  Record* record = RecordOf(kind, handle);
  if (record == nullptr) return PMINFO_R_EINVAL;
  delete record;
  return PMINFO_R_OK;
}

}  // namespace

int pkgmgrinfo_pkginfo_get_pkginfo(const char* pkgid, pkgmgrinfo_pkginfo_h* handle) {
  return Open(Kind::kPackage, pkgid, "version", handle);
}

int pkgmgrinfo_pkginfo_get_version(pkgmgrinfo_pkginfo_h handle, char** version) {
  return Text(Kind::kPackage, handle, version);
}

int pkgmgrinfo_pkginfo_destroy_pkginfo(pkgmgrinfo_pkginfo_h handle) {
  return Close(Kind::kPackage, handle);
}

int pkgmgrinfo_appinfo_get_appinfo(const char* appid, pkgmgrinfo_appinfo_h* handle) {
  return Open(Kind::kApp, appid, "icon", handle);
}

int pkgmgrinfo_appinfo_get_icon(pkgmgrinfo_appinfo_h handle, char** icon) {
  return Text(Kind::kApp, handle, icon);
}

int pkgmgrinfo_appinfo_destroy_appinfo(pkgmgrinfo_appinfo_h handle) {
  return Close(Kind::kApp, handle);
}
