// SPDX-License-Identifier: Apache-2.0
//
// Reads from many threads while another process rewrites both tables: whatever is read was
// written by one transaction, whole.
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/threads.h"
#include "support/database.h"
#include "support/device.h"
#include "tav_db_api.h"

namespace {

using std::chrono::steady_clock;

constexpr int kThreads = 8;
constexpr int kApps = 30;
constexpr int kSteadyApps = 20;  // the others come and go with the generations
constexpr std::chrono::seconds kTime{3};
constexpr std::chrono::seconds kPatience{40};

// A text that carries the generation from its first byte to its last.
std::string TextOf(int generation) {
  const std::string number = std::to_string(generation) + ";";
  std::string text;
  while (text.size() + number.size() < TAV_TEXT_SIZE) text += number;
  return text;
}

std::string IdOf(int app) {
  return "app" + std::to_string(app);
}

// The transaction that brings every row of both tables to the generation.
std::string Rewrite(int generation) {
  const std::string number = std::to_string(generation);
  const std::string text = "'" + TextOf(generation) + "'";
  return "begin immediate; update widgetinfo set title = " + text + ", version = " + text +
         ", reserved_string_9 = " + text + ", use_count = " + number +
         ", is_multi_screen2 = " + number + ", reserved_int_1 = " + number +
         ", is_app_available = " +
         (generation % 3 == 0 ? "app_index < " + std::to_string(kSteadyApps) : "1") +
         "; update TAVConfigTable set value = " + text + "; commit";
}

tav_app_info_s RecordOf(int app, int generation) {
  tav_app_info_s record = {};
  const std::string text = TextOf(generation);
  IdOf(app).copy(record.app_id, sizeof(record.app_id) - 1);
  for (char* field : {record.app_title, record.app_version, record.content_id}) {
    text.copy(field, TAV_TEXT_SIZE - 1);
  }
  record.app_index = app;
  record.use_count = record.is_multi_screen2 = record.launch_type = generation;
  record.installState = 3;
  record.is_ticker = 1;
  return record;
}

// Another process that writes one generation after the other until it is destroyed.
class GenerationWriter {
 public:
  explicit GenerationWriter(const std::filesystem::path& file) {
    int ends[2];
    if (pipe(ends) != 0) throw std::runtime_error("pipe");
    m_process = fork();
    if (m_process == 0) {
      close(ends[1]);
      Write(file, ends[0]);
    }
    close(ends[0]);
    m_stop = ends[1];
  }
  ~GenerationWriter() { Stop(); }
  GenerationWriter(const GenerationWriter&) = delete;
  GenerationWriter& operator=(const GenerationWriter&) = delete;

  // The exit status of the process.
  int Stop() {
    if (m_process == -1) return 0;
    close(m_stop);
    int status = -1;
    waitpid(m_process, &status, 0);
    m_process = -1;
    return status;
  }

 private:
  [[noreturn]] static void Write(const std::filesystem::path& file, int stop) {
    try {
      test::Database database(file);
      database.Run("pragma synchronous = off");
      pollfd closed = {stop, POLLIN, 0};
      for (int generation = 2; poll(&closed, 1, 0) == 0; ++generation) {
        database.Run(Rewrite(generation));
      }
    } catch (const std::exception&) {
      _exit(1);
    }
    _exit(0);
  }

  pid_t m_process = -1;
  int m_stop = -1;
};

// What one thread has seen. Its checks throw what is wrong.
class Reader {
 public:
  explicit Reader(int number) : m_turn(number) {}

  // The next of the calls; false when the database was busy.
  bool Read() {
    switch (++m_turn % 8) {
      case 0:
        return ReadOne();
      case 1:
        return ReadList([this](tav_app_info_s** list, int* count) {
          const tav_app_filter_s every_app = {65535, 0, 65535};
          return tav_get_app_list(every_app, static_cast<tav_app_viewmode_e>(m_turn / 8 % 6), -1, 0,
                                  list, count);
        });
      case 2:
        return ReadShortList();
      case 3:
        return ReadList(tav_get_all_app_list);
      case 4:
        return ReadList([](tav_app_info_s** list, int* count) {
          return tav_get_recently_used_app_list(kSteadyApps, list, count);
        });
      case 5:
        return ReadList([](tav_app_info_s** list, int* count) {
          return tav_get_key_list("is_ticker", 0, list, count);
        });
      case 6:
        return ReadCount();
      default:
        return ReadSetting();
    }
  }

  int Newest() const { return m_newest; }

 private:
  static void Require(bool is_right, const std::string& what) {
    if (!is_right) throw std::runtime_error(what);
  }

  static bool IsAnswered(int result) {
    Require(result == 0 || result == -2, "result " + std::to_string(result));
    return result == 0;
  }

  // Generations never go back.
  void Saw(int generation) {
    Require(generation >= m_newest, "an old generation");
    m_newest = generation;
  }

