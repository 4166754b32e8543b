// SPDX-License-Identifier: Apache-2.0
//
// Several processes that read with several threads each, while another one writes, in each of
// SQLite's journal modes. TAV_SOAK_SECONDS in the environment says for how long.
#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "device/schema.h"
#include "platform/threads.h"
#include "soak/child.h"
#include "soak/generations.h"
#include "soak/reader.h"
#include "support/database.h"
#include "support/device.h"

namespace {

using soak::Tally;
using std::chrono::steady_clock;

constexpr int kProcesses = 4;
constexpr int kThreads = 4;
constexpr std::chrono::seconds kPatience{30};

std::chrono::seconds Time() {
  const char* value = std::getenv("TAV_SOAK_SECONDS");
  return std::chrono::seconds(value != nullptr ? std::atoi(value) : 5);
}

// The statements that bring every row of both tables to the generation.
std::string Rows(int generation) {
  const std::string number = std::to_string(generation);
  const std::string text = "'" + soak::TextOf(generation) + "'";
  return "update widgetinfo set title = " + text + ", version = " + text +
         ", reserved_string_9 = " + text + ", use_count = " + number +
         ", is_multi_screen2 = " + number + ", reserved_int_1 = " + number +
         ", is_app_available = " +
         (generation % 3 == 0 ? "app_index < " + std::to_string(soak::kSteadyApps) : "1") +
         "; update TAVConfigTable set value = " + text + "; ";
}

// The apps table again, of the same shape, with the same rows.
std::string NewTable() {
  const std::string create = tav_device::CreateTablesSql();
  return "alter table widgetinfo rename to old; " + create.substr(0, create.find(';') + 1) +
         " insert into widgetinfo select * from old; drop table old; ";
}

std::string Transaction(int generation) {
  const bool is_new_table = generation % 10 == 5;
  const std::string behind = generation % 25 == 0   ? "vacuum"
                             : generation % 40 == 1 ? "pragma wal_checkpoint(truncate)"
                                                    : "";
  return "begin immediate; " + (is_new_table ? NewTable() : "") + Rows(generation) + "commit; " +
         behind;
}

void Write(const std::filesystem::path& file, Tally& tally) {
  test::Database database(file);
  database.Run("pragma synchronous = off");
  while (!tally.is_over) {
    database.Run(Transaction(tally.written + 1));
    ++tally.written;
  }
}

void ReadWithThreads(Tally& tally) {
  std::vector<std::string> complaints(kThreads);
  {
    const Threads threads(kThreads, [&](int number) {
      soak::Reader reader(number, tally);
      try {
        while (!tally.is_over) reader.Read();
      } catch (const std::exception& error) {
        complaints[static_cast<std::size_t>(number)] = error.what();
        tally.is_over = true;
      }
    });
  }
  for (const std::string& complaint : complaints) test::Require(complaint.empty(), complaint);
}

class Soak : public ::testing::TestWithParam<const char*> {
 protected:
  Soak() {
    setenv("DLOG_LEVEL", "F", 1);  // too many lines to be of use
    std::vector<test::App> apps;
    for (int app = 0; app < soak::kApps; ++app) {
      apps.push_back(test::App(soak::IdOf(app)).Index(app));
    }
    device.InstallAll(apps).Configure("EMANUAL_ID", "").Sql(Rows(1));
    device.Sql("pragma journal_mode = " + std::string(GetParam()));
  }

  test::Device device;
};

TEST_P(Soak, GivesEveryProcessWholeRecordsOfOneGeneration) {
  const auto tally = soak::SharedTally();
  test::ForkedChild writer([&] { Write(device.DatabaseFile(), *tally); });
  std::vector<std::unique_ptr<test::ForkedChild>> readers;
  for (int i = 0; i < kProcesses; ++i) {
    readers.push_back(std::make_unique<test::ForkedChild>([&] { ReadWithThreads(*tally); }));
  }
  // Until the time has passed, or longer where little has happened by then.
  const auto start = steady_clock::now();
  const auto goes_on = [&] {
    const auto elapsed = steady_clock::now() - start;
    return !tally->is_over &&
           (elapsed < Time() || (elapsed < kPatience && (tally->calls < 500 || tally->read < 60)));
  };
  soak::Reader(0, *tally).Read();
  while (goes_on()) soak::Reader(0, *tally).Read();
  tally->is_over = true;

  for (const auto& reader : readers) EXPECT_EQ(reader->Complaint(), "");
  EXPECT_EQ(writer.Complaint(), "");
  EXPECT_GE(tally->calls, 500);
  EXPECT_GE(tally->read, 60);  // new tables, vacuums and a checkpoint are among them
  std::printf("soak %s: %d s, %d transactions, %ld calls, %ld busy, slowest call %d ms\n",
              GetParam(), static_cast<int>(Time().count()), tally->written.load(),
              tally->calls.load(), tally->busy.load(), tally->slowest.load() / 1000);
}

INSTANTIATE_TEST_SUITE_P(EachJournal, Soak, ::testing::Values("delete", "wal"));

}  // namespace
