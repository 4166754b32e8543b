// SPDX-License-Identifier: Apache-2.0
//
// tav-sandbox as a program: where it makes a device, what it refuses, what it says.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

#include "program_test.h"

namespace test {
namespace {

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;

using Names = std::vector<std::string>;

class SandboxProgram : public ProgramTest {
 protected:
  // With a seed of one app, which is quicker to write than the default one.
  Result Create(const std::string& directory) const {
    return Sandbox({"--create", directory, "--seed",
                    Write("seed.json", R"({"apps": [{"id": "org.example.one"}]})")});
  }
};

TEST_F(SandboxProgram, TellsTheShellHowToUseTheDevice) {
  EXPECT_EQ(Create(Device()), (Result{0,
                                      "# The device is made; apps in it: 1. To use it:\n"
                                      "export TAV_DEVICE_ROOT='" +
                                          Device().string() + "'\n",
                                      ""}));
}

TEST_F(SandboxProgram, PrintsWhatTheShellCanEvaluateWhateverTheDirectoryIsCalled) {
  const std::string directory = Directory() / "it's a $HOME `tv`\nwith \"quotes\"";
  const std::string seed = Write("seed.json", "{}");
  const char* script =
      R"sh(eval "$("$1" --create "$2" --seed "$3")"; printf %s "$TAV_DEVICE_ROOT")sh";
  const Result result = Shell(script, {TAV_SANDBOX, directory, seed});
  EXPECT_EQ(result, (Result{0, directory, ""}));
  EXPECT_TRUE(fs::exists(directory + "/dbspace/.tavcore.db"));
}

TEST_F(SandboxProgram, MakesTheDeviceInAnEmptyDirectory) {
  fs::create_directory(Device());
  EXPECT_EQ(Create(Device().string() + "/").status, 0);
  EXPECT_TRUE(fs::exists(DatabaseFile()));
  EXPECT_EQ(Entries(), (Names{"device", "seed.json"}));
}

TEST_F(SandboxProgram, MakesTheDeviceWhereALinkLeads) {
  fs::create_directory(Device());
  fs::create_symlink("device", Directory() / "link");
  EXPECT_EQ(Create(Directory() / "link").status, 0);
  EXPECT_TRUE(fs::is_symlink(Directory() / "link"));
  EXPECT_TRUE(fs::exists(DatabaseFile()));
}

TEST_F(SandboxProgram, RefusesADirectoryThatHoldsSomethingAndLeavesItAlone) {
  fs::create_directory(Device());
  Write("device/precious", "mine");
  EXPECT_EQ(Create(Device()), (Result{1, "",
                                      "tav-sandbox: " + Device().string() +
                                          " exists and is not an empty directory\n"}));
  EXPECT_EQ(ReadFile(Device() / "precious"), "mine");
  EXPECT_FALSE(fs::exists(DatabaseFile()));
  EXPECT_EQ(Entries(), (Names{"device", "seed.json"}));
}

TEST_F(SandboxProgram, RefusesAFileInPlaceOfTheDirectory) {
  Write("device", "a file");
  EXPECT_EQ(Create(Device()), (Result{1, "",
                                      "tav-sandbox: " + Device().string() +
                                          " exists and is not an empty directory\n"}));
  EXPECT_EQ(ReadFile(Device()), "a file");
}

TEST_F(SandboxProgram, RefusesADirectoryWhoseXmlFileTheLibraryCouldNotName) {
  constexpr std::size_t kLongest = 127 - (sizeof("/data/tavcore/common/apps_info.xml") - 1);
  const std::string parent = Directory().string() + "/";
  const std::string fits = parent + std::string(kLongest - parent.size(), 'd');
  EXPECT_EQ(Create(fits).status, 0);
  EXPECT_TRUE(fs::exists(fits + "/data/tavcore/common"));
  fs::remove_all(fits);
  EXPECT_EQ(Create(fits + "d"),
            (Result{1, "",
                    "tav-sandbox: " + fits +
                        "d is too long for a device: the path of its XML file, "
                        "/data/tavcore/common/apps_info.xml behind it, has 128 bytes and may have "
                        "127\n"}));
  EXPECT_EQ(Entries(), (Names{"seed.json"}));
}

TEST_F(SandboxProgram, RefusesADirectoryWhoseParentIsMissing) {
  EXPECT_EQ(Create(Directory() / "no/device"),
            (Result{1, "",
                    "tav-sandbox: " + (Directory() / "no/device").string() +
                        ": No such file or directory\n"}));
  EXPECT_EQ(Entries(), (Names{"seed.json"}));
}

TEST_F(SandboxProgram, LeavesNothingBehindWhenASettingCannotBeWritten) {
  const std::string seed = Write("seed.json", R"({"settings": {"db/tav": 1, "db/tav/reset": 1}})");
  EXPECT_EQ(Sandbox({"--create", Device(), "--seed", seed}),
            (Result{1, "", "tav-sandbox: the setting db/tav/reset cannot be written\n"}));
  EXPECT_EQ(Entries(), (Names{"seed.json"}));
}

TEST_F(SandboxProgram, SaysWhichSeedItCannotRead) {
  const Result result = Sandbox({"--create", Device(), "--seed", Directory() / "none.json"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.err, AllOf(HasSubstr("none.json"), HasSubstr("No such file or directory")));
  EXPECT_EQ(Entries(), Names{});
}

TEST_F(SandboxProgram, FailsWhenItsOutputCannotBeWritten) {
  const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  const Result result = Sandbox({"--create", Device()}, full);
  close(full);
  EXPECT_EQ(result, (Result{1, "", "tav-sandbox: the output cannot be written\n"}));
}

TEST_F(SandboxProgram, ShowsExamplesAndExitStatusesInItsHelp) {
  const Result result = Sandbox({"--help"});
  EXPECT_EQ(result.status, 0);
  EXPECT_THAT(result.out, AllOf(HasSubstr("Examples:"), HasSubstr("--create"), HasSubstr("--seed"),
                                HasSubstr("Exit status:\nThat of the command"),
                                HasSubstr("\n  2      wrong usage\n")));
  EXPECT_EQ(result.err, "");
}

TEST_F(SandboxProgram, CallsAWrongCommandLineWrongUsage) {
  for (const std::vector<std::string>& arguments :
       {Names{"--create"}, Names{"--create", ""}, Names{"--nonsense"}, Names{"true"},
        Names{"--create", Device(), "extra"}, Names{"--create", Device(), "--", "true"},
        Names{"--create", Device(), "--service-option", "--verbose"},
        Names{"--create", Device(), "--ready-file", "none"}}) {
    const Result result = Sandbox(arguments);
    EXPECT_EQ(result.status, 2) << result;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err, "");
  }
  EXPECT_EQ(Entries(), Names{});
}

}  // namespace
}  // namespace test
