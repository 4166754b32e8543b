// SPDX-License-Identifier: Apache-2.0
//
// Random filters, view modes and pages over random rows, against a model of the lists that
// knows neither SQL nor the library.
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <numeric>
#include <random>
#include <sstream>

#include "api/listing.h"
#include "support/device.h"

namespace {

using test::Ids;
using test::Listed;
using test::Listing;
using test::NotCounted;
using test::NothingMatches;
using test::Refused;

struct Row {
  std::string id;
  int index;
  int use_count;
  std::string title;
  std::string launched;
  std::string installed;
  int type;
  int featured;
  int hidden;
  int available;
  int state;
  int reset;
  int ticker;
};

struct Request {
  tav_app_filter_s filter;
  int mode;
  int index;
  int count;
};

std::string Describe(const Request& request) {
  std::ostringstream out;
  out << "featured " << request.filter.featured << ", type " << request.filter.app_type << ", mode "
      << request.mode << ", index " << request.index << ", count " << request.count;
  return out.str();
}

// ---- The model ----

bool IsThere(const Row& row) {
  return row.available == 1 && row.state == 3 && row.reset == 0;
}

bool IsOneBitOf(int value, int set, std::initializer_list<int> bits) {
  return std::any_of(bits.begin(), bits.end(),
                     [&](int bit) { return value == bit && (set & bit) != 0; });
}

template <typename Less>
void Sort(std::vector<Row>& rows, const Less& less) {
  std::sort(rows.begin(), rows.end(), less);
}

std::string Upper(std::string text) {
  for (char& letter : text)
    letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
  return text;
}

void SortByIndex(std::vector<Row>& rows) {
  Sort(rows, [](const Row& a, const Row& b) { return a.index < b.index; });
}

void SortByMode(std::vector<Row>& rows, int mode, bool is_short) {
  if (mode == 0) {
    Sort(rows, [](const Row& a, const Row& b) { return a.use_count > b.use_count; });
  } else if (mode == 2 && is_short) {
    Sort(rows, [](const Row& a, const Row& b) { return a.installed > b.installed; });
  } else if (mode == 3) {
    Sort(rows, [](const Row& a, const Row& b) { return Upper(a.title) < Upper(b.title); });
  } else if (mode == 4) {
    Sort(rows, [](const Row& a, const Row& b) { return Upper(a.title) > Upper(b.title); });
  } else if (mode == 5) {
    Sort(rows, [](const Row& a, const Row& b) { return a.launched > b.launched; });
  } else {
    SortByIndex(rows);
  }
}

// Rows in catalogue order: the downloads are all at the end, so their order is reversed in
// front of the others.
void PutDownloadsFirst(std::vector<Row>& rows) {
  std::vector<Row> result;
  for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
    if (row->index > 299) result.push_back(*row);
  }
  for (const Row& row : rows) {
    if (row.index <= 299) result.push_back(row);
  }
  rows = result;
}

Listing ListedRows(const std::vector<Row>& rows) {
  Ids ids;
  for (const Row& row : rows) ids.push_back(row.id);
  return rows.empty() ? NothingMatches() : Listed(ids);
}

Listing Expected(const std::vector<Row>& all, const Request& request, bool is_short) {
  const int type = request.filter.app_type;
  const int featured = request.filter.featured == 3 ? 11 : request.filter.featured;
  if (type != 65535 && type > 127) return Refused();
  if ((featured & 15) == 0) return Refused();
  if (type != 65535 && (type & 6) == 0) return NotCounted(-1);

  std::vector<Row> rows;
  for (const Row& row : all) {
    if (!IsThere(row) || row.hidden != 0) continue;
    if (type != 65535 && !IsOneBitOf(row.type, type, {2, 4})) continue;
    if (featured != 65535 && !IsOneBitOf(row.featured, featured, {1, 2, 4, 8})) continue;
    rows.push_back(row);
  }
  if (rows.empty()) return NothingMatches();
  const int size = static_cast<int>(rows.size());
  if (request.index >= size) return NotCounted(-1);

  SortByMode(rows, request.mode, is_short);
  if (request.index > 0) rows.erase(rows.begin(), rows.begin() + request.index);
  if (request.count > 0 && request.count < static_cast<int>(rows.size())) {
    rows.resize(static_cast<std::size_t>(request.count));
  }
  if (request.mode == 2 && !is_short) PutDownloadsFirst(rows);
  return ListedRows(rows);
}

Listing ExpectedCount(const std::vector<Row>& all, const tav_app_filter_s& filter) {
  Listing listing = Expected(all, {filter, 0, 0, 0}, false);
  listing.pointer = test::Pointer::kUntouched;
  listing.ids.clear();
  return listing;
}

template <typename Matches>
std::vector<Row> Matching(const std::vector<Row>& all, const Matches& matches) {
  std::vector<Row> rows;
  std::copy_if(all.begin(), all.end(), std::back_inserter(rows),
               [&](const Row& row) { return IsThere(row) && matches(row); });
  return rows;
}

void Cut(std::vector<Row>& rows, int count) {
  if (count > 0) rows.resize(std::min(rows.size(), static_cast<std::size_t>(count)));
}

Listing ExpectedAll(const std::vector<Row>& all) {
  std::vector<Row> rows = Matching(all, [](const Row&) { return true; });
  SortByIndex(rows);
  PutDownloadsFirst(rows);
  return ListedRows(rows);
}

