// SPDX-License-Identifier: Apache-2.0
//
// Sound databases whose values are not what the columns are for.
#include "device/schema.h"
#include "hostile/good.h"
#include "hostile/trial.h"
#include "support/database.h"

namespace hostile {
namespace {

// A text literal of count characters.
std::string Long(int count) {
  return "replace(hex(zeroblob(" + std::to_string(count / 2) + ")), '0', 'L')";
}

const std::string kValues[] = {
    "null",
    "''",
    "0",
    "1",
    "-1",
    "-2",
    "3",
    "2147483647",
    "2147483648",
    "-2147483649",
    "4294967299",  // 3 in its low half
    "9223372036854775807",
    "-9223372036854775808",
    "3.0",
    "0.999999",
    "-0.0",
    "1e308",
    "9e999",
    "-9e999",
    "'3'",
    "' 3 apps'",
    "'0x3'",
    "'99999999999999999999'",
    "'NaN'",
    "x''",
    "x'00'",
    "x'0000000000000003'",
    "x'ffffffff'",
    "x'c3'",
    "x'fffec080eda080'",
    "zeroblob(300)",
    "zeroblob(9000)",
    "'cut' || char(0) || 'here'",
    "char(0)",
    "cast(x'c328' as text)",
    "cast(x'fffec080eda080f8888080' as text)",
    "cast(x'f0908d' as text)",
    "cast(x'00' as text)",
    "char(55296, 57343)",
    "char(1114111, 65535, 65279)",
    "char(8238) || 'rtl' || char(10, 13, 27, 127)",
    "'%s%s%n%1000000d'",
    "'\"</widget>&\\'",
    "'{\"rsp\":{\"stat\":\"ok\",\"apps\":[null,1,{\"id\":[]}]}}'",
    "',,:,:,a:b:c,'",
    "'org.example.puzzle-engine,,org.example.puzzle-pack'",
    Long(126),
    Long(128) + " || 'x'",
    "substr(" + Long(126) + ", 1, 126) || char(233) || 'e'",
    Long(1000),
    Long(9000),
};

const char* const kTypes[] = {"", "text", "integer", "blob", "real", "numeric", "boolean", "none"};

std::string AnyColumn(Random& random) {
  return random.OneOf(tav_device::kAppColumns).name;
}

// The apps table again, with columns of any types and without a key.
std::string WithAnyTypes(Random& random) {
  std::string columns;
  for (const auto& column : tav_device::kAppColumns) {
    columns +=
        (columns.empty() ? "" : ", ") + std::string(column.name) + " " + random.OneOf(kTypes);
  }
  return "create table other (" + columns +
         "); insert into other select * from widgetinfo; drop table widgetinfo; "
         "alter table other rename to widgetinfo;";
}

class HostileValues : public HostileDatabase {
 protected:
  void TryWith(const std::string& name, const std::string& sql) {
    Place(good);
    test::Database(file).Run(sql);
    Try(name);
  }

  const std::string good = MakeGoodDatabase(0, file).bytes;
};

TEST_F(HostileValues, AreSurvivedInAnyCells) {
  for (int number = 0; number < Files() && !IsEnough(); ++number) {
    Random random = RandomOf(number);
    std::string sql = "begin; ";
    if (number % 3 == 0) sql += WithAnyTypes(random);
    for (std::size_t cells = 1 + random.Below(60); cells > 0; --cells) {
      sql += "update or ignore widgetinfo set " + AnyColumn(random) + " = " +
             random.OneOf(kValues) + " where rowid % 7 = " + std::to_string(random.Below(7)) + "; ";
    }
    TryWith("number " + std::to_string(number), sql + "commit");
  }
}

TEST_F(HostileValues, AreSurvivedInAWholeTable) {
  int number = 0;
  for (const std::string& value : kValues) {
    if (IsEnough()) break;
    Random random = RandomOf(++number);
    std::string sql = "begin; " + WithAnyTypes(random);
    std::string change;
    for (const auto& column : tav_device::kAppColumns) {
      // What keeps an app from being seen would keep its values from being read.
      const std::string name = column.name;
      if (name == "install_state" || name == "is_app_available" || name == "is_need_reset")
        continue;
      change += (change.empty() ? "" : ", ") + name + " = " + value;
    }
    sql += "update widgetinfo set " + change + "; ";
    TryWith(value, sql + "commit");
  }
}

TEST_F(HostileValues, AreSurvivedInTheConfiguration) {
  for (const std::string& value : kValues) {
    if (IsEnough()) break;
    TryWith(value, "update TAVConfigTable set value = " + value);
    TryWith(value + " as a name",
            "update or ignore TAVConfigTable set name = " + value + " where name > 'RESERVED_2'");
  }
}

TEST_F(HostileValues, AreSurvivedWhenTheyAreAMegabyteLong) {
  const std::string megabyte = Long(1 << 20);
  for (const char* column : {"id", "title", "run_title", "pkgname", "hbbTV", "reserved_string_10",
                             "app_index", "use_count", "install_state", "tavorder"}) {
    TryWith(column, "update widgetinfo set " + std::string(column) + " = " + megabyte +
                        " where id = 'org.example.puzzle-pack'");
  }
  for (const char* name :
       {"EMANUAL_ID", "SYNC_STATE", "RESERVED_15", "RESERVED_16", "RESERVED_27", "RESERVED_37"}) {
    TryWith(name, "update TAVConfigTable set value = " + megabyte + " where name = '" +
                      std::string(name) + "'");
    TryWith(name, "update TAVConfigTable set value = replace(" + megabyte +
                      ", 'LLLL', 'a,:;') where name = '" + std::string(name) + "'");
  }
}

TEST_F(HostileValues, AreSurvivedInThousandsOfRows) {
  TryWith("thousands of apps",
          "with recursive n (i) as (select 1 union all select i + 1 from n where i < 2000) "
          "insert into widgetinfo (id, title, install_state, is_app_available, is_need_reset, "
          "is_hidden, app_index, use_count) select 'app' || i, i, 3, 1, 0, 0, i, i from n");
}

}  // namespace
}  // namespace hostile
