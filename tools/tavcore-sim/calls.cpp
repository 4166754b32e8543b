// SPDX-License-Identifier: Apache-2.0
//
// A message filter that takes notes.
#include "calls.h"

#include "device/handles.h"
#include "names.h"
#include "say.h"

namespace tavcore {
namespace {

std::string Text(const char* text) {
  return text == nullptr ? "" : text;
}

bool IsRequest(GDBusMessage* message) {
  return g_dbus_message_get_message_type(message) == G_DBUS_MESSAGE_TYPE_METHOD_CALL &&
         Text(g_dbus_message_get_path(message)) == kServicePath &&
         Text(g_dbus_message_get_interface(message)) == kServiceInterface;
}

}  // namespace

void CallRecord::Listen(GDBusConnection* connection) {
  g_dbus_connection_add_filter(connection, &CallRecord::OnMessage, this, nullptr);
}

GDBusMessage* CallRecord::OnMessage(GDBusConnection*, GDBusMessage* message, gboolean is_incoming,
                                    gpointer self) {
  if (!is_incoming || !IsRequest(message)) return message;
  Call call{Text(g_dbus_message_get_member(message)), "()", "()",
            Text(g_dbus_message_get_sender(message)), g_dbus_message_get_flags(message)};
  if (GVariant* body = g_dbus_message_get_body(message)) {
    call.types = g_variant_get_type_string(body);
    call.parameters = tav_device::GTextHandle(g_variant_print(body, FALSE)).get();
  }
  static_cast<CallRecord*>(self)->Add(call);
  return message;
}

void CallRecord::Add(const Call& call) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_calls.push_back(call);
  if (m_is_verbose) Say(call.method + call.parameters + " from " + call.sender);
}

GVariant* CallRecord::AsReply() const {
  const std::lock_guard<std::mutex> lock(m_mutex);
  GVariantBuilder builder;
  g_variant_builder_init(&builder, G_VARIANT_TYPE("a(ssssu)"));
  for (const Call& call : m_calls) {
    g_variant_builder_add(&builder, "(ssssu)", call.method.c_str(), call.types.c_str(),
                          call.parameters.c_str(), call.sender.c_str(), call.flags);
  }
  return g_variant_new("(a(ssssu))", &builder);
}

void CallRecord::Forget() {
  const std::lock_guard<std::mutex> lock(m_mutex);
  m_calls.clear();
}

}  // namespace tavcore
