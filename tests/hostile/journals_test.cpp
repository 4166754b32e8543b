// SPDX-License-Identifier: Apache-2.0
//
// What a writer that died leaves beside the database: journals, write-ahead logs and their
// indexes, its own or another's.
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <map>
#include <stdexcept>

#include "hostile/damage.h"
#include "hostile/good.h"
#include "hostile/trial.h"
#include "support/database.h"
#include "tav_db_api.h"

namespace hostile {
namespace {

// The database and what lies beside it, by suffix.
using Remains = std::map<std::string, std::string>;

class HostileJournal : public HostileDatabase {
 protected:
  // Another process runs the statements and dies.
  void RunAndDie(const std::string& sql) const {
    const pid_t writer = fork();
    if (writer == 0) {
      try {
        test::Database database(file);
        database.Run(sql);
        raise(SIGKILL);
      } catch (const std::exception&) {
      }
      _exit(1);
    }
    int status = 0;
    waitpid(writer, &status, 0);
    if (!WIFSIGNALED(status)) throw std::runtime_error("the writer failed");
  }

  static void PutAll(const std::filesystem::path& place, const Remains& files) {
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
      const std::filesystem::path path = Beside(place, suffix);
      std::filesystem::remove_all(path);
      const auto given = files.find(suffix);
      if (given != files.end()) Write(path, given->second);
    }
  }
  Remains Taken() const {
    Remains files;
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
      const std::filesystem::path path = Beside(file, suffix);
      if (std::filesystem::exists(path)) files[suffix] = BytesOf(path);
    }
    return files;
  }

  // What a writer leaves that dies when some of its changes have reached the file.
  Remains WithHotJournal() {
    Place(good);
    RunAndDie(
        "pragma cache_size = 1; begin; "
        "update widgetinfo set version = hex(zeroblob(2000)), title = 'half'");
    Remains files = Taken();
    EXPECT_GT(files["-journal"].size(), 512U);
    EXPECT_NE(files[""], good);
    return files;
  }
  // What one leaves that dies with commits that are in its log alone. Only with them is every
  // call answered.
  Remains WithLog() {
    Place(good);
    test::Database(file).Run("update widgetinfo set is_usb_app = 0");
    RunAndDie(
        "pragma journal_mode = wal; pragma wal_autocheckpoint = 0; "
        "update widgetinfo set version = '2.0'; "
        "update widgetinfo set is_usb_app = 1 where id = 'org.example.usb-player'; "
        "begin; update widgetinfo set title = 'never'");
    Remains files = Taken();
    EXPECT_GT(files["-wal"].size(), 4096U);
    EXPECT_GT(files["-shm"].size(), 0U);
    return files;
  }
  // A database whose mode is written in its header, and nothing beside it.
  Remains InLogMode() {
    Place(good);
    test::Database(file).Run("pragma journal_mode = wal");
    Remains files = Taken();
    EXPECT_EQ(files.size(), 1U);
    return files;
  }

  Outcome TryFiles(const std::string& name, const Remains& files) {
    PutAll(file, files);
    return Try(name);
  }

  const std::string good = MakeGoodDatabase(0, file).bytes;
};

TEST_F(HostileJournal, RefusesWhatAWriterLeftHalfDoneUntilTheServiceHasUndoneIt) {
  const Remains files = WithHotJournal();
  EXPECT_EQ(TryFiles("hot", files).answered, 0);
  // A reader cannot undo it: it has the file for reading alone.
  EXPECT_EQ(Taken(), files);
  // What looks on from now on is this process, with one connection.
  tav_app_info_s info;
  EXPECT_EQ(tav_get_app_info("org.example.browser", &info), -1);
  test::Database(file).Run("select count(*) from widgetinfo");
  EXPECT_EQ(tav_get_app_info("org.example.browser", &info), 0);
  EXPECT_STREQ(info.app_title, "Lantern Web Browser");
  EXPECT_EQ(BytesOf(file), good);
}

