// SPDX-License-Identifier: Apache-2.0
//
// The table of calls holds what it promises.
#include <cxxabi.h>
#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace {

using test::Call;
using test::Outcome;

// The name of a function as a caller writes it.
std::string PlainName(const std::string& symbol) {
  char* demangled = abi::__cxa_demangle(symbol.c_str(), nullptr, nullptr, nullptr);
  if (demangled == nullptr) return symbol;
  const std::string name = demangled;
  std::free(demangled);
  return name.substr(0, name.find_first_of("(["));
}

TEST(TableOfCalls, HoldsEveryExportedName) {
  std::ifstream file(EXPORTED_SYMBOLS);
  std::set<std::string> exported;
  for (std::string line; std::getline(file, line);) exported.insert(PlainName(line));
  std::set<std::string> called;
  for (const Call& call : test::EveryCall()) called.insert(call.name);
  EXPECT_EQ(called, exported);
  EXPECT_EQ(exported.size(), 69U);
}

class CallOfTheTable : public ::testing::TestWithParam<Call> {
 protected:
  test::SeededDevice device{GetParam()};
};

TEST_P(CallOfTheTable, GivesTheSameEachTimeWhenNothingFails) {
  const Outcome first = GetParam().run();
  EXPECT_NE(first.status, test::kThrew);
  EXPECT_EQ(first.state.find("no JSON"), std::string::npos);
  EXPECT_FALSE(test::IsOneOf(GetParam().failed, first, first)) << first;
  EXPECT_EQ(GetParam().run(), first);
}

INSTANTIATE_TEST_SUITE_P(All, CallOfTheTable, ::testing::ValuesIn(test::EveryCall()),
                         test::NameOfCall);

}  // namespace
