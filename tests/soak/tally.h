// SPDX-License-Identifier: Apache-2.0
//
// What the processes of a soak tell each other, in memory that they share.
#ifndef TESTS_SOAK_TALLY_H_
#define TESTS_SOAK_TALLY_H_

#include <sys/mman.h>

#include <atomic>
#include <memory>
#include <new>

namespace soak {

struct Tally {
  std::atomic<bool> is_over{false};
  std::atomic<int> written{1};  // the newest generation
  std::atomic<int> read{0};     // the newest that somebody has read
  std::atomic<long> calls{0};
  std::atomic<long> busy{0};    // of them, those that met a busy database
  std::atomic<int> slowest{0};  // microseconds
};

template <typename Number>
void Raise(std::atomic<Number>& highest, Number value) {
  Number before = highest;
  while (before < value && !highest.compare_exchange_weak(before, value)) continue;
}

struct UnmapTally {
  void operator()(Tally* tally) const { munmap(tally, sizeof(Tally)); }
};

inline std::unique_ptr<Tally, UnmapTally> SharedTally() {
  void* memory =
      mmap(nullptr, sizeof(Tally), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  return std::unique_ptr<Tally, UnmapTally>(new (memory) Tally);
}

}  // namespace soak

#endif  // TESTS_SOAK_TALLY_H_
