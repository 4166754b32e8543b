// SPDX-License-Identifier: Apache-2.0
//
// Faults from their texts.
#include "faults.h"

#include <gio/gio.h>

#include <charconv>
#include <limits>

#include "methods.h"

namespace tavcore {
namespace {

constexpr char kDefaultErrorName[] = "org.freedesktop.DBus.Error.Failed";

enum class Argument { kNone, kMilliseconds, kStatus, kErrorName };

constexpr struct {
  const char* name;
  Fault::Kind kind;
  Argument argument;
} kKinds[] = {
    {"none", Fault::Kind::kNone, Argument::kNone},
    {"delay", Fault::Kind::kDelay, Argument::kMilliseconds},
    {"random-delay", Fault::Kind::kRandomDelay, Argument::kMilliseconds},
    {"error", Fault::Kind::kError, Argument::kErrorName},
    {"status", Fault::Kind::kStatus, Argument::kStatus},
    {"wrong-type", Fault::Kind::kWrongType, Argument::kNone},
    {"no-reply", Fault::Kind::kNoReply, Argument::kNone},
    {"exit", Fault::Kind::kExit, Argument::kNone},
};

int Number(const std::string& kind, const std::string& text, int lowest, int highest) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < lowest || number > highest) {
    throw FaultError("fault '" + kind + "': '" + text + "' is not a number from " +
                     std::to_string(lowest) + " to " + std::to_string(highest));
  }
  return number;
}

Fault Parse(const std::string& text) {
  constexpr int kLongestDelay = 3600000;
  using Limits = std::numeric_limits<int>;

  const std::size_t colon = text.find(':');
  const std::string name = text.substr(0, colon);
  const std::string argument = colon == std::string::npos ? "" : text.substr(colon + 1);
  for (const auto& kind : kKinds) {
    if (name != kind.name) continue;
    Fault fault{kind.kind, 0, kDefaultErrorName};
    if (kind.argument == Argument::kNone && colon != std::string::npos) {
      throw FaultError("fault '" + name + "' takes no argument");
    }
    if (kind.argument == Argument::kMilliseconds) {
      fault.number = Number(name, argument, 0, kLongestDelay);
    } else if (kind.argument == Argument::kStatus) {
      fault.number = Number(name, argument, Limits::min(), Limits::max());
    } else if (kind.argument == Argument::kErrorName && colon != std::string::npos) {
      fault.name = argument;
      if (!g_dbus_is_interface_name(argument.c_str())) {
        throw FaultError("fault 'error': '" + argument + "' is not the name of a D-Bus error");
      }
    }
    return fault;
  }

  std::string names;
  for (const auto& kind : kKinds) names += std::string(names.empty() ? "" : ", ") + kind.name;
  throw FaultError("there is no fault '" + name + "'; there are: " + names);
}

}  // namespace

void Faults::Set(const std::string& method, const std::string& kind) {
  const Fault fault = Parse(kind);
  if (method != kEveryMethod) {
    if (!Methods::Has(method)) throw FaultError("the service has no method '" + method + "'");
    if (fault.kind == Fault::Kind::kStatus && !Methods::HasStatus(method)) {
      throw FaultError("the answer of " + method + " has no status");
    }
  }
  m_faults[method] = fault;
}

void Faults::Set(const std::string& method_and_kind) {
  const std::size_t equals = method_and_kind.find('=');
  if (equals == std::string::npos) {
    throw FaultError("'" + method_and_kind + "' is not METHOD=KIND");
  }
  Set(method_and_kind.substr(0, equals), method_and_kind.substr(equals + 1));
}

Fault Faults::Of(const std::string& method) const {
  for (const std::string& key : {method, std::string(kEveryMethod)}) {
    const auto found = m_faults.find(key);
    if (found == m_faults.end()) continue;
    // A status for every method is one for those that have it.
    if (found->second.kind == Fault::Kind::kStatus && !Methods::HasStatus(method)) continue;
    return found->second;
  }
  return {};
}

}  // namespace tavcore
