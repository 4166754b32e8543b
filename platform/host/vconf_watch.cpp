// SPDX-License-Identifier: Apache-2.0
// Watches of settings keys: an inotify instance each, as a source on the main context that was
// the thread's default at the registration. What is watched is the key's directory, since a set
// puts a new file in the old one's place.
#include "vconf_watch.h"

#include <errno.h>
#include <glib-unix.h>
#include <sys/inotify.h>

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "common/border.h"
#include "common/handles.h"

namespace tav_host {
namespace {

void DestroySource(GSource* source) {
  const CancellationOff off;
  g_source_destroy(source);
  g_source_unref(source);
}

std::atomic<size_t> g_last_id{0};

struct Watch {
  Watch(Place where, vconf_callback_fn callback, void* data)
      : place(std::move(where)), cb(callback), user_data(data) {}

  Place place;
  vconf_callback_fn cb;
  void* user_data;
  FileDescriptor inotify{inotify_init1(IN_NONBLOCK | IN_CLOEXEC)};
  std::unique_ptr<GSource, Releaser<DestroySource>> source;  // polls `inotify`: goes before it
  const size_t id = ++g_last_id;  // what the source knows the watch by; a pointer could outlive it
};

class Registry {
 public:
  // False when the pair of key and callback is watched already.
  bool Add(const std::shared_ptr<Watch>& watch) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (FindLocked(watch->place.key, watch->cb) != m_watches.end()) return false;
    m_watches.push_back(watch);
    return true;
  }

  std::shared_ptr<Watch> Take(const std::string& key, vconf_callback_fn cb) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = FindLocked(key, cb);
    if (found == m_watches.end()) return nullptr;
    auto watch = *found;
    m_watches.erase(found);
    return watch;
  }

  std::shared_ptr<Watch> Find(size_t id) {
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto found = std::find_if(m_watches.begin(), m_watches.end(),
                                    [&](const auto& watch) { return watch->id == id; });
    return found == m_watches.end() ? nullptr : *found;
  }

 private:
  using Watches = std::vector<std::shared_ptr<Watch>>;

  Watches::iterator FindLocked(const std::string& key, vconf_callback_fn cb) {
    return std::find_if(m_watches.begin(), m_watches.end(), [&](const auto& watch) {
      return watch->cb == cb && watch->place.key == key;
    });
  }

  std::mutex m_mutex;
  Watches m_watches;
};

// Never destroyed: a thread may still run its context while the process exits.
Registry& TheRegistry() {
  static auto& registry = *new Registry;
  return registry;
}

// Points the watch at its directory, which is made when it is missing. Harmless when repeated.
bool Arm(const Watch& watch) {
  if (!MakeDirectory(watch.place)) return false;
  if (inotify_add_watch(watch.inotify.Get(), watch.place.directory.c_str(),
                        IN_MOVED_TO | IN_CLOSE_WRITE | IN_ONLYDIR) >= 0) {
    return true;
  }
  dlog_print(DLOG_ERROR, kVconfTag, "cannot watch %s: %s", watch.place.key.c_str(),
             g_strerror(errno));
  return false;
}

// Takes all pending events; whether the key may have changed.
bool TakeEvents(const Watch& watch) {
  bool changed = false;
  bool lost = false;  // events dropped, or the directory gone: the key has to be looked at
  alignas(inotify_event) char buffer[4096];
  ssize_t size = 0;
  while ((size = read(watch.inotify.Get(), buffer, sizeof buffer)) > 0) {
    const inotify_event* event = nullptr;
    for (const char* at = buffer; at < buffer + size; at += sizeof *event + event->len) {
      event = reinterpret_cast<const inotify_event*>(at);
      if ((event->mask & (IN_Q_OVERFLOW | IN_IGNORED)) != 0) lost = true;
      if (event->len > 0 && watch.place.name == event->name) changed = true;
    }
  }
  if (lost) Arm(watch);
  return changed || lost;
}

gboolean OnReadable(gint /*fd*/, GIOCondition /*condition*/, gpointer id) {
  return AtBorder<gboolean>(kVconfTag, G_SOURCE_CONTINUE, [&]() -> gboolean {
    // The reference keeps the watch while its callback runs, which may end it.
    const auto watch = TheRegistry().Find(GPOINTER_TO_SIZE(id));
    if (watch == nullptr) return G_SOURCE_REMOVE;
    if (!TakeEvents(*watch)) return G_SOURCE_CONTINUE;
    // Read after the events were taken: what is set from now on makes a new event.
    if (auto value = ReadValue(watch->place)) {
      keynode_t node{watch->place.key, std::move(*value)};
      watch->cb(&node, watch->user_data);
    }
    return G_SOURCE_CONTINUE;
  });
}

}  // namespace

bool StartWatch(Place place, vconf_callback_fn cb, void* user_data) {
  const WholeOrCancelled whole;
  const auto watch = std::make_shared<Watch>(std::move(place), cb, user_data);
  if (watch->inotify.Get() < 0) {
    dlog_print(DLOG_ERROR, kVconfTag, "inotify: %s", g_strerror(errno));
    return false;
  }
  if (!Arm(*watch)) return false;

  watch->source.reset(g_unix_fd_source_new(watch->inotify.Get(), G_IO_IN));
  g_source_set_callback(watch->source.get(), G_SOURCE_FUNC(OnReadable), GSIZE_TO_POINTER(watch->id),
                        nullptr);
  if (!TheRegistry().Add(watch)) {
    dlog_print(DLOG_ERROR, kVconfTag, "%s is watched by this callback already",
               watch->place.key.c_str());
    return false;
  }
  const MainContextPtr context(g_main_context_ref_thread_default());
  g_source_attach(watch->source.get(), context.get());
  return true;
}

bool EndWatch(const std::string& key, vconf_callback_fn cb) {
  if (TheRegistry().Take(key, cb) != nullptr) return true;
  dlog_print(DLOG_ERROR, kVconfTag, "%s is not watched by this callback", key.c_str());
  return false;
}

}  // namespace tav_host
