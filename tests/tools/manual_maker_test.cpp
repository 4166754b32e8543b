// SPDX-License-Identifier: Apache-2.0
//
// The program that the build runs to make the pages and the completions.
#include <gmock/gmock.h>

#include "manual_test.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class ManualMaker : public ManualTest {};

TEST_F(ManualMaker, WritesWhatItIsAskedForAndTheSameEachTime) {
  const std::string place = Directory();
  const Result result = Run({TAVCTL_MANUAL, "--date", "2026-01-02", "--page", place + "/page",
                             "--bash", place + "/bash", "--zsh", place + "/zsh"});
  EXPECT_EQ(result, (Result{0, "", ""}));
  EXPECT_THAT(Entries(), ElementsAre("bash", "page", "zsh"));
  EXPECT_THAT(ReadFile(place + "/page"), HasSubstr("\n.TH TAVCTL 1 2026-01-02 "));
  EXPECT_EQ(ReadFile(place + "/bash"), ReadFile(MANUALS "/tavctl.bash"));
  EXPECT_EQ(ReadFile(place + "/zsh"), ReadFile(MANUALS "/_tavctl"));
}

TEST_F(ManualMaker, FailsWhereItCannotWrite) {
  const std::string path = Directory() / "none" / "page";
  EXPECT_EQ(Run({TAVCTL_MANUAL, "--page", path}),
            (Result{1, "", TAVCTL_MANUAL ": " + path + " cannot be written\n"}));
  EXPECT_EQ(Run({TAVCTL_MANUAL, "--page", "/dev/full"}),
            (Result{1, "", TAVCTL_MANUAL ": /dev/full cannot be written\n"}));
}

TEST_F(ManualMaker, RefusesWhatItDoesNotKnow) {
  const Result result = Run({TAVCTL_MANUAL, "--fish", "a"});
  EXPECT_NE(result.status, 0);
  EXPECT_THAT(result.err, HasSubstr("--fish"));
}

}  // namespace
}  // namespace test
