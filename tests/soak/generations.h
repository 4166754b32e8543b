// SPDX-License-Identifier: Apache-2.0
//
// What the writer of a soak writes: every transaction brings all rows to the next generation, and
// every text carries its number from the first byte to the last, so that whatever is read can be
// told to be of one transaction, whole.
#ifndef TESTS_SOAK_GENERATIONS_H_
#define TESTS_SOAK_GENERATIONS_H_

#include <cstdlib>
#include <string>

#include "tav_db_api.h"

namespace soak {

constexpr int kApps = 30;
constexpr int kSteadyApps = 20;  // the others come and go with the generations

inline std::string TextOf(int generation) {
  const std::string number = std::to_string(generation) + ";";
  std::string text;
  while (text.size() + number.size() < TAV_TEXT_SIZE) text += number;
  return text;
}

// The number that a text begins with.
inline int NumberOf(const std::string& text) {
  return std::atoi(text.c_str());
}

inline std::string IdOf(int app) {
  return "app" + std::to_string(app);
}

// An app in a generation.
inline tav_app_info_s RecordOf(int app, int generation) {
  tav_app_info_s record = {};
  const std::string text = TextOf(generation);
  IdOf(app).copy(record.app_id, sizeof(record.app_id) - 1);
  for (char* field : {record.app_title, record.app_version, record.content_id}) {
    text.copy(field, TAV_TEXT_SIZE - 1);
  }
  record.app_index = app;
  record.use_count = record.is_multi_screen2 = record.launch_type = generation;
  record.installState = 3;
  return record;
}

}  // namespace soak

#endif  // TESTS_SOAK_GENERATIONS_H_
