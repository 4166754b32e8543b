// SPDX-License-Identifier: Apache-2.0
//
// Catalogues that the service never wrote: whatever the text, the answer is a list or a failure,
// and the next call works.
#include <random>

#include "catalogue.h"
#include "support/database.h"

namespace {

using test::BuiltIn;
using test::BuiltIns;
using test::Ids;
using test::IdsOf;
using test::InnerApp;
using test::InnerApps;

constexpr char kNotOk[] = "builtin apps Json info stat is not ok";
constexpr char kGood[] =
    R"({"rsp":{"stat":"ok","apps":[{"id":"a","tizenId":"t","packageId":"p","title":"A"},)"
    R"({"id":"b","tizenId":"u","packageId":"q","title":"\u00e9\n"}]}})";

class MalformedCatalogue : public test::BuiltInApps {
 protected:
  static std::string Unparsable(const std::string& text) {
    return "reader.parse json err, json file is " + text + "\n!";
  }
  // The document fails with this error, writes nothing and gives the lock back.
  void ExpectFailure(const std::string& text, const std::string& error) {
    Document(text);
    log.Forget();
    InnerApps list = {InnerApp("before", "p")};
    EXPECT_EQ(GetBuiltInAppList(list, false), -1) << text.substr(0, 100);
    EXPECT_EQ(IdsOf(list), Ids{"before"});
    // The log cuts a line that is too long.
    if (!error.empty()) {
      EXPECT_TRUE(log.HasError(error)) << error;
    }
    EXPECT_FALSE(log.Has("GetBuiltInAppList end"));
    Document(R"({"rsp":{"stat":"ok","apps":[{"id":"a"}]}})");
    EXPECT_EQ(ListedIds(), Ids{"a"});
  }
  void ExpectParseFailure(const std::string& text) { ExpectFailure(text, Unparsable(text)); }
  // The list for these entries.
  BuiltIns ListedWith(const std::string& apps) {
    Document(R"({"rsp":{"stat":"ok","apps":)" + apps + "}}");
    return Listed();
  }
};

TEST_F(MalformedCatalogue, FailsWithoutAText) {
  InnerApps list = {InnerApp("before", "p")};
  EXPECT_EQ(GetBuiltInAppList(list, false), -1);
  EXPECT_EQ(IdsOf(list), Ids{"before"});
  EXPECT_TRUE(log.HasError(Unparsable("")));
  ExpectParseFailure("");
}

TEST_F(MalformedCatalogue, FailsWhenItIsNoJson) {
  for (const char* text :
       {" ", "{", "}", "no JSON", R"({"rsp":)", R"({"rsp":{"stat":"ok","apps":[)", "{'rsp':{}}",
        R"("open)", "// c", R"({"rsp":{"stat":"\u12"}})", R"({1:2})"}) {
    ExpectParseFailure(text);
  }
}

TEST_F(MalformedCatalogue, IsNotOkWhenItsRootOrAnswerIsNoObject) {
  for (const char* text :
       {"null", "true", "1", "1.5", R"("ok")", "[]", R"([{"rsp":{"stat":"ok"}}])", "{}",
        R"({"rsp":null})", R"({"rsp":1})", R"({"rsp":"ok"})", R"({"rsp":[]})",
        R"({"rsp":[{"stat":"ok"}]})", R"({"RSP":{"stat":"ok"}})"}) {
    ExpectFailure(text, kNotOk);
  }
}

TEST_F(MalformedCatalogue, IsNotOkWhenItsStatIsAnythingElse) {
  for (const char* stat : {"null", "true", "1", "[]", "{}", R"(["ok"])", R"({"ok":"ok"})", R"("")",
                           R"("OK")", R"("ok ")", R"("fail")", R"("ok\u0000")"}) {
    ExpectFailure(std::string(R"({"rsp":{"stat":)") + stat + R"(,"apps":[{"id":"x"}]}})", kNotOk);
  }
  ExpectFailure(R"({"rsp":{"apps":[{"id":"x"}]}})", kNotOk);
}

TEST_F(MalformedCatalogue, HasNoEntriesWhenItsAppsAreNoArray) {
  for (const char* apps : {"null", "true", "1", R"("a")", "{}", R"({"id":"a"})", "[]"}) {
    EXPECT_EQ(ListedWith(apps), BuiltIns{}) << apps;
  }
  Document(R"({"rsp":{"stat":"ok"}})");
  EXPECT_EQ(Listed(), BuiltIns{});
}

TEST_F(MalformedCatalogue, SkipsEntriesThatAreNoObjects) {
  EXPECT_EQ(ListedWith(R"([null,1,"a",[],[{"id":"x"}],true,{"id":"a"},1.5])"),
            (BuiltIns{{"a", "", "", "", "", "", "", ""}}));
}

TEST_F(MalformedCatalogue, TakesTheTextFormOfAMemberOfAnotherTypeWhenItHasOne) {
  EXPECT_EQ(ListedWith(R"([{"id":5,"tizenId":true,"packageId":-7,"title":null},)"
                       R"({"id":[],"tizenId":{},"packageId":["p"],"title":{"t":"t"}}])"),
            (BuiltIns{{"5", "true", "-7", "", "", "", "", ""}, {}}));
}

TEST_F(MalformedCatalogue, FailsWhenItIsNestedTooDeeply) {
  const std::string arrays = std::string(1100, '[') + std::string(1100, ']');
  ExpectParseFailure(arrays);
  ExpectParseFailure(R"({"rsp":{"stat":"ok","apps":)" + arrays + "}}");
  ExpectParseFailure(R"({"rsp":{"stat":"ok","apps":[{"id":)" + arrays + "}]}}");
  std::string objects;
  for (int i = 0; i < 1100; ++i) objects += R"({"rsp":)";
  ExpectParseFailure(objects + "1" + std::string(1100, '}'));
}

TEST_F(MalformedCatalogue, FailsForAMegabyteOfBrackets) {
  constexpr std::size_t kMegabyte = 1 << 20;
  ExpectParseFailure(std::string(kMegabyte, '['));
  std::string braces;
  while (braces.size() < kMegabyte) braces += R"({"":)";
  ExpectParseFailure(braces);
}

TEST_F(MalformedCatalogue, KeepsBytesThatAreNoUtf8) {
  EXPECT_EQ(ListedWith("[{\"id\":\"a\xff\xc3(\",\"title\":\"\x80\xf8\"}]"),
            (BuiltIns{{"a\xff\xc3(", "", "", "\x80\xf8", "", "", "", ""}}));
}

TEST_F(MalformedCatalogue, SurvivesHugeNumbers) {
  for (const std::string& number :
       {std::string("1e400"), std::string("-1e400"), std::string("1e-400"), std::string(5000, '9'),
        "-" + std::string(400, '9'), std::string("18446744073709551616"), std::string("0.1e")}) {
    Document(R"({"rsp":{"stat":"ok","apps":[{"id":)" + number + R"(},{"id":"b"}]}})");
    InnerApps list = {InnerApp("before", "p")};
    const int result = GetBuiltInAppList(list, false);
    EXPECT_TRUE(result == 0 || result == -1) << number;
    EXPECT_EQ(list.size(), result == 0 ? 3U : 1U) << number;
  }
  Document(kGood);
  EXPECT_EQ(ListedIds(), (Ids{"a", "b"}));
}

TEST_F(MalformedCatalogue, AcceptsWhatTheJsonReaderAcceptsByDefault) {
  Document(R"(/* c */ {"rsp":{"stat":"no","stat":"ok","apps":[{"id":"a",}],}} rest)");
  EXPECT_EQ(ListedIds(), Ids{"a"});
}

// A text made from the good one, or from nothing.
std::string AnyText(std::mt19937& random) {
  const auto below = [&random](std::size_t end) { return random() % end; };
  const std::string tokens[] = {"{",     "}",         "[",    "]",       ":",    ",",
                                "\"",    "null",      "true", "1e9",     "-1",   "\"rsp\":",
                                "\\u00", "\"ok\"",    "\xff", "\"id\":", "/*",   "\"apps\":[",
                                "\\",    "\"stat\":", "\x01", "0.",      "\"\"", " "};
  std::string text = below(4) == 0 ? "" : kGood;
  const std::size_t changes = 1 + below(text.empty() ? 40 : 5);
  for (std::size_t i = 0; i < changes; ++i) {
    const std::size_t at = below(text.size() + 1);
    switch (below(4)) {
      case 0:
        text.insert(at, tokens[below(std::size(tokens))]);
        break;
      case 1:
        text.erase(at, below(8));
        break;
      case 2:
        if (at < text.size()) text[at] = static_cast<char>(1 + below(255));
        break;
      default:
        text.insert(at, text.substr(below(text.size() + 1), below(20)));
    }
  }
  return text;
}

TEST_F(MalformedCatalogue, IsAListOrAFailureForAnyText) {
  std::mt19937 random(20240229);
  Document("");
  test::Database database(device.DatabaseFile());
  database.Run("pragma synchronous = off");
  int lists = 0;
  for (int i = 0; i < 10000; ++i) {
    const std::string text = AnyText(random);
    database.Run("update TAVConfigTable set value = ? where name = 'RESERVED_15'", {text});
    InnerApps list = {InnerApp("before", "p")};
    const int result = GetBuiltInAppList(list, false);
    ASSERT_TRUE(result == 0 || result == -1) << text;
    if (result == -1) {
      ASSERT_EQ(list.size(), 1U) << text;
    }
    ASSERT_EQ(list.front().strAppID, "before") << text;
    lists += result == 0 ? 1 : 0;
    log.Forget();
  }
  EXPECT_GT(lists, 500);
  EXPECT_LT(lists, 9500);
  database.Run("update TAVConfigTable set value = ? where name = 'RESERVED_15'",
               {std::string(kGood)});
  EXPECT_EQ(ListedIds(), (Ids{"a", "b"}));
}

}  // namespace
