// SPDX-License-Identifier: Apache-2.0
#include "support/service.h"

#include <stdexcept>

namespace test {
namespace {

constexpr char kControl[] = "org.tizen.tv.tavcore.server.control";
constexpr std::chrono::seconds kEndTime(10);

}  // namespace

std::ostream& operator<<(std::ostream& stream, const ServiceCall& call) {
  return stream << call.method << call.parameters << " of " << call.signature << " from "
                << call.sender << " with flags " << call.flags;
}

Service::Service(const Bus& bus, std::vector<std::string> options)
    : m_bus(bus), m_options(std::move(options)) {
  Start();
}

Service::~Service() {
  if (m_process) m_process->End(kEndTime);
}

void Service::Start() {
  m_peer.reset();
  m_process.reset();
  tav_device::Launch launch;
  launch.arguments = {TAVCORE_SIM, "--ready-file", "none"};
  launch.arguments.insert(launch.arguments.end(), m_options.begin(), m_options.end());
  // The test's log belongs to the library alone.
  launch.environment = {{tav_device::kBusVariable, m_bus.Address()},
                        {"DLOG_FILE", std::nullopt},
                        {"DLOG_LEVEL", "W"}};
  m_process = tav_device::StartUntilReady(launch, "--ready-fd", kBusDeadline).child;
  m_peer = std::make_unique<Peer>(m_bus.Address());
  if (m_peer->OwnerProcess(kName) != m_process->Id()) {
    throw std::runtime_error("the service does not own its name");
  }
}

int Service::Stop() {
  return m_process->End(kEndTime);
}

int Service::Kill() {
  m_process->Signal(SIGKILL);
  return m_process->Wait();
}

int Service::Wait() {
  const auto status = m_process->WaitFor(kBusDeadline);
  if (!status) throw std::runtime_error("the service does not end");
  return *status;
}

void Service::Stall() {
  m_process->Signal(SIGSTOP);
}

void Service::Resume() {
  m_process->Signal(SIGCONT);
}

tav_device::GVariantHandle Service::Control(const std::string& method, GVariant* parameters) {
  return m_peer->Call(kName, kPath, kControl, method, parameters);
}

void Service::Fault(const std::string& method, const std::string& kind) {
  Control("SetFault", g_variant_new("(ss)", method.c_str(), kind.c_str()));
}

void Service::ClearFaults() {
  Control("ClearFaults");
}

std::vector<ServiceCall> Service::Calls() {
  return CallsOnBus(*m_peer);
}

std::vector<ServiceCall> Service::Calls(const std::string& method) {
  std::vector<ServiceCall> calls;
  for (ServiceCall& call : Calls()) {
    if (call.method == method) calls.push_back(std::move(call));
  }
  return calls;
}

void Service::Forget() {
  Control("ForgetCalls");
}

void OfferService(Bus& bus) {
  // The test's log belongs to the library alone.
  bus.Offer(Service::kName, {"/usr/bin/env", "-u", "DLOG_FILE", "DLOG_LEVEL=W",
                             tav_device::kBusVariable + ("=" + bus.Address()), TAVCORE_SIM,
                             "--ready-file", "none"});
}

std::vector<ServiceCall> CallsOnBus(const Peer& peer) {
  const auto reply = peer.Call(Service::kName, Service::kPath, kControl, "Calls");
  std::vector<ServiceCall> calls;
  GVariantIter* entries = nullptr;
  g_variant_get(reply.get(), "(a(ssssu))", &entries);
  const char* method = nullptr;
  const char* signature = nullptr;
  const char* parameters = nullptr;
  const char* sender = nullptr;
  guint32 flags = 0;
  while (g_variant_iter_next(entries, "(&s&s&s&su)", &method, &signature, &parameters, &sender,
                             &flags)) {
    calls.push_back({method, signature, parameters, sender, flags});
  }
  g_variant_iter_free(entries);
  return calls;
}

}  // namespace test
