// SPDX-License-Identifier: Apache-2.0
//
// The device's files for the bus, on a bus that allows nothing else.
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "device/process.h"
#include "support/bus.h"

namespace test {
namespace {

namespace fs = std::filesystem;

constexpr char kServer[] = "org.tizen.tv.tavcore.server";

class BusPolicy : public testing::Test {
 protected:
  BusPolicy() {
    std::string place = fs::temp_directory_path() / "tav-policy-XXXXXX";
    if (mkdtemp(place.data()) == nullptr) throw std::runtime_error("no temporary directory");
    m_directory = place;
    fs::create_directory(m_directory / "services");
    fs::copy_file(PACKAGING "/org.tizen.tv.tavcore.server.service",
                  m_directory / "services/org.tizen.tv.tavcore.server.service");
    std::ofstream(m_directory / "bus.conf")
        << "<busconfig><type>system</type><listen>unix:path=" << (m_directory / "bus").string()
        << R"xml(</listen>
      <policy context="default">
        <allow user="*"/>
        <deny own="*"/>
        <deny send_type="method_call"/>
        <allow send_destination="org.freedesktop.DBus"/>
        <allow send_type="method_return"/>
        <allow send_type="error"/>
        <allow receive_type="method_call"/>
        <allow receive_type="method_return"/>
        <allow receive_type="error"/>
      </policy>
      <servicedir>)xml"
        << (m_directory / "services").string()
        << "</servicedir><include>" PACKAGING "/org.tizen.tv.tavcore.conf</include></busconfig>";
    tav_device::Launch launch;
    launch.arguments = {"dbus-daemon", "--nofork", "--nopidfile", "--nosyslog",
                        "--config-file=" + (m_directory / "bus.conf").string()};
    launch.output_file = m_directory / "log";
    m_bus = tav_device::StartUntilReady(launch, "--print-address", kBusDeadline);
  }
  ~BusPolicy() override {
    m_bus.child->End(kBusDeadline);
    std::error_code ignored;
    fs::remove_all(m_directory, ignored);
  }

  std::string Address() const { return m_bus.line; }

  static bool MayOwn(const Peer& peer, const std::string& name) {
    try {
      peer.Call("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                "RequestName", g_variant_new("(su)", name.c_str(), 3U));
      return true;
    } catch (const std::runtime_error&) {
      return false;
    }
  }

 private:
  fs::path m_directory;
  tav_device::ReadyChild m_bus;
};

TEST_F(BusPolicy, LetsEveryClientOwnItsNameAndNoOther) {
  const Peer peer(Address());
  EXPECT_TRUE(MayOwn(peer, "org.tizen.tv.tavcore.client.obj1234"));
  EXPECT_FALSE(MayOwn(peer, "org.tizen.tv.tavcore.clients"));
  EXPECT_FALSE(MayOwn(peer, "org.tizen.tv.other"));
}

TEST_F(BusPolicy, LetsRootOwnTheServicesName) {
  EXPECT_EQ(MayOwn(Peer(Address()), kServer), geteuid() == 0);
}

TEST_F(BusPolicy, LetsEverybodySendToTheServiceAlone) {
  const Peer service(Address());
  if (geteuid() != 0) {  // only root may be the service
    EXPECT_FALSE(MayOwn(service, kServer));
    return;
  }
  ASSERT_TRUE(MayOwn(service, kServer));
  const Peer client(Address());
  EXPECT_NO_THROW(client.Call(kServer, "/", "org.freedesktop.DBus.Peer", "Ping"));
  const Peer other(Address());
  EXPECT_THROW(client.Call(other.UniqueName(), "/", "org.freedesktop.DBus.Peer", "Ping"),
               std::runtime_error);
}

TEST_F(BusPolicy, KnowsHowToStartTheService) {
  const auto reply = Peer(Address()).Call("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                          "org.freedesktop.DBus", "ListActivatableNames");
  const std::string names = tav_device::GTextHandle(g_variant_print(reply.get(), FALSE)).get();
  EXPECT_NE(names.find("'org.tizen.tv.tavcore.server'"), std::string::npos) << names;
}

}  // namespace
}  // namespace test
