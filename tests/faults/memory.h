// SPDX-License-Identifier: Apache-2.0
//
// Memory as the library sees it: an executable that links this can have one allocation of a
// call fail, and is told which blocks the calls have left behind.
#ifndef TESTS_FAULTS_MEMORY_H_
#define TESTS_FAULTS_MEMORY_H_

#include <cstddef>

namespace test {

// Whose allocations have failed.
struct Victims {
  bool sqlite = false;
  bool c_library = false;  // on the library's behalf
  bool own_code = false;

  bool IsNobody() const { return !sqlite && !c_library && !own_code; }
};

enum class Shortage { kOnce, kFromThenOn };

// Lets the nth allocation fail that this thread makes inside the library while it lives, or that
// one and all that follow.
class FailingMemory {
 public:
  FailingMemory(long nth, Shortage shortage);
  ~FailingMemory();
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;
};

// The victims of the last FailingMemory; nobody when the call made fewer allocations.
Victims LastVictims();

// The blocks that calls of the library have made since the start of the test, and that are not
// released yet.
long BlocksLeft();

}  // namespace test

#endif  // TESTS_FAULTS_MEMORY_H_
