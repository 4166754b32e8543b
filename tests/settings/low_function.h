// SPDX-License-Identifier: Apache-2.0
//
// A function whose address fits 32 bits, for the functions that carry a callback as an int.
#ifndef TESTS_SETTINGS_LOW_FUNCTION_H_
#define TESTS_SETTINGS_LOW_FUNCTION_H_

#include <sys/mman.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace test {

// Where addresses are no wider than an int, the target itself; elsewhere a page at the first free
// place from `from` on, whose code jumps to the target.
class LowFunction {
 public:
  template <typename Function>
  LowFunction(std::uintptr_t from, Function* target) {
    Make(from, reinterpret_cast<std::uintptr_t>(target));
  }
  LowFunction(const LowFunction&) = delete;
  LowFunction& operator=(const LowFunction&) = delete;
  ~LowFunction() {
    if (m_page != nullptr) munmap(m_page, kPageSize);
  }

  std::uintptr_t Address() const { return m_address; }
  int AsInt() const { return static_cast<int>(static_cast<std::uint32_t>(m_address)); }
  template <typename Function>
  Function* As() const {
    return reinterpret_cast<Function*>(m_address);
  }

 private:
  static constexpr std::size_t kPageSize = 65536;  // a multiple of every machine's

#if UINTPTR_MAX > UINT32_MAX
  void Make(std::uintptr_t from, std::uintptr_t target) {
#if defined(__x86_64__)
    const unsigned char load[] = {0x48, 0xb8};  // movabs rax, <the 8 bytes behind it>
    const unsigned char jump[] = {0xff, 0xe0};  // jmp rax
    unsigned char code[sizeof load + sizeof target + sizeof jump];
    std::memcpy(code, load, sizeof load);
    std::memcpy(code + sizeof load, &target, sizeof target);
    std::memcpy(code + sizeof load + sizeof target, jump, sizeof jump);
#elif defined(__aarch64__)
    const std::uint32_t jump[] = {0x58000050, 0xd61f0200};  // ldr x16, <8 bytes on>; br x16
    unsigned char code[sizeof jump + sizeof target];
    std::memcpy(code, jump, sizeof jump);
    std::memcpy(code + sizeof jump, &target, sizeof target);
#else
#error "how this machine jumps to an address"
#endif
    for (int attempt = 0; attempt < 64 && m_page == nullptr; ++attempt) {
      void* wanted = reinterpret_cast<void*>(from + static_cast<unsigned>(attempt) * kPageSize);
      void* page = mmap(wanted, kPageSize, PROT_READ | PROT_WRITE,
                        MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
      if (page == wanted) m_page = page;
      // A kernel that does not know the flag takes the place for a wish.
      if (page != wanted && page != MAP_FAILED) munmap(page, kPageSize);
    }
    if (m_page == nullptr) throw std::runtime_error("no free page at low addresses");
    std::memcpy(m_page, code, sizeof code);
    if (mprotect(m_page, kPageSize, PROT_READ | PROT_EXEC) != 0) {
      throw std::runtime_error("no code at low addresses");
    }
    auto* const begin = static_cast<char*>(m_page);
    __builtin___clear_cache(begin, begin + sizeof code);
    m_address = reinterpret_cast<std::uintptr_t>(m_page);
  }
#else
  void Make(std::uintptr_t /*from*/, std::uintptr_t target) {
    m_address = target;
  }
#endif

  void* m_page = nullptr;
  std::uintptr_t m_address = 0;
};

}  // namespace test

#endif  // TESTS_SETTINGS_LOW_FUNCTION_H_
