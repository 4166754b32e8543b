// SPDX-License-Identifier: Apache-2.0
#include "support/bus.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <thread>

namespace test {
namespace {

constexpr char kBusName[] = "org.freedesktop.DBus";
constexpr char kBusPath[] = "/org/freedesktop/DBus";
constexpr int kCallMilliseconds = static_cast<int>(std::chrono::milliseconds(kBusDeadline).count());

[[noreturn]] void Throw(const std::string& what, GError* error) {
  const tav_device::GErrorHandle owned(error);
  throw std::runtime_error(what + ": " + error->message);
}

std::filesystem::path MakeDirectory() {
  std::string place = (std::filesystem::temp_directory_path() / "tav-bus-XXXXXX").string();
  if (mkdtemp(place.data()) == nullptr) throw std::runtime_error("no temporary directory");
  return place;
}

// A command as an activation file has it: words quoted as for a shell, in a value in which a
// backslash begins an escape.
std::string ExecValue(const std::vector<std::string>& command) {
  std::string value;
  for (const std::string& word : command) {
    const tav_device::GTextHandle quoted(g_shell_quote(word.c_str()));
    if (!value.empty()) value += ' ';
    for (const char* letter = quoted.get(); *letter != '\0'; ++letter) {
      if (*letter == '\\') value += '\\';
      value += *letter;
    }
  }
  return value;
}

void Remove(const std::filesystem::path& directory) {
  std::error_code ignored;
  std::filesystem::remove_all(directory, ignored);
}

}  // namespace

bool WaitUntilTrue(bool (*condition)(const void*), const void* data) {
  const auto deadline = std::chrono::steady_clock::now() + kBusDeadline;
  while (!condition(data)) {
    if (std::chrono::steady_clock::now() > deadline) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}

Peer::Peer(const std::string& address) {
  constexpr auto kFlags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GError* error = nullptr;
  m_connection.reset(
      g_dbus_connection_new_for_address_sync(address.c_str(), kFlags, nullptr, nullptr, &error));
  if (!m_connection) Throw(address, error);
  g_dbus_connection_set_exit_on_close(m_connection.get(), FALSE);
}

Peer::~Peer() {
  g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
}

std::string Peer::UniqueName() const {
  return g_dbus_connection_get_unique_name(m_connection.get());
}

tav_device::GVariantHandle Peer::Call(const std::string& name, const std::string& path,
                                      const std::string& interface, const std::string& method,
                                      GVariant* parameters) const {
  GError* error = nullptr;
  tav_device::GVariantHandle reply(g_dbus_connection_call_sync(
      m_connection.get(), name.c_str(), path.c_str(), interface.c_str(), method.c_str(), parameters,
      nullptr, G_DBUS_CALL_FLAGS_NONE, kCallMilliseconds, nullptr, &error));
  if (!reply) Throw(method, error);
  return reply;
}

std::string Peer::Owner(const std::string& name) const {
  GVariant* parameters = g_variant_new("(s)", name.c_str());
  GError* error = nullptr;
  const tav_device::GVariantHandle reply(g_dbus_connection_call_sync(
      m_connection.get(), kBusName, kBusPath, kBusName, "GetNameOwner", parameters,
      G_VARIANT_TYPE("(s)"), G_DBUS_CALL_FLAGS_NONE, kCallMilliseconds, nullptr, &error));
  if (!reply) {
    if (!g_error_matches(error, G_DBUS_ERROR, G_DBUS_ERROR_NAME_HAS_NO_OWNER)) {
      Throw("GetNameOwner", error);
    }
    g_error_free(error);
    return "";
  }
  const char* owner = nullptr;
  g_variant_get(reply.get(), "(&s)", &owner);
  return owner;
}

pid_t Peer::OwnerProcess(const std::string& name) const {
  const auto reply = Call(kBusName, kBusPath, kBusName, "GetConnectionUnixProcessID",
                          g_variant_new("(s)", name.c_str()));
  guint32 process = 0;
  g_variant_get(reply.get(), "(u)", &process);
  return static_cast<pid_t>(process);
}

std::string Peer::Introspect(const std::string& name, const std::string& path) const {
  const auto reply = Call(name, path, "org.freedesktop.DBus.Introspectable", "Introspect");
  const char* document = nullptr;
  g_variant_get(reply.get(), "(&s)", &document);
  return document;
}

Bus::Bus() : m_directory(MakeDirectory()) {
  try {
    m_bus = std::make_unique<tav_device::PrivateBus>(m_directory);
  } catch (...) {
    Remove(m_directory);
    throw;
  }
  setenv(tav_device::kBusVariable, Address().c_str(), 1);
}

Bus::~Bus() {
  Remove(m_directory);
}

void Bus::Stop() {
  m_bus->Process().Signal(SIGKILL);
  m_bus->Process().Wait();
}

void Bus::Start() {
  m_bus->Start();
}

void Bus::Offer(const std::string& name, const std::vector<std::string>& command) {
  const std::filesystem::path services = m_directory / "services";
  std::filesystem::create_directory(services);
  std::ofstream(services / (name + ".service"))
      << "[D-BUS Service]\nName=" << name << "\nExec=" << ExecValue(command) << "\n";

  const std::filesystem::path file = m_directory / "bus.conf";
  std::ifstream in(file);
  std::string configuration(std::istreambuf_iterator<char>(in), {});
  in.close();
  configuration.insert(configuration.rfind("</busconfig>"),
                       "<servicedir>" + services.string() + "</servicedir>\n");
  std::ofstream(file) << configuration;
  Peer(Address()).Call(kBusName, kBusPath, kBusName, "ReloadConfig");
}

void Bus::Stall() {
  m_bus->Process().Signal(SIGSTOP);
}

void Bus::Resume() {
  m_bus->Process().Signal(SIGCONT);
}

std::string Bus::Owner(const std::string& name) const {
  return Peer(Address()).Owner(name);
}

std::string Bus::Introspect(const std::string& name, const std::string& path) const {
  return Peer(Address()).Introspect(name, path);
}

std::string Bus::WaitForOwner(const std::string& name) const {
  const Peer peer(Address());
  std::string owner;
  const bool is_owned = WaitUntil([&] { return !(owner = peer.Owner(name)).empty(); });
  if (!is_owned) throw std::runtime_error(name + " is not owned in time");
  return owner;
}

void Bus::WaitUntilUnowned(const std::string& name) const {
  const Peer peer(Address());
  const bool is_unowned = WaitUntil([&] { return peer.Owner(name).empty(); });
  if (!is_unowned) throw std::runtime_error(name + " stays owned");
}

}  // namespace test
