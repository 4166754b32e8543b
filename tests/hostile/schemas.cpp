// SPDX-License-Identifier: Apache-2.0
#include "hostile/schemas.h"

#include <sqlite3.h>

#include <functional>

#include "device/schema.h"

namespace hostile {
namespace {

std::string Columns(const std::function<std::string(const std::string&)>& item) {
  std::string list;
  for (const auto& column : tav_device::kAppColumns) {
    list += (list.empty() ? "" : ", ") + item(column.name);
  }
  return list;
}

std::string Names() {
  return Columns([](const std::string& name) { return name; });
}

// A view in the place of the apps table, which is "apps" from then on.
std::string View(const std::string& select) {
  return "alter table widgetinfo rename to apps; create view widgetinfo as " + select;
}

// A view with one column replaced.
std::string ViewWith(const std::string& column, const std::string& value) {
  return View("select " + Columns([&](const std::string& name) {
                return name == column ? value + " as " + name : name;
              }) +
              " from apps");
}

std::string ViewOf(const std::string& value) {
  return View("select " + Columns([&](const std::string& name) {
                const bool is_needed = name == "install_state" || name == "is_app_available" ||
                                       name == "is_need_reset";
                return is_needed ? name : value + " as " + name;
              }) +
              " from apps");
}

// Another table in its place, made by `create`, with the same rows.
std::string Table(const std::string& create, const std::string& names = Names()) {
  return "alter table widgetinfo rename to apps; " + create + "; insert into widgetinfo (" + names +
         ") select " + names + " from apps";
}

std::string TableWith(const std::string& column, const std::string& definition,
                      bool takes_values = true) {
  const std::string names = Names();
  std::string others;
  for (const auto& other : tav_device::kAppColumns) {
    if (other.name == column) continue;
    others += (others.empty() ? "" : ", ") + std::string(other.name);
  }
  return Table("create table widgetinfo (" + Columns([&](const std::string& name) {
                 return name == column ? name + " " + definition : name;
               }) + ")",
               takes_values ? names : others);
}

// A change of what is written of the tables, which SQLite would refuse to make of itself.
std::string Written(const std::string& change) {
  return "pragma writable_schema = on; update sqlite_master set " + change;
}

std::string InSql(const std::string& old_text, const std::string& new_text) {
  return Written("sql = replace(sql, '" + old_text + "', '" + new_text +
                 "') where name = 'widgetinfo'");
}

std::string ManyTables(int count) {
  std::string sql = "begin; ";
  for (int i = 0; i < count; ++i) {
    sql += "create table t" + std::to_string(i) + " (a, b unique); ";
  }
  return sql + "commit";
}

// A thousand columns more than the service has.
std::string ManyColumns() {
  std::string more;
  for (int i = 0; i < 1000; ++i) more += ", more" + std::to_string(i) + " text default 'much'";
  return Table("create table widgetinfo (" + Names() + more + ")");
}

bool CanMake(const std::string& sql) {
  sqlite3* database = nullptr;
  const bool can = sqlite3_open(":memory:", &database) == SQLITE_OK &&
                   sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
  sqlite3_close(database);
  return can;
}

void AddViews(std::vector<Schema>& schemas) {
  const auto add = [&](const char* name, const std::string& sql, bool is_good = false) {
    schemas.push_back({name, sql, is_good});
  };
  add("a view", View("select * from apps"), true);
  add("a view of a view", View("select * from (select * from apps)"), true);
  add("a view of a union", View("select * from apps union select * from apps"), true);
  add("an empty view", View("select * from apps limit 0"));
  add("a view of too few columns", View("select id, title, install_state from apps"));
  add("a view of a table that is gone", View("select * from nowhere"));
  add("a view of itself", View("select * from widgetinfo"));
  add("a view with a function that is not there", ViewWith("title", "nowhere(title)"));
  add("a view with a collation that is not there",
      View("select * from apps order by id collate nowhere"));
  add("a view that loads a library", ViewWith("title", "load_extension('nowhere')"));
  add("a view of nothing but nulls", ViewOf("null"));
  add("a view of nothing but blobs", ViewOf("x'00ff'"));
  add("a view of numbers that overflow", ViewWith("app_index", "9223372036854775807 + rowid"));
  // Fails at one of its rows.
  add("a view whose rows break off",
      ViewWith("size", "iif(rowid = 20, abs(-9223372036854775807 - 1), size)"));
  add("a view whose texts are too long",
      ViewWith("title", "iif(rowid = 20, zeroblob(2000000000), title)"));
  add("a view that reads no JSON", ViewWith("title", "json_extract('{', '$')"));
  add("a view that is many rows long",
      View("with recursive n (i) as (select 1 union all select i + 1 from n where i < 50) "
           "select apps.* from apps, n"));
  add("a view with windows",
      ViewWith("use_count", "sum(use_count) over (order by id rows 5 preceding)"));
  add("a deep view",
      View("select * from apps where " + std::string(40, '(') + "1" + std::string(40, ')')));
  add("a view for the configuration",
      "alter table TAVConfigTable rename to configuration;"
      "create view TAVConfigTable as select * from configuration",
      true);
  add("a view of one number for the configuration",
      "drop table TAVConfigTable; create view TAVConfigTable as select 1 as name, 2 as value");
  add("a view of many values for the configuration",
      "alter table TAVConfigTable rename to configuration; create view TAVConfigTable as "
      "with recursive n (i) as (select 1 union all select i + 1 from n where i < 1000) "
      "select name, value || i as value from configuration, n");
}

void AddTables(std::vector<Schema>& schemas) {
  const auto add = [&](const char* name, const std::string& sql, bool is_good = false) {
    schemas.push_back({name, sql, is_good});
  };
  const std::string names = Names();
  add("no apps table", "drop table widgetinfo");
  add("no configuration", "drop table TAVConfigTable");
  add("no table at all", "drop table widgetinfo; drop table TAVConfigTable");
  add("empty tables", "delete from widgetinfo; delete from TAVConfigTable");
  add("names in capitals",
      "alter table widgetinfo rename to lower; alter table lower rename to WIDGETINFO", true);
  add("another configuration", "drop table TAVConfigTable; create table TAVConfigTable (a, b)");
  add("no rowid", Table("create table widgetinfo (" + names + ", primary key (id)) without rowid"),
      true);
  add("ids that are row numbers", TableWith("tavorder", "integer primary key", false));
  add("strict columns", TableWith("title", "any") + "; drop table apps", true);
  add("a key of every column",
      Table("create table widgetinfo (" + names + ", unique (" + names + "))"), true);
  add("a checked column", TableWith("size", "check (size >= 0)"), true);
  add("a checked column with a function", TableWith("size", "check (typeof(size) <> 'blob')"),
      true);
  add("a foreign key", TableWith("pkgname", "references nowhere (id)"), true);
  add("a generated column",
      TableWith("title", "generated always as (id || char(0)) virtual", false));
  add("a stored generated column",
      TableWith("use_count", "generated always as (size * 2) stored", false));
  add("a collation", TableWith("id", "collate nocase primary key"), true);
  add("an index on an expression", "create index e on widgetinfo (lower(title), id || title)",
      true);
  add("an index on some rows", "create index e on widgetinfo (id) where install_state = 3", true);
  add("many columns", ManyColumns(), true);
  add("many tables", ManyTables(500), true);
  add("a name of a megabyte", "create table \"" + std::string(1 << 20, 'n') + "\" (a text)", true);
  add("a megabyte of comment", "create table commented (a /*" + std::string(1 << 20, 'c') + "*/)",
      true);
  add("a column's name of a megabyte",
      "alter table widgetinfo add column \"" + std::string(1 << 20, 'n') + "\"", true);
  add("triggers",
      "create trigger a before insert on widgetinfo begin delete from TAVConfigTable; end;"
      "create trigger b after update on widgetinfo begin select raise(fail, 'no'); end",
      true);
  add("a trigger on a view",
      View("select * from apps") +
          "; create trigger a instead of delete on widgetinfo begin "
          "delete from apps; end",
      true);
  for (const std::string module : {"fts5", "fts4", "rtree", "fts3"}) {
    const bool is_tree = module == "rtree";
    const std::string create = "create virtual table widgetinfo using " + module + " (" +
                               (is_tree ? "id, title, run_title, version, pkgname" : names) + ")";
    if (!CanMake(create)) continue;
    add(("a virtual table, " + module).c_str(),
        is_tree
            ? "drop table widgetinfo; " + create + "; insert into widgetinfo values (1, 2, 3, 4, 5)"
            : Table(create));
    add(("a virtual table without its tables, " + module).c_str(),
        "drop table widgetinfo; " + create + ";" +
            Written("name = 'gone' || rowid, tbl_name = 'gone' || rowid where name glob "
                    "'widgetinfo_*'"));
  }
}

void AddWritten(std::vector<Schema>& schemas) {
  const auto add = [&](const char* name, const std::string& sql, bool is_good = false) {
    schemas.push_back({name, sql, is_good});
  };
  add("a collation that is not there", InSql("title text", "title text collate nowhere"));
  add("a key's collation that is not there", InSql("id text", "id text collate nowhere"));
  add("a function that is not there", InSql("title text", "title text default (nowhere())"));
  add("a generated column's function that is not there",
      InSql("title text", "title text as (nowhere(id))"));
  add("a generated column that fails",
      InSql("size integer", "size integer as (abs(-9223372036854775807 - (app_index < 50)))"));
  add("a view of another database",
      View("select * from apps") + ";" +
          Written("sql = 'create view widgetinfo as select * from other.apps' where "
                  "name = 'widgetinfo'"));
  add("a view of a function that is run with the schema's rights",
      View("select * from apps where fts3_tokenizer('simple') is not null"));
  add("a virtual table's module that is not there",
      Written("sql = 'create virtual table widgetinfo using nowhere(a)', rootpage = 0 where "
              "name = 'widgetinfo'"));
  add("a table without its text", Written("sql = null where name = 'widgetinfo'"));
  add("a table whose text is none", Written("sql = 'nothing' where name = 'widgetinfo'"));
  add("a table whose text is a blob", Written("sql = zeroblob(2000) where name = 'widgetinfo'"));
  add("a table of another name", InSql("widgetinfo", "somethingelse"));
  add("a table that is called a view", Written("type = 'view' where name = 'widgetinfo'"));
  add("a table that is called an index", Written("type = 'index' where name = 'widgetinfo'"));
  add("a table that is called nothing", Written("type = null where name = 'widgetinfo'"));
  add("a table on its index's page",
      Written("rootpage = (select max(rootpage) from sqlite_master) where name = 'widgetinfo'"));
  for (const char* page : {"0", "1", "-1", "999999", "2147483648", "null", "'2'", "4.5"}) {
    add(("a table on page " + std::string(page)).c_str(),
        Written("rootpage = " + std::string(page) + " where name = 'widgetinfo'"));
  }
  add("two tables of one name", Written("name = 'widgetinfo' where name = 'TAVConfigTable'"));
  add("both tables on one page", Written("rootpage = (select min(rootpage) from sqlite_master)"));
  add("columns of another kind", InSql(" integer", " blob"));
  add("fewer columns than values", InSql("is_app_available integer,", ""));
  add("more columns than values",
      InSql("id text primary key,", "id text primary key, one, two, three,"));
  add("a key that is a row's number", InSql("size integer", "size integer primary key"));
  add("a schema that was written down twice",
      "pragma writable_schema = on; insert into sqlite_master select * from sqlite_master");
  add("a schema of nothing", "pragma writable_schema = on; delete from sqlite_master");
}

}  // namespace

std::vector<Schema> Schemas() {
  std::vector<Schema> schemas;
  AddViews(schemas);
  AddTables(schemas);
  AddWritten(schemas);
  return schemas;
}

}  // namespace hostile
