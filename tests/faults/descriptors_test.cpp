// SPDX-License-Identifier: Apache-2.0
//
// Every call with few file descriptors free, in a process of its own each time: no signal ends the
// process, the call ends as it says, and the next one gives what it always gives.
#include <gtest/gtest.h>

#include <sstream>

#include "device/process.h"
#include "faults/calls.h"
#include "faults/seeded_device.h"

namespace {

using test::Call;

constexpr int kMostFree = 16;

class CallWithFewDescriptors : public ::testing::TestWithParam<std::size_t> {
 protected:
  const Call& call = test::EveryCall()[GetParam()];
  test::SeededDevice device{call};
};

TEST_P(CallWithFewDescriptors, EndsAsItSays) {
  std::ostringstream whole;
  whole << call.run();
  for (int free = 0; free <= kMostFree; ++free) {
    tav_device::Launch launch;
    launch.arguments = {FEW_DESCRIPTORS, std::to_string(GetParam()), std::to_string(free),
                        whole.str()};
    EXPECT_EQ(tav_device::Child(launch).Wait(), 0) << free << " free";
  }
}

std::string NameOf(const ::testing::TestParamInfo<std::size_t>& info) {
  const Call& call = test::EveryCall()[info.param];
  return std::string(call.name) + call.variant;
}

INSTANTIATE_TEST_SUITE_P(All, CallWithFewDescriptors,
                         ::testing::Range(std::size_t{0}, test::EveryCall().size()), NameOf);

}  // namespace
