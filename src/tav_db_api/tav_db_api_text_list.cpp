// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_api_throwing.h"

#include <algorithm>

#include "tav_common/tav_log.h"
#include "tav_db_api/tav_db_api_border.h"
#include "tav_db_api_inner.h"

namespace {

void AddItem(const std::string& item, const std::string& pair_separator,
             std::map<std::string, std::string>& out) {
  std::string key = item;
  std::string value;
  if (!pair_separator.empty()) {
    const std::size_t at = item.find_first_of(pair_separator);
    if (at == std::string::npos) return;
    key = item.substr(0, at);
    value = item.substr(at + 1);
  }
  TAV_LOGI("find %s %s", key.c_str(), value.c_str());
  out.emplace(key, value);  // the first value of a key stays
}

}  // namespace

void throwing::ParseStringToList(const std::string& text, const std::string& item_separator,
                                 const std::string& pair_separator,
                                 std::map<std::string, std::string>& out) {
  if (text.empty()) {
    TAV_LOGW("String is empty!");
    return;
  }
  std::map<std::string, std::string> items;
  // A separator ends an item; the last item may do without.
  for (std::size_t start = 0; start < text.size();) {
    const std::size_t end = std::min(text.find_first_of(item_separator, start), text.size());
    AddItem(text.substr(start, end - start), pair_separator, items);
    start = end + 1;
  }
  out.merge(items);
}

// The exported name fixes the parameters' types.
// NOLINTBEGIN(performance-unnecessary-value-param)
void ParseStringToList(std::string text, std::string itemSeparator, std::string pairSeparator,
                       std::map<std::string, std::string>& out) try {
  // NOLINTEND(performance-unnecessary-value-param)
  const TavCall call;
  throwing::ParseStringToList(text, itemSeparator, pairSeparator, out);
} catch (...) {
  AnswerException(__func__);
}
