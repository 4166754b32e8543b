// SPDX-License-Identifier: Apache-2.0
//
// instructions: a few calls of the library and of its floor, each collected by callgrind as a
// part of its own; for scripts/check perf, which compares their numbers of instructions.
#include <app_control.h>
#include <valgrind/callgrind.h>

#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <stdexcept>
#include <string>

#include "bare.h"
#include "device.h"

namespace {

constexpr int kApps = 200;
constexpr int kCalls = 5;
constexpr tav_app_filter_s kEveryApp = {65535, 65535, 65535};

// The name is that of the part: "<workload>/<who>".
void Collect(const char* name, const std::function<int()>& call) {
  if (call() != 0) throw std::runtime_error(std::string(name) + " fails");
  CALLGRIND_START_INSTRUMENTATION;
  CALLGRIND_ZERO_STATS;
  for (int i = 0; i < kCalls; ++i) call();
  CALLGRIND_STOP_INSTRUMENTATION;
  CALLGRIND_DUMP_STATS_AT(name);
}

}  // namespace

int main() try {
  bench::Device device;
  device.Fill(kApps);
  bench::Bare bare(device.DatabaseFile());
  const std::string id = bench::IdOf(kApps / 2);

  tav_app_info_s info;
  Collect("lookup/library", [&] { return tav_get_app_info(id.c_str(), &info); });
  Collect("lookup/bare", [&] { return bare.Lookup(id.c_str(), &info); });

  Collect("list/library", [] {
    tav_app_info_s* list = nullptr;
    int count = 0;
    const int result = tav_get_app_list(kEveryApp, TAV_APP_VIEWMODE_CATALOGUE, 0, 0, &list, &count);
    free(list);
    return result;
  });
  Collect("list/bare", [&] {
    tav_app_info_s* list = nullptr;
    int count = 0;
    const int result = bare.List(0, 0, &list, &count);
    free(list);
    return result;
  });

  app_control_h request = nullptr;
  app_control_create(&request);
  app_control_add_extra_data(request, "all_app", "true");
  Collect("json/library", [&] {
    char* json = nullptr;
    const int result = tav_get_app_list_json(request, &json);
    free(json);
    return result;
  });
  Collect("json/bare", [&] {
    char* json = nullptr;
    const int result = bare.ListJson(&json);
    free(json);
    return result;
  });
  app_control_destroy(request);
  return 0;
} catch (const std::exception& error) {
  std::cerr << "instructions: " << error.what() << "\n";
  return 1;
}
