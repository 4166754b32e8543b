// SPDX-License-Identifier: Apache-2.0
// Programs that run with more rights than their caller has: which files they use is not his to
// say.
#include <gtest/gtest.h>
#include <pwd.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <vector>

namespace {

class MoreRights : public testing::Test {
 protected:
  MoreRights() {
    std::string name = testing::TempDir() + "tav-rights-XXXXXX";
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    m_directory = name;
  }
  ~MoreRights() override { std::filesystem::remove_all(m_directory); }

  // A group that this user may give to a file, other than his own.
  static std::optional<gid_t> OtherGroup() {
    if (geteuid() == 0) return getegid() + 1;
    std::vector<gid_t> groups(static_cast<size_t>(getgroups(0, nullptr)));
    getgroups(static_cast<int>(groups.size()), groups.data());
    for (const gid_t group : groups) {
      if (group != getegid()) return group;
    }
    return std::nullopt;
  }

  // A program for which secure_getenv finds nothing; and a set-group-id one, wherever this user
  // can have one, which the kernel itself declares to be such.
  std::vector<std::string> Programs() const {
    std::vector<std::string> programs = {HOST_PROGRAM_WITH_MORE_RIGHTS};
    struct statvfs place = {};
    statvfs(m_directory.c_str(), &place);
    const auto group = OtherGroup();
    if (group && (place.f_flag & ST_NOSUID) == 0) {
      const std::string copy = m_directory / "copy";
      std::filesystem::copy_file(HOST_PROGRAM, copy);
      EXPECT_EQ(chown(copy.c_str(), static_cast<uid_t>(-1), *group), 0);
      EXPECT_EQ(chmod(copy.c_str(), 02755), 0);
      programs.push_back(copy);
    }
    return programs;
  }

  std::string OutputOf(const std::string& program) const {
    setenv("PROGRAM", program.c_str(), 1);
    setenv("OUT", (m_directory / "out").c_str(), 1);
    EXPECT_EQ(system(R"("$PROGRAM" >"$OUT" 2>"$OUT.err")"), 0);
    std::ifstream file(m_directory / "out");
    return {std::istreambuf_iterator<char>(file), {}};
  }

  std::filesystem::path m_directory;
};

TEST_F(MoreRights, ThanTheCallersAreNotLedByHisEnvironment) {
  const passwd* user = getpwuid(geteuid());
  const std::string home = user != nullptr ? user->pw_dir : "";
  for (const char* name : {"TAV_DEVICE_ROOT", "XDG_DATA_HOME", "HOME", "DLOG_FILE"}) {
    setenv(name, (m_directory / name).c_str(), 1);
    EXPECT_EQ(OutputOf(HOST_PROGRAM).find("yes " + home), std::string::npos) << name;
    std::filesystem::remove(m_directory / name);
    for (const std::string& program : Programs()) {
      EXPECT_EQ(OutputOf(program), "yes " + home + "/.local/share/tav-device/dbspace\n")
          << name << " " << program;
      EXPECT_FALSE(std::filesystem::exists(m_directory / name)) << name << " " << program;
    }
    std::filesystem::remove(m_directory / "copy");
  }
}

}  // namespace
