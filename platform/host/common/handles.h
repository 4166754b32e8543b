// SPDX-License-Identifier: Apache-2.0
// Owners of what GLib and the kernel hand out.
#ifndef TAV_HOST_HANDLES_H_
#define TAV_HOST_HANDLES_H_

#include <glib.h>
#include <unistd.h>

#include <memory>

namespace tav_host {

template <auto Release>
struct Releaser {
  template <typename T>
  void operator()(T* handle) const {
    Release(handle);
  }
};

inline void DestroySource(GSource* source) {
  g_source_destroy(source);
  g_source_unref(source);
}

using GText = std::unique_ptr<char, Releaser<g_free>>;
using GErrorPtr = std::unique_ptr<GError, Releaser<g_error_free>>;
using KeyFilePtr = std::unique_ptr<GKeyFile, Releaser<g_key_file_unref>>;
using MainContextPtr = std::unique_ptr<GMainContext, Releaser<g_main_context_unref>>;
using SourcePtr = std::unique_ptr<GSource, Releaser<DestroySource>>;

// Takes a C function's out argument into an owner: `Out(error)` where a `GError**` is wanted.
template <typename Owner>
class Out {
 public:
  explicit Out(Owner& owner) : m_owner(owner) {}
  Out(const Out&) = delete;
  Out& operator=(const Out&) = delete;
  ~Out() { m_owner.reset(m_raw); }
  operator typename Owner::pointer *() { return &m_raw; }  // NOLINT(google-explicit-constructor)

 private:
  Owner& m_owner;
  typename Owner::pointer m_raw = nullptr;
};

class FileDescriptor {
 public:
  explicit FileDescriptor(int number) : m_number(number) {}
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() {
    if (m_number >= 0) close(m_number);
  }
  int Get() const { return m_number; }

 private:
  int m_number;
};

}  // namespace tav_host

#endif  // TAV_HOST_HANDLES_H_
