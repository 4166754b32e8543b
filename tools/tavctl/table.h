// SPDX-License-Identifier: Apache-2.0
//
// Rows for people, as an aligned table, and for programs, as comma-separated values. A row is a
// JSON object; columns pick from it by name.
#ifndef TOOLS_TAVCTL_TABLE_H_
#define TOOLS_TAVCTL_TABLE_H_

#include <json/value.h>

#include <cstddef>
#include <string>
#include <vector>

enum class Shown {
  kText,
  kNumber,  // aligned at its right end
  kFlag,    // yes or no
};

struct TableColumn {
  const char* heading;
  const char* field;
  Shown shown = Shown::kText;
  std::size_t widest =
      0;  // in terminal columns: where a terminal's reader sees a text cut; 0: never
};

// Writes a line of headings and one line for each row to standard output.
void PrintTable(const std::vector<TableColumn>& columns, const Json::Value& rows);

// Writes RFC 4180 to standard output: a line of the names, one record for each row, lines end in
// CR LF. Texts are not escaped for a terminal.
void PrintCsv(const std::vector<std::string>& names, const Json::Value& rows);

#endif  // TOOLS_TAVCTL_TABLE_H_
