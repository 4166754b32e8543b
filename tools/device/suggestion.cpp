// SPDX-License-Identifier: Apache-2.0
#include "device/suggestion.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace tav_device {
namespace {

// A name that is longer than this is no slip of the fingers.
constexpr std::size_t kLongestName = 40;

// How many characters to put in, take out, change or swap with their neighbours.
std::size_t Distance(const std::string& a, const std::string& b) {
  std::vector<std::size_t> before(b.size() + 1);
  std::vector<std::size_t> last(b.size() + 1);
  std::vector<std::size_t> row(b.size() + 1);
  std::iota(last.begin(), last.end(), 0);
  for (std::size_t i = 1; i <= a.size(); ++i) {
    row[0] = i;
    for (std::size_t j = 1; j <= b.size(); ++j) {
      const bool is_same = a[i - 1] == b[j - 1];
      row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (is_same ? 0 : 1)});
      const bool is_swap = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (is_swap) row[j] = std::min(row[j], before[j - 2] + 1);
    }
    before.swap(last);
    last.swap(row);
  }
  return last[b.size()];
}

}  // namespace

std::string Suggestion(const std::string& name, const std::vector<std::string>& known) {
  if (name.size() > kLongestName) return "";
  const std::string prefix = "app_";
  const bool is_of_record = name.compare(0, prefix.size(), prefix) == 0;
  const std::string* nearest = nullptr;
  std::size_t least = std::max<std::size_t>(name.size() / 3, 1) + 1;
  for (const std::string& candidate : known) {
    std::size_t distance = Distance(name, candidate);
    if (is_of_record)
      distance = std::min(distance, Distance(name.substr(prefix.size()), candidate));
    if (distance >= least) continue;
    least = distance;
    nearest = &candidate;
  }
  return nearest == nullptr ? "" : "; did you mean \"" + *nearest + "\"?";
}

}  // namespace tav_device
