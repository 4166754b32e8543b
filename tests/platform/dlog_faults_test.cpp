// SPDX-License-Identifier: Apache-2.0
// The log when a line cannot be made, or not be kept.
#include <dlog.h>
#include <gtest/gtest.h>
#include <stdlib.h>

namespace {

TEST(LogFaults, OfATextWithoutBytesInTheLocaleFailTheLine) {
  const std::wstring text = L"\u00e9";  // the locale is "C"
  EXPECT_EQ(dlog_print(DLOG_ERROR, "TAG", "%ls", text.c_str()), -1);
  EXPECT_GT(dlog_print(DLOG_ERROR, "TAG", "%ls", L"e"), 0);
}

TEST(LogFaults, OfTheFileLeaveTheLineOnStandardError) {
  setenv("DLOG_FILE", "/dev/full", 1);
  testing::internal::CaptureStderr();
  EXPECT_GT(dlog_print(DLOG_ERROR, "TAG", "text"), 0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "E/TAG(" + std::to_string(getpid()) + "): text\n");
}

}  // namespace
