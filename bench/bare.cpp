// SPDX-License-Identifier: Apache-2.0
#include "bare.h"

#include <json/value.h>
#include <json/writer.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vconf.h>

#include <climits>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "record.h"
#include "tav_db_api/tav_db_client_inner_fields.h"

namespace bench {

// Texts are bound without copying, as the caller's lives long enough.
class Bare::Rows {
 public:
  Rows(sqlite3* database, const std::string& sql) {
    if (sqlite3_prepare_v2(database, sql.c_str(), -1, &m_statement, nullptr) != SQLITE_OK) {
      throw std::runtime_error(sqlite3_errmsg(database));
    }
  }
  ~Rows() { sqlite3_finalize(m_statement); }
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;

  Rows& Bind(const char* text) {
    sqlite3_bind_text(m_statement, ++m_parameter, text, -1, SQLITE_STATIC);
    return *this;
  }
  Rows& Bind(int number) {
    sqlite3_bind_int(m_statement, ++m_parameter, number);
    return *this;
  }
  bool Next() { return sqlite3_step(m_statement) == SQLITE_ROW; }

  const char* Text(int column) const {
    const unsigned char* text = sqlite3_column_text(m_statement, column);
    return text != nullptr ? reinterpret_cast<const char*>(text) : "";
  }
  int Integer(int column) const { return sqlite3_column_int(m_statement, column); }

  void Read(tav_app_info_s* info, int locked_from) const {
    for (const Field& field : kTexts) SetText(info, field, Text(field.column));
    for (const Field& field : kIntegers) SetInteger(info, field, Integer(field.column));
    info->is_lock = info->is_lock != 0 || info->app_age_limit >= locked_from ? 1 : 0;
  }

  // The first row; the others are stepped over.
  int ReadFirst(tav_app_info_s* info) {
    *info = {};
    if (!Next()) return -1;
    Read(info, LockedFrom());
    while (Next()) continue;
    return 0;
  }

  Json::Value Object(int locked_from) const {
    Json::Value object(Json::objectValue);
    for (const auto& field : kInnerTexts) {
      if (field.key != nullptr) object[field.key] = Text(field.column);
    }
    for (const auto& field : kInnerIntegers) {
      object[field.key] = std::to_string(Integer(field.column));
    }
    for (const auto& field : kInnerFlags) {
      if (field.key != nullptr) object[field.key] = Integer(field.column) != 0 ? "1" : "0";
    }
    const bool is_locked = Integer(kIsLock) != 0 || Integer(kLimitAge) >= locked_from;
    object["is_lock"] = is_locked ? "1" : "0";
    return object;
  }

