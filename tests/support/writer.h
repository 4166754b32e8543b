// SPDX-License-Identifier: Apache-2.0
//
// Another process that writes the database, as the service does.
#ifndef TESTS_SUPPORT_WRITER_H_
#define TESTS_SUPPORT_WRITER_H_

#include <sys/types.h>

#include <chrono>
#include <filesystem>

namespace test {

// Holds the database exclusively from its construction until the time has passed, or until it
// is destroyed.
class ExclusiveWriter {
 public:
  ExclusiveWriter(const std::filesystem::path& database, std::chrono::milliseconds time);
  ~ExclusiveWriter();
  ExclusiveWriter(const ExclusiveWriter&) = delete;
  ExclusiveWriter& operator=(const ExclusiveWriter&) = delete;

 private:
  pid_t m_process = -1;
};

}  // namespace test

#endif  // TESTS_SUPPORT_WRITER_H_
