// SPDX-License-Identifier: Apache-2.0
//
// Paired rounds: in each round every rival does the same work in turn, so that whatever else the
// machine does meets all of them. What counts is the median of the rounds' ratios.
#ifndef BENCH_ROUNDS_H_
#define BENCH_ROUNDS_H_

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace bench {

// Seconds. Work in the process is compared by the thread's processor time, which others on the
// machine do not change; what waits for another process or thread, by the wall.
struct Times {
  double processor = 0;
  double wall = 0;
};

enum class Clock { kProcessor, kWall };

struct Rival {
  std::string name;
  Clock clock = Clock::kProcessor;  // by which the library is compared with it
  // Does the work so many times, and says how long that took.
  std::function<Times(int calls)> run;
  // Takes part in that many rounds; the slowest need not delay all the others.
  int most_rounds = 10000;
  // A block of calls lasts about this long: long beside the clock's own cost.
  double block_seconds = 0.004;
};

// A rival that is called again and again on this thread.
Rival Repeat(std::string name, std::function<void()> call, Clock clock = Clock::kProcessor);

// The library comes first; the ratios are its time over the others'.
struct Workload {
  std::string name;
  int apps = 0;  // on the device
  std::function<std::vector<Rival>()> rivals;
  int rounds = 30;
};

// Makes a benchmark of the workload. Before its first round the device has that many apps.
void Register(const Workload& workload, const std::function<void(int apps)>& fill, bool is_quick);

inline constexpr char kLibrary[] = "library";
inline constexpr char kBare[] = "bare";
inline constexpr char kSqliteCpp[] = "SQLiteCpp";
inline constexpr char kBus[] = "bus";

}  // namespace bench

#endif  // BENCH_ROUNDS_H_
