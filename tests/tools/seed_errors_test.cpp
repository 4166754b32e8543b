// SPDX-License-Identifier: Apache-2.0
//
// Every way in which a seed can be wrong: the message names the file, the line and the field,
// and no device is made.
#include "program_test.h"

namespace test {
namespace {

struct WrongSeed {
  const char* name;
  std::string seed;
  std::string complaint;  // behind the name of the file
};

std::ostream& operator<<(std::ostream& stream, const WrongSeed& wrong) {
  return stream << wrong.name;
}

class SeedErrors : public ProgramTest, public testing::WithParamInterface<WrongSeed> {};

TEST_P(SeedErrors, AreToldWithTheirPlaceAndLeaveNoDevice) {
  const std::string seed = Write("seed.json", GetParam().seed);
  EXPECT_EQ(Sandbox({"--create", Device(), "--seed", seed}),
            (Result{1, "", "tav-sandbox: " + seed + GetParam().complaint + "\n"}));
  EXPECT_EQ(Entries(), std::vector<std::string>{"seed.json"});
}

const WrongSeed kWrongSeeds[] = {
    {"AnUnknownMember", "{\n\"aps\": []}", ":2: aps: unknown member"},
    {"AnUnknownMemberOfTheFeatures", R"({"features": {"other": {}}})",
     ":1: features.other: unknown member"},
    {"AnUnknownMemberOfAPackage", "{\"packages\": {\"Ab1\":\n\n {\"name\": \"x\"}}}",
     ":3: packages.Ab1.name: unknown member"},
    {"AnUnknownColumn", "{\"apps\": [\n{\"id\": \"a\"},\n{\"id\": \"b\",\n\"titel\": \"B\"}]}",
     ":4: apps[1].titel: the apps table has no such column"},
    {"ATextInANumbersPlace", "{\"apps\": [{\"id\": \"a\",\n\"size\": \"12\"}]}",
     ":2: apps[0].size: must be an integer"},
    {"AFraction", R"({"apps": [{"id": "a", "size": 1.5}]})",
     ":1: apps[0].size: must be an integer"},
    {"ATruthValueInANumbersPlace", R"({"apps": [{"id": "a", "is_hidden": true}]})",
     ":1: apps[0].is_hidden: must be an integer"},
    {"ANumberInATextsPlace", "{\"apps\": [{\"id\": \"a\",\n\n\"version\": 2}]}",
     ":3: apps[0].version: must be a text"},
    {"AnIntegerThatIsTooLarge", R"({"apps": [{"id": "a", "size": 2147483648}]})",
     ":1: apps[0].size: does not fit a 32-bit integer"},
    {"AnIntegerThatIsTooSmall", R"({"apps": [{"id": "a", "size": -2147483649}]})",
     ":1: apps[0].size: does not fit a 32-bit integer"},
    {"AnIntegerBeyondAnyMachinesRange",
     R"({"apps": [{"id": "a", "size": 123456789012345678901234567890}]})",
     ":1: apps[0].size: does not fit a 32-bit integer"},
    {"ASettingThatIsTooLarge", R"({"settings": {"db/a": 4294967296}})",
     ":1: settings.db/a: does not fit a 32-bit integer"},
    {"AnIdOfAnotherApp", "{\"apps\": [\n{\"id\": \"a\"},\n{\"id\": \"b\"},\n{\n\"id\": \"a\"}]}",
     ":5: apps[2].id: another app has the same id"},
    {"AnAppWithoutAnId", "{\"apps\": [\n{\"title\": \"A\"}]}",
     ":2: apps[0].id: every app needs an id"},
    {"AnAppWithAnEmptyId", R"({"apps": [{"id": ""}]})", ":1: apps[0].id: every app needs an id"},
    {"AnAppWithANullId", R"({"apps": [{"id": null}]})", ":1: apps[0].id: every app needs an id"},
    {"AnAppThatIsNoObject", R"({"apps": ["a"]})", ":1: apps[0]: must be an object"},
    {"AppsThatAreNoArray", R"({"apps": {}})", ":1: apps: must be an array"},
    {"AConfigurationValueThatIsNoText", R"({"config": {"SYNC_STATE": 2}})",
     ":1: config.SYNC_STATE: must be a text"},
    {"AConfigurationNameThatIsNone", R"({"config": {"": "2"}})",
     ":1: config.: not a name of a configuration value"},
    {"AnAbsoluteSettingKey", R"({"settings": {"/db/a": 1}})",
     ":1: settings./db/a: not a key of a setting"},
    {"ASettingKeyThatLeavesItsDirectory", R"({"settings": {"db/../../a": 1}})",
     ":1: settings.db/../../a: not a key of a setting"},
    {"ASettingKeyThatEndsInASlash", R"({"settings": {"db/": 1}})",
     ":1: settings.db/: not a key of a setting"},
    {"ASettingKeyWithABlank", R"({"settings": {"db/a b": 1}})",
     ":1: settings.db/a b: not a key of a setting"},
    {"ASettingOfAnotherType", "{\"settings\": {\n\"db/a\": [1]}}",
     ":2: settings.db/a: must be an integer or a text"},
    {"AFeatureKeyThatIsNone", R"({"features": {"custom": {"a=b": 1}}})",
     ":1: features.custom.a=b: not a key of a feature"},
    {"AFeatureNumberThatIsNone", R"({"features": {"value": {"x701": 1}}})",
     ":1: features.value.x701: not a number of a feature"},
    {"AFeatureNumberWrittenInTwoWays", R"({"features": {"value": {"0701": 1}}})",
     ":1: features.value.0701: not a number of a feature"},
    {"AFeatureNumberWithATextValue", R"({"features": {"value": {"701": "1"}}})",
     ":1: features.value.701: must be an integer"},
    {"APackageIdThatIsNone", R"({"packages": {"a]b": {}}})",
     ":1: packages.a]b: not an id of a package"},
    {"ABlacklistEntryWithALineBreak", R"({"blacklist": ["a", "b\nc"]})",
     ":1: blacklist[1]: not an id of a package"},
    {"ATextWithAZeroByte", R"({"apps": [{"id": "a\u0000b"}]})",
     ":1: apps[0].id: must be valid UTF-8 without zero bytes"},
    {"ATextThatIsNotUtf8", "{\"apps\": [{\"id\": \"a\xff\"}]}",
     ":1: apps[0].id: must be valid UTF-8 without zero bytes"},
    {"AColumnGivenTwice", "{\"apps\": [{\"id\": \"a\",\n\"id\": \"b\"}]}",
     ":2: Duplicate key: 'id'"},
    {"AMemberGivenTwice", "{\"apps\": [],\n\"apps\": []}", ":2: Duplicate key: 'apps'"},
    {"GarbageBehindTheEnd", "{}\n}", ":2: Extra non-whitespace after JSON value."},
    {"AComment", "// apps\n{}", ":1: Syntax error: value, object or array expected."},
    {"ACommaTooMany", "{\"apps\": [\n],}", ":2: Missing '}' or object member name"},
    {"AFileThatBreaksOff", "{\"apps\": [\n{\"id\": \"a\"",
     ":2: Missing ',' or '}' in object declaration"},
    {"AnEmptyFile", "", ":1: Syntax error: value, object or array expected."},
    {"ARootThatIsNoObject", "\n[]", ":2: the seed: must be an object"},
    {"ARootThatIsANumber", "7", ":1: the seed: must be an object"},
    {"AVeryDeepNesting", std::string(100000, '['), ": nested too deeply"},
};

INSTANTIATE_TEST_SUITE_P(, SeedErrors, testing::ValuesIn(kWrongSeeds),
                         [](const auto& wrong) { return wrong.param.name; });

}  // namespace
}  // namespace test
