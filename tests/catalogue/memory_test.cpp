// SPDX-License-Identifier: Apache-2.0
//
// What becomes of a call whose memory runs out in the middle. malloc below stands before the C
// library's own and refuses blocks of the one size that a test sets, after as many as it lets pass.
#include <atomic>
#include <cerrno>
#include <limits>

#include "catalogue.h"
#include "exports.h"

namespace {

std::atomic<std::size_t> g_refused_size{0};
std::atomic<int> g_to_pass{0};
std::atomic<int> g_asked{0};
std::atomic<int> g_refusals{0};

}  // namespace

extern "C" {

void* __libc_malloc(std::size_t size);

void* malloc(std::size_t size) {
  if (size == 0 || size != g_refused_size) return __libc_malloc(size);
  if (++g_asked <= g_to_pass) return __libc_malloc(size);
  ++g_refusals;
  errno = ENOMEM;
  return nullptr;
}

}  // extern "C"

namespace {

using test::Answer;
using test::App;
using test::Ids;
using test::InnerApp;
using test::InnerApps;

class Refusing {
 public:
  explicit Refusing(std::size_t size, int to_pass = 0) {
    g_asked = 0;
    g_refusals = 0;
    g_to_pass = to_pass;
    g_refused_size = size;
  }
  ~Refusing() { g_refused_size = 0; }
  Refusing(const Refusing&) = delete;
  Refusing& operator=(const Refusing&) = delete;
};

// What a std::string of this length asks for.
constexpr std::size_t RoomFor(std::size_t length) {
  return length + 1;
}

class OutOfMemory : public test::BuiltInApps {
 protected:
  // Without an age limit a call that works logs no error.
  OutOfMemory() { device.Setting("db/appstore/ratingvalue", "OFF"); }

