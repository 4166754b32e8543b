// SPDX-License-Identifier: Apache-2.0
//
// The fields of the public app record, by name: what printing walks.
#ifndef TOOLS_TAVCTL_RECORD_FIELDS_H_
#define TOOLS_TAVCTL_RECORD_FIELDS_H_

#include <cstddef>
#include <cstdint>
#include <string>

#include "tav_db_api.hpp"

enum class FieldKind { kText, kInteger };

struct RecordField {
  const char* name;
  std::size_t offset;
  FieldKind kind;
};

inline constexpr std::size_t kRecordFieldCount = 59;

// In the record's order.
extern const RecordField kRecordFields[kRecordFieldCount];

// The bytes of a text field up to its terminator, which may be no valid UTF-8.
std::string TextOf(const tav::AppInfo& info, const RecordField& field);

std::int32_t IntegerOf(const tav::AppInfo& info, const RecordField& field);

#endif  // TOOLS_TAVCTL_RECORD_FIELDS_H_
