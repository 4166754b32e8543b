/* SPDX-License-Identifier: Apache-2.0 */
#ifndef LOCK_FROM_H_
#define LOCK_FROM_H_

/*
 * Locks every app that is for this age or an older one. Returns how many that are, or -1 after a
 * message on standard error.
 */
int lock_from(int age);

#endif