  // The answer of a call whose block for a text cannot be made.
  template <typename Call>
  static Answer WithoutABlock(const Call& call, int earlier_blocks = 0) {
    const Refusing refusing(TAV_TEXT_SIZE, earlier_blocks);
    const Answer answer = test::Ask(call);
    EXPECT_EQ(g_refusals, 1);
    return answer;
  }
};

// How many blocks of a text's size a call asks for; on 32 bits its query's values take one.
template <typename Call>
int BlocksOf(const Call& call) {
  const Refusing nothing(TAV_TEXT_SIZE, std::numeric_limits<int>::max());
  test::Ask(call);
  return g_asked;
}

TEST_F(OutOfMemory, LeavesTheXmlFileWithoutItsPath) {
  device.Install(App("a"));
  std::filesystem::create_directories(device.Root() / "data/tavcore/common");
  ASSERT_EQ(test::Ask(tav_write_all_app_info_to_xml).result, 0);
  std::filesystem::remove(device.Root() / "data/tavcore/common/apps_info.xml");
  log.Forget();
  EXPECT_EQ(WithoutABlock(tav_write_all_app_info_to_xml), (Answer{-1, "(null)"}));
  EXPECT_EQ(log.Messages('E'), std::vector<std::string>{"keydata malloc is NULL"});
  EXPECT_FALSE(std::filesystem::exists(device.Root() / "data/tavcore/common/apps_info.xml"));
  EXPECT_EQ(test::Ask(tav_write_all_app_info_to_xml).result, 0);
}

// A stream that is out of memory drops what it is given. The texts end about where it grows.
TEST_F(OutOfMemory, LeavesNoJsonTextWithoutItsEnd) {
  constexpr std::size_t kRoom = 4096;
  const auto ask = [](const std::string& id) {
    return test::Ask([&](char** json) { return tav_get_app_info_json(id.c_str(), json); });
  };
  device.Install(App("app00"));
  const std::size_t shortest = ask("app00").text.size();
  int refused = 0;
  for (int beyond = -5; beyond < 10; ++beyond) {
    const std::string id = "app" + std::to_string(20 + beyond);
    const std::size_t title = kRoom + beyond - shortest;
    device.Install(App(id).Title(std::string(title, 't')));
    const Answer whole = ask(id);
    Answer answer;
    {
      const Refusing refusing(RoomFor(2 * kRoom));
      answer = ask(id);
    }
    EXPECT_EQ(answer, g_refusals > 0 ? test::kFails : whole) << beyond;
    refused += g_refusals;
  }
  EXPECT_GT(refused, 0);
}

TEST_F(OutOfMemory, LeavesATextPropertyUntouched) {
  device.Install(App("a")
                     .Package("package")
                     .RunTitle("title")
                     .Set("hybrid_app", "native")
                     .Set("ait_orgid", "org")
                     .Set("ait_appid", "app"));
  struct Property {
    int (*ask)(char** text);
    const char* text;
    const char* complaint;
  };
  const Property properties[] = {
      {[](char** text) { return tav_get_pkgname_by_nativeid("native", text); }, "package",
       "pkgname malloc is NULL"},
      {[](char** text) { return tav_get_app_runtitle_by_ait_id("org", "app", text); }, "title",
       "runtitle malloc is NULL"},
      {[](char** text) { return tav_find_app("org", "app", text); }, "title",
       "runtitle malloc is NULL"},
      {[](char** text) { return tav_get_appid_by_runtitle("title", text); }, "a",
       "app_id malloc is NULL"},
  };
  for (const Property& property : properties) {
    const Answer whole = {0, property.text};
    ASSERT_EQ(test::Ask(property.ask), whole);
    const int blocks = BlocksOf(property.ask);  // the text's is the last
    log.Forget();
    EXPECT_EQ(WithoutABlock(property.ask, blocks - 1), test::kFails) << property.complaint;
    EXPECT_EQ(log.Messages('E'), std::vector<std::string>{property.complaint});
    EXPECT_EQ(test::Ask(property.ask), whole);
  }
}

TEST_F(OutOfMemory, DoesNotMakeAGroupListThatWasReadInPartAWholeOne) {
  const std::string item = "Clock:" + std::string(30000, 'c');
  device.Configure("RESERVED_37", "First:first," + item + ",Last:last");
  device.Configure("RESERVED_27", "First:first," + item + ",Last:last");
  const std::pair<decltype(&GetAppIDFromAppGroupList), const char*> lists[] = {
      {GetAppIDFromAndroidGroupList, "GetAppIDFromAndroidGroupList failed: std::bad_alloc"},
      {GetAppIDFromAppGroupList, "GetAppIDFromAppGroupList failed: std::bad_alloc"}};
  for (const auto& [find, complaint] : lists) {
    std::string id = "untouched";
    int state = -7;
    find("Last", id, state);
    EXPECT_EQ(std::pair(id, state), std::pair(std::string("last"), 1));
    for (const char* title : {"Last", "First", "Other"}) {
      log.Forget();
      id = "untouched";
      state = -7;
      {
        const Refusing refusing(RoomFor(item.size()));
        find(title, id, state);
      }
      EXPECT_EQ(std::pair(id, state), std::pair(std::string("untouched"), -7)) << title;
      EXPECT_TRUE(log.HasError(complaint));
      EXPECT_EQ(log.Messages('E').size(), 1U);
    }
  }
}

TEST_F(OutOfMemory, DoesNotMakeAListOfTextsThrow) {
  const std::string item(30000, 'i');
  std::map<std::string, std::string> out;
  {
    const std::string text = "a," + item;
    const std::string comma = ",";
    const Refusing refusing(RoomFor(item.size()));
    ParseStringToList(text, comma, "", out);
  }
  EXPECT_EQ(log.Messages('E'),
            std::vector<std::string>{"ParseStringToList failed: std::bad_alloc"});
}

TEST_F(OutOfMemory, DoesNotOfferPackagesThatTheDeviceDoesNotOffer) {
  const std::string package(1000, 'p');
  Catalogue(Ids{"a", "b"});
  Blacklist("a\n" + package + "\nb\n");
  EXPECT_EQ(ListedIds(), Ids{});
  log.Forget();
  {
    const Refusing refusing(RoomFor(package.size()));
    InnerApps list = {InnerApp("before", "p")};
    EXPECT_EQ(GetBuiltInAppList(list, false), -1);
    EXPECT_EQ(test::IdsOf(list), Ids{"before"});
    EXPECT_EQ(log.Messages('E'),
              (std::vector<std::string>{"failed to get com.kordyne/featureconf/flash_size",
                                        "GetBuiltInAppList failed: std::bad_alloc"}));
    EXPECT_TRUE(GetUnsupportedPkgList().empty());
    EXPECT_TRUE(log.HasError("GetUnsupportedPkgList failed: std::bad_alloc"));
  }
  EXPECT_EQ(ListedIds(), Ids{});
}

TEST_F(OutOfMemory, DoesNotMakeAPartOfTheRequiredAppsAllOfThem) {
  const std::string required(30000, 'r');
  device.InstallAll({App("a").Set("reserved_string_10", "updating," + required),
                     App("updating").Set("reserved_tinyint_10", 1)});
  EXPECT_EQ(tav_db_check_app_installing("a"), 0);
  log.Forget();
  {
    const Refusing refusing(RoomFor(required.size()));
    EXPECT_EQ(tav_db_check_app_installing("a"), -1);
  }
  EXPECT_EQ(log.Messages('E'),
            std::vector<std::string>{"tav_db_check_app_installing failed: std::bad_alloc"});
  EXPECT_EQ(tav_db_check_app_installing("a"), 0);
}

}  // namespace
