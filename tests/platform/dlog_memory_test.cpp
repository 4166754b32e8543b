// SPDX-License-Identifier: Apache-2.0
// The log when memory runs out. malloc below stands before the C library's own.
#include <dlog.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstddef>
#include <string>

namespace {

std::size_t g_fails_from = static_cast<std::size_t>(-1);

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
  return size < g_fails_from ? __libc_malloc(size) : nullptr;
}

}  // extern "C"

namespace {

bool IsWritten(const std::string& text, std::size_t fails_from) {
  g_fails_from = fails_from;
  const int result = dlog_print(DLOG_ERROR, "TAG", "%s", text.c_str());
  g_fails_from = static_cast<std::size_t>(-1);
  return result > 0;
}

TEST(LogMemory, IsNeededForLongLinesAlone) {
  const std::string lengthy(2000, 'x');
  EXPECT_FALSE(IsWritten(lengthy, 0));
  EXPECT_TRUE(IsWritten(lengthy, 4000));
  EXPECT_TRUE(IsWritten("text", 0));
  EXPECT_TRUE(IsWritten("one\ntwo\n", 0));
}

TEST(LogMemory, IsNeededForALongComplaintOfTheLogs) {
  setenv("DLOG_FILE", std::string(2000, '/').c_str(), 1);
  EXPECT_TRUE(IsWritten("text", 0));
  EXPECT_TRUE(IsWritten("text", 0));
}

TEST(LogMemory, IsNeededForTheBreaksOfALineThatIsNotYetLong) {
  const std::string breaks(900, '\n');
  EXPECT_FALSE(IsWritten(breaks, 0));
  EXPECT_TRUE(IsWritten(breaks, 4000));
}

}  // namespace
