// SPDX-License-Identifier: Apache-2.0
#include "hostile/good.h"

#include "device/database.h"
#include "hostile/trial.h"
#include "support/database.h"

namespace hostile {
namespace {

struct Shape {
  const char* name;
  const char* before;  // the apps are written
  const char* behind;
};

// The first table of a file settles what the pragmas before it have asked for.
#define TAV_SETTLE "; create table first (x); drop table first"

constexpr Shape kEveryShape[] = {
    {"plain", "", ""},
    {"pages of 512 bytes", "pragma page_size = 512" TAV_SETTLE, ""},
    {"pages of 1024 bytes", "pragma page_size = 1024" TAV_SETTLE, ""},
    {"pages of 65536 bytes", "pragma page_size = 65536" TAV_SETTLE, ""},
    {"auto_vacuum full", "pragma auto_vacuum = full" TAV_SETTLE, ""},
    {"auto_vacuum incremental",
     "pragma auto_vacuum = incremental; pragma page_size = 512" TAV_SETTLE, ""},
    {"UTF-16, low byte first", "pragma encoding = 'UTF-16le'" TAV_SETTLE, ""},
    {"UTF-16, high byte first", "pragma encoding = 'UTF-16be'" TAV_SETTLE, ""},
    {"another application's", "", "pragma application_id = -2; pragma user_version = 2147483647"},
    {"old format", "pragma legacy_file_format = on" TAV_SETTLE, ""},
    {"with indexes", "",
     "create index a on widgetinfo (app_index);"
     "create index b on widgetinfo (title collate nocase);"
     "create index c on widgetinfo (use_count desc, id);"
     "create index d on widgetinfo (is_app_available, install_state, is_need_reset); analyze"},
    {"with free pages", "create table first (x); insert into first values (zeroblob(200000))",
     "drop table first"},
};

static_assert(sizeof(kEveryShape) / sizeof(Shape) == kShapes);

}  // namespace

GoodDatabase MakeGoodDatabase(int shape, const std::filesystem::path& file) {
  const Shape& made = kEveryShape[shape];
  std::filesystem::remove(file);
  test::Database(file).Run(made.before);
  tav_device::WriteDatabase(file, tav_device::ReadSeedFile(DEFAULT_SEED));
  {
    test::Database database(file);
    // What the platform itself would answer, were it there.
    database.Run(
        "insert or replace into TAVConfigTable values ('EMANUAL_ID', 'org.example.guide')");
    database.Run(made.behind);
  }
  const std::string bytes = BytesOf(file);
  std::filesystem::remove(file);
  return {made.name, bytes};
}

std::vector<GoodDatabase> GoodDatabases(const std::filesystem::path& file) {
  std::vector<GoodDatabase> databases;
  for (int shape = 0; shape < kShapes; ++shape) databases.push_back(MakeGoodDatabase(shape, file));
  return databases;
}

}  // namespace hostile
