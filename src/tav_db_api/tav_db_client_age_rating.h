// SPDX-License-Identifier: Apache-2.0
//
// The age rule: which apps the owner's age-rating setting locks.
#ifndef TAV_DB_API_TAV_DB_CLIENT_AGE_RATING_H_
#define TAV_DB_API_TAV_DB_CLIENT_AGE_RATING_H_

#include <optional>

// The setting as it stands while one query runs: read when the first row asks, then kept.
class AgeRating {
 public:
  // Whether the setting locks an app with this age limit; nothing when it sets no limit or
  // cannot be read.
  std::optional<bool> Locks(int age_limit);

  // Whether Locks found a setting to read.
  bool IsKnown() const { return m_is_known; }

 private:
  void Read();

  bool m_is_read = false;
  bool m_is_known = false;
  std::optional<long> m_limit;
};

#endif  // TAV_DB_API_TAV_DB_CLIENT_AGE_RATING_H_
