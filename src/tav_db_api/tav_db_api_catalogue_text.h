// SPDX-License-Identifier: Apache-2.0
//
// The texts that the catalogue of built-in apps is kept in, and how they are read.
#ifndef TAV_DB_API_TAV_DB_API_CATALOGUE_TEXT_H_
#define TAV_DB_API_TAV_DB_API_CATALOGUE_TEXT_H_

#include <map>
#include <string>
#include <vector>

#include "tav_db_api_inner.h"

// Appends the apps of a catalogue document, in its order. False, after a log, when it is no
// JSON or says that it is not ok; whatever else is wrong with it is passed over.
bool ParseCatalogue(const std::string& text, std::vector<_APPS_INNER_INFO_T>& apps);

// Adds the test apps of a list "id,version,type,tag;…"; the first of an id stays, and an entry
// with fewer fields is skipped.
void ParseTestApps(const std::string& text, std::map<std::string, _APPS_INNER_INFO_T>& apps);

#endif  // TAV_DB_API_TAV_DB_API_CATALOGUE_TEXT_H_
