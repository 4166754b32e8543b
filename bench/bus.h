// SPDX-License-Identifier: Apache-2.0
//
// What an application would do without the library: ask the service for the record, which
// answers with a dictionary. And, for the changes, the two round trips that the library's requests
// consist of.
#ifndef BENCH_BUS_H_
#define BENCH_BUS_H_

#include <gio/gio.h>
#include <tav_db_api.h>

#include <string>
#include <unordered_map>
#include <vector>

#include "device/handles.h"
#include "record.h"

namespace bench {

class BusClient {
 public:
  // A connection of its own to the system bus.
  BusClient();

  int Lookup(const std::string& id, tav_app_info_s* info);
  // In pages, since a message has a limit.
  std::vector<tav_app_info_s> List();

  // The heartbeat and the request.
  void SetTickerMode(int mode);

 private:
  tav_device::GVariantHandle Call(const char* interface, const char* method, GVariant* parameters);
  void Read(GVariant* dictionary, tav_app_info_s* info, int locked_from) const;

  tav_device::ConnectionHandle m_connection;
  std::unordered_map<std::string, std::vector<const Field*>> m_fields;
};

}  // namespace bench

#endif  // BENCH_BUS_H_
