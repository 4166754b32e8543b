// SPDX-License-Identifier: Apache-2.0
//
// The client as others on the bus see it: its name, its object, and that both are the caller's.
#include <sys/wait.h>

#include <memory>

#include "device/process.h"
#include "on_the_bus.h"

namespace {

using test::Service;

// How the object of a process shows its interface.
std::string Interface(pid_t process) {
  return "<interface name=\"org.tizen.tv.tavcore.tavdbclient.interface.obj" +
         std::to_string(process) + "\"";
}

// Another process, which has made a request, has let the library go, and lives on.
std::unique_ptr<tav_device::Child> StartOther() {
  tav_device::Launch launch;
  launch.arguments = {UNLOAD_AFTER_USE, LIBRARY};
  return tav_device::StartUntilReady(launch, "--ready-fd", test::kBusDeadline).child;
}

class Client : public OnTheBus {
 protected:
  Service service{bus};
};

TEST_F(Client, OwnsItsNameOnTheConnectionThatItsRequestsComeFrom) {
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  const std::string owner = bus.WaitForOwner(ClientName());
  EXPECT_EQ(service.Calls("set_ticker_mode_to_launch")[0].sender, owner);
  EXPECT_TRUE(log.Has("owning name " + ClientName() + "."));
  EXPECT_TRUE(test::WaitUntil([&] { return log.Has("on name acquired! " + ClientName()); }));
}

TEST_F(Client, ShowsAnObjectWithAnInterfaceOfItsOwnProcess) {
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  bus.WaitForOwner(ClientName());
  const std::string document = bus.Introspect(ClientName(), ClientPath());
  EXPECT_NE(document.find(Interface(getpid())), std::string::npos) << document;
}

TEST_F(Client, LetsAnotherTakeItsNameOver) {
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  bus.WaitForOwner(ClientName());
  const test::Peer peer(bus.Address());
  constexpr guint32 kReplaceExisting = 2;
  const auto reply =
      peer.Call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "RequestName", g_variant_new("(su)", ClientName().c_str(), kReplaceExisting));
  guint32 result = 0;
  g_variant_get(reply.get(), "(u)", &result);
  EXPECT_EQ(result, 1U);  // the peer is the owner now
  EXPECT_EQ(tav_set_ticker_mode(2), 0);
}

TEST_F(Client, IsUnknownToTheBusUntilItsFirstRequest) {
  int rating = 0;
  EXPECT_EQ(tav_get_app_rating("clock", &rating), 0);
  EXPECT_EQ(bus.Owner(ClientName()), "");
}

TEST_F(Client, HasANameAndAnInterfaceThatNoOtherProcessHas) {
  const auto other = StartOther();
  ASSERT_EQ(tav_set_ticker_mode(1), 0);
  const std::string owner = bus.WaitForOwner(ClientName());
  EXPECT_NE(bus.WaitForOwner(ClientName(other->Id())), owner);
  const std::string document = bus.Introspect(ClientName(other->Id()), ClientPath(other->Id()));
  EXPECT_NE(document.find(Interface(other->Id())), std::string::npos) << document;
  EXPECT_EQ(document.find(Interface(getpid())), std::string::npos) << document;
}

TEST_F(Client, OutlivesAHostThatLetsTheLibraryGoAndTheEndOfItsBus) {
  const auto other = StartOther();
  bus.WaitForOwner(ClientName(other->Id()));
  bus.Stop();
  service.Wait();
  EXPECT_FALSE(log.Has("CTAVGdbus [db] destructor..."));
  EXPECT_EQ(other->End(test::kBusDeadline), 0);
  EXPECT_EQ(log.Count("CTAVGdbus [db] destructor..."), 1);
}

// How a process ends, and what its client says and does of it.
class ClientEnd : public Client {
 protected:
  using Lines = std::vector<std::string>;

  // The status of a process that ends in this way.
  int End(const char* way) {
    const Stopwatch watch;
    process = fork();
    if (process == 0) {
      alarm(50);  // before the test itself is ended
      execl(EXIT_AFTER_USE, EXIT_AFTER_USE, "clock", way, nullptr);
      _exit(127);
    }
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    EXPECT_LT(watch.Elapsed(), AtMost(std::chrono::seconds(8)));
    return status;
  }
  Lines Told() const {
    Lines lines;
    for (const std::string& message : log.Messages()) {
      if (message.find("destructor") == std::string::npos && message != "unregisters") continue;
      lines.push_back(message);
    }
    return lines;
  }

  pid_t process = -1;
  const Lines kWhole = {"CTAVGdbus [db] destructor...", "unregisters",
                        "CTAVGdbus [db] destructor end"};
};

TEST_F(ClientEnd, ComesWithItsProcessAtOnceAndTakesTheObjectOffTheBus) {
  EXPECT_EQ(End("at once"), 0);
  EXPECT_EQ(IsLocked("clock"), 1);
  EXPECT_EQ(Told(), kWhole);
  bus.WaitUntilUnowned(ClientName(process));
}

TEST_F(ClientEnd, IsNotThatOfAForkedChild) {
  EXPECT_EQ(End("with a child"), 0);
  EXPECT_EQ(Told(), kWhole);
}

TEST_F(ClientEnd, WaitsForNoRequest) {
  service.Fault("heartbeat", "no-reply");
  EXPECT_EQ(End("in a heartbeat"), 0);
  EXPECT_EQ(Told(), kWhole);
}

TEST_F(ClientEnd, DisturbsNoThreadThatGoesOn) {
  for (int round = 0; round < 10; ++round) {
    log.Forget();
    EXPECT_EQ(End("among requests"), 0) << round;
    // The object stays to the end when the state of the proxy is being read just then.
    const Lines told = Told();
    ASSERT_GE(told.size(), 2U) << round;
    EXPECT_EQ(told.front(), kWhole.front()) << round;
    EXPECT_EQ(told.back(), kWhole.back()) << round;
  }
}

TEST_F(ClientEnd, WaitsForNoThreadThatLooksAfterTheConnection) {
  service.Fault("heartbeat", "error");
  EXPECT_EQ(End("in the making of the proxy"), 0);
  EXPECT_EQ(Told(), kWhole);
}

TEST_F(ClientEnd, HasNothingToUnregisterWithoutABus) {
  bus.Stop();
  service.Wait();
  EXPECT_NE(End("at once"), 0);
  EXPECT_EQ(Told(), (Lines{kWhole[0], kWhole[2]}));
}

TEST_F(ClientEnd, IsSilentInAProcessThatHasMadeNoRequest) {
  EXPECT_EQ(End("without a request"), 0);
  EXPECT_EQ(Told(), Lines());
}

}  // namespace
