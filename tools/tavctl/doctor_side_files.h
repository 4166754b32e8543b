// SPDX-License-Identifier: Apache-2.0
//
// How tavctl doctor reads a database in write-ahead mode, whose readers leave side files behind.
#ifndef TOOLS_TAVCTL_DOCTOR_SIDE_FILES_H_
#define TOOLS_TAVCTL_DOCTOR_SIDE_FILES_H_

#include <string>

// Whether its log is there without the index, which every reader makes.
bool LacksLogIndex(const std::string& database);

// From now on this process, the library included, opens a database without making side files
// where a reader may make them: as one that does not change, if it is in write-ahead mode and has
// no log, and so is open nowhere else.
void MakeNoSideFiles();

#endif  // TOOLS_TAVCTL_DOCTOR_SIDE_FILES_H_
