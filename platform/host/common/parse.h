// SPDX-License-Identifier: Apache-2.0
// Numbers as a person writes them into the device's files.
#ifndef TAV_HOST_PARSE_H_
#define TAV_HOST_PARSE_H_

#include <optional>
#include <string>

namespace tav_host {

// A decimal number of int's range, with or without a sign and blanks around it; nothing else.
std::optional<int> ParseInt(const std::string& text);

}  // namespace tav_host

#endif  // TAV_HOST_PARSE_H_
