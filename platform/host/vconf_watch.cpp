// SPDX-License-Identifier: Apache-2.0
// Watches of settings keys: who watches what. The watches of one main context share a monitor,
// whose source calls them.
#include "vconf_watch.h"

#include <errno.h>
#include <fcntl.h>
#include <string.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <mutex>

#include "common/border.h"
#include "vconf_monitor.h"

namespace tav_host {
namespace {

using Monitors = std::vector<std::unique_ptr<Monitor>>;

// All watches of this process. A source knows its monitor by number, since the monitor may be
// gone when it is called.
class Registry {
 public:
  const pid_t process = getpid();

  bool Add(GMainContext* context, const WatchPtr& watch);
  bool Remove(const std::string& key, vconf_callback_fn cb);
  // Reads what has happened. False for a monitor that is gone.
  bool TakeEvents(size_t monitor);
  // A watch whose callback has to be called now; null when there is none.
  WatchPtr Begin(size_t monitor);
  void End(const WatchPtr& watch);

 private:
  Monitor* Find(size_t monitor) {
    const auto found = std::find_if(m_monitors.begin(), m_monitors.end(),
                                    [&](const auto& each) { return each->id == monitor; });
    return found != m_monitors.end() ? found->get() : nullptr;
  }

  std::mutex m_mutex;
  Monitors m_monitors;
};

// Never destroyed: a thread may still run its context while the process exits. A forked child
// begins with an empty one and leaves its parent's alone, whose lock may be held: the inherited
// sources find no monitor and go, without a read of the descriptor that the parent reads too.
Registry& TheRegistry() {
  static std::atomic<Registry*> current{nullptr};
  Registry* registry = current;
  while (registry == nullptr || registry->process != getpid()) {
    auto mine = std::make_unique<Registry>();
    if (current.compare_exchange_strong(registry, mine.get())) return *mine.release();
  }
  return *registry;
}

void Tell(const Watch& watch) {
  AtBorder<bool>(kVconfTag, false, [&] {
    // Read after the events were taken: what is set from now on makes a new event.
    if (auto value = ReadValue(watch.place)) {
      keynode_t node{watch.place.key, std::move(*value)};
      watch.cb(&node, watch.user_data);
    }
    return true;
  });
}

gboolean OnReadable(gint /*fd*/, GIOCondition /*condition*/, gpointer id) {
  return AtBorder<gboolean>(kVconfTag, G_SOURCE_CONTINUE, [&]() -> gboolean {
    Registry& registry = TheRegistry();
    const size_t monitor = GPOINTER_TO_SIZE(id);
    if (!registry.TakeEvents(monitor)) return G_SOURCE_REMOVE;
    // A callback may begin and end watches, and run the context for others to be called.
    while (const WatchPtr watch = registry.Begin(monitor)) {
      Tell(*watch);
      registry.End(watch);
    }
    return G_SOURCE_CONTINUE;
  });
}

bool Registry::Add(GMainContext* context, const WatchPtr& watch) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (const auto& monitor : m_monitors) {
    if (monitor->Find(watch->place.key, watch->cb) == nullptr) continue;
    dlog_print(DLOG_ERROR, kVconfTag, "%s is watched by this callback already",
               watch->place.key.c_str());
    return false;
  }
  for (const auto& monitor : m_monitors) {
    if (monitor->IsOf(context)) return monitor->Add(watch);
  }
  auto monitor = std::make_unique<Monitor>(context);
  m_monitors.reserve(m_monitors.size() + 1);
  if (!monitor->Add(watch)) return false;
  monitor->Attach(OnReadable);
  m_monitors.push_back(std::move(monitor));
  return true;
}

bool Registry::Remove(const std::string& key, vconf_callback_fn cb) {
  // Ends after the lock: with the context's last reference its other sources go, whose notifiers
  // may call back.
  std::unique_ptr<Monitor> ended;
  const std::lock_guard<std::mutex> lock(m_mutex);
  for (auto at = m_monitors.begin(); at != m_monitors.end(); ++at) {
    const WatchPtr watch = (*at)->Find(key, cb);
    if (watch == nullptr) continue;
    (*at)->Remove(watch);
    if ((*at)->IsEmpty()) {
      ended = std::move(*at);
      m_monitors.erase(at);
    }
    return true;
  }
  dlog_print(DLOG_ERROR, kVconfTag, "%s is not watched by this callback", key.c_str());
  return false;
}

bool Registry::TakeEvents(size_t monitor) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  Monitor* found = Find(monitor);
  if (found != nullptr) found->TakeEvents();
  return found != nullptr;
}

WatchPtr Registry::Begin(size_t monitor) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  Monitor* found = Find(monitor);
  return found != nullptr ? found->Begin() : nullptr;
}

void Registry::End(const WatchPtr& watch) {
  const std::lock_guard<std::mutex> lock(m_mutex);
  watch->is_called = false;
}

// GLib ends the process when a main context gets no descriptor: that is looked at before, with as
// many as one may take.
bool HasDescriptorsForGlib() {
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) {
    dlog_print(DLOG_ERROR, kVconfTag, "too few file descriptors to watch a setting: %s",
               strerror(errno));
    return false;
  }
  close(ends[0]);
  close(ends[1]);
  return true;
}

}  // namespace

bool StartWatch(Place place, vconf_callback_fn cb, void* user_data) {
  if (!HasDescriptorsForGlib()) return false;
  const MainContextPtr context(g_main_context_ref_thread_default());
  return TheRegistry().Add(context.get(),
                           std::make_shared<Watch>(Watch{std::move(place), cb, user_data}));
}

bool EndWatch(const std::string& key, vconf_callback_fn cb) {
  return TheRegistry().Remove(key, cb);
}

}  // namespace tav_host
