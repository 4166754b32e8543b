// SPDX-License-Identifier: Apache-2.0
//
// What tavctl doctor looks at. Each examination adds what it finds, in the order in which a call
// of the library meets it.
#ifndef TOOLS_TAVCTL_DOCTOR_H_
#define TOOLS_TAVCTL_DOCTOR_H_

#include <string>
#include <vector>

enum class Health {
  kGood,
  kNote,     // worth knowing; at most the calls that it names fail
  kProblem,  // calls fail
};

struct Finding {
  Health health;
  const char* what;    // was looked at
  std::string text;    // what was found
  std::string advice;  // what to do, or empty
};

using Findings = std::vector<Finding>;

// Whether what the library needs of the platform's directories is there.
void ExamineDirectories(Findings& findings);

// The database file, in the words of the library's own checks and some more, and a read of all
// apps through the library.
void ExamineDatabase(Findings& findings);

// What makes the library refuse its work, or leave out a part of it.
void ExamineGuards(Findings& findings);

// The system bus, the service on it and its heartbeat; 10 s at most for each, as in the library.
void ExamineBus(Findings& findings);

// The settings that the service publishes.
void ExamineSettings(Findings& findings);

// The platform's path behind one of its numbers, or an empty text.
std::string PlatformDirectory(int number);
inline constexpr int kDatabaseDirectory = 24;

#endif  // TOOLS_TAVCTL_DOCTOR_H_
