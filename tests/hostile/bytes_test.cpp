// SPDX-License-Identifier: Apache-2.0
//
// Databases whose bytes are not what SQLite has written.
#include <algorithm>

#include "hostile/damage.h"
#include "hostile/good.h"
#include "hostile/trial.h"

namespace hostile {
namespace {

class HostileBytes : public HostileDatabase {
 protected:
  const GoodDatabase& AnyGood(Random& random) const { return random.OneOf(good); }

  // As many files as the environment wants, each a good one that spoil() has changed.
  template <typename Spoiler>
  void TryEach(const Spoiler& spoil) {
    for (int number = 0; number < Files() && !IsEnough(); ++number) {
      Random random = RandomOf(number);
      const GoodDatabase& start = AnyGood(random);
      std::string bytes = start.bytes;
      spoil(bytes, random);
      Place(bytes);
      Try(start.shape + ", number " + std::to_string(number));
    }
  }

  const std::vector<GoodDatabase> good = GoodDatabases(file);
};

TEST_F(HostileBytes, AnswerEveryCallWhenTheyAreGood) {
  for (const GoodDatabase& database : good) {
    Place(database.bytes);
    EXPECT_EQ(Try(database.shape).failed, std::vector<std::string>()) << database.shape;
  }
}

TEST_F(HostileBytes, AreSurvivedWhenTheHeaderIsSpoilt) {
  TryEach([](std::string& bytes, Random& random) { SpoilSome(bytes, 16, kHeaderSize, 3, random); });
}

TEST_F(HostileBytes, AreSurvivedWhenThePagesHeadsAreSpoilt) {
  TryEach([](std::string& bytes, Random& random) {
    // The head of a page and the places of its first cells.
    const std::size_t size = PageSize(bytes);
    for (std::size_t times = 1 + random.Below(4); times > 0; --times) {
      const std::size_t page = random.Below(bytes.size() / size);
      const std::size_t begin = page * size + (page == 0 ? kHeaderSize : 0);
      SpoilSome(bytes, begin, begin + 24, 2, random);
    }
  });
}

TEST_F(HostileBytes, AreSurvivedWhenTheSchemaIsSpoilt) {
  TryEach([](std::string& bytes, Random& random) {
    SpoilSome(bytes, kHeaderSize, PageSize(bytes), 12, random);
  });
}

TEST_F(HostileBytes, AreSurvivedWhenAnyOfThemIsSpoilt) {
  TryEach(
      [](std::string& bytes, Random& random) { SpoilSome(bytes, 0, bytes.size(), 400, random); });
}

TEST_F(HostileBytes, AreSurvivedWhenPagesChangePlaces) {
  TryEach([](std::string& bytes, Random& random) {
    const std::size_t size = PageSize(bytes);
    const std::size_t pages = bytes.size() / size;
    for (std::size_t times = 1 + random.Below(3); times > 0; --times) {
      const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(random.Below(pages) * size);
      const auto to = bytes.begin() + static_cast<std::ptrdiff_t>(random.Below(pages) * size);
      if (random.Below(3) == 0) {
        std::fill(to, to + static_cast<std::ptrdiff_t>(size), '\0');
      } else {
        std::copy(from, from + static_cast<std::ptrdiff_t>(size), to);
      }
    }
  });
}

TEST_F(HostileBytes, AreSurvivedWhenTheFileEndsAtAnyByte) {
  TryEach([](std::string& bytes, Random& random) { bytes.resize(random.Below(bytes.size())); });
}

TEST_F(HostileBytes, AreSurvivedWhenTheFileEndsAtAnyPage) {
  const std::string whole = good.front().bytes;
  const std::size_t size = PageSize(whole);
  for (std::size_t end = 0; end < whole.size() && !IsEnough(); end += size) {
    Place(whole.substr(0, end));
    Try("the first " + std::to_string(end) + " bytes");
  }
}

TEST_F(HostileBytes, AreSurvivedWhenTheyComeFromNowhere) {
  for (int number = 0; number < Files() / 10 && !IsEnough(); ++number) {
    Random random = RandomOf(number);
    // A page size that may be one, and the mark of the format where it is meant to mislead.
    std::string bytes = random.Bytes(1 + random.Below(20000));
    if (number % 2 == 0) bytes.replace(0, 16, good.front().bytes, 0, 20);
    Place(bytes);
    Try("number " + std::to_string(number));
  }
}

}  // namespace
}  // namespace hostile
