// SPDX-License-Identifier: Apache-2.0
//
// What the layer costs: the library fills a record where its result lies, and a list's block is
// the caller's. The function below stands before the library's and notes where the record is.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <tav_db_api.hpp>

#include "support/device.h"

namespace {

const tav_app_info_s* g_filled = nullptr;
const tav_app_info_s* g_listed = nullptr;

template <typename Function>
Function* Library(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" int tav_get_app_info(const char* app_id, tav_app_info_s* info) {
  g_filled = info;
  return Library<decltype(tav_get_app_info)>("tav_get_app_info")(app_id, info);
}

extern "C" int tav_get_all_app_list(tav_app_info_s** list, int* count) {
  const int result = Library<decltype(tav_get_all_app_list)>("tav_get_all_app_list")(list, count);
  g_listed = *list;
  return result;
}

namespace {

class InPlace : public ::testing::Test {
 protected:
  InPlace() { device.Install(test::App("clock")); }
  void SetUp() override { ASSERT_TRUE(tav::HasSameLayouts()); }

  test::Device device;
};

TEST_F(InPlace, IsARecordFilledWhereItsResultLies) {
  const tav::Result<tav::AppInfo> app = tav::GetAppInfo("clock");
  ASSERT_TRUE(app);
  EXPECT_EQ(&*app, g_filled);
}

TEST_F(InPlace, IsAListTheLibrarysOwnBlock) {
  const tav::AppList apps = tav::GetAllAppList().value();
  ASSERT_EQ(apps.size(), 1u);
  EXPECT_EQ(apps.data(), g_listed);
}

}  // namespace
