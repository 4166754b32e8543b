// SPDX-License-Identifier: Apache-2.0
//
// The device's system bus: a private one, gone with the test, and other programs on it.
#ifndef TESTS_SUPPORT_BUS_H_
#define TESTS_SUPPORT_BUS_H_

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include "device/bus.h"
#include "device/handles.h"

namespace test {

// Everything that a test waits for comes much earlier, or never.
inline constexpr std::chrono::seconds kBusDeadline(20);

// Waits until the condition holds; false when the deadline passes before.
template <typename Condition>
bool WaitUntil(const Condition& condition);

// Another program on the bus, with a connection of its own. All calls throw when the bus or the
// one who is called answers with an error, or not before the deadline.
class Peer {
 public:
  explicit Peer(const std::string& address);
  ~Peer();
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  std::string UniqueName() const;
  GDBusConnection* Connection() const { return m_connection.get(); }

  // The unique name of a name's owner, or "" when it has none.
  std::string Owner(const std::string& name) const;
  // The process that owns a name.
  pid_t OwnerProcess(const std::string& name) const;
  // The introspection document of an object of the name's owner.
  std::string Introspect(const std::string& name, const std::string& path) const;
  // The body of the answer. Takes the parameters, which may be null.
  tav_device::GVariantHandle Call(const std::string& name, const std::string& path,
                                  const std::string& interface, const std::string& method,
                                  GVariant* parameters = nullptr) const;

 private:
  tav_device::ConnectionHandle m_connection;
};

// A bus that allows everybody everything. It is made before the first thread of the test, after
// test::Device, and everything started from then on, the library too, takes it for the system's
// bus. It dies with the thread that started it, at the latest with the test.
class Bus {
 public:
  // Throws when there is no dbus-daemon.
  Bus();
  // Leaves the address in the environment: nothing may reach the machine's own bus by accident.
  ~Bus();
  Bus(const Bus&) = delete;
  Bus& operator=(const Bus&) = delete;

  const std::string& Address() const { return m_bus->Address(); }

  // Kills it; every connection is closed.
  void Stop();
  // Starts it again at the same address.
  void Start();
  // Lets it start a program, with its arguments, for who wants to call the owner of a name.
  void Offer(const std::string& name, const std::vector<std::string>& command);
  // Keeps it from running, connections and all, until Resume.
  void Stall();
  void Resume();

  // As Peer does, through a connection for this question alone.
  std::string Owner(const std::string& name) const;
  std::string Introspect(const std::string& name, const std::string& path) const;
  // The unique name of the owner, when there is one or as soon as there is. Throws at the deadline.
  std::string WaitForOwner(const std::string& name) const;
  void WaitUntilUnowned(const std::string& name) const;

 private:
  std::filesystem::path m_directory;
  std::unique_ptr<tav_device::PrivateBus> m_bus;
};

bool WaitUntilTrue(bool (*condition)(const void*), const void* data);

template <typename Condition>
bool WaitUntil(const Condition& condition) {
  return WaitUntilTrue([](const void* data) { return (*static_cast<const Condition*>(data))(); },
                       &condition);
}

}  // namespace test

#endif  // TESTS_SUPPORT_BUS_H_
