// SPDX-License-Identifier: Apache-2.0
//
// The statements of the properties and of the usage tests as SQLite receives them: texts with
// their doubled blanks, values and their order.
#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <string>

#include "support/device.h"
#include "support/sqlite_recorder.h"
#include "tav_db_api.h"

namespace {

using test::App;
using test::CallsToSqlite;
using Calls = test::SqliteCalls;

// Whether or not an app answers, the same calls are made.
class PropertyStatements : public ::testing::Test {
 protected:
  PropertyStatements() {
    device.Install(App("warm"));
    tav_is_isp_app("warm");
  }
  // The calls of a question that hands out a text.
  template <typename Ask>
  static Calls CallsForText(const Ask& ask) {
    char* text = nullptr;
    Calls calls = CallsToSqlite([&] { ask(&text); });
    std::free(text);
    return calls;
  }

  test::Device device;
};

TEST_F(PropertyStatements, OfTheFlagsAndTheRating) {
  int rating = 0;
  const std::pair<const char*, std::function<void()>> questions[] = {
      {"is_ispbound", [] { tav_is_isp_app("it's"); }},
      {"is_hybrid_tv", [] { tav_is_hybrid_app("it's"); }},
      {"rating", [&] { tav_get_app_rating("it's", &rating); }}};
  for (const auto& [column, ask] : questions) {
    EXPECT_EQ(CallsToSqlite(ask), (Calls{std::string("  select ") + column +
                                             "  from widgetinfo where id = ?  and install_state = ?"
                                             " and is_app_available = ? and is_need_reset = ? ",
                                         "1 'it's' -1", "2 3", "3 1", "4 0", "finalize"}));
  }
}

TEST_F(PropertyStatements, OfTheUsbMarkWithSingleBlanks) {
  EXPECT_EQ(CallsToSqlite([] { tav_check_is_usb_app("it's"); }),
            (Calls{"  select is_usb_app  from widgetinfo where id = ? and install_state = ?"
                   " and is_app_available = ? and is_need_reset = ? ",
                   "1 'it's' -1", "2 3", "3 1", "4 0", "finalize"}));
}

TEST_F(PropertyStatements, OfAPackageName) {
  EXPECT_EQ(CallsForText([](char** text) { tav_get_pkgname_by_nativeid("50%", text); }),
            (Calls{"  select pkgname  from widgetinfo  where hybrid_app = ?  and install_state = ?"
                   " and is_app_available = ? and is_need_reset = ? ",
                   "1 '50%' -1", "2 3", "3 1", "4 0", "finalize"}));
}

TEST_F(PropertyStatements, OfARunTitle) {
  for (const auto ask : {tav_get_app_runtitle_by_ait_id, tav_find_app}) {
    EXPECT_EQ(CallsForText([&](char** text) { ask("org", "app", text); }),
              (Calls{"  select run_title  from widgetinfo where ait_orgid = ?  and ait_appid = ? "
                     " and install_state = ? and is_app_available = ? and is_need_reset = ? ",
                     "1 'org' -1", "2 'app' -1", "3 3", "4 1", "5 0", "finalize"}));
  }
}

TEST_F(PropertyStatements, OfTheQuestionsByRunTitle) {
  const Calls expected = {std::string(test::kSelectApps) +
                              " where run_title = ? and install_state = ?"
                              " and is_app_available = ? and is_need_reset = ? ",
                          "1 'T' -1",
                          "2 3",
                          "3 1",
                          "4 0",
                          "finalize"};
  EXPECT_EQ(CallsForText([](char** text) { tav_get_appid_by_runtitle("T", text); }), expected);
  int status = 0;
  EXPECT_EQ(CallsToSqlite([&] { tav_check_app_installed_by_runtitle("T", &status); }), expected);
}

TEST_F(PropertyStatements, OfTheManualsId) {
  EXPECT_EQ(CallsForText([](char** text) { tav_get_emanual_id(text); }),
            (Calls{"  select value from TAVConfigTable  where name  = ? ", "1 'EMANUAL_ID' -1",
                   "finalize"}));
}

TEST_F(PropertyStatements, OfTheUsageTests) {
  const std::pair<int (*)(const char*), const char*> tests[] = {
      {tav_check_is_recently_used_app, "launch_date"}, {tav_check_is_most_used_app, "use_count"}};
  for (const auto& [check, order] : tests) {
    EXPECT_EQ(CallsToSqlite([check = check] { check("it's"); }),
              (Calls{std::string("select id from widgetinfo where is_need_reset = ?"
                                 " and is_app_available = ? and install_state = ? and is_hidden = ?"
                                 " and use_count > ?  order by ") +
                         order + " desc limit ?",
                     "1 0", "2 1", "3 3", "4 0", "5 0", "6 3", "finalize"}));
  }
}

TEST_F(PropertyStatements, AreTheSameWhenAnAppAnswers) {
  device.Install(App("a").Set("is_ispbound", 1).UseCount(1));
  EXPECT_EQ(CallsToSqlite([] { EXPECT_EQ(tav_is_isp_app("a"), 0); }),
            (Calls{"  select is_ispbound  from widgetinfo where id = ?  and install_state = ?"
                   " and is_app_available = ? and is_need_reset = ? ",
                   "1 'a' -1", "2 3", "3 1", "4 0", "finalize"}));
}

TEST_F(PropertyStatements, AreNoneWhenTheQuestionIsRefused) {
  EXPECT_EQ(CallsToSqlite([] {
              tav_is_isp_app("");
              tav_check_is_usb_app(nullptr);
              tav_check_is_recently_used_app("");
              tav_check_is_most_used_app(nullptr);
              tav_get_emanual_id(nullptr);
            }),
            Calls());
}

}  // namespace
