// SPDX-License-Identifier: Apache-2.0
#include "support/writer.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <stdexcept>
#include <thread>

#include "support/database.h"

namespace test {
namespace {

[[noreturn]] void Hold(const std::filesystem::path& file, std::chrono::milliseconds time,
                       int ready) {
  try {
    Database database(file);
    database.Run("begin exclusive");
    if (write(ready, "x", 1) != 1) _exit(1);
    std::this_thread::sleep_for(time);  // not a wait for anything: this is what it does
    database.Run("rollback");
  } catch (const std::exception&) {
    _exit(1);
  }
  _exit(0);
}

}  // namespace

ExclusiveWriter::ExclusiveWriter(const std::filesystem::path& database,
                                 std::chrono::milliseconds time) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("pipe");
  m_process = fork();
  if (m_process == 0) {
    close(ends[0]);
    Hold(database, time, ends[1]);
  }
  close(ends[1]);
  char ready = 0;
  const bool is_ready = read(ends[0], &ready, 1) == 1;
  close(ends[0]);
  if (!is_ready) throw std::runtime_error("the writer could not lock the database");
}

ExclusiveWriter::~ExclusiveWriter() {
  kill(m_process, SIGKILL);
  waitpid(m_process, nullptr, 0);
}

}  // namespace test
