// SPDX-License-Identifier: Apache-2.0
#include "record.h"

namespace bench {
namespace {

constexpr char kVisible[] = "and install_state = ? and is_app_available = ? and is_need_reset = ? ";
constexpr char kListed[] =
    " where is_app_available = ? and install_state = ?  and is_hidden = ? and is_need_reset = ? ";
constexpr char kAll[] = "  where is_app_available = ? and is_need_reset = ? and install_state = ? ";

std::string Select() {
  std::string columns;
  for (const auto& column : Column) {
    if (!columns.empty()) columns += ",";
    columns += column;
  }
  return "select " + columns + " from widgetinfo";
}

Statements Make() {
  const std::string select = Select();
  const std::string visible = kVisible;
  const std::string listed = kListed;
  const std::string page = " order by app_index asc limit ?,? ";
  Statements sql;
  sql.lookup = select + " where (id = ? or tizen_id = ?)  " + visible;
  sql.lookup_by_run_title = select + " where run_title = ?  " + visible;
  sql.count = "select count(id) from widgetinfo" + listed;
  sql.list = select + listed + page;
  sql.most_used_list = select + listed + " order by use_count desc limit ?,? ";
  sql.multi_screen_list = "select id,is_multi_screen2 from widgetinfo" + listed + page;
  sql.inner_lookup =
      select +
      " where (id = ?  or tizen_id = ? or pkgname = ? or hybrid_app = ? or reserved_string_16 = ?)  " +
      visible;
  sql.inner_list =
      select + " where install_state = ? and is_app_available = ? and is_need_reset = ? ";
  sql.count_all = std::string("select count(id) from widgetinfo") + kAll;
  sql.list_all = select + kAll;
  return sql;
}

}  // namespace

const Statements& Sql() {
  static const Statements& sql = *new Statements(Make());
  return sql;
}

}  // namespace bench
