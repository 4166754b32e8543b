// SPDX-License-Identifier: Apache-2.0
//
// Asks for a heartbeat of the service that its argument names.
#include "tav_common/tav_proxy.h"

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  CTAVGdbus proxy("db", argv[1], nullptr, nullptr);
  if (!proxy.GetProxy("<node>  <interface name='org.example.%s'>  </interface></node>", {})) {
    return 1;
  }
  GVariant* reply = nullptr;
  const bool is_alive = proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr);
  if (reply != nullptr) g_variant_unref(reply);
  return is_alive ? 0 : 1;
}