Listing ExpectedRecent(const std::vector<Row>& all, int count) {
  std::vector<Row> rows =
      Matching(all, [](const Row& row) { return row.hidden == 0 && row.use_count > 0; });
  Sort(rows, [](const Row& a, const Row& b) { return a.launched > b.launched; });
  Cut(rows, count);
  return ListedRows(rows);
}

Listing ExpectedWithTicker(const std::vector<Row>& all, int count) {
  std::vector<Row> rows = Matching(all, [](const Row& row) { return row.ticker == 1; });
  Cut(rows, count);
  return ListedRows(rows);
}

// ---- The cases ----

class PagingModel : public ::testing::Test {
 protected:
  PagingModel() { setenv("DLOG_LEVEL", "F", 1); }  // too many lines to be of use

  int Below(int limit) { return static_cast<int>(random() % static_cast<unsigned int>(limit)); }
  template <typename T>
  T OneOf(std::initializer_list<T> values) {
    return *(values.begin() + Below(static_cast<int>(values.size())));
  }

  // Values that decide an order differ in all rows, so that there is but one right answer.
  std::vector<Row> RandomRows() {
    const int size = OneOf({0, 1, 3, 8, 20, 40, 40});
    const auto shuffled = [&](int first) {
      std::vector<int> numbers(static_cast<std::size_t>(size));
      std::iota(numbers.begin(), numbers.end(), first);
      std::shuffle(numbers.begin(), numbers.end(), random);
      return numbers;
    };
    const auto indexes = shuffled(300 - Below(size + 2));
    const auto uses = shuffled(-2);
    const auto titles = shuffled(100);
    const auto launches = shuffled(100);
    const auto installs = shuffled(100);
    std::vector<Row> rows;
    for (std::size_t i = 0; i < static_cast<std::size_t>(size); ++i) {
      rows.push_back({"app" + std::to_string(i), indexes[i], uses[i],
                      OneOf({"t", "T"}) + std::to_string(titles[i]), std::to_string(launches[i]),
                      std::to_string(installs[i]), OneOf({2, 2, 4, 4, 1, 6}),
                      OneOf({1, 2, 4, 8, 1, 3, 0}), OneOf({0, 0, 0, 0, 1}),
                      OneOf({1, 1, 1, 1, 1, 1, 1, 0}), OneOf({3, 3, 3, 3, 3, 3, 3, 2}),
                      OneOf({0, 0, 0, 0, 0, 0, 0, 1}), Below(2)});
    }
    return rows;
  }

  void Replace(const std::vector<Row>& rows) {
    std::ostringstream sql;
    sql << "begin; delete from widgetinfo;";
    for (const Row& row : rows) {
      sql << "insert into widgetinfo (id, app_index, use_count, title, launch_date, install_date,"
             " app_type, app_featured, is_hidden, is_app_available, install_state, is_need_reset,"
             " is_ticker) values ('"
          << row.id << "'," << row.index << "," << row.use_count << ",'" << row.title << "','"
          << row.launched << "','" << row.installed << "'," << row.type << "," << row.featured
          << "," << row.hidden << "," << row.available << "," << row.state << "," << row.reset
          << "," << row.ticker << ");";
    }
    sql << "commit";
    device.Sql(sql.str());
  }

  Request RandomRequest(int rows) {
    Request request = {};
    request.filter.featured = Below(4) > 0 ? OneOf({65535, 65535, 15, 3})
                                           : OneOf({0, 1, 2, 4, 5, 8, 9, 16, 19, -1, INT_MIN});
    request.filter.premium_game = Below(3);
    request.filter.app_type = Below(4) > 0 ? OneOf({65535, 65535, 6, 2})
                                           : OneOf({0, 1, 4, 8, 127, 128, 255, 256, -1, INT_MAX});
    request.mode = Below(9) - 1;
    request.index = Below(8) > 0 ? Below(rows / 2 + 3) - 1 : OneOf({INT_MIN, -2, INT_MAX});
    request.count = Below(8) > 0 ? Below(rows + 3) - 1 : OneOf({INT_MIN, -2, INT_MAX});
    return request;
  }

  test::Device device;
  std::mt19937 random{20240229};
};

TEST_F(PagingModel, AgreesWithTheListsInThousandsOfCases) {
  constexpr int kRounds = 120;
  constexpr int kRequestsOfEach = 25;
  int listed = 0;
  for (int round = 0; round < kRounds; ++round) {
    const std::vector<Row> rows = RandomRows();
    Replace(rows);
    ASSERT_EQ(test::AllApps(), ExpectedAll(rows)) << "round " << round;
    for (int i = 0; i < kRequestsOfEach; ++i) {
      Request request = RandomRequest(static_cast<int>(rows.size()));
      SCOPED_TRACE("round " + std::to_string(round) + ": " + Describe(request));
      const auto& [filter, mode, index, count] = request;
      const Listing full = test::FullList(filter, mode, index, count);
      ASSERT_EQ(full, Expected(rows, request, false));
      ASSERT_EQ(test::FullListByPointer(&request.filter, mode, index, count), full);
      ASSERT_EQ(test::ShortList(filter, mode, index, count), Expected(rows, request, true));
      ASSERT_EQ(test::CountOf(filter), ExpectedCount(rows, filter));
      ASSERT_EQ(test::RecentApps(count), ExpectedRecent(rows, count));
      ASSERT_EQ(test::KeyApps("is_ticker", count), ExpectedWithTicker(rows, count));
      if (!full.ids.empty()) ++listed;
    }
  }
  // The cases are worth their name only if many of them list something.
  RecordProperty("listed", listed);
  EXPECT_GE(listed, kRounds * kRequestsOfEach / 4);
}

}  // namespace
