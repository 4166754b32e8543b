// SPDX-License-Identifier: Apache-2.0
//
// The reference service's life: its start, its name, its end, and its notes of the requests.
#include <gio/gio.h>

#include <fstream>
#include <iostream>

#include "sim_test.h"

namespace test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;

MATCHER_P3(Request, method, signature, parameters, "") {
  return arg.method == method && arg.signature == signature && arg.parameters == parameters;
}

// Runs the program to its end; what it says on standard error goes into `said`.
int RunSim(const std::vector<std::string>& options, const std::filesystem::path& directory,
           std::string* said) {
  const std::string file = directory / "said";
  tav_device::Launch launch;
  launch.arguments = {"/bin/sh", "-c", "exec \"$@\" >\"$0\" 2>&1", file, TAVCORE_SIM};
  launch.arguments.insert(launch.arguments.end(), options.begin(), options.end());
  tav_device::Child child(launch);
  const auto status = child.WaitFor(kBusDeadline);
  std::ifstream in(file);
  said->assign(std::istreambuf_iterator<char>(in), {});
  return status.value_or(-1);
}

class SimService : public SimTest {
 protected:
  ~SimService() override {
    if (HasFailure()) std::cerr << said;
  }

  int Run(const std::vector<std::string>& options) { return RunSim(options, device.Root(), &said); }

  std::string said;
};

TEST_F(SimService, PublishesThatTheDeviceHasBooted) {
  Service service(bus);
  EXPECT_EQ(Setting("memory/tav/boot_status"), "int\n1\n");
}

TEST_F(SimService, EndsWellOnBothSignals) {
  Service service(bus);
  EXPECT_EQ(service.Stop(), 0);
  service.Start();
  kill(service.Id(), SIGINT);
  EXPECT_EQ(service.Wait(), 0);
  EXPECT_EQ(bus.Owner(Service::kName), "");
}

