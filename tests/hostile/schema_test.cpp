// SPDX-License-Identifier: Apache-2.0
//
// Sound databases whose tables are not what the service makes.
#include "device/schema.h"
#include "hostile/good.h"
#include "hostile/schemas.h"
#include "hostile/trial.h"
#include "support/database.h"

namespace hostile {
namespace {

class HostileSchema : public HostileDatabase {
 protected:
  Outcome TryWith(const std::string& name, const std::string& bytes, const std::string& sql) {
    Place(bytes);
    try {
      test::Database(file).Run(sql);
    } catch (const std::exception& error) {
      ADD_FAILURE() << name << ": " << error.what();
    }
    return Try(name);
  }
};

class HostileSchemaOfAShape : public HostileSchema, public ::testing::WithParamInterface<int> {};

TEST_P(HostileSchemaOfAShape, IsSurvivedWhateverItIs) {
  const GoodDatabase good = MakeGoodDatabase(GetParam(), file);
  for (const Schema& schema : Schemas()) {
    if (IsEnough()) return;
    const Outcome outcome = TryWith(good.shape + ", " + schema.name, good.bytes, schema.sql);
    if (schema.is_good) {
      EXPECT_EQ(outcome.failed, std::vector<std::string>()) << good.shape << ", " << schema.name;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EveryShape, HostileSchemaOfAShape, ::testing::Range(0, kShapes));

TEST_F(HostileSchema, IsSurvivedWithoutAnyOneOfTheColumns) {
  const std::string good = MakeGoodDatabase(0, file).bytes;
  for (const auto& column : tav_device::kAppColumns) {
    if (IsEnough()) return;
    const std::string name = column.name;
    // The key cannot be dropped, but renamed.
    const Outcome outcome =
        TryWith("without " + name, good,
                name == "id" ? "alter table widgetinfo rename column id to another"
                             : "alter table widgetinfo drop column " + name);
    EXPECT_FALSE(outcome.failed.empty()) << name;
    EXPECT_GT(outcome.answered, 0) << name;  // the configuration, at least
  }
}

TEST_F(HostileSchema, IsSurvivedInAnotherOrderOfTheColumns) {
  const std::string good = MakeGoodDatabase(0, file).bytes;
  for (int number = 0; number < Files() / 5 && !IsEnough(); ++number) {
    Random random = RandomOf(number);
    std::vector<std::string> columns;
    for (const auto& column : tav_device::kAppColumns) {
      const auto place = random.Below(columns.size() + 1);
      columns.insert(columns.begin() + static_cast<std::ptrdiff_t>(place), column.name);
    }
    std::string list;
    for (const std::string& column : columns) list += (list.empty() ? "" : ", ") + column;
    EXPECT_EQ(TryWith("number " + std::to_string(number), good,
                      "create table other as select " + list +
                          " from widgetinfo; drop table widgetinfo; "
                          "alter table other rename to widgetinfo")
                  .failed,
              std::vector<std::string>());
  }
}

}  // namespace
}  // namespace hostile
