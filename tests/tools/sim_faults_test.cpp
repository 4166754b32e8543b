// SPDX-License-Identifier: Apache-2.0
//
// Faults on demand: each kind, on the command line and over the bus.
#include <chrono>

#include "sim_test.h"

namespace test {
namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr char kFailed[] = "org.freedesktop.DBus.Error.Failed";
constexpr char kNoReply[] = "org.freedesktop.DBus.Error.NoReply";
constexpr char kLock[] = "('org.example.clock', 1)";

class SimFaults : public SimTest {};

TEST_F(SimFaults, DelayTheAnswerAndNotTheWork) {
  Service service(bus);
  service.Fault("set_app_lock", "delay:300");
  const auto start = Clock::now();
  EXPECT_EQ(Ask("set_app_lock", kLock), "(0,)");
  EXPECT_GE(Clock::now() - start, milliseconds(300));
  service.Fault("set_app_lock", "delay:3600000");
  EXPECT_EQ(Ask("set_app_lock", "('org.example.clock', 0)", 100), "timeout");
  EXPECT_EQ(Column("is_lock"), "0");
}

TEST_F(SimFaults, DelayNoOtherAnswer) {
  Service service(bus);
  service.Fault("tav_update_app_count", "delay:3600000");
  EXPECT_EQ(Ask("tav_update_app_count", "('org.example.clock',)", 50), "timeout");
  EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimFaults, DelayTheAnswerByARandomTime) {
  Service service(bus, {"--fault", "*=random-delay:20"});
  for (int i = 0; i < 20; ++i) EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimFaults, AnswerWithAnErrorAndDoNothing) {
  Service service(bus);
  service.Fault("set_app_lock", "error");
  EXPECT_EQ(Ask("set_app_lock", kLock), kFailed);
  service.Fault("set_app_lock", "error:org.example.Error.Tired");
  EXPECT_EQ(Ask("set_app_lock", kLock), "org.example.Error.Tired");
  EXPECT_EQ(Column("is_lock"), "0");
}

TEST_F(SimFaults, AnswerWithAStatusAndDoNothing) {
  Service service(bus);
  service.Fault("set_app_lock", "status:-9");
  EXPECT_EQ(Ask("set_app_lock", kLock), "(-9,)");
  service.Fault("set_app_lock", "status:0");
  EXPECT_EQ(Ask("set_app_lock", kLock), "(0,)");
  EXPECT_EQ(Column("is_lock"), "0");
  EXPECT_EQ(Setting("memory/tav/app_change"), "");
}

TEST_F(SimFaults, AnswerWithAStatusWhereverThereIsOne) {
  Service service(bus, {"--ticker-mode", "4", "--uninstalling", "a", "--fault", "*=status:5"});
  EXPECT_EQ(Ask("get_ticker_mode_from_launch"), "(5, 4)");
  EXPECT_EQ(Ask("tav_update_app_by_key", "('org.example.clock', 0, '')"), "(5,)");
  EXPECT_EQ(Ask("heartbeat"), "()");
  EXPECT_EQ(Ask("get_api_uninstalling_biu_list"), "('a',)");
}

TEST_F(SimFaults, AnswerWithAnotherType) {
  Service service(bus, {"--fault", "*=wrong-type"});
  EXPECT_EQ(Ask("set_app_lock", kLock), "('an answer of another type',)");
  EXPECT_EQ(Ask("heartbeat"), "('an answer of another type',)");
  EXPECT_EQ(Ask("get_ticker_mode_from_launch"), "('an answer of another type',)");
  EXPECT_EQ(Ask("get_api_uninstalling_biu_list"), "(0,)");
  EXPECT_EQ(Column("is_lock"), "0");
}

TEST_F(SimFaults, NeverAnswer) {
  Service service(bus);
  service.Fault("heartbeat", "no-reply");
  EXPECT_EQ(Ask("heartbeat", "", 100), "timeout");
  EXPECT_EQ(Ask("get_ticker_mode_from_launch"), "(0, 0)");
}

TEST_F(SimFaults, EndTheServiceDuringTheCall) {
  Service service(bus, {"--ready-file", device.Root() / "ready"});
  service.Fault("set_app_rating", "exit");
  EXPECT_EQ(Ask("set_app_rating", kLock), kNoReply);
  EXPECT_EQ(service.Wait(), 3);
  EXPECT_TRUE(std::filesystem::exists(device.Root() / "ready")) << "as after a crash";
  bus.WaitUntilUnowned(Service::kName);
  service.Start();
  EXPECT_EQ(Ask("set_app_rating", kLock), "(0,)");
}

TEST_F(SimFaults, ComeFromTheCommandLineToo) {
  Service service(bus, {"--fault", "heartbeat=error:a.b", "--fault=set_app_lock=status:8"});
  EXPECT_EQ(Ask("heartbeat"), "a.b");
  EXPECT_EQ(Ask("set_app_lock", kLock), "(8,)");
}

TEST_F(SimFaults, OfOneMethodGoBeforeThoseOfEveryMethod) {
  Service service(bus, {"--fault", "*=error", "--fault", "heartbeat=none"});
  EXPECT_EQ(Ask("heartbeat"), "()");
  EXPECT_EQ(Ask("set_app_lock", kLock), kFailed);
}

TEST_F(SimFaults, AreGoneWhenTheyAreCleared) {
  Service service(bus, {"--fault", "*=error"});
  service.Fault("heartbeat", "error");
  service.ClearFaults();
  EXPECT_EQ(Ask("heartbeat"), "()");
  EXPECT_EQ(Ask("set_app_lock", kLock), "(0,)");
}

TEST_F(SimFaults, DoNotTouchTheControlInterface) {
  Service service(bus, {"--fault", "*=no-reply"});
  service.ClearFaults();
  EXPECT_EQ(Ask("heartbeat"), "()");
}

TEST_F(SimFaults, ThatThereAreNotAreRefused) {
  Service service(bus);
  for (const char* fault :
       {"('heartbeat', 'slow')", "('heartbeat', '')", "('no_such_method', 'error')",
        "('heartbeat', 'delay')", "('heartbeat', 'delay:')", "('heartbeat', 'delay:-1')",
        "('heartbeat', 'delay:1s')", "('heartbeat', 'delay:99999999999')",
        "('heartbeat', 'error:')", "('heartbeat', 'error:no name')", "('heartbeat', 'exit:1')",
        "('heartbeat', 'status:1')", "('set_app_lock', 'status:x')"}) {
    EXPECT_EQ(Steer("SetFault", fault), kInvalidArguments) << fault;
  }
  EXPECT_EQ(Ask("heartbeat"), "()");
}

}  // namespace
}  // namespace test
