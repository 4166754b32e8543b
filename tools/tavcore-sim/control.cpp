// SPDX-License-Identifier: Apache-2.0
//
// The control interface's four methods.
#include "control.h"

#include <string>

namespace tavcore {
namespace {

constexpr char kControlIntrospection[] = R"xml(<node>
  <interface name="org.tizen.tv.tavcore.server.control">
    <method name="SetFault">
      <arg type="s" name="method" direction="in"/>
      <arg type="s" name="kind" direction="in"/>
    </method>
    <method name="ClearFaults"/>
    <method name="Calls">
      <arg type="a(ssssu)" name="calls" direction="out"/>
    </method>
    <method name="ForgetCalls"/>
  </interface>
</node>)xml";

constexpr char kWrongArgument[] = "org.freedesktop.DBus.Error.InvalidArgs";

}  // namespace

const char* Control::Introspection() {
  return kControlIntrospection;
}

void Control::Answer(const char* method, GVariant* parameters,
                     GDBusMethodInvocation* invocation) const {
  const std::string name = method;
  GVariant* reply = nullptr;
  if (name == "SetFault") {
    const char* faulty = nullptr;
    const char* kind = nullptr;
    g_variant_get(parameters, "(&s&s)", &faulty, &kind);
    try {
      faults.Set(faulty, kind);
    } catch (const FaultError& error) {
      g_dbus_method_invocation_return_dbus_error(invocation, kWrongArgument, error.what());
      return;
    }
  } else if (name == "ClearFaults") {
    faults.Clear();
  } else if (name == "Calls") {
    reply = calls.AsReply();
  } else {
    calls.Forget();
  }
  g_dbus_method_invocation_return_value(invocation, reply);
}

}  // namespace tavcore
