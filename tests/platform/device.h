// SPDX-License-Identifier: Apache-2.0
// A fixture: an empty device in a directory of its own, and an empty log.
#ifndef TAV_TESTS_PLATFORM_DEVICE_H_
#define TAV_TESTS_PLATFORM_DEVICE_H_

#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "log_capture.h"

struct FreeText {
  void operator()(char* text) const { free(text); }
};
using Text = std::unique_ptr<char, FreeText>;

class Device : public testing::Test {
 protected:
  Device() {
    std::string name = testing::TempDir() + "tav-platform-XXXXXX";
    EXPECT_NE(mkdtemp(name.data()), nullptr);
    m_root = name;
    setenv("TAV_DEVICE_ROOT", name.c_str(), 1);
    TakeLog();
  }

  ~Device() override { std::filesystem::remove_all(m_root); }

  const std::filesystem::path& Root() const { return m_root; }

  void WriteFile(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((m_root / name).parent_path());
    std::ofstream(m_root / name, std::ios::binary) << content;
  }

  std::string FileText(const std::string& name) const {
    std::ifstream file(m_root / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

 private:
  std::filesystem::path m_root;
};

#endif  // TAV_TESTS_PLATFORM_DEVICE_H_
