// SPDX-License-Identifier: Apache-2.0
//
// A layer below SQLite, which says of some files that they do not change.
#include "doctor_side_files.h"

#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

namespace {

constexpr char kName[] = "doctor";
constexpr int kReadVersionAt = 19;  // in the file, a byte
constexpr char kWriteAhead = 2;

sqlite3_vfs g_layer;  // SQLite's own but for the name and the opening
int (*g_open)(sqlite3_vfs*, const char*, sqlite3_file*, int, int*) = nullptr;
sqlite3_io_methods g_methods;  // SQLite's own but for one

bool Exists(const std::string& path) {
  return access(path.c_str(), F_OK) == 0;
}

bool IsWriteAhead(const std::string& database) {
  char version = 0;
  std::ifstream file(database, std::ios::binary);
  return file.seekg(kReadVersionAt) && file.get(version) && version == kWriteAhead;
}

bool MayMakeFilesBeside(const std::string& database) {
  const std::string directory = std::filesystem::path(database).parent_path();
  return access(directory.c_str(), W_OK) == 0;
}

bool WouldMakeSideFiles(const std::string& database) {
  return MayMakeFilesBeside(database) && IsWriteAhead(database) && !Exists(database + "-wal");
}

int Open(sqlite3_vfs* layer, const char* name, sqlite3_file* file, int flags, int* out_flags) {
  const int result = g_open(layer, name, file, flags, out_flags);
  if (result == SQLITE_OK && (flags & SQLITE_OPEN_MAIN_DB) != 0 && WouldMakeSideFiles(name)) {
    g_methods = *file->pMethods;
    g_methods.xDeviceCharacteristics = [](sqlite3_file*) { return SQLITE_IOCAP_IMMUTABLE; };
    file->pMethods = &g_methods;
  }
  return result;
}

}  // namespace

bool LacksLogIndex(const std::string& database) {
  std::error_code error;
  std::string file = std::filesystem::weakly_canonical(database, error);  // as SQLite has it
  if (error) file = database;
  return MayMakeFilesBeside(file) && Exists(file + "-wal") && !Exists(file + "-shm");
}

void MakeNoSideFiles() {
  g_layer = *sqlite3_vfs_find(nullptr);
  g_layer.zName = kName;
  g_open = g_layer.xOpen;
  g_layer.xOpen = Open;
  sqlite3_vfs_register(&g_layer, 1);
}
