// SPDX-License-Identifier: Apache-2.0
#include "ready_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "say.h"

namespace tavcore {

void ReadyFile::Create() {
  if (m_path.empty()) return;
  const int file = open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
  if (file >= 0) {
    close(file);
    m_is_ours = true;
  } else if (errno != EEXIST) {
    Say("warning: " + m_path + ": " + std::strerror(errno));
  }
}

ReadyFile::~ReadyFile() {
  if (m_is_ours) unlink(m_path.c_str());
}

}  // namespace tavcore
