// SPDX-License-Identifier: Apache-2.0
//
// What the process has taken from the heap, to see whether large texts are given back.
#ifndef TESTS_CATALOGUE_MEMORY_H_
#define TESTS_CATALOGUE_MEMORY_H_

#include <malloc.h>

#include <cstddef>

namespace test {

// Always 0 beneath a sanitizer, which has a heap of its own and finds leaks by itself.
inline std::size_t AllocatedBytes() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace test

#endif  // TESTS_CATALOGUE_MEMORY_H_
