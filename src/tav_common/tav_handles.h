// SPDX-License-Identifier: Apache-2.0
//
// Owners for what C interfaces hand out. release() marks the one place where ownership passes
// on to the caller of the library.
#ifndef TAV_COMMON_TAV_HANDLES_H_
#define TAV_COMMON_TAV_HANDLES_H_

#include <cstdio>
#include <cstdlib>
#include <memory>

// Calls one C function on what it owns.
template <auto kRelease>
struct CallOnRelease {
  template <typename T>
  void operator()(T* handle) const {
    kRelease(handle);
  }
};

// A malloc block: a text or an array.
template <typename T>
using MallocPtr = std::unique_ptr<T, CallOnRelease<std::free>>;
using MallocText = MallocPtr<char>;

using File = std::unique_ptr<FILE, CallOnRelease<std::fclose>>;

#endif  // TAV_COMMON_TAV_HANDLES_H_
