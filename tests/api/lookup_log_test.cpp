// SPDX-License-Identifier: Apache-2.0
//
// What the lookups write of the record that they found, and the shape of all their lines.
#include <dlog.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "support/device.h"
#include "support/writer.h"
#include "tav_db_api_inner.h"

namespace {

using test::App;
using Lines = std::vector<std::string>;

class LookupLog : public ::testing::Test {
 protected:
  // The lines that tell a record.
  Lines RecordLines() const {
    Lines lines;
    for (const std::string& message : log.Messages()) {
      if (message.compare(0, 9, "app_id = ") == 0 ||
          message.compare(0, 22, "app_widget_category = ") == 0) {
        lines.push_back(message);
      }
    }
    return lines;
  }
  static Lines LinesOfTheClock() {
    return {
        "app_id = clock,app_index = 301,app_title = Clock,app_version = 1.2,app_tizen_id = "
        "clock000001.Clock,app_runtitle = Run,app_featured = 1,is_removable = 0,is_lock = 1"
        ",is_need_update = 0,is_updated = 0,is_usb_app = 0,is_hidden = 1,is_network = 0"
        ",install_date = 2024-01-02,installState = 3,gamepad = ,app_type = 2"
        ",is_need_login = 0,installed_source_type = 0,is_multi_tasking = 0,is_age_auth = 0"
        ",app_age_limit = 19,ambient_screen_support = ,is_icon_mutlilang_support = 0"
        ",launch_type = 0,app_icon_path = /icon.png,app_installed_path = /opt/clock"
        ",app_panel_icon_path = /icon.png,firstscreen_icon_dir = /icon.png"
        ",ambient_icon_path = /icon.png",
        "app_widget_category = time,type = preload,hbbtv = ,native_id = "
        ",waiting_screen_type = ,launch_user_data = ,content_id = ,use_count = 7"
        ",is_display = 0,is_multi_screen2 = 0,is_need_uninstall = 0"
        ",is_transparent_support = 0,is_partial_overlay_support = 0,is_websdi_support = 0"
        ",is_disk_cache = 0,is_force_launch_support = 0,is_premium_game = 0"};
  }
  void InstallTheClock() {
    device.Setting("db/appstore/ratingvalue", "18+")
        .Install(App("clock")
                     .Index(301)
                     .Title("Clock")
                     .Set("version", "1.2")
                     .TizenId("clock000001.Clock")
                     .RunTitle("Run")
                     .Featured(1)
                     .Hidden()
                     .InstallDate("2024-01-02")
                     .Type(2)
                     .AgeLimit(19)
                     .Set("icon_path", "/icon.png")
                     .Set("install_path", "/opt/clock")
                     .Set("widget_category", "time")
                     .Set("install_type", "preload")
                     .UseCount(7));
  }
  // Writes to the log past the library.
  void Write(const std::string& text) {
    std::ofstream(device.Root() / "log", std::ios::app | std::ios::binary) << text;
  }

