// SPDX-License-Identifier: Apache-2.0
//
// The tests of what callers hand in, and the lines that say what was wrong.
#ifndef TAV_COMMON_TAV_ARGUMENTS_H_
#define TAV_COMMON_TAV_ARGUMENTS_H_

#include "tav_common/tav_log.h"

constexpr char kAppIdIsEmpty[] = "app_id is empty ";
constexpr char kRunTitleIsEmpty[] = "runtitile is empty ";  // the misspelling is kept

// True, after a log, when one of the arguments is null.
template <typename... Argument>
bool HasNull(const Argument*... arguments) {
  if (((arguments != nullptr) && ...)) return false;
  TAV_LOGW("in param is NULL ");
  return true;
}

// True, after a log of complaint, when the text is empty.
inline bool IsEmpty(const char* text, const char* complaint) {
  if (text[0] != '\0') return false;
  TAV_LOGW("%s", complaint);
  return true;
}

#endif  // TAV_COMMON_TAV_ARGUMENTS_H_
