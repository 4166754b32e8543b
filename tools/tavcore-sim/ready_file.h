// SPDX-License-Identifier: Apache-2.0
//
// The file by which the service says that it is ready.
#ifndef TOOLS_TAVCORE_SIM_READY_FILE_H_
#define TOOLS_TAVCORE_SIM_READY_FILE_H_

#include <string>

namespace tavcore {

class ReadyFile {
 public:
  // With an empty path there is no file.
  explicit ReadyFile(std::string path) : m_path(std::move(path)) {}
  ~ReadyFile();  // removes what it created
  ReadyFile(const ReadyFile&) = delete;
  ReadyFile& operator=(const ReadyFile&) = delete;

  // A file that is there already stays somebody else's; one that cannot be created is a warning.
  void Create();

 private:
  std::string m_path;
  bool m_is_ours = false;
};

}  // namespace tavcore

#endif  // TOOLS_TAVCORE_SIM_READY_FILE_H_
