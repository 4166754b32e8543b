// SPDX-License-Identifier: Apache-2.0
//
// The SQL of the schema, made from the table of columns.
#include "device/schema.h"

namespace tav_device {
namespace {

// One item for each column, separated by commas.
template <typename ItemOf>
std::string ListOfColumns(ItemOf item_of) {
  std::string list;
  for (const Column& column : kAppColumns) {
    if (!list.empty()) list += ", ";
    list += item_of(column);
  }
  return list;
}

std::string Definition(const Column& column) {
  std::string text = column.name;
  text += column.kind == ColumnKind::kText ? " text" : " integer";
  if (&column == &kAppColumns[kIdColumn]) text += " primary key";
  return text;
}

}  // namespace

std::optional<std::size_t> FindColumn(const std::string& name) {
  for (std::size_t i = 0; i < kAppColumnCount; ++i) {
    if (name == kAppColumns[i].name) return i;
  }
  return std::nullopt;
}

std::string CreateTablesSql() {
  return std::string("create table ") + kAppsTable + " (" + ListOfColumns(Definition) + ");\n" +
         "create table " + kConfigTable + " (name text primary key, value text);\n";
}

std::string InsertAppSql() {
  return std::string("insert into ") + kAppsTable + " (" +
         ListOfColumns([](const Column& column) { return column.name; }) + ") values (" +
         ListOfColumns([](const Column&) { return "?"; }) + ")";
}

}  // namespace tav_device
