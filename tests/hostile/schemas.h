// SPDX-License-Identifier: Apache-2.0
//
// What could stand in the place of the service's two tables.
#ifndef TESTS_HOSTILE_SCHEMAS_H_
#define TESTS_HOSTILE_SCHEMAS_H_

#include <string>
#include <vector>

namespace hostile {

struct Schema {
  std::string name;
  std::string sql;       // run on a good database
  bool is_good = false;  // every call must be answered all the same
};

// Those that this SQLite can make.
std::vector<Schema> Schemas();

}  // namespace hostile

#endif  // TESTS_HOSTILE_SCHEMAS_H_
