// SPDX-License-Identifier: Apache-2.0
//
// Damage to the bytes of a file.
#ifndef TESTS_HOSTILE_DAMAGE_H_
#define TESTS_HOSTILE_DAMAGE_H_

#include <algorithm>
#include <string>

#include "hostile/random.h"

namespace hostile {

// Places of the file format, version 3.
constexpr std::size_t kHeaderSize = 100;
constexpr std::size_t kPageSizeAt = 16;  // two bytes, the high one first; 1 stands for 65536

inline std::size_t PageSize(const std::string& bytes) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
  const std::size_t size = byte(kPageSizeAt) * std::size_t{256} + byte(kPageSizeAt + 1);
  return size == 1 ? 65536 : size;
}

// What programs and disks do to a byte: anything, a bit, or one of the values at the edges.
inline void Spoil(std::string& bytes, std::size_t at, Random& random) {
  constexpr char kEdges[] = {0, 1, 0x7f, static_cast<char>(0x80), static_cast<char>(0xff)};
  switch (random.Below(3)) {
    case 0:
      bytes[at] = random.Byte();
      break;
    case 1:
      bytes[at] = static_cast<char>(bytes[at] ^ (1 << random.Below(8)));
      break;
    default:
      bytes[at] = random.OneOf(kEdges);
  }
}

// Spoils up to `most` bytes from `begin` to before `end`.
inline void SpoilSome(std::string& bytes, std::size_t begin, std::size_t end, std::size_t most,
                      Random& random) {
  end = std::min(end, bytes.size());
  if (begin >= end) return;
  for (std::size_t left = 1 + random.Below(most); left > 0; --left) {
    Spoil(bytes, begin + random.Below(end - begin), random);
  }
}

}  // namespace hostile

#endif  // TESTS_HOSTILE_DAMAGE_H_
