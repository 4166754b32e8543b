// SPDX-License-Identifier: Apache-2.0
//
// Lines of the log that several functions write.
#ifndef TESTS_API_LOG_TEXTS_H_
#define TESTS_API_LOG_TEXTS_H_

namespace test {

inline constexpr char kNoRecord[] = "query sql fail or have no required record in database ";
inline constexpr char kIsNull[] = "in param is NULL ";

}  // namespace test

#endif  // TESTS_API_LOG_TEXTS_H_
