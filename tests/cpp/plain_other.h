// SPDX-License-Identifier: Apache-2.0
//
// The other source of the program without exceptions and run-time types.
#ifndef TESTS_CPP_PLAIN_OTHER_H_
#define TESTS_CPP_PLAIN_OTHER_H_

#include <tav_db_api.hpp>

tav::Result<tav::Watch> WatchElsewhere();
bool IsToldElsewhere();
// On behalf of the service.
bool SetInstalledApp(const char* id);

#endif  // TESTS_CPP_PLAIN_OTHER_H_
