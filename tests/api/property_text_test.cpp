// SPDX-License-Identifier: Apache-2.0
//
// The properties that come as a text in a new block of 128 bytes.
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include "support/device.h"
#include "tav_db_api.h"

namespace {

using test::App;

// A property, the column that it hands out, and the app that it is asked of.
struct TextCall {
  const char* name;
  int (*ask)(char** text);
  const char* column;
};

void PrintTo(const TextCall& property, std::ostream* out) {
  *out << property.name;
}

App TheApp() {
  return App("id")
      .Set("hybrid_app", "native")
      .Set("ait_orgid", "org")
      .Set("ait_appid", "app")
      .RunTitle("title")
      .Package("package");
}

int PackageName(char** text) {
  return tav_get_pkgname_by_nativeid("native", text);
}
int RunTitleByAitId(char** text) {
  return tav_get_app_runtitle_by_ait_id("org", "app", text);
}
int FoundApp(char** text) {
  return tav_find_app("org", "app", text);
}
int AppIdByRunTitle(char** text) {
  return tav_get_appid_by_runtitle("title", text);
}

constexpr TextCall kProperties[] = {
    {"PackageName", PackageName, "pkgname"},
    {"RunTitleByAitId", RunTitleByAitId, "run_title"},
    {"FoundApp", FoundApp, "run_title"},
    {"AppIdByRunTitle", AppIdByRunTitle, "id"},
};

// Blocks of the size that the library hands out, so that a block it does not clear shows.
void LeaveRubbishOnTheHeap() {
  char* blocks[64];
  for (char*& block : blocks) {
    block = static_cast<char*>(std::malloc(TAV_TEXT_SIZE));
    ASSERT_NE(block, nullptr);
    std::memset(block, 'x', TAV_TEXT_SIZE);
  }
  for (char* block : blocks) std::free(block);
}

class TextProperty : public ::testing::TestWithParam<TextCall> {
 protected:
  static int Ask(char** text) { return GetParam().ask(text); }
  // All bytes of the block that is handed out, or the failure.
  static std::string Block() {
    LeaveRubbishOnTheHeap();
    char* text = nullptr;
    const int result = Ask(&text);
    if (result != 0) return std::to_string(result);
    std::string block(text, TAV_TEXT_SIZE);
    std::free(text);
    return block;
  }
  static std::string BlockOf(std::string text) {
    text.resize(TAV_TEXT_SIZE);
    return text;
  }
  void Reinstall(const test::Value& value) {
    device.Sql("delete from widgetinfo").Install(TheApp().Set(GetParam().column, value));
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_P(TextProperty, FillsItsBlockWithTheTextAndZeroes) {
  for (const char* text : {"text", "", "50%s", "\u00e9\u00e8"}) {
    Reinstall(text);
    EXPECT_EQ(Block(), BlockOf(text));
  }
}

TEST_P(TextProperty, IsCutAt127Bytes) {
  for (const std::size_t length : {126, 127, 128, 200, 5000}) {
    const std::string text(length, 'a');
    Reinstall(text);
    EXPECT_EQ(Block(), BlockOf(text.substr(0, 127))) << length;
  }
  const std::string in_a_character = std::string(126, 'a') + "\u00e9";
  Reinstall(in_a_character);
  EXPECT_EQ(Block(), BlockOf(std::string(126, 'a') + "\xc3"));
}

TEST_P(TextProperty, IsEmptyForNull) {
  Reinstall(test::Value());
  EXPECT_EQ(Block(), BlockOf(""));
}

TEST_P(TextProperty, IsTheCallersOwnBlockAtEveryCall) {
  device.Install(TheApp());
  char* first = nullptr;
  char* second = nullptr;
  ASSERT_EQ(Ask(&first), 0);
  ASSERT_EQ(Ask(&second), 0);
  EXPECT_NE(first, second);
  first[0] = '#';
  EXPECT_NE(second[0], '#');
  std::free(first);
  std::free(second);
}

TEST_P(TextProperty, LeavesThePointerUntouchedWhenNothingMatches) {
  device.Install(App("other"));
  char before[] = "before";
  char* text = before;
  EXPECT_EQ(Ask(&text), -1);
  EXPECT_EQ(text, before);
  EXPECT_TRUE(log.HasError("query sql fail or have no required record in database "));
}

TEST_P(TextProperty, LeavesThePointerUntouchedOverADatabaseWithoutItsColumn) {
  device.Install(TheApp());
  device.Sql("alter table widgetinfo rename column " + std::string(GetParam().column) +
             " to another");
  char before[] = "before";
  char* text = before;
  EXPECT_EQ(Ask(&text), -1);
  EXPECT_EQ(text, before);
}

INSTANTIATE_TEST_SUITE_P(All, TextProperty, ::testing::ValuesIn(kProperties),
                         [](const auto& property) { return std::string(property.param.name); });

// ---- What each is found by ----

class TextKeys : public ::testing::Test {
 protected:
  TextKeys() {
    device.Install(TheApp()).Install(test::AppWithEveryColumnSet("other").RunTitle("other title"));
  }
  // The text that was handed out, or the failure.
  template <typename Call>
  static std::string Answer(const Call& call) {
    char* text = nullptr;
    const int result = call(&text);
    std::string answer = result == 0 ? text : std::to_string(result);
    std::free(text);
    return answer;
  }
  static std::string PackageOf(const char* native_id) {
    return Answer([&](char** text) { return tav_get_pkgname_by_nativeid(native_id, text); });
  }
  static std::string TitleOf(const char* org_id, const char* app_id) {
    std::string title =
        Answer([&](char** text) { return tav_get_app_runtitle_by_ait_id(org_id, app_id, text); });
    EXPECT_EQ(Answer([&](char** text) { return tav_find_app(org_id, app_id, text); }), title);
    return title;
  }
  static std::string IdOf(const char* run_title) {
    return Answer([&](char** text) { return tav_get_appid_by_runtitle(run_title, text); });
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(TextKeys, OfAPackageNameIsTheNativeIdOfTheHybridColumnAlone) {
  EXPECT_EQ(PackageOf("native"), "package");
  EXPECT_EQ(PackageOf("text hybrid_app"), "text pkgname");
  for (const char* other : {"id", "package", "title", "org", "Native", "nativ", "text hbbTV"}) {
    EXPECT_EQ(PackageOf(other), "-1") << other;
  }
}

TEST_F(TextKeys, OfARunTitleAreBothBroadcastIdsInTheirOrder) {
  EXPECT_EQ(TitleOf("org", "app"), "title");
  EXPECT_EQ(TitleOf("text ait_orgid", "text ait_appid"), "other title");
  EXPECT_EQ(TitleOf("app", "org"), "-1");
  EXPECT_EQ(TitleOf("org", "text ait_appid"), "-1");
  EXPECT_EQ(TitleOf("text ait_orgid", "app"), "-1");
  EXPECT_EQ(TitleOf("Org", "app"), "-1");
}

TEST_F(TextKeys, OfAnAppIdIsTheRunTitle) {
  EXPECT_EQ(IdOf("title"), "id");
  EXPECT_EQ(IdOf("other title"), "other");
  for (const char* other : {"id", "package", "text title", "Title", "titl"}) {
    EXPECT_EQ(IdOf(other), "-1") << other;
  }
}

TEST_F(TextKeys, OfABroadcastAppMayNeitherBeEmpty) {
  char before[] = "before";
  for (const auto ask : {tav_get_app_runtitle_by_ait_id, tav_find_app}) {
    for (const auto& [org_id, app_id] : {std::pair("", "app"), {"org", ""}, {"", ""}}) {
      log.Forget();
      char* text = before;
      EXPECT_EQ(ask(org_id, app_id, &text), -1);
      EXPECT_EQ(text, before);
      EXPECT_EQ(log.Count("AIT_org_id or AIT_app_id is empty "), 1);
      EXPECT_TRUE(log.HasNotice("AIT_org_id or AIT_app_id is empty "));
    }
  }
  EXPECT_FALSE(log.Has("Connected to DB"));
}

TEST_F(TextKeys, OfABroadcastAppMayNeitherBeNull) {
  char before[] = "before";
  char* text = before;
  for (const auto ask : {tav_get_app_runtitle_by_ait_id, tav_find_app}) {
    log.Forget();
    EXPECT_EQ(ask(nullptr, "app", &text), -1);
    EXPECT_EQ(ask("org", nullptr, &text), -1);
    EXPECT_EQ(ask("", nullptr, &text), -1);
    EXPECT_EQ(ask("org", "app", nullptr), -1);
    EXPECT_EQ(log.Count("in param is NULL "), 4);
    EXPECT_FALSE(log.Has("AIT_org_id or AIT_app_id is empty "));
  }
  EXPECT_EQ(text, before);
}

}  // namespace