 private:
  sqlite3_stmt* m_statement = nullptr;
  int m_parameter = 0;
};

namespace {

char* Render(const Json::Value& root) {
  const std::unique_ptr<Json::StreamWriter> writer(Json::StreamWriterBuilder().newStreamWriter());
  std::ostringstream out;
  writer->write(root, &out);
  return strdup(out.str().c_str());
}

}  // namespace

bool IsRefused() {
  int type = 0;
  if (vconf_get_int("db/tav/factory_reset", &type) == 0 && (type == 1 || type == 2)) return true;
  struct stat status;
  return stat("/opt/dbspace/pkgreinstall", &status) == 0;
}

int LockedFrom() {
  const std::unique_ptr<char, void (*)(void*)> setting(vconf_get_str("db/appstore/ratingvalue"),
                                                       free);
  if (setting == nullptr) return INT_MAX;
  std::string age = setting.get();
  if (age == "OFF" || age == "ALL" || age.size() < 2) return INT_MAX;
  age.pop_back();
  return static_cast<int>(std::strtol(age.c_str(), nullptr, 10));
}

Bare::Bare(const std::string& database) {
  if (sqlite3_open_v2(database.c_str(), &m_database, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX,
                      nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(m_database));
  }
}

Bare::~Bare() {
  sqlite3_close(m_database);
}

int Bare::Lookup(const char* id, tav_app_info_s* info) {
  return IsRefused() ? -1 : LookupAlone(id, info);
}

int Bare::LookupAlone(const char* id, tav_app_info_s* info) {
  return Rows(m_database, Sql().lookup).Bind(id).Bind(id).Bind(3).Bind(1).Bind(0).ReadFirst(info);
}

int Bare::LookupByRunTitle(const char* run_title, tav_app_info_s* info) {
  if (IsRefused()) return -1;
  return Rows(m_database, Sql().lookup_by_run_title)
      .Bind(run_title)
      .Bind(3)
      .Bind(1)
      .Bind(0)
      .ReadFirst(info);
}

int Bare::CountListed() {
  Rows rows(m_database, Sql().count);
  rows.Bind(1).Bind(3).Bind(0).Bind(0);
  int count = 0;
  while (rows.Next()) count = rows.Integer(0);
  return count;
}

int Bare::List(int index, int count, tav_app_info_s** list, int* real_count) {
  return Page(Sql().list, index, count, list, real_count);
}

int Bare::Count(int* count) {
  tav_app_info_s* list = nullptr;
  const int result = Page(Sql().most_used_list, 0, 0, &list, count);
  std::free(list);
  return result;
}

int Bare::Page(const std::string& sql, int index, int count, tav_app_info_s** list,
               int* real_count) {
  if (IsRefused()) return -1;
  const int rest = CountListed() - index;
  const int size = count > 0 && count < rest ? count : rest;
  *list = static_cast<tav_app_info_s*>(
      std::calloc(static_cast<std::size_t>(size), sizeof(tav_app_info_s)));
  Rows rows(m_database, sql);
  rows.Bind(1).Bind(3).Bind(0).Bind(0).Bind(index).Bind(size);
  *real_count = 0;
  int locked_from = 0;
  while (rows.Next()) {
    if (*real_count == 0) locked_from = LockedFrom();
    rows.Read(*list + (*real_count)++, locked_from);
  }
  return 0;
}

int Bare::MultiScreenList(tav_app_ms_s** list, int* real_count) {
  if (IsRefused()) return -1;
  const int size = CountListed();
  *list =
      static_cast<tav_app_ms_s*>(std::calloc(static_cast<std::size_t>(size), sizeof(tav_app_ms_s)));
  Rows rows(m_database, Sql().multi_screen_list);
  rows.Bind(1).Bind(3).Bind(0).Bind(0).Bind(0).Bind(size);
  *real_count = 0;
  while (rows.Next()) {
    tav_app_ms_s& app = (*list)[(*real_count)++];
    const char* id = rows.Text(0);
    std::memcpy(app.app_id, id, strnlen(id, TAV_TEXT_SIZE - 1));
    app.is_multi_screen2 = rows.Integer(1);
  }
  return 0;
}

int Bare::Json(const char* id, char** json) {
  if (IsRefused()) return -1;
  Rows rows(m_database, Sql().inner_lookup);
  rows.Bind(id).Bind(id).Bind(id).Bind(id).Bind(id).Bind(3).Bind(1).Bind(0);
  if (!rows.Next()) return -1;
  Json::Value root;
  Json::Value object = rows.Object(LockedFrom());
  object["source_type"] = "1";  // its first value, which a lookup leaves
  root["app_info"].append(std::move(object));
  while (rows.Next()) continue;
  *json = Render(root);
  return 0;
}

int Bare::ListJson(char** json) {
  if (IsRefused()) return -1;
  Rows rows(m_database, Sql().inner_list);
  rows.Bind(3).Bind(1).Bind(0);
  Json::Value root;
  Json::Value& apps = root["app_list"];
  int locked_from = 0;
  while (rows.Next()) {
    if (apps.empty()) locked_from = LockedFrom();
    apps.append(rows.Object(locked_from));
  }
  *json = Render(root);
  return 0;
}

int Bare::Xml(const std::string& path) {
  if (IsRefused()) return -1;
  const std::unique_ptr<FILE, int (*)(FILE*)> file(std::fopen(path.c_str(), "w+e"), std::fclose);
  if (file == nullptr) return -1;
  {
    Rows count(m_database, Sql().count_all);
    count.Bind(1).Bind(0).Bind(3);
    while (count.Next()) continue;
  }
  std::fputs("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n", file.get());
  Rows rows(m_database, Sql().list_all);
  rows.Bind(1).Bind(0).Bind(3);
  tav_app_info_s app = {};
  int locked_from = -1;
  while (rows.Next()) {
    if (locked_from < 0) locked_from = LockedFrom();
    rows.Read(&app, locked_from);
    std::fprintf(file.get(),
                 "<widget id=\"%s\" name=\"%s\" lock=\"%d\" hidden=\"%d\" runTitle=\"%s\" "
                 "size=\"%d\" myAppIdx=\"%d\" network=\"%d\">\n<installedPath>%s</installedPath>\n"
                 "<icon>%s</icon>\n</widget>\n",
                 app.app_id, app.app_title, app.is_lock, app.is_hidden, app.app_runtitle, app.size,
                 app.app_index, app.is_network, app.app_installed_path, app.app_icon_path);
  }
  std::fputs("</list>\n", file.get());
  std::fflush(file.get());
  return fsync(fileno(file.get()));
}

}  // namespace bench
