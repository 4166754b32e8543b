// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the tests on hostile databases. A file is tried in a process of its own, since
// the library keeps one connection for the life of its process; the test itself never calls it.
#ifndef TESTS_HOSTILE_TRIAL_H_
#define TESTS_HOSTILE_TRIAL_H_

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "hostile/random.h"
#include "support/device.h"

namespace hostile {

// What became of all calls on one file.
struct Outcome {
  int answered = 0;
  std::vector<std::string> failed;  // the calls that did not succeed, or were not made
};

// No calls, where every one succeeds.
inline const std::vector<std::string> kNone;

class HostileDatabase : public ::testing::Test {
 protected:
  HostileDatabase();
  ~HostileDatabase() override;

  // How many files a test makes that makes them by chance: TAV_HOSTILE_FILES.
  int Files() const { return m_random_files; }
  // The numbers of one of them: they depend on TAV_HOSTILE_SEED, on the test and on the file.
  Random RandomOf(int number) const;

  // Puts these bytes into the file's place, and nothing beside it.
  void Place(const std::string& bytes);
  // Makes all calls on what lies there, in a new process. What breaks a rule, crashes or takes
  // too long fails the test, under the name of the file.
  Outcome Try(const std::string& name);
  // Whether to stop: five files have failed, or one hung, which takes long enough.
  bool IsEnough() const { return m_has_hung || m_failed >= 5; }

  test::Device device;
  const std::filesystem::path file = device.DatabaseFile();

 private:
  int m_random_files;
  std::uint64_t m_seed;
  int m_files = 0;
  int m_calls = 0;
  int m_failed = 0;
  bool m_has_hung = false;
  double m_slowest = 0;
  std::string m_slowest_call;
};

// A file beside the database: Beside(file, "-wal").
inline std::filesystem::path Beside(const std::filesystem::path& file, const char* suffix) {
  return file.string() + suffix;
}

std::string BytesOf(const std::filesystem::path& file);
void Write(const std::filesystem::path& file, const std::string& bytes);

}  // namespace hostile

#endif  // TESTS_HOSTILE_TRIAL_H_
