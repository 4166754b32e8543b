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
  EXPECT_EQ(other->End(test::kBusDeadline), 0);
}

TEST_F(Client, EndsWithItsProcessAtOnceAndWithoutAFailure) {
  const Stopwatch watch;
  const pid_t process = fork();
  if (process == 0) {
    execl(EXIT_AFTER_USE, EXIT_AFTER_USE, "clock", nullptr);
    _exit(127);
  }
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_EQ(status, 0);
  EXPECT_LT(watch.Elapsed(), AtMost(std::chrono::seconds(8)));
  EXPECT_EQ(IsLocked("clock"), 1);
  bus.WaitUntilUnowned(ClientName(process));
}

}  // namespace
