// SPDX-License-Identifier: Apache-2.0
//
// malloc and its kin below stand before the C library's own. Which allocations are the library's
// is told by who asks for them, the object that the return address lies in:
//
//   - the library itself, libstdc++ (operator new), SQLite and jsoncpp: these may fail.
//   - GLib and GIO, which end the process when they get no memory, and the dynamic linker: their
//     allocations are left alone, and not counted either, since both keep caches.
//   - the C library, on behalf of somebody (strdup, fopen, realpath, the buffers of files): the
//     first frame of another object decides.
//   - anything while a function of the platform runs: it never fails, for the platform on a PC
//     has its own tests, but it is counted, for what the platform hands out must be released.
#include "faults/memory.h"

#include <execinfo.h>
#include <link.h>
#include <malloc.h>

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <cstring>

#include "faults/outcome.h"
#include "faults/platform.h"

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

}  // extern "C"

namespace test {
namespace {

enum class Owner { kUnknown, kLibrary, kSqlite, kCLibrary, kProgram };

struct Range {
  std::uintptr_t from;
  std::uintptr_t to;
  Owner owner;
};

Range g_ranges[64];
int g_range_count = 0;

Owner OwnerOf(const char* path) {
  if (path[0] == '\0') return Owner::kProgram;
  for (const char* name : {"libtav_db_api.so", "libstdc++.so", "libjsoncpp.so"}) {
    if (std::strstr(path, name) != nullptr) return Owner::kLibrary;
  }
  if (std::strstr(path, "libsqlite3.so") != nullptr) return Owner::kSqlite;
  return std::strstr(path, "/libc.so") != nullptr ? Owner::kCLibrary : Owner::kUnknown;
}

int AddRanges(dl_phdr_info* object, std::size_t /*size*/, void* /*unused*/) {
  const Owner owner = OwnerOf(object->dlpi_name);
  for (int i = 0; owner != Owner::kUnknown && i < object->dlpi_phnum; ++i) {
    const auto& part = object->dlpi_phdr[i];
    if (part.p_type != PT_LOAD || (part.p_flags & PF_X) == 0 || g_range_count == 64) continue;
    const std::uintptr_t from = object->dlpi_addr + part.p_vaddr;
    g_ranges[g_range_count++] = {from, from + part.p_memsz, owner};
  }
  return 0;
}

// Before main: everything that is linked is loaded, and the first backtrace loads what it needs.
[[maybe_unused]] const bool g_is_ready = [] {
  dl_iterate_phdr(AddRanges, nullptr);
  void* frame;
  backtrace(&frame, 1);
  return true;
}();

Owner OwnerAt(const void* address) {
  const auto at = reinterpret_cast<std::uintptr_t>(address);
  for (int i = 0; i < g_range_count; ++i) {
    if (at >= g_ranges[i].from && at < g_ranges[i].to) return g_ranges[i].owner;
  }
  return Owner::kUnknown;
}

thread_local bool t_is_walking = false;

// On whose behalf the C library asks.
Owner OwnerBehindTheCLibrary() {
  if (t_is_walking) return Owner::kUnknown;
  t_is_walking = true;
  void* frames[24];
  const int count = backtrace(frames, 24);
  t_is_walking = false;
  for (int i = 0; i < count; ++i) {
    const Owner owner = OwnerAt(frames[i]);
    if (owner != Owner::kCLibrary && owner != Owner::kProgram) return owner;
  }
  return Owner::kUnknown;
}

// A set of blocks that needs no memory itself: open addressing, with marks for what has gone.
class BlockSet {
 public:
  void Add(void* block) {
    const Guard guard(m_flag);
    std::size_t at = IndexOf(block);
    while (m_blocks[at] != nullptr && m_blocks[at] != kGone) at = (at + 1) % kSize;
    m_blocks[at] = block;
    ++m_count;
  }
  void Remove(void* block) {
    if (block == nullptr || m_count == 0) return;
    const Guard guard(m_flag);
    for (std::size_t at = IndexOf(block); m_blocks[at] != nullptr; at = (at + 1) % kSize) {
      if (m_blocks[at] != block) continue;
      const bool is_last = m_blocks[(at + 1) % kSize] == nullptr;
      m_blocks[at] = is_last ? nullptr : kGone;
      --m_count;
      return;
    }
  }
  long Count() const { return m_count; }

