// SPDX-License-Identifier: Apache-2.0
// The inotify side of watches; see the header. What is watched is directories: a set puts a new
// file in the old one's place, and a directory may itself be removed, made and replaced. None is
// made here.
#include "vconf_monitor.h"

#include <errno.h>
#include <string.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <utility>

#include "dlog.h"

namespace tav_host {
namespace {

constexpr uint32_t kChange = IN_MOVED_TO | IN_CLOSE_WRITE;  // of a file in the directory
constexpr uint32_t kEnd = IN_DELETE_SELF | IN_MOVE_SELF;    // of the directory

std::atomic<size_t> g_last_id{0};

// The first part of a path; where it begins when that is empty.
std::string Above(const std::string& path, size_t end) {
  if (end > 0) return path.substr(0, end);
  return path[0] == '/' ? "/" : ".";
}

bool Exists(const Place& place) {
  const std::string path = place.Path();
  return access(path.c_str(), F_OK) == 0;
}

// Whether the event may mean another value of the watch's key.
bool IsChange(const inotify_event& event, const Watch& watch) {
  if ((event.mask & IN_Q_OVERFLOW) != 0) return true;  // it may be among the events that were lost
  return (event.mask & kChange) != 0 && event.wd == watch.directory && event.len > 0 &&
         watch.place.name == event.name;
}

}  // namespace

Monitor::Monitor(GMainContext* context)
    : id(++g_last_id),
      m_context(g_main_context_ref(context)),
      m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (m_inotify.Get() < 0) dlog_print(DLOG_ERROR, kVconfTag, "inotify: %s", strerror(errno));
}

WatchPtr Monitor::Find(const std::string& key, vconf_callback_fn cb) const {
  const auto found = std::find_if(m_watches.begin(), m_watches.end(), [&](const auto& watch) {
    return watch->cb == cb && watch->place.key == key;
  });
  return found != m_watches.end() ? *found : nullptr;
}

bool Monitor::Add(const WatchPtr& watch) {
  if (m_inotify.Get() < 0) return false;
  TakeEvents();  // those from before are not the new watch's
  CallLater();
  m_watches.reserve(m_watches.size() + 1);
  if (!Follow(*watch)) return false;
  m_watches.push_back(watch);
  return true;
}

void Monitor::Remove(const WatchPtr& watch) {
  m_watches.erase(std::find(m_watches.begin(), m_watches.end(), watch));
  FollowAll();
  CallLater();
}

void Monitor::Attach(GUnixFDSourceFunc on_readable) {
  m_source.reset(g_unix_fd_source_new(m_inotify.Get(), G_IO_IN));
  g_source_set_callback(m_source.get(), G_SOURCE_FUNC(on_readable), GSIZE_TO_POINTER(id), nullptr);
  g_source_set_can_recurse(m_source.get(), TRUE);  // a callback may run the context for others
  g_source_attach(m_source.get(), m_context.get());
}

// Has the context call, also when there is nothing left to take, if a watch is marked.
void Monitor::CallLater() {
  const bool is_changed = std::any_of(m_watches.begin(), m_watches.end(),
                                      [](const auto& watch) { return watch->is_changed; });
  if (is_changed) g_source_set_ready_time(m_source.get(), 0);
}

// The number of a directory, which is watched from now on; negative, with errno, on a failure.
int Monitor::Watched(const std::string& directory) {
  const int number = inotify_add_watch(m_inotify.Get(), directory.c_str(),
                                       IN_CREATE | kChange | kEnd | IN_ONLYDIR);
  if (number >= 0) m_directories.insert(number);
  return number;
}

// Watches the key's directory, and those above it as far as the device root, or as far as there
// is one: whatever is made or put there later makes an event. From the top, so that this holds
// for what is made meanwhile, too.
bool Monitor::Follow(Watch& watch) {
  const std::string& path = watch.place.directory;
  size_t end = watch.place.root.size();
  watch.directory = Watched(path.substr(0, end));
  while (watch.directory < 0 && errno == ENOENT && end > 0) {
    const size_t slash = path.rfind('/', end - 1);
    end = slash != std::string::npos ? slash : 0;
    watch.directory = Watched(Above(path, end));
  }
  while (watch.directory >= 0 && end < path.size()) {
    end = std::min(path.find('/', end + 1), path.size());
    watch.directory = Watched(path.substr(0, end));
  }
  if (watch.directory >= 0 || errno == ENOENT) return true;
  dlog_print(DLOG_ERROR, kVconfTag, "cannot watch %s: %s", watch.place.key.c_str(),
             strerror(errno));
  return false;
}

// Watches what has to be watched now, and nothing else. A key whose directory is another one than
// before may have another value.
void Monitor::FollowAll() {
  const std::set<int> before = std::exchange(m_directories, {});
  for (const auto& watch : m_watches) {
    const int directory = watch->directory;
    Follow(*watch);
    const bool is_another = watch->directory >= 0 && watch->directory != directory;
    if (is_another && Exists(watch->place)) watch->is_changed = true;
  }
  for (const int directory : before) {
    if (m_directories.count(directory) == 0) inotify_rm_watch(m_inotify.Get(), directory);
  }
}

// Whether the event may mean that a key's directory is another one than before.
bool Monitor::IsMove(const inotify_event& event) const {
  if ((event.mask & IN_Q_OVERFLOW) != 0) return true;
  if (m_directories.count(event.wd) == 0) return false;  // of one that is no longer watched
  if ((event.mask & (kEnd | IN_IGNORED)) != 0) return true;
  return (event.mask & IN_ISDIR) != 0;  // made or moved into one of them
}

void Monitor::TakeEvents() {
  if (m_source != nullptr) g_source_set_ready_time(m_source.get(), -1);
  bool is_moved = false;
  alignas(inotify_event) char buffer[4096];
  ssize_t size = 0;
  while ((size = read(m_inotify.Get(), buffer, sizeof buffer)) > 0) {
    const inotify_event* event = nullptr;
    for (const char* at = buffer; at < buffer + size; at += sizeof *event + event->len) {
      event = reinterpret_cast<const inotify_event*>(at);
      is_moved = is_moved || IsMove(*event);
      for (const auto& watch : m_watches) {
        watch->is_changed = watch->is_changed || IsChange(*event, *watch);
      }
    }
  }
  if (is_moved) FollowAll();
}

WatchPtr Monitor::Begin() {
  const auto found = std::find_if(m_watches.begin(), m_watches.end(), [](const auto& watch) {
    return watch->is_changed && !watch->is_called;
  });
  if (found == m_watches.end()) return nullptr;
  (*found)->is_changed = false;
  (*found)->is_called = true;
  return *found;
}

}  // namespace tav_host
