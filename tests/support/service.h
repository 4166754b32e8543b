// SPDX-License-Identifier: Apache-2.0
//
// The reference service on the test's bus and device, with its faults and its notes.
#ifndef TESTS_SUPPORT_SERVICE_H_
#define TESTS_SUPPORT_SERVICE_H_

#include <gio/gio.h>

#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "device/process.h"
#include "support/bus.h"

namespace test {

// A request as it reached the service.
struct ServiceCall {
  std::string method;
  std::string signature;   // "(si)"; "()" without parameters
  std::string parameters;  // as GVariant prints them: "('org.example.clock', 1)"
  std::string sender;      // the unique name
  unsigned flags = 0;      // of the message, G_DBUS_MESSAGE_FLAGS_…

  bool IsNoAutoStart() const { return (flags & G_DBUS_MESSAGE_FLAGS_NO_AUTO_START) != 0; }
};

std::ostream& operator<<(std::ostream& stream, const ServiceCall& call);

// Made after test::Device and test::Bus, on whose device and bus it runs. It dies with the thread
// that started it, at the latest with the test.
class Service {
 public:
  static constexpr char kName[] = "org.tizen.tv.tavcore.server";
  static constexpr char kPath[] = "/org/tizen/tv/tavcore/server";
  static constexpr char kInterface[] = "org.tizen.tv.tavcore.server.interface";

  // Starts it, with options of its command line, and returns when it owns its name.
  explicit Service(const Bus& bus, std::vector<std::string> options = {});
  ~Service();
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;

  // Starts it again after Stop, Kill or an end of its own. Its faults and its notes are new.
  void Start();
  // Asks it to end, or kills it; returns its exit status (128 and the signal's number).
  int Stop();
  int Kill();
  // Waits for an end of its own; throws at the deadline.
  int Wait();
  // Keeps it from running until Resume: it owns its name and does not answer.
  void Stall();
  void Resume();
  bool IsRunning() { return m_process != nullptr && m_process->IsRunning(); }
  pid_t Id() const { return m_process->Id(); }

  // What goes wrong from now on, in the words of tavcore-sim --help: Fault("*", "delay:300").
  void Fault(const std::string& method, const std::string& kind);
  void ClearFaults();

  // The requests since it started or since Forget, in the order of their arrival.
  std::vector<ServiceCall> Calls();
  std::vector<ServiceCall> Calls(const std::string& method);
  void Forget();

 private:
  tav_device::GVariantHandle Control(const std::string& method, GVariant* parameters = nullptr);

  const Bus& m_bus;
  std::vector<std::string> m_options;
  std::unique_ptr<tav_device::Child> m_process;
  std::unique_ptr<Peer> m_peer;
};

// Lets the bus start the service when a call asks for that. It ends with the bus.
void OfferService(Bus& bus);

// The requests that reached the service on the peer's bus, whoever started it.
std::vector<ServiceCall> CallsOnBus(const Peer& peer);

}  // namespace test

#endif  // TESTS_SUPPORT_SERVICE_H_
