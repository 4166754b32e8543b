// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_filter.h"

#include <initializer_list>

#include "tav_common/tav_log.h"
#include "tav_db_api.h"

namespace {

constexpr int kHighestType = 127;

// One mark and one value for each of the bits that is set. The last character goes: the list
// ends in a blank, not in a comma.
std::string MarksOf(int set, std::initializer_list<int> bits, std::vector<_TAVDB_BIND_T>& binds) {
  std::string marks;
  for (const int bit : bits) {
    if ((set & bit) == 0) continue;
    marks += "? ,";
    save_db_bind(binds, bit);
  }
  if (!marks.empty()) marks.pop_back();
  return marks;
}

}  // namespace

int GetStrAppType(int appType, std::string& marks, std::vector<_TAVDB_BIND_T>& binds) {
  if (appType > kHighestType) {
    TAV_LOGW("in param app_type is error");
    return -1;
  }
  marks = MarksOf(appType, {2, 4}, binds);
  TAV_LOGI("Type:%s", marks.c_str());
  return 0;
}

bool AddFeatured(Query& query, int featured) {
  // Deliberate: who asks for 1 and 2 gets 8 as well.
  const int set = featured == 3 ? 11 : featured;
  if ((set & 15) == 0) {
    TAV_LOGW("in param featured error");
    return false;
  }
  if (set == kNoFilter) return true;
  query.Append(" and app_featured in (" + MarksOf(set, {1, 2, 4, 8}, query.Binds()) + ") ");
  return true;
}

const char* OrderOfView(int view_mode) {
  switch (view_mode) {
    case TAV_APP_VIEWMODE_MOST_USED:
      return kOrderByUseCount;
    case TAV_APP_VIEWMODE_TITLE:
      return kOrderByTitle;
    case TAV_APP_VIEWMODE_TITLE_DESCENDING:
      return kOrderByTitleDescending;
    default:
      return kOrderByIndex;
  }
}
