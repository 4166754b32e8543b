// SPDX-License-Identifier: Apache-2.0
//
// Faults on demand: what is to go wrong with which method.
#ifndef TOOLS_TAVCORE_SIM_FAULTS_H_
#define TOOLS_TAVCORE_SIM_FAULTS_H_

#include <map>
#include <string>

#include "device/error.h"

namespace tavcore {

// A fault that there is not; its text says which there are.
class FaultError : public tav_device::DeviceError {
 public:
  using DeviceError::DeviceError;
};

struct Fault {
  enum class Kind {
    kNone,         // works
    kDelay,        // works at once and answers late
    kRandomDelay,  // the same, by up to the time
    kError,        // answers with a D-Bus error
    kStatus,       // answers with a status
    kWrongType,    // answers with a tuple of another type
    kNoReply,      // never answers
    kExit,         // ends the service
  };

  Kind kind = Kind::kNone;
  int number = 0;    // milliseconds or a status
  std::string name;  // of an error
};

class Faults {
 public:
  static constexpr char kEveryMethod[] = "*";

  // The kind is "delay:300", "error", "none" and so on. It takes the place of the method's former
  // one. Throws FaultError.
  void Set(const std::string& method, const std::string& kind);
  // The same in one text: "METHOD=KIND".
  void Set(const std::string& method_and_kind);
  void Clear() { m_faults.clear(); }

  // What is to happen to a request: the method's own fault, else that of every method.
  Fault Of(const std::string& method) const;

 private:
  std::map<std::string, Fault> m_faults;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_FAULTS_H_
