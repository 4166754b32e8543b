// SPDX-License-Identifier: Apache-2.0
//
// Single properties and questions about apps, through the C++ layer.
#include <gtest/gtest.h>

#include <string>

#include "answers.h"

namespace {

using tav::Answer;
using test::App;
using test::Told;

class CppProperties : public ::testing::Test {
 protected:
  CppProperties() {
    device.Install(App("a")
                       .RunTitle("A run")
                       .Package("a.package")
                       .UseCount(4)
                       .LaunchDate("2026-03-04")
                       .Set("hybrid_app", "native.a")
                       .Set("is_ispbound", 1)
                       .Set("is_hybrid_tv", 1)
                       .Set("is_usb_app", 1)
                       .Set("rating", 4)
                       .Set("ait_orgid", "12")
                       .Set("ait_appid", "34")
                       .Set("reserved_tinyint_10", 1));
    device.InstallAll(
        {App("plain").Set("reserved_tinyint_11", 1), App("b").UseCount(3), App("c").UseCount(2)});
  }

  test::Device device;
};

using Question = Answer (*)(tav::TextView);
constexpr Question kQuestions[] = {
    tav::IsIspApp,           tav::IsHybridApp,      tav::CheckIsRecentlyUsedApp,
    tav::CheckIsMostUsedApp, tav::CheckUpdatePopup, tav::CheckAppInstalling};

TEST_F(CppProperties, AreAnsweredWithYesOrNo) {
  for (const Question ask : kQuestions) {
    EXPECT_EQ(ask("a"), Answer::kYes);
    EXPECT_EQ(ask("plain"), Answer::kNo);
    EXPECT_EQ(ask("none"), Answer::kNo);
    EXPECT_EQ(ask(""), Answer::kNo);
    EXPECT_EQ(ask(nullptr), Answer::kNo);
  }
}

TEST_F(CppProperties, TellABusyDatabaseFromANoWhereTheInterfaceDoes) {
  const auto writer = test::BusyWriter(device);
  EXPECT_EQ(tav::IsIspApp("a"), Answer::kBusy);
  EXPECT_EQ(tav::IsHybridApp("a"), Answer::kBusy);
  EXPECT_EQ(tav::CheckIsRecentlyUsedApp("a"), Answer::kBusy);
  EXPECT_EQ(tav::CheckIsMostUsedApp("a"), Answer::kBusy);
  EXPECT_EQ(tav::CheckUpdatePopup("plain"), Answer::kYes);
  EXPECT_EQ(tav::CheckAppInstalling("a"), Answer::kNo);
}

TEST_F(CppProperties, TellAClearUsbMarkFromAFailure) {
  EXPECT_EQ(Told(tav::CheckIsUsbApp("a")), "0 yes");
  EXPECT_EQ(Told(tav::CheckIsUsbApp("plain")), "0 no");
  EXPECT_EQ(Told(tav::CheckIsUsbApp("none")), "-1 no");
  const auto writer = test::BusyWriter(device);
  EXPECT_EQ(Told(tav::CheckIsUsbApp("a")), "-2 no");
}

TEST_F(CppProperties, GiveTheRating) {
  EXPECT_EQ(Told(tav::GetAppRating("a")), "0 4");
  EXPECT_EQ(Told(tav::GetAppRating("none")), "-1 0");
  EXPECT_EQ(Told(tav::GetAppRating(nullptr)), "-1 0");
}

TEST_F(CppProperties, GiveTexts) {
  EXPECT_EQ(Told(tav::GetPkgnameByNativeId("native.a")), "0 a.package");
  EXPECT_EQ(Told(tav::GetAppRunTitleByAitId("12", "34")), "0 A run");
  EXPECT_EQ(Told(tav::FindApp("12", "34")), "0 A run");
  EXPECT_EQ(Told(tav::GetAppIdByRunTitle("A run")), "0 a");
}

TEST_F(CppProperties, FailWithoutATextWhenThereIsNoSuchApp) {
  EXPECT_EQ(Told(tav::GetPkgnameByNativeId("none")), "-1 (none)");
  EXPECT_EQ(Told(tav::GetAppRunTitleByAitId("34", "12")), "-1 (none)");
  EXPECT_EQ(Told(tav::FindApp(nullptr, "34")), "-1 (none)");
  EXPECT_EQ(Told(tav::GetAppIdByRunTitle("a")), "-1 (none)");
}

TEST_F(CppProperties, TellWhetherARunTitleIsInstalled) {
  EXPECT_EQ(Told(tav::CheckAppInstalledByRunTitle("A run")), "0 yes");
  EXPECT_EQ(Told(tav::CheckAppInstalledByRunTitle("none")), "0 no");
  EXPECT_EQ(Told(tav::CheckAppInstalledByRunTitle("")), "-1 no");
  EXPECT_EQ(Told(tav::CheckAppInstalledByRunTitle(nullptr)), "-1 no");
  const auto writer = test::BusyWriter(device);
  EXPECT_EQ(Told(tav::CheckAppInstalledByRunTitle("A run")), "-2 no");
}

TEST_F(CppProperties, GiveTheElectronicManual) {
  EXPECT_EQ(Told(tav::GetEmanualId()), "-1 (none)");
  device.Configure("EMANUAL_ID", "org.example.manual");
  EXPECT_EQ(Told(tav::GetEmanualId()), "0 org.example.manual");
}

}  // namespace
