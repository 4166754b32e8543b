// SPDX-License-Identifier: Apache-2.0
//
// What the reads take from the heap. malloc and its companions below stand before the C library's
// own and count; SQLite, whose caches are its own business, has an allocator that they do not see.
#include <gtest/gtest.h>
#include <malloc.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "support/app.h"
#include "support/device.h"
#include "tav_db_api.h"

namespace {

struct Heap {
  std::size_t calls = 0;
  std::size_t blocks = 0;  // that live
  std::size_t live = 0;    // their sizes, which malloc rounds up as it finds room
  std::size_t peak = 0;
  std::size_t largest = 0;  // as it was asked for
};

// One thread reads it: no test here has another.
Heap g_heap;

void* Counted(void* block, std::size_t size) {
  if (block == nullptr) return nullptr;
  ++g_heap.calls;
  ++g_heap.blocks;
  g_heap.live += malloc_usable_size(block);
  g_heap.peak = std::max(g_heap.peak, g_heap.live);
  g_heap.largest = std::max(g_heap.largest, size);
  return block;
}

void Forget(void* block) {
  if (block == nullptr) return;
  --g_heap.blocks;
  g_heap.live -= malloc_usable_size(block);
}

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  return Counted(__libc_malloc(size), size);
}

void* calloc(std::size_t count, std::size_t size) {
  return Counted(__libc_calloc(count, size), count * size);
}

void* realloc(void* block, std::size_t size) {
  Forget(block);
  return Counted(__libc_realloc(block, size), size);
}

void free(void* block) {
  Forget(block);
  __libc_free(block);
}

}  // extern "C"

namespace {

void KeepSqliteUncounted() {
  static const sqlite3_mem_methods methods = {
      [](int size) { return __libc_malloc(static_cast<std::size_t>(size)); },
      __libc_free,
      [](void* block, int size) { return __libc_realloc(block, static_cast<std::size_t>(size)); },
      [](void* block) { return static_cast<int>(malloc_usable_size(block)); },
      [](int size) { return (size + 7) & ~7; },
      [](void*) { return SQLITE_OK; },
      [](void*) {},
      nullptr,
  };
  ASSERT_EQ(sqlite3_config(SQLITE_CONFIG_MALLOC, &methods), SQLITE_OK);
}

struct Cost {
  std::size_t calls = 0;
  std::size_t block = 0;   // the largest
  std::size_t beside = 0;  // the peak without it
};

class MemoryCost : public ::testing::Test {
 protected:
  MemoryCost() {
    KeepSqliteUncounted();
    device = std::make_unique<test::Device>();
    setenv("DLOG_LEVEL", "W", 1);  // lines that are written would be made on the heap
  }

  // Installs apps until there are so many.
  void Fill(int apps) {
    std::vector<test::App> more;
    for (; m_apps < apps; ++m_apps) {
      const std::string number = std::to_string(m_apps);
      more.push_back(test::AppWithEveryColumnSet("app" + number).Index(m_apps).Set("is_hidden", 0));
    }
    device->InstallAll(more);
  }

  template <typename Read>
  static Cost CostOf(const Read& read) {
    auto* list = read();  // the connection is open, and what is kept for ever is there
    free(list);
    const Heap before = {0, g_heap.blocks, g_heap.live, g_heap.live, 0};
    g_heap = before;
    list = read();
    const Heap after = g_heap;
    EXPECT_NE(list, nullptr);
    EXPECT_EQ(after.blocks - before.blocks, 1u) << "more is kept than the list";
    const Cost cost{after.calls, after.largest,
                    after.peak - before.live - malloc_usable_size(list)};
    free(list);
    return cost;
  }

  std::unique_ptr<test::Device> device;

 private:
  int m_apps = 0;
};

constexpr int kFew = 50;
constexpr int kMany = 2000;
constexpr std::size_t kBeside = 8192;
// Less than a byte for each further app, and more than malloc's rounding.
constexpr double kSame = 1024;
constexpr tav_app_filter_s kEveryApp = {65535, 65535, 65535};

tav_app_info_s* FullList() {
  tav_app_info_s* list = nullptr;
  int count = 0;
  tav_get_all_app_list(&list, &count);
  return list;
}

tav_app_ms_s* ShortList() {
  tav_app_ms_s* list = nullptr;
  int count = 0;
  tav_get_app_list_ms(kEveryApp, TAV_APP_VIEWMODE_CATALOGUE, 0, 0, &list, &count);
  return list;
}

TEST_F(MemoryCost, OfAListIsItsOneBlockAndNoMoreForManyAppsThanForFew) {
  Fill(kFew);
  const Cost few = CostOf(FullList);
  EXPECT_EQ(few.block, kFew * sizeof(tav_app_info_s));
  EXPECT_LT(few.beside, kBeside);
  Fill(kMany);
  const Cost many = CostOf(FullList);
  EXPECT_EQ(many.block, kMany * sizeof(tav_app_info_s));
  EXPECT_NEAR(many.beside, few.beside, kSame);
  EXPECT_EQ(many.calls, few.calls);
}

TEST_F(MemoryCost, OfAMultiScreenListIsItsOneBlockAndNoMoreForManyAppsThanForFew) {
  Fill(kFew);
  const Cost few = CostOf(ShortList);
  EXPECT_LT(few.beside, kBeside);
  Fill(kMany);
  const Cost many = CostOf(ShortList);
  EXPECT_EQ(many.block, kMany * sizeof(tav_app_ms_s));
  EXPECT_NEAR(many.beside, few.beside, kSame);
  EXPECT_EQ(many.calls, few.calls);
}

TEST_F(MemoryCost, OfLookupsIsGivenBackWithEach) {
  Fill(kFew);
  tav_app_info_s info;
  ASSERT_EQ(tav_get_app_info("app7", &info), 0);
  const std::size_t before = g_heap.blocks;
  for (int i = 0; i < 2000; ++i) {
    ASSERT_EQ(tav_get_app_info("app7", &info), 0);
    ASSERT_EQ(tav_get_app_info("no app", &info), -1);
  }
  EXPECT_EQ(g_heap.blocks, before);
}

}  // namespace
