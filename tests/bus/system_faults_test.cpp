// SPDX-License-Identifier: Apache-2.0
//
// What a healthy system never does: threads that cannot be started, a command line that cannot be
// read, an object that GLib does not take. The functions stand here in the place of the system's.
#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <set>

#include "on_the_bus.h"
#include "tav_common/tav_proxy.h"
#include "tav_common/tav_proxy_connection.h"

namespace {

constexpr char kNode[] = "<node>  <interface name='org.example.%s'>  </interface></node>";

// Which of them fail.
bool g_has_no_threads = false;
bool g_opens_nothing = false;
bool g_reads_nothing = false;
bool g_registers_nothing = false;
bool g_has_no_events = false;
int g_unregistered = 0;
bool g_follows_no_links = false;
sigset_t g_blocked;     // in the last thread that was started without attributes
std::string g_program;  // what every link leads to; empty: where it does lead to

template <typename Function>
Function* Real(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

}  // namespace

extern "C" {

int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*start)(void*),
                   void* argument) {
  // GLib's own threads, which connecting needs, have attributes.
  if (g_has_no_threads && attributes == nullptr) return EAGAIN;
  if (attributes == nullptr) pthread_sigmask(SIG_SETMASK, nullptr, &g_blocked);  // it inherits them
  return Real<decltype(pthread_create)>("pthread_create")(thread, attributes, start, argument);
}

FILE* fopen(const char* path, const char* mode) {
  if (g_opens_nothing) return nullptr;
  return Real<decltype(fopen)>("fopen64")(path, mode);
}

char* fgets(char* line, int size, FILE* file) {
  if (g_reads_nothing) return nullptr;
  return Real<decltype(fgets)>("fgets")(line, size, file);
}

ssize_t readlink(const char* path, char* target, size_t size) {
  if (g_follows_no_links) return -1;
  if (g_program.empty()) return Real<decltype(readlink)>("readlink")(path, target, size);
  const size_t length = std::min(size, g_program.size());
  std::memcpy(target, g_program.data(), length);
  return static_cast<ssize_t>(length);
}

int eventfd(unsigned int value, int flags) {
  if (!g_has_no_events) return Real<decltype(eventfd)>("eventfd")(value, flags);
  errno = EPERM;
  return -1;
}

guint g_dbus_connection_register_object(GDBusConnection* connection, const gchar* path,
                                        GDBusInterfaceInfo* interface,
                                        const GDBusInterfaceVTable* vtable, gpointer data,
                                        GDestroyNotify free_data, GError** error) {
  if (g_registers_nothing) {
    g_set_error_literal(error, G_IO_ERROR, G_IO_ERROR_EXISTS, "it is taken");
    return 0;
  }
  return Real<decltype(g_dbus_connection_register_object)>("g_dbus_connection_register_object")(
      connection, path, interface, vtable, data, free_data, error);
}

gboolean g_dbus_connection_unregister_object(GDBusConnection* connection, guint id) {
  ++g_unregistered;
  return Real<decltype(g_dbus_connection_unregister_object)>("g_dbus_connection_unregister_object")(
      connection, id);
}

}  // extern "C"

namespace {

class SystemFaults : public OnTheBus {
 protected:
  test::Service service{bus};
};

TEST_F(SystemFaults, OfThreadsFailTheRequestAndLeaveNoConnection) {
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  g_has_no_threads = true;
  EXPECT_FALSE(proxy.GetProxy(kNode, {}));
  g_has_no_threads = false;
  EXPECT_TRUE(log.HasError("failed to create thread"));
  EXPECT_TRUE(log.HasNotice("release the tav api gdbus connection."));
  EXPECT_EQ(log.Messages().back(), "End");
  GVariant* reply = nullptr;
  EXPECT_FALSE(proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr));
  EXPECT_TRUE(log.HasError("connection is NULL"));

  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  EXPECT_TRUE(proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr));
  g_variant_unref(reply);
}

