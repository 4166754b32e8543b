// SPDX-License-Identifier: Apache-2.0
//
// The pieces of a condition that a filter stands for: marks and the values behind them.
#include "tav_db_api/tav_db_client_filter.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/device.h"

namespace {

using Values = std::vector<int>;

class FilterPieces : public ::testing::Test {
 protected:
  // The values of bindings, which are integers throughout.
  static Values ValuesOf(const std::vector<_TAVDB_BIND_T>& binds) {
    Values values;
    for (const _TAVDB_BIND_T& bind : binds) {
      EXPECT_EQ(bind.type, kBindInteger);
      EXPECT_EQ(bind.strValue, "");
      values.push_back(bind.intValue);
    }
    return values;
  }

  test::Device device;
  test::Log& log = device.GetLog();
};

TEST_F(FilterPieces, OfATypeAreOneMarkForEachKnownBit) {
  struct Type {
    int type;
    const char* marks;
    Values values;
  };
  const Type types[] = {
      {2, "? ", {2}},        {4, "? ", {4}},  {6, "? ,? ", {2, 4}},   {7, "? ,? ", {2, 4}},
      {3, "? ", {2}},        {5, "? ", {4}},  {127, "? ,? ", {2, 4}}, {0, "", {}},
      {1, "", {}},           {8, "", {}},     {16, "", {}},           {120, "", {}},
      {-1, "? ,? ", {2, 4}}, {-3, "? ", {4}}, {INT_MIN, "", {}},      {INT_MIN + 2, "? ", {2}}};
  for (const Type& type : types) {
    log.Forget();
    std::string marks = "what was there before";
    std::vector<_TAVDB_BIND_T> binds;
    EXPECT_EQ(GetStrAppType(type.type, marks, binds), 0) << type.type;
    EXPECT_EQ(marks, type.marks) << type.type;
    EXPECT_EQ(ValuesOf(binds), type.values) << type.type;
    EXPECT_EQ(log.Count(std::string("Type:") + type.marks), 1) << type.type;
  }
}

TEST_F(FilterPieces, OfATypeAreAddedBehindEarlierValues) {
  std::vector<_TAVDB_BIND_T> binds;
  save_db_bind(binds, 1);
  save_db_bind(binds, 3);
  std::string marks;
  EXPECT_EQ(GetStrAppType(6, marks, binds), 0);
  EXPECT_EQ(ValuesOf(binds), (Values{1, 3, 2, 4}));
}

TEST_F(FilterPieces, OfATypeAbove127AreRefusedAndNothingIsBound) {
  for (const int type : {128, 130, 255, 256, 65535, INT_MAX}) {
    log.Forget();
    std::string marks;
    std::vector<_TAVDB_BIND_T> binds;
    EXPECT_EQ(GetStrAppType(type, marks, binds), -1) << type;
    EXPECT_TRUE(binds.empty()) << type;
    EXPECT_EQ(log.Count("in param app_type is error"), 1) << type;
    EXPECT_FALSE(log.Has("Type:"));
  }
}

TEST_F(FilterPieces, OfAFeaturedSetAreOneMarkForEachOfItsBits) {
  struct Featured {
    int featured;
    const char* clause;
    Values values;
  };
  const Featured sets[] = {
      {65535, "", {}},
      {1, " and app_featured in (? ) ", {1}},
      {2, " and app_featured in (? ) ", {2}},
      {3, " and app_featured in (? ,? ,? ) ", {1, 2, 8}},
      {4, " and app_featured in (? ) ", {4}},
      {5, " and app_featured in (? ,? ) ", {1, 4}},
      {8, " and app_featured in (? ) ", {8}},
      {11, " and app_featured in (? ,? ,? ) ", {1, 2, 8}},
      {15, " and app_featured in (? ,? ,? ,? ) ", {1, 2, 4, 8}},
      {16 + 2, " and app_featured in (? ) ", {2}},
      {16 + 3, " and app_featured in (? ,? ) ", {1, 2}},
      {-1, " and app_featured in (? ,? ,? ,? ) ", {1, 2, 4, 8}},
      {INT_MIN + 4, " and app_featured in (? ) ", {4}},
      {65534, " and app_featured in (? ,? ,? ) ", {2, 4, 8}},
  };
  for (const Featured& set : sets) {
    Query query(" where x");
    EXPECT_TRUE(AddFeatured(query, set.featured)) << set.featured;
    EXPECT_EQ(query.Condition(), std::string(" where x") + set.clause) << set.featured;
    EXPECT_EQ(ValuesOf(query.Binds()), set.values) << set.featured;
  }
  EXPECT_FALSE(log.Has("in param featured error"));
}

TEST_F(FilterPieces, OfAFeaturedSetWithoutItsBitsAreRefusedAndNothingIsAdded) {
  for (const int featured : {0, 16, 32, 65536, -16, INT_MIN}) {
    log.Forget();
    Query query(" where x");
    EXPECT_FALSE(AddFeatured(query, featured)) << featured;
    EXPECT_EQ(query.Condition(), " where x") << featured;
    EXPECT_TRUE(query.Binds().empty()) << featured;
    EXPECT_EQ(log.Count("in param featured error"), 1) << featured;
  }
}

}  // namespace
