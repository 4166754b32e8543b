// SPDX-License-Identifier: Apache-2.0
//
// Built-in apps that are being uninstalled, as the service lists them, are not in the list.
#include "catalogue.h"
#include "support/bus.h"
#include "support/service.h"

namespace {

using test::Ids;
using test::Service;

class UninstallingApps : public test::BuiltInApps {
 protected:
  UninstallingApps() {
    Catalogue(Ids{"a", "b", "c"});
    device.Write("run/tav_ready", "");
  }

  test::Bus bus;
};

TEST_F(UninstallingApps, AreLeftOut) {
  const Service service(bus, {"--uninstalling", "a,c,elsewhere"});
  EXPECT_EQ(ListedIds(), Ids{"b"});
  EXPECT_EQ(log.Count("[a] is in builtin app uninstalling list"), 1);
  EXPECT_EQ(log.Count("[c] is in builtin app uninstalling list"), 1);
  EXPECT_FALSE(log.Has("[b] is in builtin app uninstalling list"));
}

TEST_F(UninstallingApps, AreLeftOutOfTheTestAppsToo) {
  TestApps("a,1,t,g;b,1,t,g");
  const Service service(bus, {"--uninstalling", "a,c"});
  EXPECT_EQ(ListedIds(true), Ids{"b"});
  EXPECT_FALSE(log.Has("[c] is in builtin app uninstalling list"));
}

TEST_F(UninstallingApps, AreAskedForBeforeTheCatalogueIsRead) {
  Service service(bus, {"--uninstalling", "a"});
  Document("no JSON");
  test::InnerApps list;
  EXPECT_EQ(GetBuiltInAppList(list, false), -1);
  EXPECT_EQ(service.Calls("get_api_uninstalling_biu_list").size(), 1U);
}

TEST_F(UninstallingApps, AreNotAskedForWhenNoTestAppIsAskedFor) {
  Service service(bus, {"--uninstalling", "a"});
  EXPECT_EQ(ListedIds(true), Ids{});
  EXPECT_TRUE(service.Calls("get_api_uninstalling_biu_list").empty());
}

TEST_F(UninstallingApps, AreNotAskedForBeforeTheServiceIsReady) {
  std::filesystem::remove(device.Root() / "run/tav_ready");
  Service service(bus, {"--uninstalling", "a"});
  EXPECT_EQ(ListedIds(), (Ids{"a", "b", "c"}));
  EXPECT_TRUE(service.Calls().empty());
}

TEST_F(UninstallingApps, AreNoneWhenTheServiceIsMissingOrFails) {
  EXPECT_EQ(ListedIds(), (Ids{"a", "b", "c"}));
  Service service(bus, {"--uninstalling", "a"});
  service.Fault("get_api_uninstalling_biu_list", "error");
  EXPECT_EQ(ListedIds(), (Ids{"a", "b", "c"}));
  service.ClearFaults();
  EXPECT_EQ(ListedIds(), (Ids{"b", "c"}));
}

}  // namespace
