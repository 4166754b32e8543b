// SPDX-License-Identifier: Apache-2.0
//
// The requests that reached the service, as they came over the bus.
#ifndef TOOLS_TAVCORE_SIM_CALLS_H_
#define TOOLS_TAVCORE_SIM_CALLS_H_

#include <gio/gio.h>

#include <mutex>
#include <string>
#include <vector>

namespace tavcore {

// Listens on a connection before anything is checked, so that it also has the requests that are
// refused for their method or their types. It must outlive the open connection: messages arrive
// on a thread of GIO.
class CallRecord {
 public:
  explicit CallRecord(bool is_verbose) : m_is_verbose(is_verbose) {}
  ~CallRecord() { Forget(); }  // under the lock, behind the last message
  CallRecord(const CallRecord&) = delete;
  CallRecord& operator=(const CallRecord&) = delete;

  void Listen(GDBusConnection* connection);

  // All so far, in the order of their arrival, as the reply of Calls; a floating reference.
  GVariant* AsReply() const;
  void Forget();

 private:
  struct Call {
    std::string method;
    std::string types;       // "(si)"
    std::string parameters;  // "('org.example.clock', 1)"
    std::string sender;
    guint flags = 0;  // those of the message
  };

  static GDBusMessage* OnMessage(GDBusConnection* connection, GDBusMessage* message,
                                 gboolean is_incoming, gpointer self);
  void Add(const Call& call);

  bool m_is_verbose;
  mutable std::mutex m_mutex;
  std::vector<Call> m_calls;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_CALLS_H_
