// SPDX-License-Identifier: Apache-2.0
//
// The functions of libc for files that are cancellation points and that a read makes use of. They
// stand in the executable before the real ones, and cancel the running thread at a call of the
// test's choice.
#ifndef TESTS_SOAK_CANCEL_AT_CALL_H_
#define TESTS_SOAK_CANCEL_AT_CALL_H_

namespace test {

// Counts the calls of any thread from now on, and cancels the thread that makes the one with this
// number, the first being 1. 0 counts nothing and cancels nobody.
void CancelAtCall(int number);

// The calls since then.
int CallsMade();

}  // namespace test

#endif  // TESTS_SOAK_CANCEL_AT_CALL_H_
