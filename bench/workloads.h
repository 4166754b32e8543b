// SPDX-License-Identifier: Apache-2.0
//
// What is measured.
#ifndef BENCH_WORKLOADS_H_
#define BENCH_WORKLOADS_H_

#include <vector>

#include "application.h"
#include "bare.h"
#include "bus.h"
#include "device.h"
#include "rounds.h"

namespace bench {

struct Rivals {
  Device& device;
  Bare& bare;
  Application& application;
  BusClient& bus;
};

// Each throws when a rival's answer is not the library's.
std::vector<Workload> LookupWorkloads(const Rivals& rivals);
std::vector<Workload> ListWorkloads(const Rivals& rivals);
std::vector<Workload> ExportWorkloads(const Rivals& rivals);
std::vector<Workload> OtherWorkloads(const Rivals& rivals);

// What an answer must be for the measurement to mean anything.
void Require(bool condition, const char* what);

}  // namespace bench

#endif  // BENCH_WORKLOADS_H_
