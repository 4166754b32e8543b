// SPDX-License-Identifier: Apache-2.0
#include "report.h"

#include <cstdio>
#include <fstream>
#include <iostream>

#include "rounds.h"

namespace bench {
namespace {

constexpr const char* kRivals[] = {kBare, kSqliteCpp, kBus, "one thread"};
constexpr char kListName[] = "list of ";

double Counter(const benchmark::BenchmarkReporter::Run& run, const std::string& name,
               double missing = -1) {
  const auto found = run.counters.find(name);
  return found == run.counters.end() ? missing : found->second.value;
}

std::string Name(const benchmark::BenchmarkReporter::Run& run) {
  return run.run_name.function_name;
}

std::string Number(double value, int digits) {
  char text[32];
  std::snprintf(text, sizeof text, "%.*f", digits, value);
  return text;
}

std::string RatioCell(const benchmark::BenchmarkReporter::Run& run, const std::string& rival) {
  const double ratio = Counter(run, "ratio " + rival);
  if (ratio < 0) return "";
  return Number(ratio, 2) + " (" + Number(Counter(run, "low " + rival), 2) + "–" +
         Number(Counter(run, "high " + rival), 2) + ")";
}

}  // namespace

bool Report::ReportContext(const Context&) {
  return true;
}

void Report::ReportRuns(const std::vector<Run>& report) {
  for (const Run& run : report) {
    if (run.error_occurred) {
      std::cerr << run.benchmark_name() << ": " << run.error_message << "\n";
      continue;
    }
    std::cerr << "  " << Name(run) << "\n";
    m_runs.push_back(run);
  }
}

void Report::Finalize() {
  PrintTable();
  WriteSizes();
  WriteRatios();
}

void Report::PrintTable() {
  std::cout << "\nThe library's time, and over its rivals': the median of the paired rounds, and "
               "in brackets\nthe quartiles. Below 1 the library is ahead.\n\n"
            << "| Workload | Library, µs |";
  for (const char* rival : kRivals) std::cout << " over " << rival << " |";
  std::cout << "\n|---|---:|";
  for (std::size_t i = 0; i < std::size(kRivals); ++i) std::cout << "---|";
  std::cout << "\n";
  for (const Run& run : m_runs) {
    std::cout << "| " << Name(run) << " | "
              << Number(Counter(run, std::string("us ") + kLibrary), 1) << " |";
    for (const char* rival : kRivals) std::cout << " " << RatioCell(run, rival) << " |";
    std::cout << "\n";
  }

  std::cout << "\n| List of | Library, µs an app |";
  for (const char* rival : {kBare, kSqliteCpp, kBus}) std::cout << " " << rival << ", µs an app |";
  std::cout << "\n|---:|---:|---:|---:|---:|\n";
  for (const Run& run : m_runs) {
    if (Name(run).rfind(kListName, 0) != 0) continue;
    const double apps = Counter(run, "apps");
    std::cout << "| " << apps << " |";
    for (const char* rival : {kLibrary, kBare, kSqliteCpp, kBus}) {
      std::cout << " " << Number(Counter(run, std::string("us ") + rival) / apps, 2) << " |";
    }
    std::cout << "\n";
  }
}

// Columns: apps, and the milliseconds of each.
void Report::WriteSizes() const {
  std::ofstream file(m_directory + "/sizes.dat");
  for (const Run& run : m_runs) {
    if (Name(run).rfind(kListName, 0) != 0) continue;
    file << Counter(run, "apps");
    for (const char* rival : {kLibrary, kBare, kSqliteCpp, kBus}) {
      file << "\t" << Counter(run, std::string("us ") + rival) / 1000;
    }
    file << "\n";
  }
}

// Columns: workload, ratio, lower and upper quartile; over bare SQLite.
void Report::WriteRatios() const {
  std::ofstream file(m_directory + "/ratios.dat");
  for (const Run& run : m_runs) {
    const std::string bare = kBare;
    if (Counter(run, "ratio " + bare) < 0) continue;
    file << '"' << Name(run) << "\"\t" << Counter(run, "ratio " + bare) << "\t"
         << Counter(run, "low " + bare) << "\t" << Counter(run, "high " + bare) << "\n";
  }
}

}  // namespace bench
