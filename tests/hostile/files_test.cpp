// SPDX-License-Identifier: Apache-2.0
//
// What else may lie in the database's place.
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <stdexcept>

#include "hostile/damage.h"
#include "hostile/good.h"
#include "hostile/trial.h"

namespace hostile {
namespace {

class HostileFile : public HostileDatabase {
 protected:
  void Clear() {
    Place("");
    std::filesystem::remove(file);
  }
  void Link(const std::filesystem::path& target) {
    Clear();
    std::filesystem::create_symlink(target, file);
  }

  const std::string good = MakeGoodDatabase(0, file).bytes;
};

TEST_F(HostileFile, AnswersNothingWhereThereIsNone) {
  Clear();
  EXPECT_EQ(Try("nothing").answered, 0);
  Place("");
  EXPECT_EQ(Try("an empty file").answered, 0);
  Clear();
  std::filesystem::create_directory(file);
  EXPECT_EQ(Try("a directory").answered, 0);
  Link(file);
  EXPECT_EQ(Try("a link to itself").answered, 0);
  Link(device.Root() / "nowhere");
  EXPECT_EQ(Try("a link to nothing").answered, 0);
  Link("/dev/null");
  EXPECT_EQ(Try("a link to /dev/null").answered, 0);
  Link("/dev/zero");
  EXPECT_EQ(Try("a link to /dev/zero").answered, 0);
  Link("/proc/self/mem");
  EXPECT_EQ(Try("a link to a file that cannot be read").answered, 0);
  Clear();
  std::filesystem::remove(file.parent_path());
  EXPECT_EQ(Try("no directory").answered, 0);
  Write(file.parent_path(), good);
  EXPECT_EQ(Try("a file in the directory's place").answered, 0);
}

TEST_F(HostileFile, AnswersNothingWhenItIsASocket) {
  Clear();
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  ASSERT_LT(file.string().size(), sizeof(address.sun_path));
  file.string().copy(address.sun_path, sizeof(address.sun_path) - 1);
  const int socket_end = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(bind(socket_end, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  EXPECT_EQ(Try("a socket").answered, 0);
  close(socket_end);
}

TEST_F(HostileFile, AnswersNothingWhenItIsOfAnotherKind) {
  const std::string kinds[] = {
      std::string(1, '\0'),
      std::string(100000, '\0'),
      std::string(16, 'S'),
      "SQLite format 3",
      std::string("SQLite format 3\0", 16),
      std::string("SQLite format 2\0", 16) + std::string(5000, '\0'),
      good.substr(0, kHeaderSize),
      "\x1f\x8b\x08" + good,
      "#!/bin/sh\nexit 1\n",
      std::string(200000, 'g'),
  };
  for (const std::string& kind : kinds) {
    Place(kind);
    EXPECT_EQ(Try(std::to_string(kind.size()) + " bytes").answered, 0);
  }
}

TEST_F(HostileFile, AnswersEverythingThroughALinkAndBehindATail) {
  Clear();
  Write(device.Root() / "elsewhere", good);
  std::filesystem::create_symlink(device.Root() / "elsewhere", file);
  EXPECT_EQ(Try("a link").failed, kNone);
  Place(good + std::string(12345, 't'));
  EXPECT_EQ(Try("a tail").failed, kNone);
  Place(good);
  std::filesystem::resize_file(file, std::uintmax_t{3} << 30);  // takes no room
  EXPECT_EQ(Try("a tail of gigabytes").failed, kNone);
}

}  // namespace
}  // namespace hostile
