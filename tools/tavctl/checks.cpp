// SPDX-License-Identifier: Apache-2.0
//
// What the subcommands check of their arguments and of the library's results.
#include <string>

#include "commands.h"
#include "output.h"

std::string CheckWholeNumber(const std::string& text) {
  const std::size_t start = text.rfind('-', 0) == 0 ? 1 : 0;
  const bool is_number = text.size() > start &&
                         text.find_first_not_of("0123456789", start) == std::string::npos &&
                         (text[start] != '0' || text.size() == start + 1);
  return is_number ? "" : "\"" + Printable(text) + "\" is not a whole number";
}

void CheckResult(tav::Status status, const std::string& refusal) {
  if (status == tav::Status::kOk) return;
  if (status == tav::Status::kBusy) throw CommandError(kBusy, "the database stayed busy");
  throw CommandError(kRefused, refusal + ", or the call was refused; the platform log says why");
}

void CheckFound(tav::Status status, const std::string& kind, const std::string& key) {
  CheckResult(status, "no app with the " + kind + " \"" + Printable(key) + "\" was found");
}
