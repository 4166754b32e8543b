// SPDX-License-Identifier: Apache-2.0
//
// tav-sandbox around a command: what the command gets, and what its caller gets back.
#include <array>

#include "sandbox_run.h"
#include "support/service.h"

namespace test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST_F(SandboxRun, PassesTheCommandsOutputAndStatusOn) {
  EXPECT_EQ(Run({"--", "/bin/sh", "-c", "echo out; echo err >&2; exit 7"}), 7);
  EXPECT_EQ(Out(), "out\n");
  EXPECT_EQ(Err(), "err\n");
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, HasTheStatusOfAShellForACommandThatASignalEnded) {
  EXPECT_EQ(Run({"--", "/bin/sh", "-c", "kill -KILL $$"}), 128 + SIGKILL);
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, HasTheStatusesOfAShellForACommandThatCannotStart) {
  EXPECT_EQ(Run({"--", "no-such-program"}), 127);
  EXPECT_EQ(Err(), "tav-sandbox: no-such-program: No such file or directory\n");
  EXPECT_EQ(Run({"--", Write("text", "no program")}), 126);
  EXPECT_EQ(Err(), "tav-sandbox: " + (Directory() / "text").string() + ": Permission denied\n");
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, HandsTheArgumentsOverAsTheyAre) {
  EXPECT_EQ(Run({"--", "printf", "<%s>", "--seed", "--", "a b", "", "--help"}), 0);
  EXPECT_EQ(Out(), "<--seed><--><a b><><--help>");
}

TEST_F(SandboxRun, GivesTheCommandADeviceWithTheDefaultSeed) {
  EXPECT_EQ(Run({"--", TAVCTL, "info", "org.example.weather"}), 0) << Err();
  EXPECT_THAT(Out(), HasSubstr("org.example.weather"));
}

TEST_F(SandboxRun, GivesTheCommandADeviceWithASeedOfOnesOwn) {
  const std::string seed = Write("seed.json", R"({"apps": [{"id": "org.example.one"}]})");
  EXPECT_EQ(Run({"--seed", seed, "--", TAVCTL, "info", "org.example.one"}), 0) << Err();
  EXPECT_NE(Run({"--seed", seed, "--", TAVCTL, "info", "org.example.weather"}), 0);
}

TEST_F(SandboxRun, ChangesNothingElseInTheEnvironment) {
  environment["PATH"] = "/usr/bin:/bin:/somewhere else";
  environment["TAV_DEVICE_ROOT"] = "/the/callers/device";
  environment["SOMETHING"] = "kept";
  EXPECT_EQ(Run({"--", "/bin/sh", "-c", R"(echo "$PATH|$SOMETHING|$TAV_DEVICE_ROOT")"}), 0);
  EXPECT_THAT(Out(), testing::StartsWith("/usr/bin:/bin:/somewhere else|kept|" +
                                         (Directory() / "tmp").string()));
}

TEST_F(SandboxRun, GivesTheCommandABusWithTheServiceOfItsDevice) {
  Inside inside;
  const auto sandbox = StartAndEnter({}, &inside);
  {
    const Peer peer(inside.bus);
    peer.Call(Service::kName, Service::kPath, Service::kInterface, "tav_update_app_count",
              g_variant_new("(s)", "org.example.weather"));
  }
  EXPECT_TRUE(std::filesystem::exists(inside.root + "/vconf/memory/tav/boot_status"));
  EXPECT_EQ(sandbox->End(kBusDeadline), 128 + SIGTERM);
  EXPECT_FALSE(std::filesystem::exists(inside.root));
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, DoesNotMeetAnotherOne) {
  Inside inside[2];
  const auto first = StartAndEnter({}, &inside[0], "first");
  const auto second = StartAndEnter({}, &inside[1], "second");
  EXPECT_NE(inside[0].root, inside[1].root);
  EXPECT_NE(inside[0].bus, inside[1].bus);
  EXPECT_NE(Peer(inside[0].bus).OwnerProcess(Service::kName),
            Peer(inside[1].bus).OwnerProcess(Service::kName));
  first->End(kBusDeadline);
  EXPECT_NE(Peer(inside[1].bus).Owner(Service::kName), "");
  second->End(kBusDeadline);
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, RunsManyAtOnce) {
  std::array<std::unique_ptr<tav_device::Child>, 8> sandboxes;
  int number = 0;
  for (auto& sandbox : sandboxes) sandbox = Start({"--", "true"}, std::to_string(++number));
  for (auto& sandbox : sandboxes) EXPECT_EQ(sandbox->WaitFor(kBusDeadline).value_or(-1), 0);
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, PassesOptionsToTheService) {
  Inside inside;
  const auto sandbox = StartAndEnter({"--service-option=--ticker-mode=7", "--service-option",
                                      "--uninstalling", "--service-option", "a,b"},
                                     &inside);
  const Peer peer(inside.bus);
  const auto mode =
      peer.Call(Service::kName, Service::kPath, Service::kInterface, "get_ticker_mode_from_launch");
  EXPECT_STREQ(tav_device::GTextHandle(g_variant_print(mode.get(), FALSE)).get(), "(0, 7)");
  const auto list = peer.Call(Service::kName, Service::kPath, Service::kInterface,
                              "get_api_uninstalling_biu_list");
  EXPECT_STREQ(tav_device::GTextHandle(g_variant_print(list.get(), FALSE)).get(), "('a,b',)");
}

