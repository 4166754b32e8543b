// SPDX-License-Identifier: Apache-2.0
//
// How a sandbox ends: on each signal, at every moment, also without a chance to clean up.
#include "sandbox_run.h"
#include "support/service.h"

namespace test {
namespace {

class SandboxEnd : public SandboxRun {
 protected:
  struct Processes {
    pid_t bus;
    pid_t service;
  };

  static Processes ProcessesOf(const Inside& inside) {
    const Peer peer(inside.bus);
    return {peer.OwnerProcess("org.freedesktop.DBus"), peer.OwnerProcess(Service::kName)};
  }
};

class SandboxEndBySignal : public SandboxEnd, public testing::WithParamInterface<int> {};

TEST_P(SandboxEndBySignal, PassesItOnAndLeavesNothingBehind) {
  const std::string signal = std::to_string(GetParam());
  const std::string script =
      "trap 'echo told; exit 9' " + signal + "; : >\"$1\"; while :; do sleep 0.01; done";
  const auto sandbox = Start({"--", "/bin/sh", "-c", script, "sh", Directory() / "inside"});
  ASSERT_TRUE(WaitUntil([&] { return Exists("inside"); }));
  sandbox->Signal(GetParam());
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 9);
  EXPECT_EQ(Out(), "told\n");
  EXPECT_TRUE(IsClean());
}

TEST_P(SandboxEndBySignal, HasTheSignalsStatusWhenItEndsTheCommand) {
  Inside inside;
  const auto sandbox = StartAndEnter({}, &inside);
  const Processes processes = ProcessesOf(inside);
  EXPECT_TRUE(IsAlive(processes.bus));
  EXPECT_TRUE(IsAlive(processes.service));
  sandbox->Signal(GetParam());
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 128 + GetParam());
  EXPECT_FALSE(IsAlive(processes.bus));
  EXPECT_FALSE(IsAlive(processes.service));
  EXPECT_TRUE(IsClean());
}

INSTANTIATE_TEST_SUITE_P(, SandboxEndBySignal, testing::Values(SIGINT, SIGTERM, SIGHUP, SIGQUIT));

TEST_F(SandboxEnd, KillsACommandThatDoesNotHeedSigterm) {
  const std::string script = "trap '' TERM; : >\"$1\"; while :; do sleep 0.01; done";
  const auto sandbox = Start({"--", "/bin/sh", "-c", script, "sh", Directory() / "inside"});
  ASSERT_TRUE(WaitUntil([&] { return Exists("inside"); }));
  sandbox->Signal(SIGTERM);
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 128 + SIGKILL);
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxEnd, GoesOnWhenTheCommandGoesOnAfterSigint) {
  const std::string script =
      "trap 'echo told' INT; : >\"$1\"; while [ ! -e \"$2\" ]; do sleep 0.01; done; exit 5";
  const auto sandbox =
      Start({"--", "/bin/sh", "-c", script, "sh", Directory() / "inside", Directory() / "enough"});
  ASSERT_TRUE(WaitUntil([&] { return Exists("inside"); }));
  sandbox->Signal(SIGINT);
  ASSERT_TRUE(WaitUntil([&] { return Out() == "told\n"; }));
  EXPECT_TRUE(sandbox->IsRunning());
  Write("enough", "");
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 5);
}

TEST_F(SandboxEnd, DoesNotComeToTheCommandWhenASignalArrivesDuringTheStart) {
  const char* script = R"sh(#!/bin/sh
: >"${0%/*}/started"
while [ ! -e "${0%/*}/go" ]; do sleep 0.01; done
exec /usr/bin/dbus-daemon "$@"
)sh";
  environment["PATH"] =
      Write("bin/dbus-daemon", script, true).parent_path().string() + ":/usr/bin:/bin";
  const auto sandbox = Start({"--", "echo", "not reached"});
  ASSERT_TRUE(WaitUntil([&] { return Exists("bin/started"); }));
  sandbox->Signal(SIGTERM);
  Write("bin/go", "");
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 128 + SIGTERM);
  EXPECT_EQ(Out(), "");
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxEnd, TakesBusServiceAndCommandAlongWhenItIsKilled) {
  Inside inside;
  const auto sandbox = StartAndEnter({}, &inside);
  const Processes processes = ProcessesOf(inside);
  sandbox->Signal(SIGKILL);
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 128 + SIGKILL);
  EXPECT_TRUE(WaitUntil([&] { return !IsAlive(processes.bus); }));
  EXPECT_TRUE(WaitUntil([&] { return !IsAlive(processes.service); }));
  EXPECT_FALSE(IsClean()) << "it has had no time for the directory";
}

TEST_F(SandboxEnd, CleansUpWhenTheBusHasGoneBefore) {
  Inside inside;
  const auto sandbox = StartAndEnter({}, &inside);
  const Processes processes = ProcessesOf(inside);
  kill(processes.bus, SIGKILL);
  EXPECT_TRUE(WaitUntil([&] { return !IsAlive(processes.service); }));
  sandbox->Signal(SIGTERM);
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 128 + SIGTERM);
  EXPECT_TRUE(IsClean());
}

}  // namespace
}  // namespace test
