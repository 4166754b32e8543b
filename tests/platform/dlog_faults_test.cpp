// SPDX-License-Identifier: Apache-2.0
// The log when a line cannot be made.
#include <dlog.h>
#include <gtest/gtest.h>

#include <string>

namespace {

TEST(LogFaults, OfATextWithoutBytesInTheLocaleFailTheLine) {
  const std::wstring text = L"\u00e9";  // the locale is "C"
  EXPECT_EQ(dlog_print(DLOG_ERROR, "TAG", "%ls", text.c_str()), -1);
  EXPECT_GT(dlog_print(DLOG_ERROR, "TAG", "%ls", L"e"), 0);
}

}  // namespace
