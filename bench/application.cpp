// SPDX-License-Identifier: Apache-2.0
#include "application.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/VariadicBind.h>
#include <json/value.h>
#include <json/writer.h>

#include <fstream>

#include "bare.h"
#include "record.h"
#include "tav_db_api/tav_db_client_inner_fields.h"

namespace bench {
namespace {

tav_app_info_s Record(SQLite::Statement& row, int locked_from) {
  tav_app_info_s info = {};
  for (const Field& field : kTexts) {
    SetText(&info, field, row.getColumn(field.column).getString().c_str());
  }
  for (const Field& field : kIntegers) {
    SetInteger(&info, field, row.getColumn(field.column).getInt());
  }
  info.is_lock = info.is_lock != 0 || info.app_age_limit >= locked_from ? 1 : 0;
  return info;
}

std::optional<tav_app_info_s> First(SQLite::Statement& row) {
  std::optional<tav_app_info_s> info;
  while (row.executeStep()) {
    if (!info) info = Record(row, LockedFrom());
  }
  return info;
}

Json::Value Object(SQLite::Statement& row, int locked_from) {
  Json::Value object(Json::objectValue);
  for (const auto& field : kInnerTexts) {
    if (field.key != nullptr) object[field.key] = row.getColumn(field.column).getString();
  }
  for (const auto& field : kInnerIntegers) {
    object[field.key] = std::to_string(row.getColumn(field.column).getInt());
  }
  for (const auto& field : kInnerFlags) {
    if (field.key == nullptr) continue;
    object[field.key] = row.getColumn(field.column).getInt() != 0 ? "1" : "0";
  }
  const bool is_locked =
      row.getColumn(kIsLock).getInt() != 0 || row.getColumn(kLimitAge).getInt() >= locked_from;
  object["is_lock"] = is_locked ? "1" : "0";
  return object;
}

}  // namespace

std::optional<tav_app_info_s> Application::Lookup(const std::string& id) {
  if (IsRefused()) return std::nullopt;
  SQLite::Statement row(m_database, Sql().lookup);
  SQLite::bind(row, id, id, 3, 1, 0);
  return First(row);
}

std::optional<tav_app_info_s> Application::LookupByRunTitle(const std::string& run_title) {
  if (IsRefused()) return std::nullopt;
  SQLite::Statement row(m_database, Sql().lookup_by_run_title);
  SQLite::bind(row, run_title, 3, 1, 0);
  return First(row);
}

int Application::CountListed() {
  SQLite::Statement row(m_database, Sql().count);
  SQLite::bind(row, 1, 3, 0, 0);
  return row.executeStep() ? row.getColumn(0).getInt() : 0;
}

int Application::CountAlone() {
  return IsRefused() ? -1 : CountListed();
}

std::vector<tav_app_info_s> Application::List(int index, int count) {
  return Page(Sql().list, index, count);
}

std::size_t Application::Count() {
  return Page(Sql().most_used_list, 0, 0).size();
}

std::vector<tav_app_info_s> Application::Page(const std::string& sql, int index, int count) {
  std::vector<tav_app_info_s> list;
  if (IsRefused()) return list;
  const int rest = CountListed() - index;
  const int size = count > 0 && count < rest ? count : rest;
  list.reserve(static_cast<std::size_t>(size));
  SQLite::Statement row(m_database, sql);
  SQLite::bind(row, 1, 3, 0, 0, index, size);
  int locked_from = 0;
  while (row.executeStep()) {
    if (list.empty()) locked_from = LockedFrom();
    list.push_back(Record(row, locked_from));
  }
  return list;
}

std::vector<tav_app_ms_s> Application::MultiScreenList() {
  std::vector<tav_app_ms_s> list;
  if (IsRefused()) return list;
  const int size = CountListed();
  list.reserve(static_cast<std::size_t>(size));
  SQLite::Statement row(m_database, Sql().multi_screen_list);
  SQLite::bind(row, 1, 3, 0, 0, 0, size);
  while (row.executeStep()) {
    tav_app_ms_s app = {};
    row.getColumn(0).getString().copy(app.app_id, TAV_TEXT_SIZE - 1);
    app.is_multi_screen2 = row.getColumn(1).getInt();
    list.push_back(app);
  }
  return list;
}

std::string Application::Json(const std::string& id) {
  if (IsRefused()) return "";
  SQLite::Statement row(m_database, Sql().inner_lookup);
  SQLite::bind(row, id, id, id, id, id, 3, 1, 0);
  Json::Value root;
  while (row.executeStep()) {
    if (!root.empty()) continue;
    Json::Value object = Object(row, LockedFrom());
    object["source_type"] = "1";  // its first value, which a lookup leaves
    root["app_info"].append(std::move(object));
  }
  return Json::writeString(Json::StreamWriterBuilder(), root);
}

std::string Application::ListJson() {
  if (IsRefused()) return "";
  SQLite::Statement row(m_database, Sql().inner_list);
  SQLite::bind(row, 3, 1, 0);
  Json::Value root;
  Json::Value& apps = root["app_list"];
  int locked_from = 0;
  while (row.executeStep()) {
    if (apps.empty()) locked_from = LockedFrom();
    apps.append(Object(row, locked_from));
  }
  return Json::writeString(Json::StreamWriterBuilder(), root);
}

void Application::Xml(const std::string& path) {
  if (IsRefused()) return;
  std::ofstream file(path);
  file << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<list>\n";
  SQLite::Statement row(m_database, Sql().list_all);
  SQLite::bind(row, 1, 0, 3);
  const int locked_from = LockedFrom();
  while (row.executeStep()) {
    const tav_app_info_s app = Record(row, locked_from);
    file << "<widget id=\"" << app.app_id << "\" name=\"" << app.app_title << "\" lock=\""
         << app.is_lock << "\" hidden=\"" << app.is_hidden << "\" runTitle=\"" << app.app_runtitle
         << "\" size=\"" << app.size << "\" myAppIdx=\"" << app.app_index << "\" network=\""
         << app.is_network << "\">\n<installedPath>" << app.app_installed_path
         << "</installedPath>\n<icon>" << app.app_icon_path << "</icon>\n</widget>\n";
  }
  file << "</list>\n";
}

}  // namespace bench
