// SPDX-License-Identifier: Apache-2.0
//
// The options that choose which apps are listed or counted.
#ifndef TOOLS_TAVCTL_FILTER_OPTIONS_H_
#define TOOLS_TAVCTL_FILTER_OPTIONS_H_

#include <vector>

#include "tav_db_api.hpp"

namespace CLI {
class App;
class Option;
}  // namespace CLI

// Adds --featured and --type, which are stored in the filter, and returns them. Without them the
// filter lets every visible app through.
std::vector<CLI::Option*> AddFilterOptions(CLI::App& command, tav::Filter& filter);

#endif  // TOOLS_TAVCTL_FILTER_OPTIONS_H_
