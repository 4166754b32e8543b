// SPDX-License-Identifier: Apache-2.0
//
// Every way in which a seed can be wrong: the message names the file, the place in it and
// the field, and no device is made.
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
    {"AnUnknownMember", "{\n\"aps\": []}", ":2:8: aps: unknown member; did you mean \"apps\"?"},
    {"AnUnknownMemberOfTheFeatures", R"({"features": {"other": {}}})",
     ":1:24: features.other: unknown member"},
    {"AnUnknownMemberOfAPackage", "{\"packages\": {\"Ab1\":\n\n {\"name\": \"x\"}}}",
     ":3:11: packages.Ab1.name: unknown member"},
    {"AnUnknownColumn", "{\"apps\": [\n{\"id\": \"a\"},\n{\"id\": \"b\",\n\"titel\": \"B\"}]}",
     ":4:10: apps[1].titel: the apps table has no such column; did you mean \"title\"?"},
    {"AFieldOfThePublicRecord", R"({"apps": [{"id": "a", "app_title": "A"}]})",
     ":1:36: apps[0].app_title: the apps table has no such column; did you mean \"title\"?"},
    {"AColumnWithTwoLettersSwapped", R"({"apps": [{"id": "a", "is_lokc": 1}]})",
     ":1:34: apps[0].is_lokc: the apps table has no such column; did you mean \"is_lock\"?"},
    {"AMemberWithTwoLettersSwapped", R"({"apsp": []})",
     ":1:10: apsp: unknown member; did you mean \"apps\"?"},
    {"AColumnThatIsLikeNone", R"({"apps": [{"id": "a", "colour": 1}]})",
     ":1:33: apps[0].colour: the apps table has no such column"},
    {"AColumnWithAVeryLongName",
     "{\"apps\": [{\"id\": \"a\", \"" + std::string(100000, 't') + "\": 1}]}",
     ":1:100027: apps[0]." + std::string(100000, 't') + ": the apps table has no such column"},
    {"AMemberOfTheFeaturesThatIsNearlyRight", R"({"features": {"values": {}}})",
     ":1:25: features.values: unknown member; did you mean \"value\"?"},
    {"AMemberOfAPackageThatIsNearlyRight", R"({"packages": {"Ab1": {"Version": "1"}}})",
     ":1:34: packages.Ab1.Version: unknown member; did you mean \"version\"?"},
    {"AnAppBehindWideCharacters",
     "{\"apps\": [{\"id\": \"a\", \"title\": \"Möwe\", \"size\": \"x\"}]}",
     ":1:48: apps[0].size: must be an integer, not \"x\""},
    {"ATextThatIsTooLongToShow",
     "{\"apps\": [{\"id\": \"a\", \"size\": \"" + std::string(100, 'x') + "\"}]}",
     ":1:31: apps[0].size: must be an integer, not this text"},
    {"ANumberThatIsTooLongToShow",
     "{\"apps\": [{\"id\": \"a\", \"size\": " + std::string(100, '9') + "}]}",
     ":1:31: apps[0].size: must be between -2147483648 and 2147483647, not this number"},
    {"ATextOfTwoLinesInANumbersPlace", "{\"apps\": [{\"id\": \"a\", \"size\": \"x\ny\"}]}",
     ":1:31: apps[0].size: must be an integer, not this text"},
    {"ATextInANumbersPlaceThatIsNotUtf8", "{\"apps\": [{\"id\": \"a\", \"size\": \"\xff\"}]}",
     ":1:31: apps[0].size: must be an integer, not this text"},
    {"AListInATextsPlace", R"({"blacklist": [["a"]]})",
     ":1:16: blacklist[0]: must be a text, not an array"},
    {"AnObjectInATextsPlace", R"({"config": {"A": {}}})",
     ":1:18: config.A: must be a text, not an object"},
    {"ASchemaThatIsNoText", R"({"$schema": 1})", ":1:13: $schema: must be a text, not 1"},
    {"ATextInANumbersPlace", "{\"apps\": [{\"id\": \"a\",\n\"size\": \"12\"}]}",
     ":2:9: apps[0].size: must be an integer, not \"12\""},
    {"AFraction", R"({"apps": [{"id": "a", "size": 1.5}]})",
     ":1:31: apps[0].size: must be an integer, not 1.5"},
    {"ATruthValueInANumbersPlace", R"({"apps": [{"id": "a", "is_hidden": true}]})",
     ":1:36: apps[0].is_hidden: must be an integer, not true"},
    {"ANumberInATextsPlace", "{\"apps\": [{\"id\": \"a\",\n\n\"version\": 2}]}",
     ":3:12: apps[0].version: must be a text, not 2"},
    {"AnIntegerThatIsTooLarge", R"({"apps": [{"id": "a", "size": 2147483648}]})",
     ":1:31: apps[0].size: must be between -2147483648 and 2147483647, not 2147483648"},
    {"AnIntegerThatIsTooSmall", R"({"apps": [{"id": "a", "size": -2147483649}]})",
     ":1:31: apps[0].size: must be between -2147483648 and 2147483647, not -2147483649"},
    {"AnIntegerBeyondAnyMachinesRange",
     R"({"apps": [{"id": "a", "size": 123456789012345678901234567890}]})",
     ":1:31: apps[0].size: must be between -2147483648 and 2147483647, "
     "not 123456789012345678901234567890"},
    {"ASettingThatIsTooLarge", R"({"settings": {"db/a": 4294967296}})",
     ":1:23: settings.db/a: must be between -2147483648 and 2147483647, not 4294967296"},
    {"AnIdOfAnotherApp", "{\"apps\": [\n{\"id\": \"a\"},\n{\"id\": \"b\"},\n{\n\"id\": \"a\"}]}",
     ":5:7: apps[2].id: another app has the same id"},
    {"AnAppWithoutAnId", "{\"apps\": [\n{\"title\": \"A\"}]}",
     ":2:1: apps[0].id: every app needs an id"},
    {"AnAppWithAnEmptyId", R"({"apps": [{"id": ""}]})", ":1:11: apps[0].id: every app needs an id"},
    {"AnAppWithANullId", R"({"apps": [{"id": null}]})", ":1:11: apps[0].id: every app needs an id"},
    {"AnAppThatIsNoObject", R"({"apps": ["a"]})", ":1:11: apps[0]: must be an object, not \"a\""},
    {"AppsThatAreNoArray", R"({"apps": {}})", ":1:10: apps: must be an array, not an object"},
    {"AConfigurationValueThatIsNoText", R"({"config": {"SYNC_STATE": 2}})",
     ":1:27: config.SYNC_STATE: must be a text, not 2"},
    {"AConfigurationNameThatIsNone", R"({"config": {"": "2"}})",
     ":1:17: config.: not a name of a configuration value"},
    {"AnAbsoluteSettingKey", R"({"settings": {"/db/a": 1}})",
     ":1:24: settings./db/a: not a key of a setting"},
    {"ASettingKeyThatLeavesItsDirectory", R"({"settings": {"db/../../a": 1}})",
     ":1:29: settings.db/../../a: not a key of a setting"},
    {"ASettingKeyThatEndsInASlash", R"({"settings": {"db/": 1}})",
     ":1:22: settings.db/: not a key of a setting"},
    {"ASettingKeyWithABlank", R"({"settings": {"db/a b": 1}})",
     ":1:25: settings.db/a b: not a key of a setting"},
    {"ASettingOfAnotherType", "{\"settings\": {\n\"db/a\": [1]}}",
     ":2:9: settings.db/a: must be an integer or a text, not an array"},
    {"AFeatureKeyThatIsNone", R"({"features": {"custom": {"a=b": 1}}})",
     ":1:33: features.custom.a=b: not a key of a feature"},
    {"AFeatureNumberThatIsNone", R"({"features": {"value": {"x701": 1}}})",
     ":1:33: features.value.x701: not a number of a feature"},
    {"AFeatureNumberWrittenInTwoWays", R"({"features": {"value": {"0701": 1}}})",
     ":1:33: features.value.0701: not a number of a feature"},
    {"AFeatureNumberWithATextValue", R"({"features": {"value": {"701": "1"}}})",
     ":1:32: features.value.701: must be an integer, not \"1\""},
    {"APackageIdThatIsNone", R"({"packages": {"a]b": {}}})",
     ":1:22: packages.a]b: not an id of a package"},
    {"ABlacklistEntryWithALineBreak", R"({"blacklist": ["a", "b\nc"]})",
     ":1:21: blacklist[1]: not an id of a package"},
    {"ATextWithAZeroByte", R"({"apps": [{"id": "a\u0000b"}]})",
     ":1:18: apps[0].id: must be valid UTF-8 without zero bytes"},
    {"ATextThatIsNotUtf8", "{\"apps\": [{\"id\": \"a\xff\"}]}",
     ":1:18: apps[0].id: must be valid UTF-8 without zero bytes"},
    {"AColumnGivenTwice", "{\"apps\": [{\"id\": \"a\",\n\"id\": \"b\"}]}",
     ":2:1: Duplicate key: 'id'"},
    {"AMemberGivenTwice", "{\"apps\": [],\n\"apps\": []}", ":2:1: Duplicate key: 'apps'"},
    {"GarbageBehindTheEnd", "{}\n}", ":2:1: Extra non-whitespace after JSON value."},
    {"AComment", "// apps\n{}", ":1:1: Syntax error: value, object or array expected."},
    {"ACommaTooMany", "{\"apps\": [\n],}", ":2:3: Missing '}' or object member name"},
    {"AFileThatBreaksOff", "{\"apps\": [\n{\"id\": \"a\"",
     ":2:11: Missing ',' or '}' in object declaration"},
    {"AnEmptyFile", "", ":1:1: Syntax error: value, object or array expected."},
    {"ARootThatIsNoObject", "\n[]", ":2:1: the seed: must be an object, not an array"},
    {"ARootThatIsANumber", "7", ":1:1: the seed: must be an object, not 7"},
    {"AVeryDeepNesting", std::string(100000, '['), ": nested too deeply"},
};

INSTANTIATE_TEST_SUITE_P(, SeedErrors, testing::ValuesIn(kWrongSeeds),
                         [](const auto& wrong) { return wrong.param.name; });

}  // namespace
}  // namespace test
