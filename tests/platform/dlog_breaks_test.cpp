// SPDX-License-Identifier: Apache-2.0
// The log: line breaks within a text, which must not pass for the ends of lines.
#include <string.h>

#include "log_in_a_child.h"

namespace {

class LogBreaks : public Log {
 protected:
  // The line that the text makes, without its head and its newline.
  std::string Shown(const std::string& text) {
    const std::string head = "E/TAG(PID): ";
    std::string line =
        StderrOf({}, [&] { return dlog_print(DLOG_ERROR, "TAG", "%s", text.c_str()) > 0; });
    if (line.rfind(head, 0) != 0 || line.back() != '\n') return "not a line: " + line;
    return line.substr(head.size(), line.size() - head.size() - 1);
  }
};

TEST_F(LogBreaks, AreWrittenAsTwoCharacters) {
  EXPECT_EQ(Shown("one\ntwo"), "one\\ntwo");
  EXPECT_EQ(Shown("\none"), "\\none");
  EXPECT_EQ(Shown("one\n\n\ntwo"), "one\\n\\n\\ntwo");
  EXPECT_EQ(Shown("one\r\ntwo\r"), "one\\r\\ntwo\\r");
  EXPECT_EQ(Shown("a\nE/TAG(1): forged"), "a\\nE/TAG(1): forged");
  EXPECT_EQ(Shown("\033[0;31mred\033[0;m, back\\slash\t"), "\033[0;31mred\033[0;m, back\\slash\t");
}

TEST_F(LogBreaks, AreLeftOutAtTheEndOfAText) {
  EXPECT_EQ(Shown("one\n"), "one");
  EXPECT_EQ(Shown("one\n\n"), "one\\n");
  EXPECT_EQ(Shown("\n"), "");
  EXPECT_EQ(Shown(""), "");
  EXPECT_EQ(Shown("\033[0;32mcall cb (5)\n\033[0;m"), "\033[0;32mcall cb (5)\033[0;m");
  EXPECT_EQ(Shown("one\n\033[m"), "one\033[m");
  // No code that ends the colour of the text.
  EXPECT_EQ(Shown("one\n\033[0;m."), "one\\n\033[0;m.");
  EXPECT_EQ(Shown("one\n\033[0;K"), "one\\n\033[0;K");
  EXPECT_EQ(Shown("one\n\033[0;xm"), "one\\n\033[0;xm");
  EXPECT_EQ(Shown("one\n\033["), "one\\n\033[");
  EXPECT_EQ(Shown("one\nm"), "one\\nm");
}

TEST_F(LogBreaks, AreWrittenSoInLinesOfEveryLength) {
  for (const size_t length : {500, 505, 507, 508, 509, 510, 1000, 1005, 1010, 1015, 5000}) {
    std::string text;
    std::string shown;
    for (size_t i = 0; i < length; ++i) {
      text += i % 2 == 0 ? "\n" : "x";
      shown += i % 2 == 0 ? "\\n" : "x";
    }
    EXPECT_EQ(Shown(text + "x"), shown + "x") << length;
    EXPECT_EQ(Shown(text + "x\n"), shown + "x") << length;
  }
}

TEST_F(LogBreaks, CountAsTheBytesThatAreWritten) {
  const std::string text = StderrOf({}, [] {
    const int size = dlog_print(DLOG_ERROR, "TAG", "a\nb\n");
    return size == static_cast<int>(strlen("E/TAG(): a\\nb\n") + std::to_string(getpid()).size());
  });
  EXPECT_EQ(text, "E/TAG(PID): a\\nb\n");
}

TEST_F(LogBreaks, AreWrittenSoInATagAndInTheSettingsOfTheLog) {
  EXPECT_EQ(StderrOf({{"DLOG_LEVEL", "V\nE/TAG(1): forged"}, {"DLOG_FILE", "/no\nE/TAG(1): /x"}},
                     [] { return dlog_print(DLOG_ERROR, "T\nE/TAG", "text") > 0; }),
            "W/DLOG(PID): DLOG_LEVEL is \"V\\nE/TAG(1): forged\", none of VDIWEFS; W is used\n"
            "W/DLOG(PID): cannot open DLOG_FILE \"/no\\nE/TAG(1): /x\": No such file or directory\n"
            "E/T\\nE/TAG(PID): text\n");
}

}  // namespace
