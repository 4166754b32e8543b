// SPDX-License-Identifier: Apache-2.0
//
// tavctl doctor: that it leaves everything as it is, and waits for nothing that never comes.
#include <gmock/gmock.h>
#include <sys/stat.h>

#include <map>

#include "tavctl_doctor_test.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::Not;

class TavctlDoctorFiles : public TavctlDoctor {
 protected:
  // What lies in the database's directory, with its times of change.
  std::map<std::string, std::filesystem::file_time_type> Files() const {
    std::map<std::string, std::filesystem::file_time_type> files;
    for (const auto& entry : std::filesystem::directory_iterator(DatabaseFile().parent_path())) {
      files[entry.path().filename()] = entry.last_write_time();
    }
    return files;
  }
};

TEST_F(TavctlDoctorFiles, DoesNotReadADatabaseThatIsNoFile) {
  std::filesystem::remove(DatabaseFile());
  ASSERT_EQ(mkfifo(DatabaseFile().c_str(), 0600), 0);
  Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("/.tavcore.db is not a file\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("read of all apps")));
  std::filesystem::remove(DatabaseFile());
  std::filesystem::create_symlink("/dev/zero", DatabaseFile());
  result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("/.tavcore.db is not a file\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("read of all apps")));
}

TEST_F(TavctlDoctorFiles, LeavesNoSideFilesOfAWriteAheadLogBehind) {
  Execute(DatabaseFile(), "pragma journal_mode = wal; delete from widgetinfo where id = 'clock';");
  const auto files = Files();
  const Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("ok       database content: sound\n"));
  EXPECT_THAT(result.out, HasSubstr("ok       database tables: 1 app, 1 hidden\n"));
  EXPECT_THAT(result.out, HasSubstr(" read of all apps: "));
  EXPECT_EQ(Files(), files);
}

TEST_F(TavctlDoctorFiles, ReadsAWriteAheadLogThatIsInUse) {
  Execute(DatabaseFile(), "pragma journal_mode = wal;");
  const ExclusiveTransaction writer(DatabaseFile());
  const auto files = Files();
  EXPECT_EQ(files.size(), 3U);
  EXPECT_THAT(Doctor().out, HasSubstr("ok       read of all apps: "));
  EXPECT_EQ(Files(), files);
}

TEST_F(TavctlDoctorFiles, DoesNotReadAWriteAheadLogWithoutItsIndex) {
  {
    Execute(DatabaseFile(), "pragma journal_mode = wal;");
    const ExclusiveTransaction writer(DatabaseFile());
    std::filesystem::copy(DatabaseFile().parent_path(), Directory() / "copy");
  }
  std::filesystem::remove_all(DatabaseFile().parent_path());
  std::filesystem::rename(Directory() / "copy", DatabaseFile().parent_path());
  std::filesystem::remove(DatabaseFile().string() + "-shm");
  const auto files = Files();
  EXPECT_EQ(files.size(), 2U);
  const Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("note     database file: " + DatabaseFile().string() +
                                    " has a write-ahead log without its index, which every reader "
                                    "makes: it is not looked at, since that would leave one "
                                    "behind\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("read of all apps")));
  EXPECT_EQ(Files(), files);
}

// A reader makes the side files where the link leads.
TEST_F(TavctlDoctorFiles, LooksForAWriteAheadLogWhereALinkLeads) {
  const std::filesystem::path place = Directory() / "elsewhere";
  {
    Execute(DatabaseFile(), "pragma journal_mode = wal;");
    const ExclusiveTransaction writer(DatabaseFile());
    std::filesystem::copy(DatabaseFile().parent_path(), place);
  }
  const std::filesystem::path file = place / DatabaseFile().filename();
  std::filesystem::remove(file.string() + "-shm");
  std::filesystem::remove(DatabaseFile());
  std::filesystem::create_symlink(file, DatabaseFile());
  EXPECT_THAT(Doctor().out, HasSubstr(" has a write-ahead log without its index"));
  EXPECT_FALSE(std::filesystem::exists(file.string() + "-shm"));
}

TEST_F(TavctlDoctorFiles, DoesNotWaitForAPipeInPlaceOfASetting) {
  const std::filesystem::path setting = Device() / "vconf/db/tav/factory_reset";
  std::filesystem::remove(setting);
  ASSERT_EQ(mkfifo(setting.c_str(), 0600), 0);
  EXPECT_THAT(Doctor().out, HasSubstr("note     factory reset: db/tav/factory_reset cannot be "
                                      "read; that counts as none\n"));
}

}  // namespace
}  // namespace test