TEST_F(HostileJournal, IsIgnoredWhenItIsNone) {
  const std::string journal = WithHotJournal().at("-journal");
  EXPECT_EQ(TryFiles("empty", {{"", good}, {"-journal", ""}}).failed, kNone);
  EXPECT_EQ(TryFiles("zeroed", {{"", good}, {"-journal", std::string(4096, '\0')}}).failed, kNone);
  // The first byte tells whether there is anything to undo.
  TryFiles("another text", {{"", good}, {"-journal", std::string(4096, 'g')}});
  TryFiles("one byte", {{"", good}, {"-journal", journal.substr(0, 1)}});
  TryFiles("a database", {{"", good}, {"-journal", good}});
}

TEST_F(HostileJournal, IsSurvivedWhenItIsADirectoryOrALink) {
  for (const char* suffix : {"-journal", "-wal", "-shm"}) {
    for (const Remains& files : {Remains{{"", good}}, InLogMode(), WithLog()}) {
      PutAll(file, files);
      std::filesystem::remove(Beside(file, suffix));
      std::filesystem::create_directory(Beside(file, suffix));
      Try(std::string("a directory, ") + suffix);
      std::filesystem::remove(Beside(file, suffix));
      std::filesystem::create_symlink(Beside(file, suffix), Beside(file, suffix));
      Try(std::string("a link to itself, ") + suffix);
    }
  }
}

TEST_F(HostileJournal, IsReadWhenItIsAWriteAheadLog) {
  EXPECT_EQ(TryFiles("whole", WithLog()).failed, kNone);
  EXPECT_EQ(TryFiles("nothing beside it", InLogMode()).failed, kNone);
  Remains without_index = WithLog();
  without_index.erase("-shm");
  EXPECT_EQ(TryFiles("without its index", without_index).failed, kNone);
  Remains without_log = WithLog();
  without_log.erase("-wal");
  EXPECT_EQ(TryFiles("without its log", without_log).failed,
            std::vector<std::string>{"tav_check_is_usb_app"});
}

TEST_F(HostileJournal, IsSurvivedWhenItIsAnotherDatabases) {
  const Remains hot = WithHotJournal();
  const Remains log = WithLog();
  for (const GoodDatabase& other : GoodDatabases(file)) {
    TryFiles(other.shape + ", hot journal", {{"", other.bytes}, {"-journal", hot.at("-journal")}});
    Place(other.bytes);
    test::Database(file).Run("pragma journal_mode = wal");
    const std::string in_log_mode = BytesOf(file);
    TryFiles(other.shape + ", log",
             {{"", in_log_mode}, {"-wal", log.at("-wal")}, {"-shm", log.at("-shm")}});
    TryFiles(other.shape + ", log alone", {{"", in_log_mode}, {"-wal", log.at("-wal")}});
    TryFiles(other.shape + ", index alone", {{"", in_log_mode}, {"-shm", log.at("-shm")}});
    TryFiles(other.shape + ", log of another mode", {{"", other.bytes}, {"-wal", log.at("-wal")}});
  }
}

TEST_F(HostileJournal, IsSurvivedWhenAnyOfItsBytesAreSpoilt) {
  const Remains kinds[] = {WithLog(), WithHotJournal()};
  for (int number = 0; number < Files() && !IsEnough(); ++number) {
    Random random = RandomOf(number);
    Remains files = random.OneOf(kinds);
    for (auto& [suffix, bytes] : files) {
      // The database itself is spoilt elsewhere, but for the bytes that say which mode it is in.
      if (suffix.empty()) {
        if (random.Below(4) == 0) SpoilSome(bytes, 18, 20, 2, random);
        continue;
      }
      if (random.Below(4) == 0) bytes.resize(random.Below(bytes.size()));
      const std::size_t end = random.Below(2) == 0 ? 200 : bytes.size();
      SpoilSome(bytes, 0, end, 1 + bytes.size() / 1000, random);
    }
    TryFiles("number " + std::to_string(number), files);
  }
}

TEST_F(HostileJournal, IsSurvivedWhenItEndsAnywhere) {
  const Remains kinds[] = {WithLog(), WithHotJournal()};
  for (int number = 0; number < Files() / 3 && !IsEnough(); ++number) {
    Random random = RandomOf(number);
    Remains files = random.OneOf(kinds);
    for (auto& [suffix, bytes] : files) {
      if (!suffix.empty()) bytes.resize(random.Below(bytes.size() + 1));
    }
    TryFiles("number " + std::to_string(number), files);
  }
}

}  // namespace
}  // namespace hostile
