// SPDX-License-Identifier: Apache-2.0
//
// For benchmarks only, and only with --benchmark: the records as dictionaries over the bus, the
// way in which an application would read them if there were no library.
#ifndef TOOLS_TAVCORE_SIM_BENCHMARK_H_
#define TOOLS_TAVCORE_SIM_BENCHMARK_H_

#include <gio/gio.h>

#include <string>

#include "device/handles.h"

namespace tavcore {

class Benchmark {
 public:
  static const char* Introspection();

  // Answers a call of the benchmark interface; takes the invocation.
  void Answer(const std::string& method, GVariant* parameters, GDBusMethodInvocation* invocation);

 private:
  // Opened by the first call and kept, unlike the connections of the changes.
  sqlite3* Database();

  tav_device::DatabaseHandle m_database;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_BENCHMARK_H_
