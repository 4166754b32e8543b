// SPDX-License-Identifier: Apache-2.0
//
// Tells a forked child whether a call of the library was running in its parent. Of the parent's
// threads a child has the one that forked: a lock that another thread held stays locked for ever.
#ifndef TAV_COMMON_TAV_FORK_H_
#define TAV_COMMON_TAV_FORK_H_

// Counts a call, from before it waits for a lock until after it has released it. Throws in a
// process that was forked while a call was counted, and in all that descend from it.
class TavRunningCall {
 public:
  TavRunningCall();
  ~TavRunningCall();
  TavRunningCall(const TavRunningCall&) = delete;
  TavRunningCall& operator=(const TavRunningCall&) = delete;
};

#endif  // TAV_COMMON_TAV_FORK_H_
