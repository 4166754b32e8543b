// SPDX-License-Identifier: Apache-2.0
//
// What becomes of a file that the library writes: an executable that links this has fflush, fsync
// and fclose before the C library's, and the log's function before the platform's.
#ifndef TESTS_CATALOGUE_FILE_CALLS_H_
#define TESTS_CATALOGUE_FILE_CALLS_H_

#include <filesystem>
#include <functional>
#include <map>
#include <string>

namespace test {

// Hears the calls for one file while it lives, and passes them on.
class FileCalls {
 public:
  explicit FileCalls(std::filesystem::path file);
  ~FileCalls();
  FileCalls(const FileCalls&) = delete;
  FileCalls& operator=(const FileCalls&) = delete;

  // From now on a function does its work, and then answers with this error.
  void Fail(const std::string& function, int error) { m_errors[function] = error; }
  // What is to happen before such a call with the file's descriptor, and before the log gets the
  // line "Finish", which has none (-1).
  std::function<void(const std::string& function, int descriptor)> before;

  bool Concern(int descriptor) const;
  int ErrorOf(const std::string& function) const;

 private:
  std::filesystem::path m_file;
  std::map<std::string, int> m_errors;
};

}  // namespace test

#endif  // TESTS_CATALOGUE_FILE_CALLS_H_
