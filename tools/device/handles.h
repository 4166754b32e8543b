// SPDX-License-Identifier: Apache-2.0
//
// Owners of what the C libraries hand out.
#ifndef TOOLS_DEVICE_HANDLES_H_
#define TOOLS_DEVICE_HANDLES_H_

#include <gio/gio.h>
#include <sqlite3.h>

#include <memory>

namespace tav_device {

struct HandleDeleter {
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(GKeyFile* file) const { g_key_file_unref(file); }
  void operator()(char* text) const { g_free(text); }
  void operator()(GVariant* value) const { g_variant_unref(value); }
  void operator()(GDBusConnection* connection) const { g_object_unref(connection); }
  void operator()(GDBusMessage* message) const { g_object_unref(message); }
  void operator()(GDBusNodeInfo* node) const { g_dbus_node_info_unref(node); }
  void operator()(GMainLoop* loop) const { g_main_loop_unref(loop); }
  void operator()(sqlite3* database) const { sqlite3_close(database); }
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

using GErrorHandle = std::unique_ptr<GError, HandleDeleter>;
using GKeyFileHandle = std::unique_ptr<GKeyFile, HandleDeleter>;
using GTextHandle = std::unique_ptr<char, HandleDeleter>;  // a text that g_free releases
using GVariantHandle = std::unique_ptr<GVariant, HandleDeleter>;
using ConnectionHandle = std::unique_ptr<GDBusConnection, HandleDeleter>;
using MessageHandle = std::unique_ptr<GDBusMessage, HandleDeleter>;
using NodeHandle = std::unique_ptr<GDBusNodeInfo, HandleDeleter>;
using LoopHandle = std::unique_ptr<GMainLoop, HandleDeleter>;
using DatabaseHandle = std::unique_ptr<sqlite3, HandleDeleter>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, HandleDeleter>;

}  // namespace tav_device

#endif  // TOOLS_DEVICE_HANDLES_H_
