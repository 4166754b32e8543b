// SPDX-License-Identifier: Apache-2.0
// The device's properties, from a real key file.
#include <sys/stat.h>
#include <system_info.h>

#include "device.h"

namespace {

class SystemInfo : public Device {
 protected:
  static constexpr char kFile[] = "system-info.ini";
  static constexpr int kUntouched = -7;

  static std::string CustomText(const char* key) {
    char* value = nullptr;
    const int result = system_info_get_custom_string(key, &value);
    EXPECT_EQ(result == SYSTEM_INFO_ERROR_NONE, value != nullptr);
    return value == nullptr ? "none" : Text(value).get();
  }

  // kUntouched when the lookup fails; a failure leaves the value alone.
  static int CustomInt(const char* key) {
    int value = kUntouched;
    const int result = system_info_get_custom_int(key, &value);
    EXPECT_EQ(result < 0, value == kUntouched);
    return value;
  }

  static int Feature(int number) {
    int value = kUntouched;
    const int result = system_info_get_value_int(static_cast<system_info_key_e>(number), &value);
    EXPECT_EQ(result < 0, value == kUntouched);
    return value;
  }
};

TEST_F(SystemInfo, ReadsCustomTextsAndNumbersAndFeatures) {
  WriteFile(kFile,
            "# a device\n[custom]\ncom.example/conf/app.id = org.example.guide\n"
            "com.example/conf/flash_size=-4\n[value]\n701=1\n-1=5\n");
  EXPECT_EQ(CustomText("com.example/conf/app.id"), "org.example.guide");
  EXPECT_EQ(CustomText("com.example/conf/flash_size"), "-4");
  EXPECT_EQ(CustomInt("com.example/conf/flash_size"), -4);
  EXPECT_EQ(Feature(SYSTEM_INFO_KEY_DEVICE_GRADE), 1);
  EXPECT_EQ(Feature(-1), 5);
  EXPECT_EQ(TakeLog(), "");
}

TEST_F(SystemInfo, SeesAnEditOfTheFileAtOnce) {
  WriteFile(kFile, "[value]\n701=1\n");
  EXPECT_EQ(Feature(701), 1);
  WriteFile(kFile, "[value]\n701=2\n");
  EXPECT_EQ(Feature(701), 2);
}

TEST_F(SystemInfo, MentionsAMissingKeyAtDebugPriorityAlone) {
  WriteFile(kFile, "[custom]\na=1\n[value]\n700=1\n");
  EXPECT_EQ(CustomText("b"), "none");
  EXPECT_EQ(CustomText(""), "none");
  EXPECT_EQ(CustomText("a]=["), "none");
  EXPECT_EQ(CustomInt("b"), kUntouched);
  EXPECT_EQ(Feature(701), kUntouched);
  EXPECT_EQ(TakePriorities(), "DDDDD");
}

TEST_F(SystemInfo, LogsAnErrorForWhatIsNoInt) {
  for (const char* value : {"", "x", "1x", "1 2", "0x10", "1.5", "2147483648", "-2147483649", "+-1",
                            "-", "99999999999999999999"}) {
    WriteFile(kFile, std::string("[custom]\na=") + value + "\n[value]\n701=" + value + "\n");
    EXPECT_EQ(CustomInt("a"), kUntouched) << value;
    EXPECT_EQ(Feature(701), kUntouched) << value;
    EXPECT_EQ(TakePriorities(), "EE") << value;
  }
}

TEST_F(SystemInfo, LogsAnErrorForAMissingOrBrokenFileOrGroup) {
  const auto expect_errors = [](const char* what) {
    EXPECT_EQ(CustomText("a"), "none") << what;
    EXPECT_EQ(CustomInt("a"), kUntouched) << what;
    EXPECT_EQ(Feature(701), kUntouched) << what;
    EXPECT_EQ(TakePriorities(), "EEE") << what;
  };
  expect_errors("no file");
  for (const char* content : {"", "[other]\na=1\n", "a=1\n", "[custom\na=1\n", "\x01\x02\xff"}) {
    WriteFile(kFile, content);
    expect_errors(content);
  }
  std::filesystem::remove(Root() / kFile);
  std::filesystem::create_directory(Root() / kFile);
  expect_errors("a directory");
  std::filesystem::remove(Root() / kFile);
  ASSERT_EQ(mkfifo((Root() / kFile).c_str(), 0600), 0);
  expect_errors("a pipe");
}

TEST_F(SystemInfo, LogsAnErrorForATextThatIsNotUtf8) {
  WriteFile(kFile, "[custom]\na=\xff\xfe\n");
  EXPECT_EQ(CustomText("a"), "none");
  EXPECT_EQ(TakePriorities(), "E");
}

TEST_F(SystemInfo, RefusesNullArguments) {
  WriteFile(kFile, "[custom]\na=1\n[value]\n701=1\n");
  char* text = nullptr;
  int number = 0;
  constexpr int kRefused = SYSTEM_INFO_ERROR_INVALID_PARAMETER;
  EXPECT_LT(kRefused, 0);
  EXPECT_EQ(system_info_get_custom_string(nullptr, &text), kRefused);
  EXPECT_EQ(system_info_get_custom_string("a", nullptr), kRefused);
  EXPECT_EQ(system_info_get_custom_int(nullptr, &number), kRefused);
  EXPECT_EQ(system_info_get_custom_int("a", nullptr), kRefused);
  EXPECT_EQ(system_info_get_value_int(SYSTEM_INFO_KEY_DEVICE_GRADE, nullptr), kRefused);
  EXPECT_EQ(TakePriorities(), "EEEEE");
}

}  // namespace
