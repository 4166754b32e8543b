// SPDX-License-Identifier: Apache-2.0
#include "tav_db_api/tav_db_client_text.h"

// Deliberate: a file apart from the callers. A compiler that saw their texts could make one
// calloc of malloc and the zeros, and the blocks would no longer come from the process's malloc.
MallocText NewText(const char* text) {
  MallocText block(static_cast<char*>(std::malloc(TAV_TEXT_SIZE)));
  if (block == nullptr) return block;
  std::strncpy(block.get(), text, TAV_TEXT_SIZE - 1);  // which fills the rest with zeros
  block.get()[TAV_TEXT_SIZE - 1] = '\0';
  return block;
}
