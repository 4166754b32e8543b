// SPDX-License-Identifier: Apache-2.0
//
// How a command line is read and written down, on invented ones.
#include <gmock/gmock.h>

#include <CLI/CLI.hpp>

#include "manual/text.h"
#include "manual/values.h"
#include "manual/writers.h"

namespace tav_manual {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::ThrowsMessage;

class ManualOfACommandLine : public testing::Test {
 protected:
  ManualOfACommandLine()
      : m_app("Tries things.", "try"), m_go(m_app.add_subcommand("go", "Goes")) {}

  auto Reading() {
    return [this] { ReadCommand(m_app); };
  }
  std::string PageText(const std::vector<Section>& sections = {}) {
    Program program{nullptr, "library 1", "try things", {"try [OPTIONS]"}, sections};
    return ManualPage(program, ReadCommand(m_app), "2026-01-02");
  }

  CLI::App m_app;
  CLI::App* const m_go;
  std::string m_text;
  std::vector<std::string> m_texts;
  bool m_flag = false;
};

TEST_F(ManualOfACommandLine, IsRefusedForAnOptionWithoutADescription) {
  m_go->add_flag("--fast", m_flag);
  EXPECT_THAT(Reading(), ThrowsMessage<ManualError>("try go --fast has no description"));
}

TEST_F(ManualOfACommandLine, IsRefusedForAnArgumentWithoutADescription) {
  m_go->add_option("WHERE", m_text);
  EXPECT_THAT(Reading(), ThrowsMessage<ManualError>("try go WHERE has no description"));
}

TEST_F(ManualOfACommandLine, IsRefusedForACommandWithoutADescription) {
  m_go->add_subcommand("home", "");
  EXPECT_THAT(Reading(), ThrowsMessage<ManualError>("try go home has no description"));
}

TEST_F(ManualOfACommandLine, IsRefusedForTextsThatNotEveryTerminalShows) {
  m_go->add_flag("--fast", m_flag, "At full t\xc3\xb6lt");
  EXPECT_THAT(Reading(), ThrowsMessage<ManualError>(
                             "try go --fast is described with more than printable ASCII"));
}

TEST_F(ManualOfACommandLine, IsRefusedForAValueThatAShellWouldTakeApart) {
  m_go->add_option("--to", m_text, "Where to")->check(CLI::IsMember({"home", "the sea"}));
  EXPECT_THAT(Reading(), ThrowsMessage<ManualError>(
                             "try go --to has \"the sea\", which a shell would not take as it is"));
}

TEST_F(ManualOfACommandLine, LeavesOutWhatHelpHides) {
  m_go->add_flag("--secret", m_flag)->group("");
  m_app.add_subcommand("secret", "")->group("");
  const Command command = ReadCommand(m_app);
  ASSERT_THAT(command.commands, testing::SizeIs(1));
  EXPECT_EQ(command.commands[0].path, "try go");
  ASSERT_THAT(command.commands[0].options, testing::SizeIs(1));
  EXPECT_THAT(command.commands[0].options[0].names, ElementsAre("-h", "--help"));
}

TEST_F(ManualOfACommandLine, TellsAFooterOnceThatACommandHasFromAbove) {
  m_go->footer("Mind the step.");
  m_go->add_subcommand("home", "Goes home");
  const Command go = ReadCommand(m_app).commands[0];
  EXPECT_EQ(go.footer, "Mind the step.");
  EXPECT_EQ(go.commands[0].footer, "");
}

TEST_F(ManualOfACommandLine, KnowsWhatStandsBehindAnOption) {
  m_go->add_flag("--fast", m_flag, "f");
  m_go->add_option("--by", m_text, "b")->option_text("KIND");
  m_go->add_option("--over", m_texts, "o")->option_text("X Y")->type_size(2)->expected(1);
  m_go->add_option("--plain", m_text, "p");
  m_go->add_option("--every", m_texts, "e");
  const auto options = ReadCommand(m_app).commands[0].options;
  ASSERT_THAT(options, testing::SizeIs(6));
  EXPECT_THAT(options[1].arguments, IsEmpty());
  EXPECT_THAT(options[2].arguments, ElementsAre("KIND"));
  EXPECT_THAT(options[3].arguments, ElementsAre("X", "Y"));
  EXPECT_THAT(options[4].arguments, ElementsAre("TEXT"));
  EXPECT_FALSE(options[4].is_repeatable);
  EXPECT_TRUE(options[5].is_repeatable);
}

TEST_F(ManualOfACommandLine, KnowsTheValuesThatAreCheckedAndThoseThatAreOnlyKnown) {
  m_go->add_option("--to", m_text, "t")->check(CLI::IsMember({"home", "sea"}));
  m_go->add_option("--by", m_text, "b")->check(OneOf([](std::string&) { return ""; }, {"car"}));
  m_go->add_option("--at", m_text, "a")->check(Known({"noon"}));
  const auto options = ReadCommand(m_app).commands[0].options;
  EXPECT_THAT(options[1].values, ElementsAre("home", "sea"));
  EXPECT_FALSE(options[1].has_other_values);
  EXPECT_THAT(options[2].values, ElementsAre("car"));
  EXPECT_FALSE(options[2].has_other_values);
  EXPECT_THAT(options[3].values, ElementsAre("noon"));
  EXPECT_TRUE(options[3].has_other_values);
}

TEST_F(ManualOfACommandLine, KeepsTheOrderOfTheOptionsThatRuleEachOtherOut) {
  auto* first = m_go->add_flag("--first", m_flag, "f");
  auto* second = m_go->add_flag("--second", m_flag, "s");
  m_go->add_flag("--third", m_flag, "t")->excludes(second)->excludes(first)->needs(first);
  const auto options = ReadCommand(m_app).commands[0].options;
  EXPECT_THAT(options[3].excluded, ElementsAre("--first", "--second"));
  EXPECT_THAT(options[3].needed, ElementsAre("--first"));
  EXPECT_THAT(options[1].excluded, ElementsAre("--third"));
}

TEST_F(ManualOfACommandLine, IsWrittenAsAPage) {
  m_app.set_help_flag();
  m_go->set_help_flag();
  m_go->add_option("WHERE", m_texts, "Where to")->required()->check(Known({"home", "sea"}));
  auto* fast = m_go->add_flag("-f,--fast", m_flag, "Don't dawdle; see \"C:\\x\"");
  m_go->add_option("--by", m_text, "What with")->option_text("KIND")->needs(fast);
  m_go->footer(".5 is no start.\n\nExamples:\n  try go '~'");
  EXPECT_EQ(PageText({{"", "It tries.", Shown::kOnThePage},
                      {"Exit status", "  0  done\n  1  failed,\n     or worse"}}),
            R"page(.\" Made from the program's own options, as --help is.
.TH TRY 1 2026-01-02 "library 1" "User Commands"
.SH NAME
try \- try things
.SH SYNOPSIS
\fBtry\fR [\fIOPTIONS\fR]
.SH DESCRIPTION
It tries.
.SH OPTIONS
.SH COMMANDS
Each command has
\fB\-h\fR, \fB\-\-help\fR as well.
.SS try go
\fBtry\fR \fBgo\fR [\fIOPTIONS\fR] \fIWHERE\fR...
.PP
Goes.
.TP
\fIWHERE\fR
Where to. Known are home, sea.
.TP
\fB\-f\fR, \fB\-\-fast\fR
Don\(aqt dawdle; see \(dqC:\ex\(dq.
.TP
\fB\-\-by\fR \fIKIND\fR
What with. Only with \-f.
.PP
\&.5 is no start.
.PP
Examples:
.PP
.RS 4
.nf
try go \(aq\(ti\(aq
.fi
.RE
.SH EXIT STATUS
.TP
\fB0\fR
done
.TP
\fB1\fR
failed, or worse
)page");
}

TEST_F(ManualOfACommandLine, TellsTheValuesThatItsWordsDoNotName) {
  m_go->add_option("--to", m_text, "Where, home or sea")->check(CLI::IsMember({"home", "sea"}));
  m_go->add_option("--by", m_text, "What with")->check(CLI::IsMember({"car", "boat"}));
  const std::string page = PageText();
  EXPECT_THAT(page, HasSubstr("\nWhere, home or sea.\n"));
  EXPECT_THAT(page, HasSubstr("\nWhat with. One of car, boat.\n"));
}

TEST(HelpFooter, HasTheSectionsThatAreNotThePagesAlone) {
  EXPECT_EQ(
      HelpFooter({{"", "It tries."}, {"Files", "none", Shown::kOnThePage}, {"Examples", "  try"}}),
      "It tries.\n\nExamples:\n  try");
  EXPECT_EQ(HelpFooter({}), "");
}

TEST(ManualText, IsTakenApartIntoParagraphsLinesAndTerms) {
  const auto blocks =
      TakeApart("One\ntwo\n\nThree:\n  try it\n\n  a  first\n     and on\n  b  second");
  ASSERT_THAT(blocks, testing::SizeIs(4));
  EXPECT_EQ(blocks[0].kind, Block::Kind::kParagraph);
  EXPECT_THAT(blocks[0].lines, ElementsAre("One", "two"));
  EXPECT_EQ(blocks[1].kind, Block::Kind::kParagraph);
  EXPECT_THAT(blocks[1].lines, ElementsAre("Three:"));
  EXPECT_EQ(blocks[2].kind, Block::Kind::kLines);
  EXPECT_THAT(blocks[2].lines, ElementsAre("try it"));
  EXPECT_EQ(blocks[3].kind, Block::Kind::kTerms);
  ASSERT_THAT(blocks[3].terms, testing::SizeIs(2));
  EXPECT_EQ(blocks[3].terms[0].name, "a");
  EXPECT_EQ(blocks[3].terms[0].text, "first and on");
  EXPECT_EQ(blocks[3].terms[1].name, "b");
  EXPECT_EQ(blocks[3].terms[1].text, "second");
}

TEST(ManualText, KeepsLinesOfWhichOneIsNoTermAsTheyAre) {
  const auto blocks = TakeApart("  a  b\n  c d");
  ASSERT_THAT(blocks, testing::SizeIs(1));
  EXPECT_EQ(blocks[0].kind, Block::Kind::kLines);
  EXPECT_THAT(blocks[0].lines, ElementsAre("a  b", "c d"));
}

}  // namespace
}  // namespace tav_manual
