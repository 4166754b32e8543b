// SPDX-License-Identifier: Apache-2.0
#include "faults/calls.h"

namespace test {

const Calls& EveryCall() {
  static const Calls calls = [] {
    Calls all;
    for (const auto part : {LookupCalls, ListCalls, PropertyCalls, ChangeCalls, ExportCalls,
                            SettingCalls, WatchCalls, InnerCalls}) {
      for (Call& call : part()) all.push_back(call);
    }
    return all;
  }();
  return calls;
}

std::string NameOfCall(const ::testing::TestParamInfo<Call>& info) {
  return std::string(info.param.name) + info.param.variant;
}

}  // namespace test
