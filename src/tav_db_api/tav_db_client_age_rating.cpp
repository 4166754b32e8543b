// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_age_rating.h"

#include <vconf.h>

#include <cstdlib>
#include <string_view>

#include "tav_common/tav_handles.h"
#include "tav_common/tav_log.h"

namespace {

constexpr char kRatingKey[] = "db/appstore/ratingvalue";

}  // namespace

std::optional<bool> AgeRating::Locks(int age_limit) {
  if (!m_is_read) Read();
  if (!m_limit) return std::nullopt;
  return age_limit >= *m_limit;
}

void AgeRating::Read() {
  m_is_read = true;
  const MallocText setting(vconf_get_str(kRatingKey));
  if (setting == nullptr) {
    TAV_LOGE("failed to get db/appstore/ratingvalue value");
    return;
  }
  m_is_known = true;
  TAV_LOGI("got db/appstore/ratingvalue value[%s]", setting.get());

  // In place: a record that is half filled must not meet the end of memory.
  const std::string_view value(setting.get());
  if (value == "OFF" || value == "ALL" || value.empty()) return;
  // The last byte is a suffix behind the age. What is left counts as 0 when it is no number.
  setting.get()[value.size() - 1] = '\0';
  if (value.size() > 1) m_limit = std::strtol(setting.get(), nullptr, 10);
}
