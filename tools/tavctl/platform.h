// SPDX-License-Identifier: Apache-2.0
//
// Which platform this program was built for.
#ifndef TOOLS_TAVCTL_PLATFORM_H_
#define TOOLS_TAVCTL_PLATFORM_H_

// Whether the settings are the host platform's, which nothing but programs under test read.
extern const bool kIsOnPc;

#endif  // TOOLS_TAVCTL_PLATFORM_H_
