// SPDX-License-Identifier: Apache-2.0
//
// Runs a target on every file of a directory: what stands in the place of the fuzzer wherever
// there is none.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <vector>

#include "support.h"

int main(int argc, char** argv) {
  if (argc != 2 || !std::filesystem::is_directory(argv[1])) {
    std::fprintf(stderr, "usage: %s <directory of inputs>\n", argv[0]);
    return 2;
  }
  const std::filesystem::directory_iterator begin(argv[1]);
  const std::set<std::filesystem::path> paths(begin, std::filesystem::directory_iterator());
  if (paths.empty()) {
    std::fprintf(stderr, "%s holds no inputs\n", argv[1]);
    return 1;
  }
  for (const auto& path : paths) {
    std::fprintf(stderr, "%s\n", path.filename().c_str());
    std::ifstream file(path, std::ios::binary);
    // A block of the input's very size: reading past its end is seen.
    const std::vector<uint8_t> input{std::istreambuf_iterator<char>(file),
                                     std::istreambuf_iterator<char>()};
    if (file.bad() || !file.is_open()) {
      std::fprintf(stderr, "%s cannot be read\n", path.c_str());
      return 1;
    }
    LLVMFuzzerTestOneInput(input.data(), input.size());
  }
  return 0;
}