  test::Device device;
  test::Log& log = device.GetLog();
  tav_app_info_s info;
};

TEST_F(LookupLog, HasTheTwoLinesOfTheRecordThatWasFound) {
  InstallTheClock();
  ASSERT_EQ(tav_get_app_info("clock", &info), 0);
  const Lines messages = log.Messages();
  ASSERT_GE(messages.size(), 4U);
  const Lines last(messages.end() - 4, messages.end());
  const Lines lines = LinesOfTheClock();
  EXPECT_EQ(last, (Lines{"finalize g_pStmt", lines[0], lines[1],
                         "Get app info by app_id:[clock] finish, ret [0]"}));
  EXPECT_EQ(log.Messages('I').size(), messages.size());
}

TEST_F(LookupLog, HasTheTwoLinesOnceWhicheverLookupFound) {
  InstallTheClock();
  const Lines lines = LinesOfTheClock();
  EXPECT_EQ(tav_get_app_info_by_tizenid("clock000001.Clock", &info), 0);
  EXPECT_EQ(RecordLines(), lines);
  log.Forget();
  EXPECT_EQ(tav_get_app_info_by_runtitle("Run", &info), 0);
  EXPECT_EQ(RecordLines(), lines);
  log.Forget();
  EXPECT_EQ(m_tav_get_app_info("clock", &info), 0);
  EXPECT_EQ(RecordLines(), lines);
  log.Forget();
  EXPECT_EQ(GetAppInfoByRuntitle(&info, "Run"), 0);
  EXPECT_EQ(RecordLines(), lines);
}

TEST_F(LookupLog, HasTheLinesOfTheFirstRowAlone) {
  InstallTheClock();
  device.Install(App("clock2").RunTitle("Run"));
  EXPECT_EQ(tav_get_app_info_by_runtitle("Run", &info), 0);
  EXPECT_EQ(RecordLines(), LinesOfTheClock());
}

TEST_F(LookupLog, HasNoSuchLinesWhenNothingWasFound) {
  InstallTheClock();
  EXPECT_EQ(tav_get_app_info("none", &info), -1);
  EXPECT_EQ(RecordLines(), Lines{});
}

TEST_F(LookupLog, HasNoSuchLinesWhenTheDatabaseIsBusy) {
  InstallTheClock();
  ASSERT_EQ(tav_get_app_info("none", &info), -1);
  const test::ExclusiveWriter writer(device.DatabaseFile(), std::chrono::seconds(30));
  EXPECT_EQ(tav_get_app_info("clock", &info), -2);
  EXPECT_EQ(RecordLines(), Lines{});
}

TEST_F(LookupLog, NamesARunTitleThatIsLookedFor) {
  EXPECT_EQ(GetAppInfoByRuntitle(&info, "Run"), -1);
  EXPECT_EQ(log.Messages()[0], "runtitile:[Run]");
  log.Forget();
  EXPECT_EQ(GetAppInfoByRuntitle(&info, ""), -1);
  EXPECT_EQ(log.Messages(), Lines{"runtitile is empty "});
}

TEST_F(LookupLog, HoldsTheTextsOfAnAppAsTheyAre) {
  for (const std::string text :
       {"two\nlines", "\n", "\033[0;m", "\033[0;31mred\033[0;m", "100%s", "a: b(1) > c"}) {
    log.Forget();
    device.Sql("delete from widgetinfo").Install(App("clock").Title(text));
    ASSERT_EQ(tav_get_app_info("clock", &info), 0);
    const Lines lines = RecordLines();
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_EQ(
        lines[0].compare(0, 38 + text.size(), "app_id = clock,app_index = 0,app_title = " + text, 0,
                         38 + text.size()),
        0)
        << lines[0];
  }
}

TEST_F(LookupLog, LeavesNoMisshapenLineUnnoticed) {
  const std::string good = "W/TavClient(7): tav_a.cpp: F(1) > \033[0;33mtext\033[0;m\n";
  Write(good);
  EXPECT_EQ(log.Messages(), Lines{"text"});
  for (const std::string bad :
       {"W/TavClient(7): text\n",                                           // no place
        "W/TavClient(7): tav_a.cpp: F(1) > text\n",                         // no colour
        "W/TavClient(7): tav_a.cpp: F(1) > \033[0;33mtext\n",               // no end of it
        "E/TavClient(7): tav_a.cpp: F(1) > \033[0;33mtext\033[0;m\n",       // another's colour
        "D/TavClient(7): tav_a.cpp: F(1) > \033[0;32mtext\033[0;m\n",       // another priority
        "W/TavClient(7): src/tav_a.cpp: F(1) > \033[0;33mtext\033[0;m\n",   // a directory
        "W/TavClient(7): tav_a.cpp: F\nG(1) > \033[0;33mtext\033[0;m\n",    // a newline
        "W/TavClient(7): tav_a\n.cpp: F(1) > \033[0;33mtext\033[0;m\n",     // a newline
        "W/TavClient(7): \033[0;33mtav_a.cpp: F(1) > text\033[0;m\n",       // the colour first
        "W/TavClient(7): tav_a.cpp: F(1) > \033[0;33mtext\033[0;m more\n",  // something behind
        "W/TavClient: tav_a.cpp: F(1) > \033[0;33mtext\033[0;m\n",          // no process
        "?/TavClient(7): tav_a.cpp: F(1) > \033[0;33mtext\033[0;m\n"}) {    // no priority
    for (const std::string& all : {bad, good + bad, bad + good}) {
      log.Forget();
      Write(all);
      EXPECT_THROW(log.Lines(), std::runtime_error) << all;
    }
  }
}

TEST_F(LookupLog, IsReadWithoutTheLinesOfOthers) {
  Write("D/VCONF(7): cannot read\\nthis\n");
  Write("I/TavClient(7): tav_a.cpp: F(12) > \033[0;32mcall\\ncb (0)\033[0;m\n");
  Write("E/(7): \n");
  EXPECT_EQ(log.Messages(), Lines{"call\ncb (0)"});
}

TEST_F(LookupLog, HasOneTagAndTheColoursOfTheThreeLevels) {
  EXPECT_EQ(tav_get_app_info("none", &info), -1);
  EXPECT_EQ(tav_get_app_info(nullptr, nullptr), -1);
  device.Unset("db/tav/factory_reset");
  EXPECT_EQ(tav_get_app_info("none", &info), -1);
  for (const char priority : {'I', 'W', 'E'}) {
    EXPECT_FALSE(log.Messages(priority).empty()) << priority;
  }
  for (const test::LogLine& line : log.Lines()) {
    EXPECT_EQ(line.tag, "TavClient");
    EXPECT_EQ(line.file.substr(0, 4), "tav_") << line.file;
    const std::string colour = line.priority == 'I'   ? "\033[0;32m"
                               : line.priority == 'W' ? "\033[0;33m"
                                                      : "\033[0;31m";
    EXPECT_EQ(line.colour, colour) << line.message;
  }
  const test::LogLine start = log.Lines().front();
  EXPECT_EQ(start.file, "tav_db_api_lookup.cpp");
  EXPECT_EQ(start.function, "tav_get_app_info");
}

}  // namespace
