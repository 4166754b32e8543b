// SPDX-License-Identifier: Apache-2.0
//
// The tests of what callers hand in, and the lines that say what was wrong.
#ifndef TAV_COMMON_TAV_ARGUMENTS_H_
#define TAV_COMMON_TAV_ARGUMENTS_H_

#include <initializer_list>

#include "tav_common/tav_log.h"

constexpr char kAppIdIsEmpty[] = "app_id is empty ";
constexpr char kRunTitleIsEmpty[] = "runtitile is empty ";  // the misspelling is kept

// True, after a log, when one of the arguments is null.
inline bool HasNull(std::initializer_list<const void*> arguments,
                    const LogPlace& place = LogPlace::Here()) {
  for (const void* argument : arguments) {
    if (argument != nullptr) continue;
    TAV_LOGW_FOR(place, "in param is NULL ");
    return true;
  }
  return false;
}

// True, after a log of complaint, when the text is empty.
inline bool IsEmpty(const char* text, const char* complaint,
                    const LogPlace& place = LogPlace::Here()) {
  if (text[0] != '\0') return false;
  TAV_LOGW_FOR(place, "%s", complaint);
  return true;
}

#endif  // TAV_COMMON_TAV_ARGUMENTS_H_
