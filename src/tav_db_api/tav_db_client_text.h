// SPDX-License-Identifier: Apache-2.0
//
// The ways in which a text gets into a field, a caller's buffer or a new block, all of
// TAV_TEXT_SIZE bytes.
#ifndef TAV_DB_API_TAV_DB_CLIENT_TEXT_H_
#define TAV_DB_API_TAV_DB_CLIENT_TEXT_H_

#include <cstring>

#include "tav_common/tav_handles.h"
#include "tav_db_api.h"

// Copies at most TAV_TEXT_SIZE - 1 bytes, and terminates them.
inline void CopyText(char* field, const char* text) {
  const std::size_t length = strnlen(text, TAV_TEXT_SIZE - 1);
  std::memcpy(field, text, length);
  field[length] = '\0';
}

// A new block with at most TAV_TEXT_SIZE - 1 bytes of the text, filled up with zeros. Null when
// there is no memory.
MallocText NewText(const char* text);

#endif  // TAV_DB_API_TAV_DB_CLIENT_TEXT_H_
