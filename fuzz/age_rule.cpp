// SPDX-License-Identifier: Apache-2.0
//
// The age rule. The input's first line is an app's age limit, the rest the setting; without a
// second line there is no setting.
#include <vconf.h>

#include <cstring>
#include <limits>
#include <optional>

#include "support.h"
#include "tav_db_api/tav_db_client_age_rating.h"

namespace {

std::optional<std::string> g_setting;
int g_reads = 0;

using Long = std::numeric_limits<long>;
using Int = std::numeric_limits<int>;

// The number that a text begins with, digit by digit; 0 without one.
long NumberAtTheBeginningOf(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
  const bool is_negative = !text.empty() && text.front() == '-';
  if (!text.empty() && (is_negative || text.front() == '+')) text.remove_prefix(1);
  long number = 0;
  for (const char byte : text) {
    if (byte < '0' || byte > '9') break;
    const long digit = is_negative ? '0' - byte : byte - '0';
    if (__builtin_mul_overflow(number, 10L, &number) ||
        __builtin_add_overflow(number, digit, &number)) {
      return is_negative ? Long::min() : Long::max();
    }
  }
  return number;
}

// The age from which on the setting locks apps.
std::optional<long> ExpectedLimit() {
  if (!g_setting) return std::nullopt;
  const std::string& value = *g_setting;
  if (value == "OFF" || value == "ALL" || value.size() < 2) return std::nullopt;
  return NumberAtTheBeginningOf(value.substr(0, value.size() - 1));
}

}  // namespace

// The platform's settings, in the place of the real ones.
char* vconf_get_str(const char* key) {
  ++g_reads;
  fuzz::Check(std::strcmp(key, "db/appstore/ratingvalue") == 0, "the rule reads its own setting");
  return g_setting ? strdup(g_setting->c_str()) : nullptr;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  std::string_view rest = fuzz::TextOf(data, size);
  const bool is_set = rest.find('\n') != std::string_view::npos;
  const int app_limit = static_cast<int>(
      std::clamp<long>(NumberAtTheBeginningOf(fuzz::TakeLine(rest)), Int::min(), Int::max()));
  g_setting.reset();
  if (is_set) g_setting = rest.substr(0, rest.find('\0'));  // the platform hands on a C text
  g_reads = 0;

  AgeRating rating;
  const std::optional<bool> locks = rating.Locks(app_limit);
  const std::optional<long> limit = ExpectedLimit();
  fuzz::Check(rating.IsKnown() == is_set, "the setting is known when there is one");
  fuzz::Check(locks.has_value() == limit.has_value(), "a setting with a number sets a limit");
  fuzz::Check(!limit || *locks == (app_limit >= *limit), "an app is locked from the limit on");

  fuzz::Check(rating.Locks(app_limit) == locks, "the same app gets the same answer");
  fuzz::Check(rating.Locks(Int::max()) >= locks, "what locks an app locks those for the oldest");
  fuzz::Check(rating.Locks(Int::min()) <= locks, "what spares an app spares those for everybody");
  fuzz::Check(g_reads == 1, "the setting is read once");
  return 0;
}
