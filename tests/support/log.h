// SPDX-License-Identifier: Apache-2.0
//
// The platform log of the running test, read back from the file it was written to.
#ifndef TESTS_SUPPORT_LOG_H_
#define TESTS_SUPPORT_LOG_H_

#include <filesystem>
#include <string>
#include <vector>

namespace test {

struct LogLine {
  char priority = '?';  // I, W or E
  std::string tag;
  std::string file;
  std::string function;
  std::string colour;  // the code before the message, "\033[0;32m" and its like
  std::string message;
};

class Log {
 public:
  explicit Log(std::filesystem::path file) : m_file(std::move(file)) {}

  // Every line of the library since the test began, or since Forget. Throws at a line under the
  // library's tag that has another shape than all of them have: it would go unnoticed otherwise.
  std::vector<LogLine> Lines() const;
  // Their messages, and the messages of one priority.
  std::vector<std::string> Messages() const;
  std::vector<std::string> Messages(char priority) const;
  // Whether this very message was written, and how often.
  int Count(const std::string& message) const;
  bool Has(const std::string& message) const { return Count(message) > 0; }
  // Whether it was written with the priority and the colour that belong to it.
  bool HasError(const std::string& message) const;
  bool HasNotice(const std::string& message) const;

  void Forget();

 private:
  std::filesystem::path m_file;
};

}  // namespace test

#endif  // TESTS_SUPPORT_LOG_H_