TEST(FreeDescriptors, AreGivenBackWhateverTheirNumber) {
  test::Device device;
  close(STDIN_FILENO);
  EXPECT_TRUE(HasFreeDescriptors(3));
  EXPECT_EQ(open("/dev/null", O_RDONLY), STDIN_FILENO);
}

// GLib makes do with pipes.
TEST_F(SystemFaults, OfEventDescriptorsAreNoLackOfDescriptors) {
  g_has_no_events = true;
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  GVariant* reply = nullptr;
  EXPECT_TRUE(proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr));
  g_variant_unref(reply);
}

TEST_F(SystemFaults, OfTheObjectAreToldAndLeaveTheCallsPossible) {
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  g_registers_nothing = true;
  EXPECT_TRUE(proxy.GetProxy(kNode, {}));
  int told = 0;
  for (const std::string& line : log.Messages('E')) {
    if (line.find("register object error ") == 0) ++told;
  }
  EXPECT_EQ(told, 1);
  GVariant* reply = nullptr;
  EXPECT_TRUE(proxy.MethodCall("heartbeat", nullptr, &reply, 10000, nullptr));
  g_variant_unref(reply);
}

TEST_F(SystemFaults, OfTheObjectOfANewConnectionLeaveNothingToUnregister) {
  {
    CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
    EXPECT_TRUE(proxy.GetProxy(kNode, {}));
    bus.Stop();
    service.Wait();
    bus.Start();
    g_registers_nothing = true;
    EXPECT_TRUE(proxy.GetProxy(kNode, {}));
    g_unregistered = 0;
  }
  EXPECT_EQ(g_unregistered, 0);
}

TEST_F(SystemFaults, OfTheCommandLineLeaveTheProcessWithoutAName) {
  g_opens_nothing = true;
  EXPECT_EQ(getProcessName(), "no_name");
  g_opens_nothing = false;
  EXPECT_TRUE(log.HasError("fopen failed!"));
  EXPECT_FALSE(log.Has("fgets failed!"));
  g_reads_nothing = true;
  EXPECT_EQ(getProcessName(), "no_name");
  EXPECT_TRUE(log.HasError("fgets failed!"));
}

TEST_F(SystemFaults, OfTheProgramsLinkLeaveTheProcessWithoutAName) {
  g_follows_no_links = true;
  EXPECT_EQ(getProcessName(), "no_name");
  EXPECT_TRUE(log.HasError("readlink failed!"));
}

TEST_F(SystemFaults, OfALongPathAreToldAndLeaveItsBeginningForAName) {
  g_program = "/" + std::string(1022, 'p');
  EXPECT_EQ(getProcessName(), g_program);
  EXPECT_TRUE(log.Has("the path name is " + g_program + "."));
  g_program = "/" + std::string(2000, 'q');
  const std::string beginning = g_program.substr(0, 1024);
  EXPECT_EQ(getProcessName(), beginning);
  EXPECT_TRUE(log.HasError("error.  len == 1024, path name is " + beginning + "."));
}

// The host's handlers must not run in the library's thread, but for those of its own faults.
TEST_F(SystemFaults, AloneReachTheMonitorAsSignals) {
  const std::set<int> faults = {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGABRT, SIGTRAP};
  sigset_t before;
  pthread_sigmask(SIG_SETMASK, nullptr, &before);
  CTAVGdbus proxy("db", "tavcore", nullptr, nullptr);
  ASSERT_TRUE(proxy.GetProxy(kNode, {}));
  sigset_t after;
  pthread_sigmask(SIG_SETMASK, nullptr, &after);
  for (int signal = 1; signal <= SIGRTMAX; ++signal) {
    EXPECT_EQ(sigismember(&after, signal), sigismember(&before, signal)) << signal;
    if (signal == SIGKILL || signal == SIGSTOP) continue;  // nothing blocks these
    if (signal > SIGSYS && signal < SIGRTMIN) continue;    // libc's own
    EXPECT_EQ(sigismember(&g_blocked, signal), faults.count(signal) == 0 ? 1 : 0) << signal;
  }
}

}  // namespace
