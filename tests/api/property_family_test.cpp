// SPDX-License-Identifier: Apache-2.0
//
// What all properties share: the apps that they see, the keys that they take, the order of
// their checks, and what a failure leaves behind.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "api/log_texts.h"
#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::kIsNull;

// The result and what the call left in the caller's value: "0 text", "-1 untouched". Those
// without such a value give the result alone.
std::string NumberAnswer(int (*ask)(const char*, int*), const char* key) {
  int number = 4711;
  const int result = ask(key, &number);
  return std::to_string(result) + " " + (number == 4711 ? "untouched" : std::to_string(number));
}

template <typename Ask>
std::string TextAnswer(const Ask& ask) {
  char before[] = "untouched";
  char* text = before;
  const int result = ask(&text);
  std::string answer = std::to_string(result) + " " + (text != nullptr ? text : "null");
  if (text != before) std::free(text);
  return answer;
}

struct Member {
  const char* name;
  // Asks with one text for every key that the member has.
  std::string (*ask)(const char* key);
  // Asks with a null pointer for the value; null where there is none.
  int (*ask_without_value)(const char* key);
  const char* empty_complaint;
  const char* found;  // for TheApp(key); a text of that app's is followed by the key
  bool ends_with_key;
  const char* missing;
  const char* busy;
};

void PrintTo(const Member& member, std::ostream* out) {
  *out << member.name;
}

App TheApp(const std::string& key) {
  return App(key)
      .Set("is_ispbound", 1)
      .Set("is_hybrid_tv", 1)
      .Set("is_usb_app", 1)
      .Set("rating", 7)
      .Set("hybrid_app", key)
      .Set("ait_orgid", key)
      .Set("ait_appid", key)
      .RunTitle(key)
      .Package("package of " + key);
}

constexpr char kAppIdIsEmpty[] = "app_id is empty ";
constexpr char kAitIdIsEmpty[] = "AIT_org_id or AIT_app_id is empty ";
constexpr char kRunTitleIsEmpty[] = "runtitile is empty ";
constexpr char kUntouched[] = "-1 untouched";
constexpr char kBusyUntouched[] = "-2 untouched";

const Member kMembers[] = {
    {"tav_is_isp_app", [](const char* key) { return std::to_string(tav_is_isp_app(key)); }, nullptr,
     kAppIdIsEmpty, "0", false, "-1", "-2"},
    {"tav_is_hybrid_app", [](const char* key) { return std::to_string(tav_is_hybrid_app(key)); },
     nullptr, kAppIdIsEmpty, "0", false, "-1", "-2"},
    {"tav_check_is_usb_app",
     [](const char* key) { return std::to_string(tav_check_is_usb_app(key)); }, nullptr,
     kAppIdIsEmpty, "1", false, "-1", "-2"},
    {"tav_get_app_rating", [](const char* key) { return NumberAnswer(tav_get_app_rating, key); },
     [](const char* key) { return tav_get_app_rating(key, nullptr); }, kAppIdIsEmpty, "0 7", false,
     kUntouched, kBusyUntouched},
    {"tav_get_pkgname_by_nativeid",
     [](const char* key) {
       return TextAnswer([&](char** text) { return tav_get_pkgname_by_nativeid(key, text); });
     },
     [](const char* key) { return tav_get_pkgname_by_nativeid(key, nullptr); },
     "native_id is empty ", "0 package of ", true, kUntouched, kBusyUntouched},
    {"tav_get_app_runtitle_by_ait_id",
     [](const char* key) {
       return TextAnswer(
           [&](char** text) { return tav_get_app_runtitle_by_ait_id(key, key, text); });
     },
     [](const char* key) { return tav_get_app_runtitle_by_ait_id(key, key, nullptr); },
     kAitIdIsEmpty, "0 ", true, kUntouched, kBusyUntouched},
    {"tav_find_app",
     [](const char* key) {
       return TextAnswer([&](char** text) { return tav_find_app(key, key, text); });
     },
     [](const char* key) { return tav_find_app(key, key, nullptr); }, kAitIdIsEmpty, "0 ", true,
     kUntouched, kBusyUntouched},
    // The two below test no state of the platform themselves.
    {"tav_get_appid_by_runtitle",
     [](const char* key) {
       return TextAnswer([&](char** text) { return tav_get_appid_by_runtitle(key, text); });
     },
     [](const char* key) { return tav_get_appid_by_runtitle(key, nullptr); }, kRunTitleIsEmpty,
     "0 ", true, kUntouched, kBusyUntouched},
    {"tav_check_app_installed_by_runtitle",
     [](const char* key) { return NumberAnswer(tav_check_app_installed_by_runtitle, key); },
     [](const char* key) { return tav_check_app_installed_by_runtitle(key, nullptr); },
     kRunTitleIsEmpty, "0 0", false, "0 1", "-2 1"},
};

