// SPDX-License-Identifier: Apache-2.0
//
// SQLite as the library calls it: an executable that links this hears every statement, value
// and release, and can act between two statements.
#ifndef TESTS_SUPPORT_SQLITE_RECORDER_H_
#define TESTS_SUPPORT_SQLITE_RECORDER_H_

#include <functional>
#include <string>
#include <vector>

namespace test {

// One text for each call: "open <flags>", the SQL of a preparation, "<parameter> <value>" of a
// binding (texts in quotes, with their length and " copied" when SQLite copies), "finalize".
using SqliteCalls = std::vector<std::string>;

// How every statement begins that reads whole apps.
extern const char kSelectApps[];

// The calls that body makes; SQLite's calls of itself are left out.
SqliteCalls CallsToSqlite(const std::function<void()>& body);

// Runs action once, before the next preparation of a statement that begins with this text.
void BeforePreparing(const std::string& beginning, std::function<void()> action);

}  // namespace test

#endif  // TESTS_SUPPORT_SQLITE_RECORDER_H_
