// SPDX-License-Identifier: Apache-2.0
//
// The completion for bash: one function that finds the command and the option that the words
// before the cursor lead to, and offers what may follow. It needs nothing but bash.
#include <map>
#include <sstream>

#include "manual/text.h"
#include "manual/writers.h"

namespace tav_manual {
namespace {

// The patterns and the words of the function's case statements.
struct Cases {
  std::vector<std::string> commands;                            // "tavctl export json"
  std::map<std::size_t, std::vector<std::string>> with_values;  // "tavctl list --view", by number
  std::vector<std::pair<std::string, std::string>> values;      // "tavctl list --view": its set
  std::vector<std::pair<std::string, std::string>> options;     // "tavctl list": its options
  std::vector<std::pair<std::string, std::string>> arguments;   // "tavctl watch 0": its set
};

void Gather(const Command& command, Cases& cases) {
  std::string options;
  for (const Option& option : command.options) {
    options += (options.empty() ? "" : " ") + Joined(option.names);
    for (const std::string& name : option.names) {
      const std::string pattern = command.path + " " + name;
      if (!option.arguments.empty()) {
        cases.with_values[option.arguments.size()].push_back(Quoted(pattern));
      }
      if (!option.values.empty()) {
        cases.values.emplace_back(Quoted(pattern), Joined(option.values));
      }
    }
  }
  cases.options.emplace_back(Quoted(command.path), options);

  for (std::size_t i = 0; i < command.arguments.size(); ++i) {
    const Option& argument = command.arguments[i];
    if (argument.values.empty()) continue;
    const std::string pattern = argument.is_repeatable
                                    ? Quoted(command.path + " ") + "*"
                                    : Quoted(command.path + " " + std::to_string(i));
    cases.arguments.emplace_back(pattern, Joined(argument.values));
  }

  std::vector<std::string> names;
  for (const Command& below : command.commands) {
    names.push_back(below.name);
    cases.commands.push_back(Quoted(below.path));
    Gather(below, cases);
  }
  if (!names.empty()) cases.arguments.emplace_back(Quoted(command.path + " 0"), Joined(names));
}

std::string Alternatives(const std::vector<std::string>& patterns) {
  std::string joined;
  for (const std::string& pattern : patterns) joined += (joined.empty() ? "" : " | ") + pattern;
  return joined;
}

void WriteWords(const std::vector<std::pair<std::string, std::string>>& cases, std::ostream& out) {
  for (const auto& [pattern, words] : cases) {
    out << "      " << pattern << ") words='" << words << "' ;;\n";
  }
}

}  // namespace

std::string BashCompletion(const Command& command) {
  Cases cases;
  Gather(command, cases);
  const std::string function = "_" + command.name;
  std::ostringstream out;
  out << "# bash completion for " << command.name << ", made from the program's own options\n"
      << function << "() {\n"
      << "  local cur=${COMP_WORDS[COMP_CWORD]} path=" << command.name
      << " option='' word words='' prefix=''\n"
      << "  local -i i pending=0 position=0\n"
      << "  for ((i = 1; i < COMP_CWORD; i++)); do\n"
      << "    word=${COMP_WORDS[i]}\n"
      << "    [[ $word == = ]] && continue  # between an option and its value\n"
      << "    if ((pending > 0)); then\n"
      << "      pending+=-1\n"
      << "      continue\n"
      << "    fi\n"
      << "    case \"$path $word\" in\n";
  if (!cases.commands.empty()) {
    out << "      " << Alternatives(cases.commands) << ") path+=\" $word\" position=0 ;;\n";
  }
  for (const auto& [count, patterns] : cases.with_values) {
    out << "      " << Alternatives(patterns) << ") option=$word pending=" << count << " ;;\n";
  }
  out << "      *' -'*) ;;\n"
      << "      *) position+=1 ;;\n"
      << "    esac\n"
      << "  done\n"
      << "  [[ $cur == = ]] && cur=''\n"
      << "  if ((pending == 0)) && [[ $cur == --*=* ]]; then  # where = does not break words\n"
      << "    option=${cur%%=*} prefix=${cur%%=*}= cur=${cur#*=} pending=1\n"
      << "  fi\n"
      << "  if ((pending > 0)); then\n"
      << "    case \"$path $option\" in\n";
  WriteWords(cases.values, out);
  out << "    esac\n"
      << "  elif [[ $cur == -* ]]; then\n"
      << "    case $path in\n";
  WriteWords(cases.options, out);
  out << "    esac\n"
      << "  else\n"
      << "    case \"$path $position\" in\n";
  WriteWords(cases.arguments, out);
  out << "    esac\n"
      << "  fi\n"
      << "  mapfile -t COMPREPLY < <(compgen -P \"$prefix\" -W \"$words\" -- \"$cur\")\n"
      << "}\n"
      << "complete -F " << function << " " << command.name << "\n";
  return out.str();
}

}  // namespace tav_manual