TEST_F(SandboxRun, LetsTheServiceCreateAReadyFileWhenAsked) {
  const std::string file = Directory() / "ready";
  EXPECT_EQ(Run({"--ready-file", file, "--", "test", "-e", file}), 0);
  EXPECT_FALSE(Exists("ready"));
}

TEST_F(SandboxRun, RunsTheShellWithoutACommand) {
  environment["SHELL"] = Write("shell", "#!/bin/sh\necho \"$#\" \"$TAV_DEVICE_ROOT\"\n", true);
  EXPECT_EQ(Run({}), 0);
  EXPECT_THAT(Out(), testing::StartsWith("0 " + (Directory() / "tmp").string()));
  environment["SHELL"] = std::nullopt;
  EXPECT_EQ(Run({"--"}), 0);  // the shell of last resort finds nothing to read
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, SaysThatDbusDaemonIsMissing) {
  environment["PATH"] = Directory();
  EXPECT_EQ(Run({"--", "/bin/true"}), 1);
  EXPECT_EQ(Err(),
            "tav-sandbox: the program dbus-daemon is not in PATH; Debian's package is "
            "dbus-daemon\n");
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, SaysWhatKeepsTheBusFromStarting) {
  environment["PATH"] =
      Write("bin/dbus-daemon", "#!/bin/sh\necho 'no bus today' >&2\nexit 1\n", true).parent_path();
  EXPECT_EQ(Run({"--", "/bin/true"}), 1);
  EXPECT_THAT(Err(), HasSubstr("no bus today"));
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, LeavesNothingBehindWhenTheSeedIsWrong) {
  EXPECT_EQ(Run({"--seed", Write("seed.json", "{\"aps\": []}"), "--", "true"}), 1);
  EXPECT_EQ(Err(), "tav-sandbox: " + (Directory() / "seed.json").string() +
                       ":1:9: aps: unknown member; did you mean \"apps\"?\n");
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, RefusesATemporaryDirectoryWithALongPath) {
  const std::string place = Directory() / std::string(80, 'd');
  std::filesystem::create_directory(place);
  environment["TMPDIR"] = place;
  EXPECT_EQ(Run({"--", "true"}), 1);
  EXPECT_THAT(Err(), AllOf(testing::StartsWith("tav-sandbox: " + place + "/tav-sandbox-"),
                           HasSubstr(" is too long for a device: ")));
  EXPECT_TRUE(std::filesystem::is_empty(place));
}

TEST_F(SandboxRun, LeavesNothingBehindWhenTheServiceDoesNotStart) {
  EXPECT_EQ(Run({"--service-option=--nonsense", "--", "true"}), 1);
  EXPECT_THAT(Err(), AllOf(HasSubstr("--nonsense"), HasSubstr("tavcore-sim ended before")));
  EXPECT_TRUE(IsClean());
}

TEST_F(SandboxRun, GoesOnWhenTheServiceHasEndedAndSaysSo) {
  Inside inside;
  const auto sandbox = StartAndEnter({"--service-option=--fault=heartbeat=exit"}, &inside);
  const Peer peer(inside.bus);
  EXPECT_THROW(peer.Call(Service::kName, Service::kPath, Service::kInterface, "heartbeat"),
               std::runtime_error);
  EXPECT_TRUE(WaitUntil([&] {
    return Err().find("the service has ended with status 3\n") != std::string::npos;
  })) << Err();
  EXPECT_TRUE(sandbox->IsRunning());
  sandbox->End(kBusDeadline);
  EXPECT_TRUE(IsClean());
}

}  // namespace
}  // namespace test
