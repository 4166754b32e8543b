// SPDX-License-Identifier: Apache-2.0
//
// The completion for zsh: a function for each command, on zsh's own _arguments.
#include <algorithm>
#include <sstream>

#include "manual/text.h"
#include "manual/writers.h"

namespace tav_manual {
namespace {

// A function is named after its command: "_tavctl_export_json".
std::string FunctionOf(const Command& command) {
  std::string name = "_" + command.path;
  std::replace(name.begin(), name.end(), ' ', '_');
  return name;
}

// Puts a backslash before what would end a part of an entry.
std::string EscapedEntry(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    if (std::string_view("\\:[]").find(c) != std::string_view::npos) escaped += '\\';
    escaped += c;
  }
  return escaped;
}

// What _arguments is told of a value: its name, and what it may be.
std::string ValueOf(const std::string& name, const Option& option) {
  const std::string action = option.values.empty() ? " " : "(" + Joined(option.values) + ")";
  return ":" + EscapedEntry(name) + ":" + action;
}

// Whether nothing else is looked at beside the option.
bool IsTheWhole(const Option& option) {
  return option.names.back() == "--help" || option.names.back() == "--version";
}

std::string OptionEntry(const Option& option) {
  std::vector<std::string> others = option.excluded;
  if (!option.is_repeatable) others.insert(others.end(), option.names.begin(), option.names.end());
  if (IsTheWhole(option)) others = {"-", ":", "*"};
  std::string before;
  if (!others.empty()) before = "(" + Joined(others) + ")";
  if (option.is_repeatable) before += "*";
  std::string after = "[" + EscapedEntry(option.description) + "]";
  for (const std::string& argument : option.arguments) after += ValueOf(argument, option);

  std::string entries;
  for (const std::string& name : option.names) {
    const bool takes_equals = !option.arguments.empty() && name.rfind("--", 0) == 0;
    std::string entry = before;
    entry.append(name).append(takes_equals ? "=" : "").append(after);
    entries += " \\\n    " + Quoted(entry);
  }
  return entries;
}

void WriteArguments(const Command& command, std::ostream& out) {
  for (const Option& option : command.options) out << OptionEntry(option);
  for (std::size_t i = 0; i < command.arguments.size(); ++i) {
    const Option& argument = command.arguments[i];
    const std::string place = argument.is_repeatable ? "*" : std::to_string(i + 1);
    // A second colon says that it may be left out.
    const std::string optional = argument.is_required || argument.is_repeatable ? "" : ":";
    out << " \\\n    " << Quoted(place + optional + ValueOf(argument.names.front(), argument));
  }
}

void WriteFunctions(const Command& command, std::ostream& out) {
  for (const Command& below : command.commands) WriteFunctions(below, out);
  out << FunctionOf(command) << "() {\n";
  if (command.commands.empty()) {
    out << "  _arguments";
    WriteArguments(command, out);
    out << "\n}\n\n";
    return;
  }
  out << "  local curcontext=$curcontext state line\n"
      << "  local -A opt_args\n"
      << "  _arguments -C";
  WriteArguments(command, out);
  out << " \\\n    '1: :->command' \\\n    '*:: :->rest' && return\n"
      << "  case $state in\n"
      << "    command)\n"
      << "      local -a commands=(\n";
  for (const Command& below : command.commands) {
    out << "        " << Quoted(below.name + ":" + EscapedEntry(below.description)) << "\n";
  }
  out << "      )\n"
      << "      _describe -t commands command commands\n"
      << "      ;;\n"
      << "    rest)\n"
      << "      curcontext=${curcontext%:*:*}:" << command.name << "-$line[1]:\n"
      << "      case $line[1] in\n";
  for (const Command& below : command.commands) {
    out << "        " << below.name << ") " << FunctionOf(below) << " ;;\n";
  }
  out << "      esac\n"
      << "      ;;\n"
      << "  esac\n"
      << "}\n\n";
}

}  // namespace

std::string ZshCompletion(const Command& command) {
  std::ostringstream out;
  out << "#compdef " << command.name << "\n"
      << "# Made from the program's own options.\n\n";
  WriteFunctions(command, out);
  out << FunctionOf(command) << " \"$@\"\n";
  return out.str();
}

}  // namespace tav_manual
