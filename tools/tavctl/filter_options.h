// SPDX-License-Identifier: Apache-2.0
//
// The options that choose which apps are listed or counted.
#ifndef TOOLS_TAVCTL_FILTER_OPTIONS_H_
#define TOOLS_TAVCTL_FILTER_OPTIONS_H_

#include <vector>

#include "tav_db_api.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

// What a filter's set is when every app passes.
inline constexpr int kEveryApp = 65535;

// Adds --featured and --type, which are stored in the filter, and returns them. Without them the
// filter lets every visible app through.
std::vector<CLI::Option*> AddFilterOptions(CLI::App& command, tav_app_filter_s& filter);

#endif  // TOOLS_TAVCTL_FILTER_OPTIONS_H_
