// SPDX-License-Identifier: Apache-2.0
#include "hostile/trial.h"

#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iterator>
#include <memory>
#include <new>

#include "hostile/calls.h"

namespace hostile {
namespace {

using Seconds = std::chrono::duration<double>;

// The limits of one call and of all calls on a file. Nothing comes near them but what hangs.
constexpr double kCallSeconds = 5;
constexpr unsigned kFileSeconds = 40;

constexpr std::size_t kMostCalls = 64;

// What a process tells of its calls, in memory that outlives it.
struct Report {
  char call[64];  // the one under way
  int calls;
  bool is_answered[kMostCalls];
  double slowest;
  char slowest_call[64];
  char complaint[256];
};

struct Unmap {
  void operator()(Report* report) const { munmap(report, sizeof(Report)); }
};

std::unique_ptr<Report, Unmap> MakeReport() {
  void* memory =
      mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) throw std::bad_alloc();
  return std::unique_ptr<Report, Unmap>(new (memory) Report{});
}

template <std::size_t kSize>
void Tell(char (&place)[kSize], const std::string& text) {
  std::snprintf(place, kSize, "%s", text.c_str());
}

void MakeCall(const Call& call, Report& report) {
  Tell(report.call, call.name);
  const auto start = std::chrono::steady_clock::now();
  try {
    report.is_answered[report.calls] = call.make();
  } catch (const std::exception& error) {
    Tell(report.complaint, error.what());
  }
  ++report.calls;
  const Seconds elapsed = std::chrono::steady_clock::now() - start;
  if (elapsed.count() > kCallSeconds) Tell(report.complaint, "too slow");
  if (elapsed.count() <= report.slowest) return;
  report.slowest = elapsed.count();
  Tell(report.slowest_call, call.name);
}

[[noreturn]] void MakeCalls(Report& report) {
  if (Calls().size() > kMostCalls) _exit(1);
  alarm(kFileSeconds);
  for (const Call& call : Calls()) {
    MakeCall(call, report);
    if (report.complaint[0] != '\0') break;
  }
  _exit(0);
}

bool HasHung(int status) {
  return WIFSIGNALED(status) && WTERMSIG(status) == SIGALRM;
}

// What went wrong; empty when nothing did.
std::string Complaint(const Report& report, int status) {
  std::string what = report.complaint;
  if (WIFSIGNALED(status)) {
    what = HasHung(status) ? "hangs" : "signal " + std::to_string(WTERMSIG(status));
  } else if (WEXITSTATUS(status) != 0) {
    what = "exit status " + std::to_string(WEXITSTATUS(status));
  }
  return what.empty() ? what : std::string(report.call) + ": " + what;
}

long FromEnvironment(const char* name, long otherwise) {
  const char* value = std::getenv(name);
  return value != nullptr ? std::strtol(value, nullptr, 10) : otherwise;
}

std::uint64_t Hash(const std::string& text) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
  return hash;
}

std::string NameOfTest() {
  return ::testing::UnitTest::GetInstance()->current_test_info()->name();
}

}  // namespace

HostileDatabase::HostileDatabase()
    : m_random_files(static_cast<int>(FromEnvironment("TAV_HOSTILE_FILES", 100))),
      m_seed(static_cast<std::uint64_t>(FromEnvironment("TAV_HOSTILE_SEED", 1))) {
  std::filesystem::create_directories(device.Root() / "data/tavcore/common");
}

HostileDatabase::~HostileDatabase() {
  std::printf("hostile: %d files, %d calls, slowest %.0f ms (%s)\n", m_files, m_calls,
              m_slowest * 1000, m_slowest_call.c_str());
}

Random HostileDatabase::RandomOf(int number) const {
  return Random(Hash(NameOfTest()) + m_seed * 1000003 + static_cast<std::uint64_t>(number));
}

void HostileDatabase::Place(const std::string& bytes) {
  for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
    std::filesystem::remove_all(Beside(file, suffix));
  }
  Write(file, bytes);
}

Outcome HostileDatabase::Try(const std::string& name) {
  const auto report = MakeReport();
  const pid_t process = fork();
  if (process == 0) MakeCalls(*report);
  int status = -1;
  waitpid(process, &status, 0);
  ++m_files;
  m_calls += report->calls;
  if (report->slowest > m_slowest) {
    m_slowest = report->slowest;
    m_slowest_call = report->slowest_call;
  }
  const std::string complaint = Complaint(*report, status);
  if (!complaint.empty()) {
    ++m_failed;
    m_has_hung = m_has_hung || HasHung(status);
    ADD_FAILURE() << "file \"" << name << "\", TAV_HOSTILE_SEED=" << m_seed << ": " << complaint;
  }
  Outcome outcome;
  for (std::size_t i = 0; i < Calls().size(); ++i) {
    if (report->is_answered[i]) {
      ++outcome.answered;
    } else {
      outcome.failed.emplace_back(Calls()[i].name);
    }
  }
  return outcome;
}

std::string BytesOf(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

void Write(const std::filesystem::path& file, const std::string& bytes) {
  std::ofstream(file, std::ios::binary | std::ios::trunc) << bytes;
}

}  // namespace hostile
