// SPDX-License-Identifier: Apache-2.0
//
// A command line as plain records, read from CLI11's tree: what the writers walk.
#ifndef TOOLS_MANUAL_COMMAND_H_
#define TOOLS_MANUAL_COMMAND_H_

#include <stdexcept>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tav_manual {

// A command line that nothing can be made of.
class ManualError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct Option {
  std::vector<std::string> names;  // "-h", "--help"; or the one name of an argument
  std::string description;
  std::vector<std::string> arguments;  // what follows the name; nothing for a flag
  std::vector<std::string> values;     // what an argument may be, when that is a set
  bool has_other_values = false;       // whether the set is open
  bool is_required = false;
  bool is_repeatable = false;
  std::vector<std::string> needed;    // the first names of other options
  std::vector<std::string> excluded;  // likewise
};

struct Command {
  std::string name;
  std::string path;  // the names of the commands above it and its own
  std::string description;
  std::string footer;
  std::vector<Option> options;
  std::vector<Option> arguments;
  std::vector<Command> commands;
};

// Reads what --help shows. Throws when a part of it has no description, or a character that the
// shells or the page give another meaning.
Command ReadCommand(CLI::App& app);

}  // namespace tav_manual

#endif  // TOOLS_MANUAL_COMMAND_H_
