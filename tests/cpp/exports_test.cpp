// SPDX-License-Identifier: Apache-2.0
//
// The JSON texts, the XML file and the data of launch requests, through the C++ layer.
#include <app_control.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include "answers.h"

namespace {

using test::App;
using test::Told;

struct Destroy {
  void operator()(app_control_h request) const { app_control_destroy(request); }
};
using Request = std::unique_ptr<app_control_s, Destroy>;

Request RequestWith(const char* key, const char* value) {
  app_control_h request = nullptr;
  EXPECT_EQ(app_control_create(&request), 0);
  EXPECT_EQ(app_control_add_extra_data(request, key, value), 0);
  return Request(request);
}

class CppExports : public ::testing::Test {
 protected:
  CppExports() { device.Install(App("a").Package("a.package")); }

  std::filesystem::path XmlFile() const {
    return device.Root() / "data/tavcore/common/apps_info.xml";
  }

  test::Device device;
};

TEST_F(CppExports, OfOneAppAreTheInterfacesText) {
  char* expected = nullptr;
  ASSERT_EQ(tav_get_app_info_json("a", &expected), 0);
  const tav::Text owner(expected);
  EXPECT_EQ(Told(tav::GetAppInfoJson("a.package")), "0 " + owner.str());
  EXPECT_NE(owner.view().find("app_info"), std::string_view::npos);
  EXPECT_EQ(Told(tav::GetAppInfoJson("none")), "-1 (none)");
  EXPECT_EQ(Told(tav::GetAppInfoJson(nullptr)), "-1 (none)");
}

TEST_F(CppExports, OfAListAreTheInterfacesText) {
  const Request all = RequestWith("all_app", "true");
  char* expected = nullptr;
  ASSERT_EQ(tav_get_app_list_json(all.get(), &expected), 0);
  const tav::Text owner(expected);
  EXPECT_EQ(Told(tav::GetAppListJson(all.get())), "0 " + owner.str());
  EXPECT_NE(owner.view().find("app_list"), std::string_view::npos);
}

TEST_F(CppExports, OfAListWithoutAppsHaveNoTextAndAreASuccess) {
  device.Sql("delete from widgetinfo");
  EXPECT_EQ(Told(tav::GetAppListJson(RequestWith("all_app", "true").get())), "0 (none)");
}

TEST_F(CppExports, OfAListFailForNoRequest) {
  EXPECT_EQ(Told(tav::GetAppListJson(nullptr)), "-1 (none)");
}

TEST_F(CppExports, AsXmlTellTheFilesPath) {
  std::filesystem::create_directories(XmlFile().parent_path());
  EXPECT_EQ(Told(tav::WriteAllAppInfoToXml()), "0 " + XmlFile().string());
  EXPECT_TRUE(std::filesystem::exists(XmlFile()));
}

TEST_F(CppExports, AsXmlTellThePathOfAFileThatCouldNotBeOpenedToo) {
  const tav::Result<tav::Text> path = tav::WriteAllAppInfoToXml();
  EXPECT_FALSE(path);
  EXPECT_EQ(Told(path), "-1 " + XmlFile().string());
}

TEST_F(CppExports, AsXmlHaveNoPathWhenTheyAreRefused) {
  device.FactoryReset(1);
  EXPECT_EQ(Told(tav::WriteAllAppInfoToXml()), "-1 (none)");
}

TEST_F(CppExports, GiveTheDataOfALaunchRequest) {
  const Request request = RequestWith("view_mode", "3");
  const tav::Result<std::string> mode = tav::GetAppControlData(request.get(), "view_mode");
  EXPECT_EQ(mode.status(), tav::Status::kOk);
  EXPECT_EQ(*mode, "3");
  const tav::Result<std::string> none = tav::GetAppControlData(request.get(), "none");
  EXPECT_EQ(none.status(), tav::Status::kFailed);
  EXPECT_EQ(*none, "");
  EXPECT_FALSE(tav::GetAppControlData(nullptr, "view_mode"));
}

}  // namespace
