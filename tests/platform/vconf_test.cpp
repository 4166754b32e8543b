// SPDX-License-Identifier: Apache-2.0
// Settings: their values, their keys and their files.
#include <sys/stat.h>
#include <vconf.h>

#include <cerrno>
#include <string_view>

#include "device.h"
#include "failing_calls.h"
#include "threads.h"

namespace {

constexpr char kKey[] = "db/tav/setting";
constexpr char kFile[] = "vconf/db/tav/setting";
constexpr int kUntouched = -7;

class Settings : public Device {
 protected:
  // kUntouched when there is no int; a failure leaves the value alone.
  static int Int(const char* key = kKey) {
    int value = kUntouched;
    const int result = vconf_get_int(key, &value);
    EXPECT_EQ(result, value == kUntouched ? VCONF_ERROR : VCONF_OK);
    return value;
  }

  static std::string String(const char* key = kKey) {
    const Text text(vconf_get_str(key));
    return text == nullptr ? "(null)" : text.get();
  }
};

TEST_F(Settings, KeepInts) {
  for (const int value : {0, 1, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(vconf_set_int(kKey, value), VCONF_OK);
    EXPECT_EQ(Int(), value);
  }
  EXPECT_EQ(FileText(kFile), "int\n-2147483648\n");
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(Settings, KeepStringsWithTheirNewlinesAndLengths) {
  for (const std::string& value :
       {std::string(), std::string("org.example.clock"), std::string("\n"), std::string("a\nb\n\n"),
        std::string("int\n"), std::string(" \t\r\xff"), std::string(1000000, 'x')}) {
    EXPECT_EQ(vconf_set_str(kKey, value.c_str()), VCONF_OK);
    EXPECT_EQ(String(), value);
  }
  vconf_set_str(kKey, "text");
  EXPECT_EQ(FileText(kFile), "string\ntext\n");
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(Settings, MayChangeTheirType) {
  vconf_set_int(kKey, 5);
  EXPECT_EQ(vconf_set_str(kKey, "five"), VCONF_OK);
  EXPECT_EQ(String(), "five");
  EXPECT_EQ(vconf_set_int(kKey, 5), VCONF_OK);
  EXPECT_EQ(Int(), 5);
}

TEST_F(Settings, OfTheOtherTypeAreAnError) {
  vconf_set_int(kKey, 5);
  EXPECT_EQ(String(), "(null)");
  EXPECT_EQ(TakePriorities(), "E");
  vconf_set_str(kKey, "5");
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(TakePriorities(), "E");
}

TEST_F(Settings, AreReadAsAPersonWroteThem) {
  const struct {
    const char* content;
    int number;
  } ints[] = {
      {"int\n5\n", 5}, {"int\n5", 5}, {"int\n+5\n", 5}, {"int\n  -5\t", -5}, {"int\n\t007 \n", 7}};
  for (const auto& [content, number] : ints) {
    WriteFile(kFile, content);
    EXPECT_EQ(Int(), number) << content;
  }
  const struct {
    const char* content;
    const char* text;
  } strings[] = {{"string\ntext", "text"},
                 {"string\ntext\n", "text"},
                 {"string\ntext\n\n", "text\n"},
                 {"string\n text ", " text "},
                 {"string\n\n", ""},
                 {"string\n", ""},
                 {"string", ""}};
  for (const auto& [content, text] : strings) {
    WriteFile(kFile, content);
    EXPECT_EQ(String(), text) << content;
  }
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(Settings, AreAnErrorWhenTheirFileIsMalformed) {
  using namespace std::string_view_literals;
  for (const std::string_view content : {""sv,
                                         "\n"sv,
                                         "5\n"sv,
                                         "double\n5\n"sv,
                                         "Int\n5\n"sv,
                                         "int \n5\n"sv,
                                         "int 5\n"sv,
                                         "int"sv,
                                         "int\n"sv,
                                         "int\n\n"sv,
                                         "int\nfive\n"sv,
                                         "int\n5x\n"sv,
                                         "int\n5 6\n"sv,
                                         "int\n5\n6\n"sv,
                                         "int\n5\n\n"sv,
                                         "int\n0x5\n"sv,
                                         "int\n5.0\n"sv,
                                         "int\n2147483648\n"sv,
                                         "int\n-2147483649\n"sv,
                                         "int\n99999999999999999999\n"sv,
                                         "int\n+-5\n"sv,
                                         "int\n-\n"sv,
                                         "int\n5\0\n"sv,
                                         "\0int\n5\n"sv,
                                         "string\na\0b\n"sv,
                                         "string\n\0"sv,
                                         "string\ra\n"sv}) {
    WriteFile(kFile, std::string(content));
    EXPECT_EQ(Int(), kUntouched) << content;
    EXPECT_EQ(String(), "(null)") << content;
    EXPECT_EQ(TakePriorities(), "EE") << content;
  }
}

TEST_F(Settings, ThatDoNotExistAreMentionedAtDebugPriorityAlone) {
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(String(), "(null)");
  EXPECT_EQ(vconf_unset(kKey), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "DDD");
}

TEST_F(Settings, AreAnErrorWhenTheDeviceRootIsMissing) {
  setenv("TAV_DEVICE_ROOT", (Root() / "no-device").c_str(), 1);
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(String(), "(null)");
  EXPECT_EQ(TakePriorities(), "EE");
}

TEST_F(Settings, AreAnErrorWhenADirectoryIsInTheirPlace) {
  vconf_set_int("db/tav/setting/below", 1);
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(vconf_set_int(kKey, 1), VCONF_ERROR);
  EXPECT_EQ(vconf_unset(kKey), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "EEE");
  EXPECT_EQ(Int("db/tav/setting/below"), 1);
}

TEST_F(Settings, AreAnErrorWhenAFileIsInTheirDirectorysPlace) {
  WriteFile("vconf/db", "");
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(vconf_set_str(kKey, "text"), VCONF_ERROR);
  EXPECT_EQ(vconf_unset(kKey), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "EEE");
}

TEST_F(Settings, AreAnErrorWhenAPipeOrDeviceIsInTheirPlaceUntilTheyAreSet) {
  std::filesystem::create_directories((Root() / kFile).parent_path());
  ASSERT_EQ(mkfifo((Root() / kFile).c_str(), 0600), 0);
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(String(), "(null)");
  EXPECT_EQ(TakeLog(),
            "E/VCONF: cannot read db/tav/setting: Not a regular file\n"
            "E/VCONF: cannot read db/tav/setting: Not a regular file\n");
  EXPECT_EQ(vconf_set_int(kKey, 5), VCONF_OK);
  EXPECT_EQ(Int(), 5);
  std::filesystem::remove(Root() / kFile);
  std::filesystem::create_symlink("/dev/zero", Root() / kFile);
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(TakeLog(), "E/VCONF: cannot read db/tav/setting: Not a regular file\n");
}

TEST_F(Settings, AreReadOnAfterASignalAndAnErrorWhenTheDiskFails) {
  vconf_set_int(kKey, 5);
  g_failing_calls.read = EINTR;
  EXPECT_EQ(Int(), 5);
  g_failing_calls.read = EIO;
  EXPECT_EQ(Int(), kUntouched);
  EXPECT_EQ(TakeLog(), "E/VCONF: cannot read db/tav/setting: Input/output error\n");
}

TEST_F(Settings, CanBeUnset) {
  vconf_set_int(kKey, 5);
  EXPECT_EQ(vconf_unset(kKey), VCONF_OK);
  EXPECT_FALSE(std::filesystem::exists(Root() / kFile));
  EXPECT_EQ(vconf_unset(kKey), VCONF_ERROR);
}

TEST_F(Settings, FollowAChangeOfTheDeviceRoot) {
  vconf_set_int(kKey, 1);
  setenv("TAV_DEVICE_ROOT", (Root() / "second").c_str(), 1);
  EXPECT_EQ(vconf_set_int(kKey, 2), VCONF_OK);
  EXPECT_EQ(Int(), 2);
  setenv("TAV_DEVICE_ROOT", Root().c_str(), 1);
  EXPECT_EQ(Int(), 1);
}

TEST_F(Settings, LeaveNoTemporaryFilesBehind) {
  vconf_set_int(kKey, 1);
  vconf_set_int(kKey, 2);
  const std::filesystem::directory_iterator files((Root() / kFile).parent_path());
  EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(Settings, HaveKeysOfPlainComponents) {
  const std::string longest(VCONF_KEY_MAX, 'k');
  for (const char* key :
       {"a", "db/tav/factory_reset", "A-Z/0.9/_", ".hidden", "a..b", "...", "-", longest.c_str()}) {
    EXPECT_EQ(vconf_set_int(key, 3), VCONF_OK) << key;
    EXPECT_EQ(Int(key), 3) << key;
    EXPECT_EQ(vconf_unset(key), VCONF_OK) << key;
  }
  EXPECT_EQ(TakeLog(), "");
}

void Ignored(keynode_t* /*node*/, void* /*user_data*/) {}

TEST_F(Settings, RefuseKeysThatCouldLeaveTheirDirectory) {
  const std::string too_long(VCONF_KEY_MAX + 1, 'k');
  for (const char* key : {static_cast<const char*>(nullptr),
                          "",
                          "/",
                          "/etc/passwd",
                          "a/",
                          "a//b",
                          ".",
                          "..",
                          "./a",
                          "a/.",
                          "../a",
                          "a/..",
                          "a/../b",
                          "a b",
                          "a\n",
                          "a\tb",
                          "a\\b",
                          "a*",
                          "a:b",
                          "a%2e",
                          "~",
                          "\xc3\xa9",
                          too_long.c_str()}) {
    const std::string name = key == nullptr ? "(null)" : key;
    EXPECT_EQ(Int(key), kUntouched) << name;
    EXPECT_EQ(String(key), "(null)") << name;
    EXPECT_EQ(vconf_set_int(key, 1), VCONF_ERROR) << name;
    EXPECT_EQ(vconf_set_str(key, "1"), VCONF_ERROR) << name;
    EXPECT_EQ(vconf_unset(key), VCONF_ERROR) << name;
    EXPECT_EQ(vconf_notify_key_changed(key, Ignored, nullptr), VCONF_ERROR) << name;
    EXPECT_EQ(vconf_ignore_key_changed(key, Ignored), VCONF_ERROR) << name;
    EXPECT_EQ(TakePriorities(), "EEEEEEE") << name;
  }
  EXPECT_TRUE(std::filesystem::is_empty(Root()));
}

TEST_F(Settings, RefuseNullArguments) {
  vconf_set_int(kKey, 1);
  EXPECT_EQ(vconf_get_int(kKey, nullptr), VCONF_ERROR);
  EXPECT_EQ(vconf_set_str(kKey, nullptr), VCONF_ERROR);
  EXPECT_EQ(vconf_notify_key_changed(kKey, nullptr, nullptr), VCONF_ERROR);
  EXPECT_EQ(vconf_ignore_key_changed(kKey, nullptr), VCONF_ERROR);
  EXPECT_EQ(TakePriorities(), "EEEE");
  EXPECT_EQ(vconf_keynode_get_name(nullptr), nullptr);
  EXPECT_EQ(vconf_keynode_get_int(nullptr), 0);
  EXPECT_EQ(vconf_keynode_get_str(nullptr), nullptr);
  EXPECT_EQ(Int(), 1);
}

TEST_F(Settings, AreSeenWholeByEveryThread) {
  constexpr int kTurns = 100;
  vconf_set_str(kKey, "");
  {
    const Threads threads(8, [](int i) {
      // Values of different lengths, each of one letter: a mixture shows.
      const std::string mine(static_cast<size_t>(1000 * (i + 1)), static_cast<char>('a' + i));
      for (int turn = 0; turn < kTurns; ++turn) {
        EXPECT_EQ(vconf_set_str(kKey, mine.c_str()), VCONF_OK);
        const std::string seen = String();
        const auto length = seen.empty() ? 0U : 1000U * static_cast<unsigned>(seen[0] - 'a' + 1);
        EXPECT_EQ(seen, std::string(length, seen[0]));
      }
    });
  }
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(Settings, MayBeMadeByManyThreadsAtOnceInANewDirectory) {
  {
    const Threads threads(8, [](int i) {
      EXPECT_EQ(vconf_set_int(("a/b/c/d/" + std::to_string(i)).c_str(), i), VCONF_OK);
    });
  }
  for (int i = 0; i < 8; ++i) EXPECT_EQ(Int(("a/b/c/d/" + std::to_string(i)).c_str()), i);
}

}  // namespace
