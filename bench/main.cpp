// SPDX-License-Identifier: Apache-2.0
//
// tav_bench [--quick] [--plots=DIRECTORY] [Google Benchmark's options]: measures the library
// against its rivals, and prints a table. The plots' data go into the directory.
// tav_bench --memory: looks up a million records, and prints what the process holds meanwhile.
#include <benchmark/benchmark.h>

#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

#include "report.h"
#include "workloads.h"

namespace {

// Takes an option of this program out of the command line.
bool Take(int& argc, char** argv, const char* option, std::string* value) {
  const std::size_t length = std::strlen(option);
  for (int i = 1; i < argc; ++i) {
    if (std::strncmp(argv[i], option, length) != 0) continue;
    *value = argv[i] + length;
    for (int next = i; next < argc; ++next) argv[next] = argv[next + 1];
    --argc;
    return true;
  }
  return false;
}

// What the process holds of the machine's memory, in KiB.
long Resident() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.rfind("VmRSS:", 0) == 0) return std::stol(line.substr(6));
  }
  throw std::runtime_error("no VmRSS");
}

// Fails when the process grows between the first tenth and the end.
int LookUpAMillion() {
  constexpr int kApps = 10;
  constexpr int kLookups = 1000000;
  bench::Device device;
  device.Fill(kApps);
  long early = 0;
  long last = 0;
  std::cout << "| Lookups | Resident, KiB |\n|---:|---:|\n";
  for (int done = 1; done <= kLookups; ++done) {
    tav_app_info_s info;
    bench::Require(tav_get_app_info(bench::IdOf(done % kApps).c_str(), &info) == 0, "a lookup");
    if (done % (kLookups / 10) != 0) continue;
    last = Resident();
    if (early == 0) early = last;
    std::cout << "| " << done << " | " << last << " |" << std::endl;
  }
  return last > early ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) try {
  std::string ignored;
  std::string plots = ".";
  if (Take(argc, argv, "--memory", &ignored)) return LookUpAMillion();
  const bool is_quick = Take(argc, argv, "--quick", &ignored);
  Take(argc, argv, "--plots=", &plots);
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;

  bench::Device device;
  device.StartService();
  bench::Bare bare(device.DatabaseFile());
  bench::Application application(device.DatabaseFile());
  bench::BusClient bus;
  const bench::Rivals rivals{device, bare, application, bus};
  const auto fill = [&device](int apps) { device.Fill(apps); };
  for (const auto workloads : {bench::LookupWorkloads, bench::ListWorkloads, bench::ExportWorkloads,
                               bench::OtherWorkloads}) {
    for (const bench::Workload& workload : workloads(rivals)) {
      bench::Register(workload, fill, is_quick);
    }
  }
  bench::Report report(plots);
  benchmark::RunSpecifiedBenchmarks(&report);
  benchmark::Shutdown();
  return 0;
} catch (const std::exception& error) {
  std::cerr << "tav_bench: " << error.what() << "\n";
  return 1;
}
