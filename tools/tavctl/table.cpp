// SPDX-License-Identifier: Apache-2.0
//
// The aligned table and the comma-separated values.
#include "table.h"

#include <unistd.h>

#include <algorithm>
#include <iostream>

#include "output.h"

namespace {

constexpr char kGap[] = "  ";
constexpr char kEndOfRecord[] = "\r\n";

using Line = std::vector<std::string>;

std::string CellOf(const TableColumn& column, const Json::Value& row, bool is_terminal) {
  const Json::Value& value = row[column.field];
  if (column.shown == Shown::kFlag) return YesOrNo(value.asInt() != 0);
  const std::string text = Printable(value.asString());
  return is_terminal && column.widest > 0 ? CutToWidth(text, column.widest) : text;
}

std::string Laid(const std::string& cell, std::size_t width, Shown shown) {
  const std::string blanks(width - TerminalWidth(cell), ' ');
  return shown == Shown::kNumber ? blanks + cell : cell + blanks;
}

// Blanks at the end of a line would only wrap it earlier.
std::string WithoutBlanksAtEnd(const std::string& line) {
  return line.substr(0, line.find_last_not_of(' ') + 1);
}

std::string CsvCell(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"') quoted += '"';
    quoted += c;
  }
  return quoted + "\"";
}

template <typename Cells, typename TextOf>
void PrintCsvRecord(const Cells& cells, TextOf text_of) {
  const char* separator = "";
  for (const auto& cell : cells) {
    std::cout << separator << CsvCell(text_of(cell));
    separator = ",";
  }
  std::cout << kEndOfRecord;
}

}  // namespace

void PrintTable(const std::vector<TableColumn>& columns, const Json::Value& rows) {
  const bool is_terminal = isatty(STDOUT_FILENO) == 1;
  std::vector<Line> lines(1);
  for (const TableColumn& column : columns) lines[0].emplace_back(column.heading);
  for (const Json::Value& row : rows) {
    Line& line = lines.emplace_back();
    for (const TableColumn& column : columns) line.push_back(CellOf(column, row, is_terminal));
  }

  std::vector<std::size_t> widths(columns.size());
  for (const Line& line : lines) {
    for (std::size_t i = 0; i < line.size(); ++i) {
      widths[i] = std::max(widths[i], TerminalWidth(line[i]));
    }
  }
  for (const Line& line : lines) {
    std::string text;
    for (std::size_t i = 0; i < line.size(); ++i) {
      if (i > 0) text += kGap;
      text += Laid(line[i], widths[i], columns[i].shown);
    }
    std::cout << WithoutBlanksAtEnd(text) << "\n";
  }
}

void PrintCsv(const std::vector<std::string>& names, const Json::Value& rows) {
  PrintCsvRecord(names, [](const std::string& name) { return name; });
  for (const Json::Value& row : rows) {
    PrintCsvRecord(names, [&](const std::string& name) { return row[name].asString(); });
  }
}
