// SPDX-License-Identifier: Apache-2.0
//
// The owner of a list or a text that the library hands out.
#ifndef TOOLS_TAVCTL_MALLOC_PTR_H_
#define TOOLS_TAVCTL_MALLOC_PTR_H_

#include <cstdlib>
#include <memory>

struct FreeBlock {
  void operator()(void* block) const { std::free(block); }
};

template <typename T>
using MallocPtr = std::unique_ptr<T, FreeBlock>;

#endif  // TOOLS_TAVCTL_MALLOC_PTR_H_
