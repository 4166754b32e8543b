// SPDX-License-Identifier: Apache-2.0
//
// For programs whose functions stand in the place of GLib's and the system's.
#ifndef TESTS_BUS_IN_PLACE_H_
#define TESTS_BUS_IN_PLACE_H_

#include <dlfcn.h>

// What the client's object looks like.
inline constexpr char kNode[] = "<node>  <interface name='org.example.%s'>  </interface></node>";

// The function that was there before.
template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

#endif  // TESTS_BUS_IN_PLACE_H_
