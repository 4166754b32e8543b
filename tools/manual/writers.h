// SPDX-License-Identifier: Apache-2.0
//
// What is made of a command line.
#ifndef TOOLS_MANUAL_WRITERS_H_
#define TOOLS_MANUAL_WRITERS_H_

#include <string>

#include "manual/command.h"
#include "manual/program.h"

namespace tav_manual {

// The manual page of section 1, in man(7). The date is "2026-11-21".
std::string ManualPage(const Program& program, const Command& command, const std::string& date);

// For share/bash-completion/completions.
std::string BashCompletion(const Command& command);

// For share/zsh/site-functions.
std::string ZshCompletion(const Command& command);

}  // namespace tav_manual

#endif  // TOOLS_MANUAL_WRITERS_H_
