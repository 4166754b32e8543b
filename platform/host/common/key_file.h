// SPDX-License-Identifier: Apache-2.0
// Key files of the device: read anew at each use, every failure said once in the log.
#ifndef TAV_HOST_KEY_FILE_H_
#define TAV_HOST_KEY_FILE_H_

#include <optional>
#include <string>

#include "handles.h"

namespace tav_host {

class KeyFile {
 public:
  // The file `name` under the device root. Lines go to the log under `tag`.
  KeyFile(const char* tag, const char* name);

  // False when the file could not be read; every lookup then fails.
  explicit operator bool() const { return m_file != nullptr; }

  bool HasGroup(const char* group) const;
  std::optional<std::string> Text(const char* group, const char* key) const;
  std::optional<int> Int(const char* group, const char* key) const;

 private:
  const char* m_tag;
  std::string m_path;
  KeyFilePtr m_file;
};

}  // namespace tav_host

#endif  // TAV_HOST_KEY_FILE_H_