 private:
  class Guard {
   public:
    explicit Guard(std::atomic_flag& flag) : m_guarded(flag) {
      while (m_guarded.test_and_set(std::memory_order_acquire)) continue;
    }
    ~Guard() { m_guarded.clear(std::memory_order_release); }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

   private:
    std::atomic_flag& m_guarded;
  };

  static constexpr std::size_t kSize = std::size_t{1} << 18;
  static inline char s_gone = 0;
  static inline void* const kGone = &s_gone;

  static std::size_t IndexOf(void* block) {
    return (reinterpret_cast<std::uintptr_t>(block) >> 4) * 0x9E3779B1U % kSize;
  }

  void* m_blocks[kSize] = {};
  std::atomic<long> m_count{0};
  std::atomic_flag m_flag = ATOMIC_FLAG_INIT;
};

BlockSet g_blocks;

thread_local long t_left = 0;  // allocations until the one that fails; 0 when none does
Shortage g_shortage = Shortage::kOnce;
Victims g_victims;

// Who asks inside the library; kUnknown for everybody else.
struct Asker {
  explicit Asker(const void* caller) {
    if (!IsInsideTheLibrary()) return;
    owner = OwnerAt(caller);
    is_behind_c_library = owner == Owner::kCLibrary;
    if (is_behind_c_library) owner = OwnerBehindTheCLibrary();
  }
  Owner owner = Owner::kUnknown;
  bool is_behind_c_library = false;
};

bool& VictimOf(const Asker& asker) {
  if (asker.owner == Owner::kSqlite) return g_victims.sqlite;
  return asker.is_behind_c_library ? g_victims.c_library : g_victims.own_code;
}

bool Fails(const Asker& asker) {
  if (t_left == 0 || IsInThePlatform()) return false;
  if (asker.owner != Owner::kLibrary && asker.owner != Owner::kSqlite) return false;
  if (--t_left > 0) return false;
  if (g_shortage == Shortage::kFromThenOn) t_left = 1;
  VictimOf(asker) = true;
  errno = ENOMEM;
  return true;
}

void* Counted(const Asker& asker, void* block) {
  // The platform's own objects are not told apart: what they make for the library is counted.
  const bool is_counted =
      asker.owner != Owner::kUnknown || (IsInsideTheLibrary() && IsInThePlatform());
  if (is_counted && block != nullptr && !t_is_walking) g_blocks.Add(block);
  return block;
}

}  // namespace

FailingMemory::FailingMemory(long nth, Shortage shortage) {
  g_victims = {};
  g_shortage = shortage;
  t_left = nth;
}

FailingMemory::~FailingMemory() {
  t_left = 0;
}

Victims LastVictims() {
  return g_victims;
}

long BlocksLeft() {
  return g_blocks.Count();
}

extern "C" {

void* malloc(std::size_t size) {
  const Asker asker(__builtin_return_address(0));
  return Fails(asker) ? nullptr : Counted(asker, __libc_malloc(size));
}

void* calloc(std::size_t count, std::size_t size) {
  const Asker asker(__builtin_return_address(0));
  return Fails(asker) ? nullptr : Counted(asker, __libc_calloc(count, size));
}

void* realloc(void* block, std::size_t size) {
  const Asker asker(__builtin_return_address(0));
  if (Fails(asker)) return nullptr;
  g_blocks.Remove(block);
  return Counted(asker, __libc_realloc(block, size));
}

void free(void* block) {
  g_blocks.Remove(block);
  __libc_free(block);
}

}  // extern "C"

}  // namespace test