  static void RequireWhole(const tav_app_info_s& record) {
    Require(record.app_index >= 0 && record.app_index < kApps, "no such app");
    const tav_app_info_s whole = RecordOf(record.app_index, record.use_count);
    Require(std::memcmp(&record, &whole, sizeof(whole)) == 0, "a record that nobody wrote");
  }

  bool ReadOne() {
    tav_app_info_s record;
    if (!IsAnswered(tav_get_app_info(IdOf(m_turn % kSteadyApps).c_str(), &record))) return false;
    Require(record.app_index == m_turn % kSteadyApps, "another app");
    RequireWhole(record);
    Saw(record.use_count);
    return true;
  }

  template <typename Call>
  bool ReadList(const Call& call) {
    tav_app_info_s* records = nullptr;
    int count = 0;
    const int result = call(&records, &count);
    const std::unique_ptr<tav_app_info_s, decltype(&std::free)> owner(records, &std::free);
    if (!IsAnswered(result)) return false;
    // Apps that went between the count and the rows leave empty records at the end.
    const tav_app_info_s empty = {};
    tav_app_info_s* const end = std::find_if(
        records, records + count, [](const auto& record) { return record.app_id[0] == '\0'; });
    for (tav_app_info_s* record = end; record != records + count; ++record) {
      Require(std::memcmp(record, &empty, sizeof(empty)) == 0, "a record without an id");
    }
    Require(end - records >= kSteadyApps, "too few records");
    std::vector<bool> is_there(kApps, false);
    for (tav_app_info_s* record = records; record != end; ++record) {
      RequireWhole(*record);
      Require(record->use_count == records->use_count, "records of two generations");
      Require(!is_there[static_cast<std::size_t>(record->app_index)], "an app twice");
      is_there[static_cast<std::size_t>(record->app_index)] = true;
    }
    Saw(records->use_count);
    return true;
  }

  bool ReadShortList() {
    tav_app_ms_s* records = nullptr;
    int count = 0;
    const int result = tav_get_app_list_ms({65535, 0, 65535}, TAV_APP_VIEWMODE_CATALOGUE, 0,
                                           kSteadyApps, &records, &count);
    const std::unique_ptr<tav_app_ms_s, decltype(&std::free)> owner(records, &std::free);
    if (!IsAnswered(result)) return false;
    Require(count == kSteadyApps, "too few short records");
    for (int i = 0; i < count; ++i) {
      Require(records[i].app_id == IdOf(i), "another short record");
      Require(records[i].is_multi_screen2 == records[0].is_multi_screen2,
              "short records of two generations");
    }
    Saw(records[0].is_multi_screen2);
    return true;
  }

  static bool ReadCount() {
    int count = 0;
    if (!IsAnswered(tav_get_app_count({65535, 0, 65535}, &count))) return false;
    Require(count == kSteadyApps || count == kApps, "a count of no generation");
    return true;
  }

  bool ReadSetting() {
    char* text = nullptr;
    const int result = tav_get_emanual_id(&text);
    const std::unique_ptr<char, decltype(&std::free)> owner(text, &std::free);
    // A busy database is no more than a missing value to this one.
    if (result != 0) return false;
    const int generation = std::atoi(text);
    Require(text == TextOf(generation), "a setting that nobody wrote");
    Saw(generation);
    return true;
  }

  int m_turn;
  int m_newest = 1;
};

TEST(Concurrency, GivesEveryThreadWholeRecordsOfOneGenerationWhileAnotherProcessWrites) {
  test::Device device;
  setenv("DLOG_LEVEL", "F", 1);  // too many lines to be of use
  std::vector<test::App> apps;
  for (int app = 0; app < kApps; ++app) {
    apps.push_back(test::App(IdOf(app))
                       .Index(app)
                       .Set("is_ticker", 1)
                       .LaunchDate(std::to_string(kApps - app + 10)));
  }
  device.InstallAll(apps).Configure("EMANUAL_ID", "").Sql(Rewrite(1));
  GenerationWriter writer(device.DatabaseFile());  // forks before the threads are there

  std::atomic<int> answered{0};
  std::atomic<int> newest{0};
  std::vector<std::string> complaints(kThreads);
  const auto start = steady_clock::now();
  // Until the time has passed, or longer where little has happened by then.
  const auto goes_on = [&] {
    const auto elapsed = steady_clock::now() - start;
    return elapsed < kTime || (elapsed < kPatience && (answered < 200 || newest < 5));
  };
  {
    const Threads threads(kThreads, [&](int number) {
      Reader reader(number);
      try {
        while (goes_on()) {
          if (reader.Read()) ++answered;
          if (reader.Newest() > newest) newest = reader.Newest();
        }
      } catch (const std::exception& error) {
        complaints[static_cast<std::size_t>(number)] = error.what();
      }
    });
  }
  EXPECT_EQ(complaints, std::vector<std::string>(kThreads));
  EXPECT_GE(answered, 200);
  EXPECT_GE(newest, 5);
  EXPECT_EQ(writer.Stop(), 0);
  Reader last(0);
  EXPECT_TRUE(last.Read());
  EXPECT_GE(last.Newest(), newest);
}

}  // namespace
