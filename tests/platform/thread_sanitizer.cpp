// SPDX-License-Identifier: Apache-2.0
// What a thread sanitizer is told about the libraries that these tests lean on; never called
// without one.

// GLib is not built for the sanitizer, which therefore sees the memory that GLib handles but not
// the locks under which it does.
extern "C" __attribute__((visibility("default"))) const char* __tsan_default_suppressions() {
  return "called_from_lib:libglib-2.0.so.0\n";
}
