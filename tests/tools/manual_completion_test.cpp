// SPDX-License-Identifier: Apache-2.0
//
// The completions for tavctl that the build made, asked by the shells themselves.
#include <gmock/gmock.h>

#include <sstream>

#include "manual_test.h"

namespace test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::UnorderedElementsAreArray;

using Words = std::vector<std::string>;

Words Lines(const std::string& text) {
  Words lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

Words Names(const Help& help) {
  Words names;
  for (const auto& [name, description] : help.options) names.push_back(name);
  return names;
}

const Words kSettings = {
    "db/comss/appkey",        "db/comss/kestranaversion", "db/tav/app_sync_status",
    "db/tav/factory_reset",   "memory/tav/appsync",       "db/homedeck/reset/tavcore",
    "memory/tav/boot_status", "memory/tav/app_install",   "memory/tav/app_change"};

class BashCompletion : public ManualTest {
 protected:
  // What is offered in the place of the last word, with words as bash breaks them.
  Words Offers(const Words& words) const {
    Words all = {COMPLETE_BASH, MANUALS "/tavctl.bash"};
    all.insert(all.end(), words.begin(), words.end());
    const Result result = Run(all);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    return Lines(result.out);
  }

  static Words WordsOf(const Help& help, const std::string& last) {
    Words words;
    std::istringstream stream(help.path);
    for (std::string word; stream >> word;) words.push_back(word);
    words.push_back(last);
    return words;
  }
};

TEST_F(BashCompletion, OffersEveryCommandAndOptionThatHelpShows) {
  for (const Help& help : HelpOf("tavctl")) {
    EXPECT_THAT(Offers(WordsOf(help, "-")), UnorderedElementsAreArray(Names(help))) << help;
    if (help.commands.empty()) continue;
    EXPECT_EQ(Offers(WordsOf(help, "")), help.commands) << help;
  }
}

TEST_F(BashCompletion, OffersWhatBeginsWithTheWordSoFar) {
  EXPECT_THAT(Offers({"tavctl", "set"}), ElementsAre("settings", "set-setting"));
  EXPECT_THAT(Offers({"tavctl", "list", "--re"}), ElementsAre("--recent"));
  EXPECT_THAT(Offers({"tavctl", "none"}), IsEmpty());
}

TEST_F(BashCompletion, OffersTheValuesOfAnOption) {
  EXPECT_THAT(
      Offers({"tavctl", "list", "--view", ""}),
      ElementsAre("most-used", "catalogue", "last-downloaded", "title", "title-desc", "recent"));
  EXPECT_THAT(Offers({"tavctl", "info", "a", "--by", "t"}), ElementsAre("tizen-id"));
  EXPECT_THAT(Offers({"tavctl", "list", "--key", "is_usb"}), ElementsAre("is_usb_app"));
  EXPECT_THAT(Offers({"tavctl", "list", "--offset", ""}), IsEmpty());
}

TEST_F(BashCompletion, OffersValuesBehindAnEqualsSign) {
  EXPECT_THAT(Offers({"tavctl", "list", "--view", "="}), testing::SizeIs(6));
  EXPECT_THAT(Offers({"tavctl", "list", "--view", "=", "ti"}), ElementsAre("title", "title-desc"));
  EXPECT_THAT(Offers({"tavctl", "list", "--view=ti"}),
              ElementsAre("--view=title", "--view=title-desc"));
  EXPECT_THAT(Offers({"tavctl", "list", "--json=", ""}), IsEmpty());
}

TEST_F(BashCompletion, GoesOnBehindAValue) {
  EXPECT_THAT(Offers({"tavctl", "list", "--view", "title", "--c"}), ElementsAre("--csv"));
  EXPECT_THAT(Offers({"tavctl", "list", "--view", "=", "title", "--c"}), ElementsAre("--csv"));
  EXPECT_THAT(Offers({"tavctl", "list", "--view=title", "--c"}), ElementsAre("--csv"));
  EXPECT_THAT(Offers({"tavctl", "show-property", "--ait", "1", "2", "--prop"}),
              ElementsAre("--property"));
  EXPECT_THAT(Offers({"tavctl", "show-property", "--ait", "1", "-"}), IsEmpty());
}

TEST_F(BashCompletion, OffersTheKeysOfTheSettings) {
  EXPECT_EQ(Offers({"tavctl", "watch", ""}), kSettings);
  EXPECT_EQ(Offers({"tavctl", "watch", "db/tav/factory_reset", ""}), kSettings);
  EXPECT_EQ(Offers({"tavctl", "set-setting", ""}), kSettings);
  EXPECT_EQ(Offers({"tavctl", "set-setting", "--type", "int", ""}), kSettings);
  EXPECT_THAT(Offers({"tavctl", "set-setting", "memory/tav/app_install", ""}), IsEmpty());
}

TEST_F(BashCompletion, DoesNotTakeAValueForACommand) {
  EXPECT_THAT(Offers({"tavctl", "info", "list", "--v"}), IsEmpty());
  EXPECT_THAT(Offers({"tavctl", "info", "--by", "list", "--b"}), ElementsAre("--by"));
}

TEST_F(BashCompletion, GivesTheShellNoReasonToWarn) {
  EXPECT_EQ(Run({"bash", "-n", MANUALS "/tavctl.bash"}), (Result{0, "", ""}));
}

class ZshCompletion : public ManualTest {
 protected:
  // What is offered at the end of each line.
  std::vector<Words> Offers(const Words& lines) const {
    Words all = {"zsh", "-f", COMPLETE_ZSH, MANUALS};
    all.insert(all.end(), lines.begin(), lines.end());
    const Result result = Run(all);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    std::vector<Words> offers(1);
    for (const std::string& line : Lines(result.out)) {
      if (line == "--") {
        offers.emplace_back();
      } else {
        offers.back().push_back(line);
      }
    }
    offers.pop_back();
    return offers;
  }
};

TEST_F(ZshCompletion, OffersEveryCommandAndOptionThatHelpShows) {
  const std::vector<Help> all = HelpOf("tavctl");
  Words lines;
  for (const Help& help : all) {
    lines.push_back(help.path + " -");
    lines.push_back(help.path + " ");
  }
  const std::vector<Words> offers = Offers(lines);
  ASSERT_EQ(offers.size(), lines.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    EXPECT_THAT(offers[2 * i], UnorderedElementsAreArray(Names(all[i]))) << all[i];
    if (all[i].commands.empty()) continue;
    EXPECT_THAT(offers[2 * i + 1], UnorderedElementsAreArray(all[i].commands)) << all[i];
  }
}

TEST_F(ZshCompletion, OffersTheValuesOfOptionsAndTheKeysOfTheSettings) {
  const std::vector<Words> offers =
      Offers({"tavctl list --view t", "tavctl list --view=t", "tavctl info a --by t",
              "tavctl watch ", "tavctl watch memory/tav/appsync ", "tavctl set-setting ",
              "tavctl set-setting memory/tav/app_install ", "tavctl list --offset "});
  EXPECT_THAT(offers,
              ElementsAre(ElementsAre("title", "title-desc"), ElementsAre("title", "title-desc"),
                          ElementsAre("tizen-id"), UnorderedElementsAreArray(kSettings),
                          IsSupersetOf({kSettings[0], kSettings[8]}),
                          UnorderedElementsAreArray(kSettings), IsEmpty(), IsEmpty()));
}

TEST_F(ZshCompletion, LeavesOutWhatTheOptionsSoFarRuleOut) {
  const std::vector<Words> offers =
      Offers({"tavctl list --csv --js", "tavctl list --all --v", "tavctl list --view title --v",
              "tavctl show-property --property isp --prop", "tavctl --version "});
  EXPECT_THAT(offers,
              ElementsAre(IsEmpty(), IsEmpty(), IsEmpty(), ElementsAre("--property"), IsEmpty()));
}

TEST_F(ZshCompletion, GivesTheShellNoReasonToWarn) {
  EXPECT_EQ(Run({"zsh", "-f", "-n", MANUALS "/_tavctl"}), (Result{0, "", ""}));
}

}  // namespace
}  // namespace test
