// SPDX-License-Identifier: Apache-2.0
#include "tav_common/tav_fork.h"

#include "tav_common/tav_log.h"

namespace {

// Longer than a read waits for a busy database, shorter than a request may wait for the bus: a
// host must get its child.
constexpr int kPatienceSeconds = 5;

TavMutex* g_pMutex = nullptr;
void (*g_pfnInChild)() = nullptr;
bool g_bIsForkedInACall = false;

// How the fork that is under way on this thread found the mutex.
enum class Found { kFree, kMine, kOfAnother };
thread_local Found g_eFound = Found::kFree;

// Locks that one function takes and another releases are beyond the analysis.
void BeforeFork() TAV_NO_THREAD_SAFETY_ANALYSIS {
  // Something that a call of this very thread uses may fork, as the platform may to start a
  // program: there is nobody to wait for.
  if (g_pMutex->IsMine()) {
    g_eFound = Found::kMine;
  } else if (g_pMutex->LockWithin(kPatienceSeconds)) {
    g_eFound = Found::kFree;
  } else {
    g_eFound = Found::kOfAnother;
    TAV_LOGW("forked in the middle of a call: the child cannot use the library");
  }
}

void InParent() TAV_NO_THREAD_SAFETY_ANALYSIS {
  if (g_eFound == Found::kFree) g_pMutex->Unlock();
}

void InChild() TAV_NO_THREAD_SAFETY_ANALYSIS {
  if (g_eFound != Found::kFree) g_bIsForkedInACall = true;
  g_pfnInChild();
  if (g_eFound == Found::kFree) g_pMutex->Unlock();
  if (g_eFound == Found::kOfAnother) g_pMutex->Renew();
}

}  // namespace

bool GuardForks(TavMutex& mutex, void (*in_child)()) noexcept {
  g_pMutex = &mutex;
  g_pfnInChild = in_child;
  return pthread_atfork(BeforeFork, InParent, InChild) == 0;
}

bool IsForkedInACall() {
  return g_bIsForkedInACall;
}
