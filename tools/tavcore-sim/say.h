// SPDX-License-Identifier: Apache-2.0
//
// What the service tells whoever started it.
#ifndef TOOLS_TAVCORE_SIM_SAY_H_
#define TOOLS_TAVCORE_SIM_SAY_H_

#include <iostream>
#include <string>

namespace tavcore {

// Writes a line to standard error, as a whole: messages arrive on a thread of their own.
inline void Say(const std::string& line) {
  std::cerr << "tavcore-sim: " + line + "\n";
}

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_SAY_H_