std::string NameOfMember(const ::testing::TestParamInfo<Member>& member) {
  return member.param.name;
}

// ---- All of them ----

class PropertyFamily : public ::testing::TestWithParam<Member> {
 protected:
  static std::string Ask(const char* key) { return GetParam().ask(key); }
  static std::string Found(const std::string& key) {
    return GetParam().found + (GetParam().ends_with_key ? key : "");
  }
  static std::string Refused() {
    const std::string missing = GetParam().missing;
    return missing == "-1" ? "-1" : kUntouched;
  }
  void StartRecovery() { device.Write("opt/dbspace/pkgreinstall", ""); }
  void EndRecovery() { std::filesystem::remove(device.Root() / "opt/dbspace/pkgreinstall"); }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_P(PropertyFamily, SeesAnAppThatIsInstalledAvailableAndNotMarkedForReset) {
  device.Install(App("other")).Install(TheApp("key"));
  EXPECT_EQ(Ask("key"), Found("key"));
  device.Sql("update widgetinfo set is_hidden = 1");
  EXPECT_EQ(Ask("key"), Found("key"));
}

TEST_P(PropertyFamily, SeesNoOtherApp) {
  const App app = TheApp("key");
  for (const App& invisible :
       {App(app).InstallState(0), App(app).InstallState(2), App(app).InstallState(4),
        App(app).Null("install_state"), App(app).Unavailable(), App(app).Set("is_app_available", 2),
        App(app).Null("is_app_available"), App(app).MarkedForReset(),
        App(app).Set("is_need_reset", -1), App(app).Null("is_need_reset")}) {
    device.Sql("delete from widgetinfo").Install(invisible);
    EXPECT_EQ(Ask("key"), GetParam().missing);
  }
}

TEST_P(PropertyFamily, TakesQuotesPercentSignsAndSqlForData) {
  for (const char* key : {"it's", "\"quoted\"", "50%", "%s%n", "_", "?", "?1", "a' or '1'='1",
                          "x'; drop table widgetinfo; --", " ", "\u00e9", "\xff\xfe"}) {
    device.Sql("delete from widgetinfo").Install(TheApp("other"));
    EXPECT_EQ(Ask(key), GetParam().missing) << key;
    device.Install(TheApp(key));
    EXPECT_EQ(Ask(key), Found(key)) << key;
  }
}

TEST_P(PropertyFamily, TakesAKeyOfAnyLength) {
  const std::string key(5000, 'k');
  device.Install(TheApp(key));
  EXPECT_EQ(Ask(key.c_str()), Found(key).substr(0, std::string("0 ").size() + 127));
  EXPECT_EQ(Ask(key.substr(1).c_str()), GetParam().missing);
}

TEST_P(PropertyFamily, RefusesNullArguments) {
  device.Install(TheApp("key"));
  EXPECT_EQ(Ask(nullptr), Refused());
  EXPECT_EQ(log.Count(kIsNull), 1);
  EXPECT_TRUE(log.HasNotice(kIsNull));
  if (GetParam().ask_without_value != nullptr) {
    EXPECT_EQ(GetParam().ask_without_value("key"), -1);
    EXPECT_EQ(GetParam().ask_without_value(""), -1);
    EXPECT_EQ(GetParam().ask_without_value(nullptr), -1);
    EXPECT_EQ(log.Count(kIsNull), 4);
  }
  EXPECT_FALSE(log.Has(GetParam().empty_complaint));
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_P(PropertyFamily, RefusesAnEmptyKey) {
  device.Install(TheApp(""));
  EXPECT_EQ(Ask(""), Refused());
  EXPECT_EQ(log.Count(GetParam().empty_complaint), 1);
  EXPECT_TRUE(log.HasNotice(GetParam().empty_complaint));
  EXPECT_FALSE(log.Has(kIsNull));
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_P(PropertyFamily, IsBusyWhileTheDatabaseIsKeptAndAnswersAfterwards) {
  device.Install(TheApp("key"));
  {
    const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
    EXPECT_EQ(Ask("key"), GetParam().busy);
    EXPECT_EQ(log.Count("prepare return SQLITE_BUSY"), 100);
  }
  EXPECT_EQ(Ask("key"), Found("key"));
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(Ask("key"), GetParam().busy);
  EXPECT_EQ(log.Count("step return SQLITE_BUSY"), 100);
  EXPECT_EQ(log.Count("Get DB fail:sql busy"), 1);
}

TEST_P(PropertyFamily, ReleasesTheLockOnEveryPath) {
  // Were it kept on one of them, the next call would never return.
  device.Install(TheApp("key"));
  Ask(nullptr);
  Ask("");
  if (GetParam().ask_without_value != nullptr) GetParam().ask_without_value("key");
  device.FactoryReset(1);
  Ask("key");
  device.FactoryReset(0);
  StartRecovery();
  Ask("key");
  EndRecovery();
  std::filesystem::rename(device.DatabaseFile(), device.Root() / "aside");
  Ask("key");
  std::filesystem::rename(device.Root() / "aside", device.DatabaseFile());
  Ask("none");
  EXPECT_EQ(Ask("key"), Found("key"));
  EXPECT_EQ(Ask("key"), Found("key"));
}

INSTANTIATE_TEST_SUITE_P(All, PropertyFamily, ::testing::ValuesIn(kMembers), NameOfMember);

// ---- Those that test the state of the platform first ----

class GuardedProperty : public PropertyFamily {
 protected:
  GuardedProperty() { device.Install(TheApp("key")); }
};

TEST_P(GuardedProperty, RefusesDuringAFactoryReset) {
  for (const int type : {1, 2}) {
    device.FactoryReset(type);
    EXPECT_EQ(Ask("key"), Refused());
  }
  EXPECT_EQ(log.Count("FactoryReset is true"), 2);
  EXPECT_TRUE(log.HasNotice("FactoryReset is true"));
  EXPECT_FALSE(log.Has("Connected to DB"));
  for (const int type : {0, 3, -1}) {
    device.FactoryReset(type);
    EXPECT_EQ(Ask("key"), Found("key"));
  }
}

TEST_P(GuardedProperty, RefusesDuringARecoveryOfThePackageManager) {
  StartRecovery();
  EXPECT_EQ(Ask("key"), Refused());
  EXPECT_TRUE(log.HasError("Pkgmgr is recovering"));
  EXPECT_FALSE(log.Has("Connected to DB"));
  EndRecovery();
  EXPECT_EQ(Ask("key"), Found("key"));
}

TEST_P(GuardedProperty, AsksForTheResetThenTheRecoveryThenNullThenEmpty) {
  device.FactoryReset(1);
  StartRecovery();
  for (const char* key : {"key", "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(Ask(key), Refused());
  }
  EXPECT_EQ(log.Count("FactoryReset is true"), 3);
  EXPECT_FALSE(log.Has("Pkgmgr is recovering"));

  device.FactoryReset(0);
  for (const char* key : {"key", "", static_cast<const char*>(nullptr)}) {
    EXPECT_EQ(Ask(key), Refused());
  }
  EXPECT_EQ(log.Count("Pkgmgr is recovering"), 3);
  EXPECT_FALSE(log.Has(kIsNull));
  EXPECT_FALSE(log.Has(GetParam().empty_complaint));
}

INSTANTIATE_TEST_SUITE_P(All, GuardedProperty, ::testing::ValuesIn(kMembers, kMembers + 7),
                         NameOfMember);

}  // namespace
