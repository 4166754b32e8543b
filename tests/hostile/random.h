// SPDX-License-Identifier: Apache-2.0
//
// Numbers that depend on nothing but their seed, so that a file can be made again.
#ifndef TESTS_HOSTILE_RANDOM_H_
#define TESTS_HOSTILE_RANDOM_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace hostile {

class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed) {}

  std::uint64_t Next() {
    m_state += 0x9e3779b97f4a7c15U;
    std::uint64_t number = m_state;
    number = (number ^ (number >> 30)) * 0xbf58476d1ce4e5b9U;
    number = (number ^ (number >> 27)) * 0x94d049bb133111ebU;
    return number ^ (number >> 31);
  }
  // A number from 0 to below limit, which is above 0.
  std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(Next() % limit); }
  char Byte() { return static_cast<char>(Next() & 0xff); }
  std::string Bytes(std::size_t count) {
    std::string bytes;
    while (bytes.size() < count) bytes += Byte();
    return bytes;
  }
  template <typename List>
  const auto& OneOf(const List& list) {
    return *(std::begin(list) + static_cast<std::ptrdiff_t>(Below(std::size(list))));
  }

 private:
  std::uint64_t m_state;
};

}  // namespace hostile

#endif  // TESTS_HOSTILE_RANDOM_H_
