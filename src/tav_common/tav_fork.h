// SPDX-License-Identifier: Apache-2.0
//
// What a fork must not tear apart. A child has only the thread that forked: what another thread
// of the parent had locked or half done stays so in the child for ever.
#ifndef TAV_COMMON_TAV_FORK_H_
#define TAV_COMMON_TAV_FORK_H_

#include "tav_common/tav_mutex.h"

// Has every fork of the process wait until it can lock the mutex, for some seconds at the most.
// The child begins with the mutex unlocked and a call of in_child. There is one such mutex in a
// process: the one that is held during all work that a child could not go on with. False when
// the system has no memory for it: then forks are as they are without.
bool GuardForks(TavMutex& mutex, void (*in_child)()) noexcept;

// True in a child that was forked in the middle of a call, since waiting for it took too long,
// and in the children of such a child: what the call was using cannot be relied on.
bool IsForkedInACall();

#endif  // TAV_COMMON_TAV_FORK_H_
