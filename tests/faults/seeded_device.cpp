// SPDX-License-Identifier: Apache-2.0
#include "faults/seeded_device.h"

namespace test {
namespace {

App SeededApp(const std::string& letter, int number) {
  const std::string of = " of application " + letter;
  App app = AppWithEveryColumnSet("org.example.application." + letter);
  return app.InstallState(3)
      .Title("the title" + of)
      .RunTitle("the run title" + of)
      .TizenId("the.tizen.id.of.application." + letter)
      .Package("the.package.of.application." + letter)
      .Set("hybrid_app", "the.native.id.of.application." + letter)
      .Set("ait_orgid", "the.organisation.of.application." + letter)
      .Set("ait_appid", "the.broadcast.id.of.application." + letter)
      .Set("is_ispbound", 1)
      .Set("is_hybrid_tv", 1)
      .Set("is_usb_app", 1)
      .Set("is_ticker", 1)
      .Set("is_hidden", 0)
      .Set("is_lock", 0)
      .Set("reserved_tinyint_10", 0)
      .Set("reserved_tinyint_11", 0)
      .Set("reserved_string_10", std::string())
      .AgeLimit(0)
      .Index(number)
      .Type(2)
      .Featured(1)
      .UseCount(10 + number)
      .LaunchDate("2024-01-01 00:00:0" + std::to_string(number));
}

constexpr char kCatalogue[] = R"({"rsp": {"stat": "ok", "apps": [
  {"id": "the.first.app.of.the.catalogue", "tizenId": "its.tizen.id.in.the.catalogue",
   "packageId": "the.first.package.of.the.catalogue", "title": "the first of the catalogue"},
  {"id": "the.second.app.of.the.catalogue", "tizenId": "its.tizen.id.in.the.catalogue",
   "packageId": "the.second.package.of.the.catalogue", "title": "the second of the catalogue"},
  {"id": "the.third.app.of.the.catalogue", "tizenId": "its.tizen.id.in.the.catalogue",
   "packageId": "the.third.package.of.the.catalogue", "title": "the third of the catalogue"}]}})";

constexpr char kTestApps[] =
    "the.first.app.of.the.catalogue,1.0.0 of the first package,the type of the first,the tag of "
    "the first;the.third.app.of.the.catalogue,3.0.0 of the third package,the type of the third,"
    "the tag of the third";

constexpr char kPackages[] =
    "[the.first.package.of.the.catalogue]\n"
    "version=1.0.0 of the first package\nicon=/the/icon/of/the/first/package.png\n"
    "[the.second.package.of.the.catalogue]\n"
    "version=2.0.0 of the second package\nicon=/the/icon/of/the/second/package.png\n";

constexpr char kSystemInfo[] =
    "[custom]\ncom.kordyne/featureconf/vitrine.webid=org.example.application.a\n"
    "com.kordyne/featureconf/flash_size=0\n[value]\n701=1\n";

std::string GroupList() {
  return std::string("a run title of nobody:an.application.of.nobody,") + kRunTitleA + ":" + kAppA;
}

}  // namespace

SeededDevice::SeededDevice(const Call& call) {
  m_device.Install(
      SeededApp("a", 1).Set("reserved_string_10", "an.app.of.nobody," + std::string(kAppB)));
  m_device.Install(SeededApp("b", 2).Set("reserved_tinyint_10", 1));
  m_device.Install(SeededApp("c", 3));
  m_device.Configure("EMANUAL_ID", "the.id.of.the.manual.in.the.database")
      .Configure("SYNC_STATE", "7")
      .Configure("RESERVED_15", kCatalogue)
      .Configure("RESERVED_16", kTestApps)
      .Configure("RESERVED_27", GroupList())
      .Configure("RESERVED_37", GroupList());
  // An age that locks none of the apps.
  m_device.Setting("db/appstore/ratingvalue", "0000000000000000000018+");
  for (const char* key :
       {"db/comss/appkey", "db/comss/kestranaversion", "memory/tav/app_install"}) {
    m_device.Setting(key, std::string("the value of ") + key);
  }
  for (const char* key : {"db/tav/app_sync_status", "memory/tav/appsync",
                          "db/homedeck/reset/tavcore", "memory/tav/boot_status"}) {
    m_device.Setting(key, 3);
  }
  m_device.Write("packages.ini", kPackages).Write("system-info.ini", kSystemInfo);
  m_device.Write("etc/tavcore/built_in_app/entry_smart_blacklist.txt",
                 "the.second.package.of.the.catalogue\na.package.that.nobody.has.installed\n");
  m_device.Write("data/tavcore/common/apps_info.xml", "");
  if (!call.has_bus) return;
  m_device.Write("run/tav_ready", "");
  m_bus = std::make_unique<Bus>();
  m_service = std::make_unique<Service>(*m_bus);
}

}  // namespace test
