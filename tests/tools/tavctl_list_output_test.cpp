// SPDX-License-Identifier: Apache-2.0
//
// tavctl list: the table, its columns on a terminal, JSON and comma-separated values. The columns
// of a text are counted with the C library, whose tables are not the program's.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <json/value.h>
#include <locale.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>
#include <cwchar>
#include <stdexcept>

#include "json_text.h"
#include "program_test.h"

namespace test {
namespace {

using Texts = std::vector<std::string>;

constexpr char kHeader[] = "ID  TITLE  VERSION  RUN TITLE  TYPE  LOCK  INDEX  USES\n";

class Utf8Locale {
 public:
  Utf8Locale() : m_locale(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
    if (m_locale == nullptr) throw std::runtime_error("no C.UTF-8");
    m_previous = uselocale(m_locale);
  }
  ~Utf8Locale() {
    uselocale(m_previous);
    freelocale(m_locale);
  }
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;

 private:
  locale_t m_locale;
  locale_t m_previous = nullptr;
};

int ColumnsOf(const std::string& text) {
  const Utf8Locale locale;
  std::wstring wide(text.size() + 1, L'\0');
  const std::size_t length = std::mbstowcs(wide.data(), text.c_str(), wide.size());
  if (length == static_cast<std::size_t>(-1)) throw std::runtime_error("no UTF-8: " + text);
  return wcswidth(wide.data(), length);
}

Texts LinesOf(const std::string& text) {
  Texts lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    lines.push_back(text.substr(at, end - at));
    at = end == std::string::npos ? text.size() : end + 1;
  }
  return lines;
}

// Where the first of these texts begins, in terminal columns.
int ColumnOf(const std::string& line, const std::string& text) {
  return ColumnsOf(line.substr(0, line.find(text)));
}

// RFC 4180, with the lines' ends that it names.
std::vector<Texts> ParseCsv(const std::string& text) {
  std::vector<Texts> records;
  Texts record(1);
  bool is_quoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (is_quoted) {
      if (c != '"') {
        record.back() += c;
      } else if (text.compare(i, 2, "\"\"") == 0) {
        record.back() += text[++i];
      } else {
        is_quoted = false;
      }
    } else if (c == '"') {
      EXPECT_EQ(record.back(), "");
      is_quoted = true;
    } else if (c == ',') {
      record.emplace_back();
    } else if (text.compare(i, 2, "\r\n") == 0) {
      records.push_back(record);
      record.assign(1, "");
      ++i;
    } else {
      EXPECT_TRUE(c != '\r' && c != '\n') << "a bare line end";
      record.back() += c;
    }
  }
  EXPECT_FALSE(is_quoted);
  EXPECT_EQ(record, Texts(1)) << "the last record has no end";
  return records;
}

// A terminal that keeps what is written to it.
class Terminal {
 public:
  Terminal() : m_reader(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {
    if (m_reader < 0 || grantpt(m_reader) != 0 || unlockpt(m_reader) != 0) {
      throw std::runtime_error("no terminal");
    }
    m_writer = open(ptsname(m_reader), O_RDWR | O_NOCTTY | O_CLOEXEC);
    termios settings = {};
    if (tcgetattr(m_writer, &settings) != 0) throw std::runtime_error("no terminal");
    cfmakeraw(&settings);
    tcsetattr(m_writer, TCSANOW, &settings);
  }
  ~Terminal() {
    close(m_writer);
    close(m_reader);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  int Writer() const { return m_writer; }
  std::string Written() const {
    std::string text;
    char buffer[4096];
    for (ssize_t size; (size = read(m_reader, buffer, sizeof(buffer))) > 0;) {
      text.append(buffer, static_cast<std::size_t>(size));
    }
    return text;
  }

 private:
  int m_reader;
  int m_writer = -1;
};

class TavctlListOutput : public ProgramTest {
 protected:
  std::string Out(Texts arguments) const {
    arguments.insert(arguments.begin(), "list");
    const Result result = Tavctl(arguments);
    EXPECT_EQ(result.status, 0) << result;
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  void MakeDefaultDevice() const { ASSERT_EQ(Sandbox({"--create", Device()}).status, 0); }
};

TEST_F(TavctlListOutput, IsAnAlignedTable) {
  MakeDevice(R"({"settings": {"db/appstore/ratingvalue": "16+"}, "apps": [
    {"id": "clock", "title": "Kettle", "version": "1.4.0", "run_title": "C",
     "install_type": "builtin", "app_index": 7, "use_count": 1200},
    {"id": "org.example.radio", "title": "星降る夜", "version": "3", "run_title": "StarRadio",
     "install_type": "usb", "app_index": 305, "limit_age": 18}]})");
  EXPECT_EQ(Out({}),
            "ID                 TITLE     VERSION  RUN TITLE  TYPE     LOCK  INDEX  USES\n"
            "clock              Kettle    1.4.0    C          builtin  no        7  1200\n"
            "org.example.radio  星降る夜  3        StarRadio  usb      yes     305     0\n");
}

TEST_F(TavctlListOutput, TellsHiddenAppsWhereTheyAreListed) {
  MakeDevice(R"({"apps": [{"id": "a", "app_index": 1, "is_lock": 1},
                          {"id": "b", "app_index": 2, "is_lock": 1, "is_hidden": 1}]})");
  const std::string both =
      "ID  TITLE  VERSION  RUN TITLE  TYPE  LOCK  INDEX  USES  HIDDEN\n"
      "a                                    yes       1     0  no\n"
      "b                                    yes       2     0  yes\n";
  EXPECT_EQ(Out({"--all"}), both);
  EXPECT_EQ(Out({"--key", "is_lock"}), both);
}

