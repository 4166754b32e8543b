// SPDX-License-Identifier: Apache-2.0
#include "rounds.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>

namespace bench {
namespace {

constexpr int kMostCalls = 100000;

double Now(clockid_t clock) {
  timespec time;
  clock_gettime(clock, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double Of(const Times& times, Clock clock) {
  return clock == Clock::kProcessor ? times.processor : times.wall;
}

std::vector<double> All(const std::vector<Times>& times, Clock clock) {
  std::vector<double> all;
  for (const Times& time : times) all.push_back(Of(time, clock));
  return all;
}

double Quantile(std::vector<double> values, double part) {
  const auto at = static_cast<std::size_t>(part * static_cast<double>(values.size() - 1) + 0.5);
  std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(at), values.end());
  return values[at];
}

int CallsOfABlock(const Rival& rival) {
  int calls = 1;
  while (calls < kMostCalls && rival.run(calls).wall < rival.block_seconds) calls *= 2;
  return calls;
}

void Measure(benchmark::State& state, const Workload& workload) {
  const std::vector<Rival> rivals = workload.rivals();
  std::vector<int> calls;
  for (const Rival& rival : rivals) calls.push_back(CallsOfABlock(rival));

  std::vector<std::vector<Times>> times(rivals.size());
  int round = 0;
  for (auto _ : state) {
    for (std::size_t i = 0; i < rivals.size(); ++i) {
      // There and back, so that nobody always comes after the same one.
      const std::size_t turn = round % 2 == 0 ? i : rivals.size() - 1 - i;
      if (round >= rivals[turn].most_rounds) continue;
      const Times block = rivals[turn].run(calls[turn]);
      times[turn].push_back({block.processor / calls[turn], block.wall / calls[turn]});
    }
    ++round;
    state.SetIterationTime(times[0].back().wall);
  }

  for (std::size_t i = 0; i < rivals.size(); ++i) {
    const Rival& rival = rivals[i];
    state.counters["us " + rival.name] = 1e6 * Quantile(All(times[i], rival.clock), 0.5);
    if (i == 0) continue;
    std::vector<double> ratios;
    for (std::size_t r = 0; r < times[i].size(); ++r) {
      ratios.push_back(Of(times[0][r], rival.clock) / Of(times[i][r], rival.clock));
    }
    state.counters["ratio " + rival.name] = Quantile(ratios, 0.5);
    state.counters["low " + rival.name] = Quantile(ratios, 0.25);
    state.counters["high " + rival.name] = Quantile(ratios, 0.75);
  }
  state.counters["apps"] = workload.apps;
}

}  // namespace

Rival Repeat(std::string name, std::function<void()> call, Clock clock) {
  const auto run = [call = std::move(call)](int calls) {
    const double wall = Now(CLOCK_MONOTONIC);
    const double processor = Now(CLOCK_THREAD_CPUTIME_ID);
    for (int i = 0; i < calls; ++i) call();
    return Times{Now(CLOCK_THREAD_CPUTIME_ID) - processor, Now(CLOCK_MONOTONIC) - wall};
  };
  return {std::move(name), clock, run};
}

void Register(const Workload& workload, const std::function<void(int apps)>& fill, bool is_quick) {
  benchmark::RegisterBenchmark(workload.name.c_str(),
                               [workload, fill](benchmark::State& state) {
                                 fill(workload.apps);
                                 Measure(state, workload);
                               })
      ->Iterations(is_quick ? std::max(3, workload.rounds / 6) : workload.rounds)
      ->UseManualTime()
      ->Unit(benchmark::kMicrosecond);
}

}  // namespace bench
