// SPDX-License-Identifier: Apache-2.0
//
// Configures and starts dbus-daemon.
#include "device/bus.h"

#include <gio/gio.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "device/error.h"
#include "device/handles.h"

namespace tav_device {
namespace {

constexpr std::chrono::seconds kStartTime(10);

std::string Configuration(const std::string& address) {
  const GTextHandle escaped(g_markup_escape_text(address.c_str(), -1));
  return std::string(
             R"xml(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <type>system</type>
  <listen>)xml") +
         escaped.get() + R"xml(</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
  </policy>
</busconfig>
)xml";
}

}  // namespace

PrivateBus::PrivateBus(const std::string& directory)
    : m_socket(directory + "/bus"),
      m_configuration(directory + "/bus.conf"),
      m_log(directory + "/bus.log") {
  const GTextHandle escaped(g_dbus_address_escape_value(m_socket.c_str()));
  m_address = std::string("unix:path=") + escaped.get();
  std::ofstream file(m_configuration);
  file << Configuration(m_address);
  file.close();
  if (!file) throw DeviceError(m_configuration + " cannot be written");
  Start();
}

PrivateBus::~PrivateBus() = default;

void PrivateBus::Start() {
  m_process.reset();
  std::error_code ignored;
  std::filesystem::remove(m_socket, ignored);
  Launch launch;
  launch.arguments = {"dbus-daemon", "--nofork", "--nopidfile", "--nosyslog",
                      "--config-file=" + m_configuration};
  launch.death_signal = SIGKILL;  // also a stopped one goes
  launch.output_file = m_log;     // it always has something to say about limits
  try {
    m_process = StartUntilReady(launch, "--print-address", kStartTime).child;
  } catch (const StartError& error) {
    if (!error.IsMissing()) throw;
    throw DeviceError("the program dbus-daemon is not in PATH; Debian's package is dbus-daemon");
  } catch (const DeviceError& error) {
    std::ifstream log(m_log);
    const std::string said(std::istreambuf_iterator<char>(log), {});
    throw DeviceError(said.empty() ? error.what() : std::string(error.what()) + ":\n" + said);
  }
}

}  // namespace tav_device
