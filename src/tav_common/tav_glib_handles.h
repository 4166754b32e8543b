// SPDX-License-Identifier: Apache-2.0
//
// Owners for what GLib and GIO hand out. Apart from tav_handles.h, so that the database side
// does not see GLib.
#ifndef TAV_COMMON_TAV_GLIB_HANDLES_H_
#define TAV_COMMON_TAV_GLIB_HANDLES_H_

#include <gio/gio.h>

#include <memory>

#include "tav_common/tav_handles.h"

template <typename T>
using GObjectPtr = std::unique_ptr<T, CallOnRelease<g_object_unref>>;
using GVariantPtr = std::unique_ptr<GVariant, CallOnRelease<g_variant_unref>>;
using GTextPtr = std::unique_ptr<char, CallOnRelease<g_free>>;
using GMainContextPtr = std::unique_ptr<GMainContext, CallOnRelease<g_main_context_unref>>;
using GMainLoopPtr = std::unique_ptr<GMainLoop, CallOnRelease<g_main_loop_unref>>;
using GSourcePtr = std::unique_ptr<GSource, CallOnRelease<g_source_unref>>;
using GDBusNodeInfoPtr = std::unique_ptr<GDBusNodeInfo, CallOnRelease<g_dbus_node_info_unref>>;

// A GError that a call may set: pass Out() to it.
class GErrorHolder {
 public:
  GErrorHolder() = default;
  ~GErrorHolder() { g_clear_error(&m_error); }
  GErrorHolder(const GErrorHolder&) = delete;
  GErrorHolder& operator=(const GErrorHolder&) = delete;

  GError** Out() {
    g_clear_error(&m_error);
    return &m_error;
  }
  const GError* Get() const { return m_error; }

 private:
  GError* m_error = nullptr;
};

// Takes a reference of its own.
template <typename T>
GObjectPtr<T> Share(T* object) {
  return GObjectPtr<T>(object != nullptr ? static_cast<T*>(g_object_ref(object)) : nullptr);
}

#endif  // TAV_COMMON_TAV_GLIB_HANDLES_H_