TEST_F(SimService, HasItsReadyFileWhileItRuns) {
  const auto file = device.Root() / "ready";
  Service service(bus, {"--ready-file", file});
  EXPECT_TRUE(std::filesystem::exists(file));
  service.Stop();
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(SimService, LeavesAReadyFileThatItHasNotCreated) {
  device.Write("ready", "somebody's");
  Service service(bus, {"--ready-file", device.Root() / "ready"});
  service.Stop();
  EXPECT_TRUE(std::filesystem::exists(device.Root() / "ready"));
}

TEST_F(SimService, RunsWithoutAReadyFileThatCannotBeCreated) {
  Service service(bus, {"--ready-file", device.Root() / "no/ready"});
  EXPECT_EQ(Ask("heartbeat"), "()");
  EXPECT_EQ(service.Stop(), 0);
}

TEST_F(SimService, RefusesToStartWhenTheNameIsTaken) {
  Service service(bus);
  EXPECT_EQ(Run({"--ready-file", device.Root() / "ready"}), 1);
  EXPECT_EQ(said, "tavcore-sim: the name org.tizen.tv.tavcore.server is taken\n");
  EXPECT_FALSE(std::filesystem::exists(device.Root() / "ready"));
  EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimService, SaysSoAndEndsWhenTheBusGoes) {
  const auto file = device.Root() / "ready";
  Service service(bus, {"--ready-file", file});
  bus.Stop();
  EXPECT_EQ(service.Wait(), 1);
  EXPECT_FALSE(std::filesystem::exists(file));
  bus.Start();
  service.Start();
  EXPECT_NE(bus.Owner(Service::kName), "");
}

TEST_F(SimService, SaysSoWhenThereIsNoBus) {
  bus.Stop();
  EXPECT_EQ(Run({"--ready-file", "none"}), 1);
  EXPECT_THAT(said, HasSubstr("tavcore-sim: no connection to the system bus: "));
}

TEST_F(SimService, CallsAWrongCommandLineWrongUsage) {
  using Options = std::vector<std::string>;
  for (const Options& options : {Options{"--nonsense"}, Options{"extra"}, Options{"--fault"},
                                 Options{"--fault", "error"}, Options{"--fault", "heartbeat=slow"},
                                 Options{"--ticker-mode", "x"}, Options{"--busy-timeout", "-1"},
                                 Options{"--ready-fd", "-1"}, Options{"--uninstalling", "\xff"}}) {
    EXPECT_EQ(Run(options), 2) << said;
    EXPECT_NE(said, "");
  }
}

TEST_F(SimService, ExplainsItselfInItsHelp) {
  EXPECT_EQ(Run({"--help"}), 0);
  EXPECT_THAT(said, AllOf(HasSubstr("--fault METHOD=KIND[:ARG]"), HasSubstr("Examples:"),
                          HasSubstr("Exit status:\n  0  ended"), HasSubstr("random-delay:MAXMS")));
}

TEST_F(SimService, NotesEveryRequestAsItArrived) {
  Service service(bus, {"--fault", "set_app_lock=error"});
  Ask("heartbeat", "", 20000, G_DBUS_CALL_FLAGS_NO_AUTO_START);
  Ask("set_app_lock", "('org.example.clock', 1)");
  Ask("set_app_rating", "('one parameter',)");
  Ask("no_such_method", "(1, uint32 2)");

  const std::vector<ServiceCall> calls = service.Calls();
  EXPECT_THAT(calls, ElementsAre(Request("heartbeat", "()", "()"),
                                 Request("set_app_lock", "(si)", "('org.example.clock', 1)"),
                                 Request("set_app_rating", "(s)", "('one parameter',)"),
                                 Request("no_such_method", "(iu)", "(1, 2)")));
  for (const ServiceCall& call : calls) EXPECT_EQ(call.sender, peer.UniqueName());
  EXPECT_TRUE(calls.at(0).IsNoAutoStart());
  EXPECT_FALSE(calls.at(1).IsNoAutoStart());
}

TEST_F(SimService, ForgetsItsNotesWhenAsked) {
  Service service(bus);
  Ask("heartbeat");
  service.Forget();
  EXPECT_EQ(service.Calls().size(), 0U);
  Ask("set_ticker_mode_to_launch", "(1,)");
  Ask("heartbeat");
  EXPECT_THAT(service.Calls("heartbeat"), ElementsAre(Request("heartbeat", "()", "()")));
}

TEST_F(SimService, DoesNotAnswerWhileItIsStalledAndNotesTheRequestAfterwards) {
  Service service(bus);
  service.Stall();
  EXPECT_EQ(Ask("heartbeat", "", 100), "timeout");
  service.Resume();
  EXPECT_EQ(service.Calls("heartbeat").size(), 1U);
}

TEST_F(SimService, LosesItsNameWhenItIsKilled) {
  Service service(bus);
  EXPECT_EQ(service.Kill(), 128 + SIGKILL);
  bus.WaitUntilUnowned(Service::kName);
  service.Start();
  EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimService, IsNotReachedThroughAStalledBus) {
  Service service(bus);
  bus.Stall();
  EXPECT_EQ(Ask("heartbeat", "", 100), "timeout");
  bus.Resume();
  EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimService, TellsItsRequestsWhenItIsVerbose) {
  const auto script = R"sh(exec "$0" --ready-file none --verbose 2>"$1")sh";
  tav_device::Launch launch;
  launch.arguments = {"/bin/sh", "-c", script, TAVCORE_SIM, device.Root() / "said"};
  tav_device::Child child(launch);
  bus.WaitForOwner(Service::kName);
  Ask("set_app_lock", "('org.example.clock', 1)");
  child.End(kBusDeadline);
  std::ifstream in(device.Root() / "said");
  EXPECT_THAT(std::string(std::istreambuf_iterator<char>(in), {}),
              AllOf(HasSubstr("tavcore-sim: ready\n"),
                    HasSubstr("tavcore-sim: set_app_lock('org.example.clock', 1) from " +
                              peer.UniqueName() + "\n")));
}

}  // namespace
}  // namespace test
