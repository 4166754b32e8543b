// SPDX-License-Identifier: Apache-2.0
//
// What a mistyped name may have been meant to be.
#ifndef TOOLS_DEVICE_SUGGESTION_H_
#define TOOLS_DEVICE_SUGGESTION_H_

#include <string>
#include <vector>

namespace tav_device {

// "; did you mean "title"?" with the nearest of the known names, or nothing when none is near. A
// name may also be that of the public record's field, "app_title".
std::string Suggestion(const std::string& name, const std::vector<std::string>& known);

}  // namespace tav_device

#endif  // TOOLS_DEVICE_SUGGESTION_H_