TEST_F(TavctlListOutput, ShowsMultiScreenRecordsInTwoColumns) {
  MakeDevice(R"({"apps": [{"id": "org.example.a", "is_multi_screen2": 1}]})");
  EXPECT_EQ(Out({"--multi-screen"}),
            "ID             MULTI SCREEN\n"
            "org.example.a             1\n");
  EXPECT_EQ(Out({"--multi-screen", "--csv"}),
            "app_id,is_multi_screen2\r\n"
            "org.example.a,1\r\n");
}

TEST_F(TavctlListOutput, AlignsWideCombiningAndZeroWidthCharacters) {
  std::string seed;
  for (const char* title :
       {"plain", "星降る夜のラジオ", "정원", "🦔 run 🌿", "e\u0301te\u0301", "a\u200bb",
        "क\u200dष", "नदी के गीत", "Ｆｕｌｌ", "مطبخ القمر", "∞ «» …", ""}) {
    seed += std::string(seed.empty() ? "" : ",") + R"({"id": "app)" + std::to_string(seed.size()) +
            R"(", "version": "V1", "title": ")" + title + "\"}";
  }
  MakeDevice(R"({"apps": [)" + seed + "]}");
  const Texts lines = LinesOf(Out({}));
  ASSERT_EQ(lines.size(), 13u);
  for (const std::string& line : lines) {
    EXPECT_EQ(ColumnOf(line, "V"), ColumnOf(lines[0], "VERSION")) << line;
    EXPECT_EQ(ColumnsOf(line), ColumnsOf(lines[0])) << line;
  }
}

TEST_F(TavctlListOutput, AlignsTheAppsOfTheDefaultDevice) {
  MakeDefaultDevice();
  const Texts lines = LinesOf(Out({}));
  EXPECT_EQ(lines.size(), 36u);
  for (const std::string& line : lines) EXPECT_EQ(ColumnsOf(line), ColumnsOf(lines[0])) << line;
}

TEST_F(TavctlListOutput, KeepsOneLineForEachAppWhateverItsTitleHolds) {
  MakeDevice(R"({"apps": [{"id": "a", "title": "x\u001b[2J\ny\u202ez"}]})");
  const Texts lines = LinesOf(Out({}));
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_THAT(lines[1], testing::HasSubstr("a   x\\x1b[2J\\ny\\u202ez  "));
}

TEST_F(TavctlListOutput, CutsLongTitlesOnATerminalAlone) {
  const std::string fits = "0123456789012345678901234567890123456789";
  const std::string wide = "星星星星星星星星星星星星星星星星星星星星";
  MakeDevice(R"({"apps": [
    {"id": "a", "app_index": 1, "version": "V", "title": ")" +
             fits + R"("},
    {"id": "b", "app_index": 2, "version": "V", "title": ")" +
             fits + R"(0"},
    {"id": "c", "app_index": 3, "version": "V", "title": ")" +
             wide + R"("},
    {"id": "d", "app_index": 4, "version": "V", "title": ")" +
             wide + R"(0"}]})");
  const Terminal terminal;
  EXPECT_EQ(Tavctl({"list"}, terminal.Writer()), (Result{0, "", ""}));
  const Texts cut = LinesOf(terminal.Written());
  ASSERT_EQ(cut.size(), 5u);
  EXPECT_THAT(cut[1], testing::StartsWith("a   " + fits + "  V"));
  EXPECT_THAT(cut[2], testing::StartsWith("b   " + fits.substr(0, 39) + "…  V"));
  EXPECT_THAT(cut[3], testing::StartsWith("c   " + wide + "  V"));
  EXPECT_THAT(cut[4], testing::StartsWith("d   " + wide.substr(0, 57) + "…   V"));

  const Texts whole = LinesOf(Out({}));
  ASSERT_EQ(whole.size(), 5u);
  EXPECT_THAT(whole[2], testing::StartsWith("b   " + fits + "0  V"));
  EXPECT_THAT(whole[4], testing::StartsWith("d   " + wide + "0  V"));
}

