// SPDX-License-Identifier: Apache-2.0
#include "manual/command.h"

#include <CLI/CLI.hpp>
#include <algorithm>

namespace tav_manual {
namespace {

constexpr char kOpenSet[] = "...";
constexpr char kPlainCharacters[] =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_./";

void CheckPlain(const std::string& word, const std::string& where) {
  if (!word.empty() && word.find_first_not_of(kPlainCharacters) == std::string::npos) return;
  throw ManualError(where + " has \"" + word + "\", which a shell would not take as it is");
}

void CheckAscii(const std::string& text, const std::string& where) {
  const bool is_ascii = std::all_of(text.begin(), text.end(),
                                    [](char c) { return c == '\n' || (c >= ' ' && c <= '~'); });
  if (!is_ascii) throw ManualError(where + " is described with more than printable ASCII");
}

void CheckDescribed(const std::string& description, const std::string& where) {
  if (description.empty()) throw ManualError(where + " has no description");
  CheckAscii(description, where);
}

std::vector<std::string> NamesOf(const CLI::Option& option) {
  if (option.get_positional()) return {option.get_name(true, false)};
  std::vector<std::string> names;
  for (const std::string& name : option.get_snames()) names.push_back("-" + name);
  for (const std::string& name : option.get_lnames()) names.push_back("--" + name);
  return names;
}

// What stands for the option's value, or for each of them.
std::vector<std::string> ArgumentsOf(const CLI::Option& option) {
  if (option.get_positional()) return NamesOf(option);
  const std::string& text = option.get_option_text();
  if (!text.empty()) return CLI::detail::split_up(text);
  const std::string type = option.get_type_name();
  if (type.empty()) return {};  // a flag
  return {type.substr(0, type.find(':'))};
}

bool IsSet(const std::string& text) {
  return text.size() > 2 && text.front() == '{' && text.back() == '}';
}

// The set that one of the option's checks tells, or nothing.
std::string SetOf(CLI::Option& option) {
  try {
    for (int i = 0;; ++i) {
      const CLI::Validator& check = *option.get_validator(i);
      for (const std::string& text : {check.get_description(), check.get_name()}) {
        if (IsSet(text)) return text.substr(1, text.size() - 2);
      }
    }
  } catch (const CLI::OptionNotFound&) {  // there are no more
    return "";
  }
}

// The set's options in the order in which they were added: its own is that of their addresses.
std::vector<std::string> FirstNames(const std::set<CLI::Option*>& set,
                                    const std::vector<CLI::Option*>& order) {
  std::vector<std::string> names;
  for (CLI::Option* option : order) {
    if (set.count(option) > 0) names.push_back(NamesOf(*option).front());
  }
  return names;
}

Option ReadOption(CLI::Option& option, const std::vector<CLI::Option*>& all,
                  const std::string& path) {
  Option read;
  read.names = NamesOf(option);
  const std::string where = path + " " + read.names.back();
  for (const std::string& name : read.names) CheckPlain(name, path);
  read.description = option.get_description();
  CheckDescribed(read.description, where);
  read.arguments = ArgumentsOf(option);
  for (const std::string& argument : read.arguments) CheckAscii(argument, where);
  const std::string set = SetOf(option);
  if (!set.empty()) read.values = CLI::detail::split(set, ',');
  if (!read.values.empty() && read.values.back() == kOpenSet) {
    read.values.pop_back();
    read.has_other_values = true;
  }
  for (const std::string& value : read.values) CheckPlain(value, where);
  read.is_required = option.get_required();
  read.is_repeatable = option.get_expected_max() > 1 ||
                       option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
  read.needed = FirstNames(option.get_needs(), all);
  read.excluded = FirstNames(option.get_excludes(), all);
  return read;
}

// A command that has none of its own shows that of the command above it.
std::string OwnFooter(const CLI::App& app) {
  const CLI::App* above = app.get_parent();
  std::string footer = app.get_footer();
  return above != nullptr && above->get_footer() == footer ? "" : footer;
}

Command ReadBelow(CLI::App& app, const std::string& above) {
  Command command;
  command.name = app.get_name();
  command.path = above.empty() ? command.name : above + " " + command.name;
  CheckPlain(command.name, "a command");
  command.description = app.get_description();
  CheckDescribed(command.description, command.path);
  command.footer = OwnFooter(app);
  CheckAscii(command.footer, command.path);

  const std::vector<CLI::Option*> all = app.get_options();
  for (CLI::Option* option : all) {
    if (option->get_group().empty()) continue;  // hidden from --help as well
    auto& list = option->get_positional() ? command.arguments : command.options;
    list.push_back(ReadOption(*option, all, command.path));
  }
  for (CLI::App* subcommand : app.get_subcommands([](CLI::App*) { return true; })) {
    if (subcommand->get_group().empty()) continue;
    command.commands.push_back(ReadBelow(*subcommand, command.path));
  }
  return command;
}

}  // namespace

Command ReadCommand(CLI::App& app) {
  return ReadBelow(app, "");
}

}  // namespace tav_manual
