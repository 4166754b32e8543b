// SPDX-License-Identifier: Apache-2.0
//
// Lists that are kept as texts. The input's first line holds the characters that end an item, the
// second those that end a key; the rest is the text.
#include <map>

#include "support.h"
#include "tav_db_api_inner.h"

namespace {

using Pairs = std::map<std::string, std::string>;

void AddItem(const std::string& item, const std::string& pair_separator, Pairs& out) {
  const auto end =
      std::find_first_of(item.begin(), item.end(), pair_separator.begin(), pair_separator.end());
  if (end != item.end()) {
    out.emplace(std::string(item.begin(), end), std::string(end + 1, item.end()));
  } else if (pair_separator.empty()) {
    out.emplace(item, "");
  }
}

// Byte by byte.
Pairs Expected(std::string_view text, const std::string& item_separator,
               const std::string& pair_separator) {
  Pairs out;
  std::string item;
  while (!text.empty()) {
    const char byte = text.front();
    text.remove_prefix(1);
    const bool is_end = item_separator.find(byte) != std::string::npos;
    if (!is_end) item += byte;
    if (!is_end && !text.empty()) continue;
    AddItem(item, pair_separator, out);
    item.clear();
  }
  return out;
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::TextOf(data, size);
  const std::string item_separator = fuzz::TakeLine(rest);
  const std::string pair_separator = fuzz::TakeLine(rest);
  const std::string text(rest);

  const Pairs expected = Expected(text, item_separator, pair_separator);
  Pairs out;
  ParseStringToList(text, item_separator, pair_separator, out);
  fuzz::Check(out == expected, "the pairs are the first items of each key");
  ParseStringToList(text, item_separator, pair_separator, out);
  fuzz::Check(out == expected, "reading a list again changes nothing");

  for (const auto& [key, value] : out) {
    const auto keeps = [](const std::string& part, const std::string& separator) {
      return part.find_first_of(separator) == std::string::npos;
    };
    fuzz::Check(keeps(key, item_separator + pair_separator), "a key holds no separator");
    fuzz::Check(keeps(value, item_separator), "a value holds no item separator");
  }

  if (expected.empty()) return 0;
  const std::string& key = expected.begin()->first;
  Pairs others = expected;
  others[key] = "before";
  Pairs added = {{key, "before"}};
  ParseStringToList(text, item_separator, pair_separator, added);
  fuzz::Check(added == others, "a value that was there before stays");
  return 0;
}
