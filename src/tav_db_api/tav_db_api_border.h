// SPDX-License-Identifier: Apache-2.0
//
// The library's border, which no exception crosses. An exported function is a
// function-try-block whose one handler is AnswerException, so that its log lines keep the name
// of the function:
//
//   int tav_is_isp_app(const char* app_id) try {
//     const TavLock lock(g_Mute);
//     …
//   } catch (...) {
//     return AnswerException(__func__);
//   }
#ifndef TAV_DB_API_TAV_DB_API_BORDER_H_
#define TAV_DB_API_TAV_DB_API_BORDER_H_

// Called from a catch-all handler: logs the exception and gives the failure to return. The
// unwinding of a cancelled thread passes through.
int AnswerException(const char* function);

#endif  // TAV_DB_API_TAV_DB_API_BORDER_H_
