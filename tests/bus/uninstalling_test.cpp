// SPDX-License-Identifier: Apache-2.0
//
// The built-in apps that are being uninstalled, as the service lists them.
#include "on_the_bus.h"
#include "tav_db_api/tav_db_write_api.h"

namespace {

using test::Service;
using Ids = std::vector<std::string>;

class Uninstalling : public OnTheBus {
 protected:
  Ids With(const std::string& list) {
    Service service(bus, {"--uninstalling", list});
    Ids ids;
    GetUninstallingBuiltInAppID(ids);
    return ids;
  }
};

TEST_F(Uninstalling, IsNotAskedForBeforeTheServiceIsReady) {
  Service service(bus, {"--uninstalling", "a,b"});
  char untouched[] = "untouched";
  char* list = untouched;
  EXPECT_EQ(TavGetUninstallingBuiltInApp(&list), 0);
  EXPECT_EQ(list, untouched);
  EXPECT_TRUE(log.Has("/run/tav_ready doesnt exist"));
  EXPECT_TRUE(service.Calls().empty());
  Ids ids = {"before"};
  GetUninstallingBuiltInAppID(ids);
  EXPECT_EQ(ids, Ids{"before"});
}

TEST_F(Uninstalling, IsOneIdForATextWithoutACommaAndAnEmptyOneBetweenTwo) {
  device.Write("run/tav_ready", "");
  EXPECT_EQ(With("one"), Ids{"one"});
  EXPECT_EQ(With("one,,two"), (Ids{"one", "", "two"}));
  EXPECT_EQ(With("one,"), (Ids{"one", ""}));
  EXPECT_EQ(With(" one , two "), (Ids{" one ", " two "}));
  EXPECT_EQ(With(""), Ids{});
}

TEST_F(Uninstalling, IsAppendedToWhatIsThere) {
  device.Write("run/tav_ready", "");
  const Service service(bus, {"--uninstalling", "a,b"});
  Ids ids = {"before"};
  GetUninstallingBuiltInAppID(ids);
  EXPECT_EQ(ids, (Ids{"before", "a", "b"}));
}

TEST_F(Uninstalling, IsNothingWhenTheCallFails) {
  device.Write("run/tav_ready", "");
  Service service(bus, {"--uninstalling", "a"});
  char untouched[] = "untouched";
  for (const char* fault : {"error", "wrong-type"}) {
    service.Fault("get_api_uninstalling_biu_list", fault);
    char* list = untouched;
    EXPECT_EQ(TavGetUninstallingBuiltInApp(&list), -1);
    EXPECT_EQ(list, untouched);
    Ids ids;
    GetUninstallingBuiltInAppID(ids);
    EXPECT_EQ(ids, Ids{});
  }
}

}  // namespace
