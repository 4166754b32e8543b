// SPDX-License-Identifier: Apache-2.0
// What the watches of one main context share: an inotify instance, and a source that polls it.
// Locks nothing.
#ifndef TAV_HOST_VCONF_MONITOR_H_
#define TAV_HOST_VCONF_MONITOR_H_

#include <glib-unix.h>

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "common/handles.h"
#include "vconf.h"
#include "vconf_store.h"

struct inotify_event;

namespace tav_host {

constexpr int kNoDirectory = -1;

struct Watch {
  Place place;
  vconf_callback_fn cb;
  void* user_data;
  int directory = kNoDirectory;  // inotify's number of the key's directory, when it is there
  bool is_changed = false;       // the callback has to be called
  bool is_called = false;        // it is being called
};
using WatchPtr = std::shared_ptr<Watch>;

class Monitor {
 public:
  explicit Monitor(GMainContext* context);

  // The same for no other monitor of this process, its parent included.
  const size_t id;

  bool IsOf(const GMainContext* context) const { return m_context.get() == context; }
  bool IsEmpty() const { return m_watches.empty(); }
  // Null when there is no such watch.
  WatchPtr Find(const std::string& key, vconf_callback_fn cb) const;
  // False, after a line in the log, when the key cannot be watched.
  bool Add(const WatchPtr& watch);
  void Remove(const WatchPtr& watch);
  // Has the context call `on_readable`, with the monitor's number, when there are events to take.
  void Attach(GUnixFDSourceFunc on_readable);

  // Takes all pending events and marks the watches whose key may have changed.
  void TakeEvents();
  // A marked watch that is not being called; it is marked as called instead. Null when there is
  // none.
  WatchPtr Begin();

 private:
  int Watched(const std::string& directory);
  bool Follow(Watch& watch);
  void FollowAll();
  bool IsMove(const inotify_event& event) const;
  void CallLater();

  const MainContextPtr m_context;
  const FileDescriptor m_inotify;
  SourcePtr m_source;  // goes before what it polls
  std::vector<WatchPtr> m_watches;
  std::set<int> m_directories;  // that are watched, by inotify's numbers
};

}  // namespace tav_host

#endif  // TAV_HOST_VCONF_MONITOR_H_