TEST_F(TavctlListOutput, IsNoFailureWhenItIsEmpty) {
  MakeDevice(R"({"apps": []})");
  for (const Texts& list :
       {Texts{}, Texts{"--all"}, Texts{"--recent", "0"}, Texts{"--key", "is_lock"}}) {
    Texts json = list;
    json.emplace_back("--json");
    EXPECT_EQ(Out(json), "[]\n");
    Texts csv = list;
    csv.emplace_back("--csv");
    EXPECT_EQ(ParseCsv(Out(csv)).size(), 1u);
  }
  EXPECT_EQ(Out({}), kHeader);
  EXPECT_EQ(Out({"--recent", "0"}), kHeader);
  EXPECT_EQ(Out({"--multi-screen"}), "ID  MULTI SCREEN\n");
  EXPECT_EQ(Out({"--multi-screen", "--json"}), "[]\n");
  EXPECT_EQ(Out({"--multi-screen", "--csv"}), "app_id,is_multi_screen2\r\n");
}

TEST_F(TavctlListOutput, HoldsTheSameRecordsAsInfoInJson) {
  MakeDefaultDevice();
  const Json::Value apps = Parse(Out({"--json", "--offset", "15", "--limit", "6"}));
  ASSERT_EQ(apps.size(), 6u);
  for (const Json::Value& app : apps) {
    EXPECT_EQ(app.size(), 59u);
    EXPECT_EQ(app, Parse(Tavctl({"info", "--json", app["app_id"].asString()}).out));
  }
}

TEST_F(TavctlListOutput, HoldsTheSameRecordsInCsvAsInJson) {
  MakeDefaultDevice();
  const Json::Value apps = Parse(Out({"--json", "--all"}));
  const std::vector<Texts> records = ParseCsv(Out({"--csv", "--all"}));
  ASSERT_EQ(records.size(), apps.size() + 1);
  ASSERT_EQ(records[0].size(), 59u);
  EXPECT_EQ(records[0][0], "app_id");
  EXPECT_EQ(records[0][1], "app_title");
  EXPECT_EQ(records[0][58], "launch_type");
  for (Json::ArrayIndex i = 0; i < apps.size(); ++i) {
    Texts expected;
    for (const std::string& name : records[0]) expected.push_back(apps[i][name].asString());
    EXPECT_EQ(records[i + 1], expected);
  }
}

TEST_F(TavctlListOutput, QuotesWhatWouldBreakARecordApart) {
  const Texts titles = {"a,b", "say \"hi\"", "two\nlines", "cr\rlf\r\nend", "cr\ronly",
                        "\"",  ",",          " blank ",    "plain"};
  Json::Value seed(Json::objectValue);
  for (std::size_t i = 0; i < titles.size(); ++i) {
    Json::Value app(Json::objectValue);
    app["id"] = "app" + std::to_string(i);
    app["title"] = titles[i];
    app["app_index"] = static_cast<int>(i);
    seed["apps"].append(app);
  }
  MakeDevice(seed.toStyledString());
  const std::string csv = Out({"--csv"});
  EXPECT_THAT(csv, testing::HasSubstr("\r\napp1,\"say \"\"hi\"\"\","));
  EXPECT_THAT(csv, testing::HasSubstr("\r\napp8,plain,"));
  const std::vector<Texts> records = ParseCsv(csv);
  ASSERT_EQ(records.size(), titles.size() + 1);
  for (std::size_t i = 0; i < titles.size(); ++i) {
    EXPECT_EQ(records[i + 1].size(), 59u);
    EXPECT_EQ(records[i + 1][1], titles[i]);
  }
}

}  // namespace
}  // namespace test
