// SPDX-License-Identifier: Apache-2.0
//
// The client as others on the bus see it: its name, its object, and that both are the caller's.
#include <sys/wait.h>

#include "on_the_bus.h"

namespace {

using test::Service;

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
  const std::string interface =
      "org.tizen.tv.tavcore.tavdbclient.interface.obj" + std::to_string(getpid());
  EXPECT_NE(document.find("<interface name=\"" + interface + "\""), std::string::npos) << document;
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

TEST_F(Client, OutlivesAHostThatLetsTheLibraryGoAndTheEndOfItsBus) {
  int in[2];
  int out[2];
  ASSERT_EQ(pipe(in), 0);
  ASSERT_EQ(pipe(out), 0);
  const pid_t process = fork();
  if (process == 0) {
    dup2(in[0], STDIN_FILENO);
    dup2(out[1], STDOUT_FILENO);
    close(in[1]);
    execl(UNLOAD_AFTER_USE, UNLOAD_AFTER_USE, LIBRARY, nullptr);
    _exit(127);
  }
  close(in[0]);
  close(out[1]);
  char byte = 0;
  EXPECT_EQ(read(out[0], &byte, 1), 1);
  const std::string name = "org.tizen.tv.tavcore.client.obj" + std::to_string(process);
  bus.WaitForOwner(name);
  bus.Stop();
  service.Wait();
  close(in[1]);
  close(out[0]);
  int status = 0;
  ASSERT_EQ(waitpid(process, &status, 0), process);
  EXPECT_EQ(status, 0);
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
  bus.WaitUntilUnowned("org.tizen.tv.tavcore.client.obj" + std::to_string(process));
}

}  // namespace
