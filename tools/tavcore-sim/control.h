// SPDX-License-Identifier: Apache-2.0
//
// The interface by which tests and developers steer the service: faults, and the requests so far.
#ifndef TOOLS_TAVCORE_SIM_CONTROL_H_
#define TOOLS_TAVCORE_SIM_CONTROL_H_

#include <gio/gio.h>

#include "calls.h"
#include "faults.h"

namespace tavcore {

struct Control {
  Faults& faults;
  CallRecord& calls;

  static const char* Introspection();

  // Answers a call of the control interface; takes the invocation.
  void Answer(const char* method, GVariant* parameters, GDBusMethodInvocation* invocation) const;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_CONTROL_H_
