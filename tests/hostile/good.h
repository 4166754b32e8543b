// SPDX-License-Identifier: Apache-2.0
//
// Good databases of a device, in the shapes that SQLite knows. What is hostile starts from them.
#ifndef TESTS_HOSTILE_GOOD_H_
#define TESTS_HOSTILE_GOOD_H_

#include <filesystem>
#include <string>
#include <vector>

namespace hostile {

struct GoodDatabase {
  std::string shape;
  std::string bytes;
};

inline constexpr int kShapes = 12;

// The apps and the configuration of the default seed, with what the database alone has to
// answer, in one of the shapes; 0 is the plain one. Writes and removes the file.
GoodDatabase MakeGoodDatabase(int shape, const std::filesystem::path& file);

// All of them.
std::vector<GoodDatabase> GoodDatabases(const std::filesystem::path& file);

}  // namespace hostile

#endif  // TESTS_HOSTILE_GOOD_H_
