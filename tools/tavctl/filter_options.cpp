// SPDX-License-Identifier: Apache-2.0
//
// The options that choose which apps are listed or counted.
#include "filter_options.h"

#include <CLI/CLI.hpp>

#include "commands.h"

namespace {

// What a set is to people, in messages; an enumeration to the program.
constexpr char kNumber[] = "INT";

}  // namespace

std::vector<CLI::Option*> AddFilterOptions(CLI::App& command, tav::Filter& filter) {
  return {
      command
          .add_option(
              "--featured", filter.featured,
              "Only apps with one of these kinds, the sum of some of 1, 2, 4 and 8; 3 takes "
              "8 as well (default: 65535, all)")
          ->type_name(kNumber)
          ->option_text("N")
          ->check(CheckWholeNumber),
      command
          .add_option("--type", filter.app_types,
                      "Only apps of these types, 2, 4 or 6 for both (default: 65535, all)")
          ->type_name(kNumber)
          ->option_text("N")
          ->check(CheckWholeNumber),
  };
}
