// SPDX-License-Identifier: Apache-2.0
//
// Exports, changes, settings, threads and the first call of a process.
#include <app_control.h>
#include <tav_db_api_inner.h>
#include <vconf.h>

#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <thread>

#include "workloads.h"

namespace bench {
namespace {

constexpr int kDeviceApps = 200;

using Text = std::unique_ptr<char, void (*)(void*)>;

std::string Taken(char* text) {
  const Text owner(text, free);
  return text;
}

std::string Content(const std::string& path) {
  std::ifstream file(path);
  return {std::istreambuf_iterator<char>(file), {}};
}

const std::string& SomeId() {
  static const std::string& id = *new std::string(IdOf(kDeviceApps / 2));
  return id;
}

std::string LibraryJson() {
  char* json = nullptr;
  Require(tav_get_app_info_json(SomeId().c_str(), &json) == 0, "the library's JSON");
  return Taken(json);
}

std::string LibraryListJson(app_control_h request) {
  char* json = nullptr;
  Require(tav_get_app_list_json(request, &json) == 0, "the library's JSON list");
  return Taken(json);
}

std::vector<Rival> JsonRivals(const Rivals& rivals) {
  const std::string library = LibraryJson();
  char* bare = nullptr;
  Require(rivals.bare.Json(SomeId().c_str(), &bare) == 0 && Taken(bare) == library, "bare JSON");
  Require(rivals.application.Json(SomeId()) == library, "SQLiteCpp's JSON");
  return {
      Repeat(kLibrary,
             [] {
               char* json = nullptr;
               tav_get_app_info_json(SomeId().c_str(), &json);
               free(json);
             }),
      Repeat(kBare,
             [rivals] {
               char* json = nullptr;
               rivals.bare.Json(SomeId().c_str(), &json);
               free(json);
             }),
      Repeat(kSqliteCpp, [rivals] { rivals.application.Json(SomeId()); }),
  };
}

std::vector<Rival> ListJsonRivals(const Rivals& rivals) {
  app_control_h request = nullptr;
  app_control_create(&request);
  const std::shared_ptr<app_control_s> owner(request, app_control_destroy);
  app_control_add_extra_data(request, "all_app", "true");
  const std::string library = LibraryListJson(request);
  char* bare = nullptr;
  Require(rivals.bare.ListJson(&bare) == 0 && Taken(bare) == library, "bare JSON list");
  Require(rivals.application.ListJson() == library, "SQLiteCpp's JSON list");
  return {
      Repeat(kLibrary,
             [owner] {
               char* json = nullptr;
               tav_get_app_list_json(owner.get(), &json);
               free(json);
             }),
      Repeat(kBare,
             [rivals] {
               char* json = nullptr;
               rivals.bare.ListJson(&json);
               free(json);
             }),
      Repeat(kSqliteCpp, [rivals] { rivals.application.ListJson(); }),
  };
}

std::vector<Rival> XmlRivals(const Rivals& rivals) {
  char* path = nullptr;
  Require(tav_write_all_app_info_to_xml(&path) == 0, "the library's XML");
  const std::string library = Content(Taken(path));
  const std::string other = rivals.device.File("other.xml");
  Require(rivals.bare.Xml(other) == 0 && Content(other) == library, "bare XML");
  rivals.application.Xml(other);
  Require(Content(other) == library, "SQLiteCpp's XML");
  return {
      Repeat(kLibrary,
             [] {
               char* file = nullptr;
               tav_write_all_app_info_to_xml(&file);
               free(file);
             }),
      Repeat(kBare, [rivals, other] { rivals.bare.Xml(other); }),
      Repeat(kSqliteCpp, [rivals, other] { rivals.application.Xml(other); }),
  };
}

// The request that gives the service the least to do, so that the round trips are all there is.
std::vector<Rival> RequestRivals(const Rivals& rivals) {
  Require(tav_set_ticker_mode(1) == 0, "the library's request");
  return {
      Repeat(
          kLibrary, [] { tav_set_ticker_mode(1); }, Clock::kWall),
      Repeat(
          kBare, [rivals] { rivals.bus.SetTickerMode(1); }, Clock::kWall),
  };
}

std::vector<Rival> SettingRivals() {
  int status = 0;
  Require(tav_get_tav_boot_status(&status) == 0, "the library's setting");
  return {
      Repeat(kLibrary,
             [] {
               int value = 0;
               tav_get_tav_boot_status(&value);
             }),
      Repeat(kBare,
             [] {
               int value = 0;
               vconf_get_int("memory/tav/boot_status", &value);
             }),
  };
}

// So many calls, shared among so many threads.
Times InThreads(int threads, int calls, const std::function<void()>& call) {
  const auto start = std::chrono::steady_clock::now();
  std::vector<std::thread> pool;
  for (int i = 0; i < threads; ++i) {
    const int share = calls / threads + (i < calls % threads ? 1 : 0);
    pool.emplace_back([&call, share] {
      for (int done = 0; done < share; ++done) call();
    });
  }
  for (std::thread& thread : pool) thread.join();
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return {seconds, seconds};
}

// Against one thread with as many calls, and against SQLite behind a lock of one's own.
std::vector<Rival> ThreadRivals(const Rivals& rivals, int threads) {
  constexpr int kEveryRound = 10000;
  constexpr double kBlockSeconds = 0.04;  // so that the threads' own cost is none of the calls'
  static std::mutex mutex;
  const auto library = [] {
    tav_app_info_s info;
    tav_get_app_info(SomeId().c_str(), &info);
  };
  const auto bare = [rivals] {
    tav_app_info_s info;
    const std::lock_guard<std::mutex> lock(mutex);
    rivals.bare.Lookup(SomeId().c_str(), &info);
  };
  const auto rival = [](const char* name, int count, const std::function<void()>& call) {
    return Rival{name, Clock::kWall, [=](int calls) { return InThreads(count, calls, call); },
                 kEveryRound, kBlockSeconds};
  };
  return {rival(kLibrary, threads, library), rival(kBare, threads, bare),
          rival("one thread", 1, library)};
}

// The time that a fresh process says its first lookup took.
Times FirstCalls(const std::string& module, const char* symbol, int calls) {
  double seconds = 0;
  for (int i = 0; i < calls; ++i) {
    const std::string command =
        std::string(FIRST_CALL) + " " + module + " " + symbol + " " + SomeId();
    const std::unique_ptr<FILE, int (*)(FILE*)> process(popen(command.c_str(), "r"), pclose);
    std::array<char, 64> line{};
    Require(process != nullptr && std::fgets(line.data(), line.size(), process.get()) != nullptr,
            "a first call");
    seconds += std::strtod(line.data(), nullptr);
  }
  return {seconds, seconds};
}

std::vector<Rival> FirstCallRivals() {
  const auto rival = [](const char* name, const std::string& module, const char* symbol) {
    return Rival{name, Clock::kWall, [=](int calls) { return FirstCalls(module, symbol, calls); }};
  };
  return {rival(kLibrary, LIBRARY, "tav_get_app_info"), rival(kBare, FIRST_BARE, "first_lookup"),
          rival(kSqliteCpp, FIRST_SQLITECPP, "first_lookup")};
}

}  // namespace

std::vector<Workload> ExportWorkloads(const Rivals& rivals) {
  return {
      {"JSON of one app", kDeviceApps, [rivals] { return JsonRivals(rivals); }, 200},
      {"JSON of 200 apps", kDeviceApps, [rivals] { return ListJsonRivals(rivals); }, 60},
      {"XML of 200 apps", kDeviceApps, [rivals] { return XmlRivals(rivals); }, 100},
  };
}

std::vector<Workload> OtherWorkloads(const Rivals& rivals) {
  std::vector<Workload> workloads = {
      {"write request", kDeviceApps, [rivals] { return RequestRivals(rivals); }, 400},
      {"settings read", kDeviceApps, [] { return SettingRivals(); }, 200},
      {"first call of a process", kDeviceApps, [] { return FirstCallRivals(); }, 60},
  };
  for (const int threads : {1, 2, 4, 8}) {
    workloads.push_back({"lookup, threads: " + std::to_string(threads), kDeviceApps,
                         [rivals, threads] { return ThreadRivals(rivals, threads); }, 30});
  }
  return workloads;
}

}  // namespace bench
