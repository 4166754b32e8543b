// SPDX-License-Identifier: Apache-2.0
//
// How a sandbox ends: on each signal, at every moment, also without a chance to clean up.
#include <fstream>

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

TEST_F(SandboxEnd, IsNoticedByOneThatWasStartedWithSigchldIgnored) {
  preparation = R"(set -- env --ignore-signal=CHLD "$@"; )";
  EXPECT_EQ(Run({"--", "/bin/sh", "-c", "grep SigIgn /proc/self/status; /bin/false; exit 7"}), 7);
  EXPECT_EQ(Out(), "SigIgn:\t0000000000000000\n");
  EXPECT_EQ(Run({"--", "/bin/sh", "-c", "kill -KILL $$"}), 128 + SIGKILL);
  EXPECT_EQ(Run({"--", "no-such-program"}), 127);
  EXPECT_TRUE(IsClean());

  Inside inside;
  const auto sandbox = StartAndEnter({}, &inside);
  const Processes processes = ProcessesOf(inside);
  sandbox->Signal(SIGTERM);
  EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 128 + SIGTERM);
  EXPECT_FALSE(IsAlive(processes.bus));
  EXPECT_FALSE(IsAlive(processes.service));
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxEnd, LeavesNothingBehindWhenAFileMayNotGrow) {
  for (const int blocks : {1, 2, 4, 8, 16, 32, 64, 100, 200}) {
    preparation = "ulimit -f " + std::to_string(blocks) + "; ";
    const int status = Run({"--", "true"});
    EXPECT_TRUE(status == 0 || status == 1) << blocks << ": " << status;
    EXPECT_EQ(status == 0, Err().empty()) << blocks << ": " << Err();
    EXPECT_TRUE(IsClean()) << blocks;
  }
}

TEST_F(SandboxEnd, GivesTheCommandTheUsualSignalsOfAFileThatMayNotGrow) {
  preparation = "ulimit -f 2000; ";
  const std::string script = "head -c 9000000 /dev/zero >\"$1\"; echo $?";
  EXPECT_EQ(Run({"--", "/bin/sh", "-c", script, "sh", Directory() / "large"}), 0);
  EXPECT_EQ(Out(), std::to_string(128 + SIGXFSZ) + "\n");
}

TEST_F(SandboxEnd, LeavesNothingBehindWhenWatchersOutliveTheCommand) {
  constexpr int kRounds = 10;
  const std::string script = R"sh(
    for n in 1 2 3 4 5; do
      mkfifo "$1.$n"
      "$0" watch memory/new$n/a db/new$n/b >"$1.out" 2>"$1.$n" & echo $! >>"$1"
      read -r line <"$1.$n"; rm "$1.$n"
    done)sh";
  for (int round = 0; round < kRounds; ++round) {
    const std::string told = Directory() / std::to_string(round);
    EXPECT_EQ(Run({"--", "/bin/sh", "-c", script, TAVCTL, told}), 0);
    EXPECT_EQ(Err(), "");
    std::ifstream watchers(told);
    int count = 0;
    for (pid_t watcher = 0; watchers >> watcher; ++count) {
      // What it does of the device's end it has done when it sleeps again.
      EXPECT_TRUE(WaitUntil([&] { return IsAsleep(watcher); }));
      kill(watcher, SIGTERM);
      EXPECT_TRUE(WaitUntil([&] { return !IsAlive(watcher); }));
    }
    EXPECT_EQ(count, 5);
    EXPECT_TRUE(IsClean()) << round;
  }
}

TEST_F(SandboxEnd, LeavesNothingBehindWhenSomethingStillWritesThere) {
  // Until the directory is gone: a failed redirection ends the shell.
  const std::string script =
      "{ n=0; while :; do n=$((n + 1)); : >\"$TAV_DEVICE_ROOT/$n\"; done; } 2>/dev/null & "
      "while [ ! -e \"$TAV_DEVICE_ROOT/50\" ]; do :; done";
  for (int round = 0; round < 10; ++round) {
    EXPECT_EQ(Run({"--", "/bin/sh", "-c", script}), 0);
    EXPECT_EQ(Err(), "");
    EXPECT_TRUE(IsClean()) << round;
  }
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
