// SPDX-License-Identifier: Apache-2.0
//
// Lock requirements as clang's -Wthread-safety checks them; nothing for other compilers.
#ifndef TAV_COMMON_TAV_THREAD_ANNOTATIONS_H_
#define TAV_COMMON_TAV_THREAD_ANNOTATIONS_H_

#if defined(__clang__)
#define TAV_ANNOTATION(x) __attribute__((x))
#else
#define TAV_ANNOTATION(x)
#endif

#define CAPABILITY(name) TAV_ANNOTATION(capability(name))
#define SCOPED_CAPABILITY TAV_ANNOTATION(scoped_lockable)
#define GUARDED_BY(lock) TAV_ANNOTATION(guarded_by(lock))
#define REQUIRES(...) TAV_ANNOTATION(requires_capability(__VA_ARGS__))
#define ACQUIRE(...) TAV_ANNOTATION(acquire_capability(__VA_ARGS__))
#define TRY_ACQUIRE(...) TAV_ANNOTATION(try_acquire_capability(__VA_ARGS__))
#define RELEASE(...) TAV_ANNOTATION(release_capability(__VA_ARGS__))
#define TAV_NO_THREAD_SAFETY_ANALYSIS TAV_ANNOTATION(no_thread_safety_analysis)

#endif  // TAV_COMMON_TAV_THREAD_ANNOTATIONS_H_
