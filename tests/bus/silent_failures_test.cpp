// SPDX-License-Identifier: Apache-2.0
//
// Functions of GLib that fail and set no error, which none of them is known to do. They stand here
// before the real ones. The monitor is not waited for, as in waits_test.cpp.
#include "in_place.h"
#include "on_the_bus.h"
#include "tav_common/tav_proxy.h"

namespace {

bool g_connects = true;
bool g_reads = true;
bool g_registers = true;

}  // namespace

extern "C" {

GDBusConnection* g_dbus_connection_new_for_address_finish(GAsyncResult* result, GError** error) {
  auto* connection = Real<decltype(g_dbus_connection_new_for_address_finish)>(
      "g_dbus_connection_new_for_address_finish")(result, error);
  if (g_connects) return connection;
  g_object_unref(connection);
  return nullptr;
}

GDBusNodeInfo* g_dbus_node_info_new_for_xml(const gchar* xml, GError** error) {
  if (!g_reads) return nullptr;
  return Real<decltype(g_dbus_node_info_new_for_xml)>("g_dbus_node_info_new_for_xml")(xml, error);
}

guint g_dbus_connection_register_object(GDBusConnection* connection, const gchar* path,
                                        GDBusInterfaceInfo* interface,
                                        const GDBusInterfaceVTable* vtable, gpointer data,
                                        GDestroyNotify free_data, GError** error) {
  if (!g_registers) return 0;
  return Real<decltype(g_dbus_connection_register_object)>("g_dbus_connection_register_object")(
      connection, path, interface, vtable, data, free_data, error);
}

}  // extern "C"

namespace {

class SilentFailure : public OnTheBus {
 protected:
  // Whether a call goes through.
  bool HasHeartbeat() {
    GVariant* reply = nullptr;
    const bool result = proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr);
    if (reply != nullptr) g_variant_unref(reply);
    return result;
  }

  const test::Service service{bus};
  CTAVGdbus proxy{"db", "tavcore", nullptr, nullptr};
};

TEST_F(SilentFailure, OfTheConnectionIsToldAndLeavesNone) {
  g_connects = false;
  EXPECT_FALSE(proxy.GetProxy(kNode, {}));
  EXPECT_TRUE(log.HasError("get sync system bus pConnection == NULL"));
  EXPECT_FALSE(HasHeartbeat());
  g_connects = true;
  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  EXPECT_TRUE(HasHeartbeat());
}

TEST_F(SilentFailure, OfTheDocumentIsToldAndLeavesTheCallsPossible) {
  g_reads = false;
  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  EXPECT_TRUE(test::WaitUntil([&] { return log.HasError("introspection created error"); }));
  EXPECT_TRUE(HasHeartbeat());
  EXPECT_EQ(bus.Owner(ClientName()), "");
}

TEST_F(SilentFailure, OfTheObjectIsToldAndLeavesTheCallsPossible) {
  g_registers = false;
  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  EXPECT_TRUE(test::WaitUntil([&] { return log.HasError("register id error"); }));
  EXPECT_FALSE(log.Has("register object succeed,Created monitor!"));
  EXPECT_TRUE(HasHeartbeat());
}

}  // namespace
