// SPDX-License-Identifier: Apache-2.0
//
// JSON that a program printed.
#include "json_text.h"

#include <gtest/gtest.h>
#include <json/reader.h>

#include <memory>

namespace test {

Json::Value Parse(const std::string& text) {
  Json::CharReaderBuilder strict;
  Json::CharReaderBuilder::strictMode(&strict.settings_);
  const std::unique_ptr<Json::CharReader> reader(strict.newCharReader());
  Json::Value value;
  std::string errors;
  if (!reader->parse(text.data(), text.data() + text.size(), &value, &errors)) {
    ADD_FAILURE() << errors << text;
  }
  return value;
}

}  // namespace test
