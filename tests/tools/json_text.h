// SPDX-License-Identifier: Apache-2.0
//
// JSON that a program printed.
#ifndef TESTS_TOOLS_JSON_TEXT_H_
#define TESTS_TOOLS_JSON_TEXT_H_

#include <json/value.h>

#include <string>

namespace test {

// The value of a text; one that is not strict JSON fails the test.
Json::Value Parse(const std::string& text);

}  // namespace test

#endif  // TESTS_TOOLS_JSON_TEXT_H_
