// SPDX-License-Identifier: Apache-2.0
//
// The table of ratios, and the points of the plots.
#ifndef BENCH_REPORT_H_
#define BENCH_REPORT_H_

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace bench {

// Collects the workloads and prints them as one Markdown table at the end. Into the directory go
// the data files that the plots are made from.
class Report : public benchmark::BenchmarkReporter {
 public:
  explicit Report(std::string directory) : m_directory(std::move(directory)) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& report) override;
  void Finalize() override;

 private:
  void PrintTable();
  void WriteSizes() const;
  void WriteRatios() const;

  std::string m_directory;
  std::vector<Run> m_runs;
};

}  // namespace bench

#endif  // BENCH_REPORT_H_
