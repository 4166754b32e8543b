// SPDX-License-Identifier: Apache-2.0
//
// The library's records as JSON objects: what every output but the readable record is made from.
#ifndef TOOLS_TAVCTL_RECORD_JSON_H_
#define TOOLS_TAVCTL_RECORD_JSON_H_

#include <json/value.h>

#include <string>
#include <vector>

#include "tav_db_api.hpp"

// Every field under its own name; texts are valid UTF-8.
Json::Value ToJson(const tav::AppInfo& info);
Json::Value ToJson(const tav::MultiScreenApp& app);

// The names of those fields, in the record's order.
std::vector<std::string> InfoFieldNames();
std::vector<std::string> MultiScreenFieldNames();

#endif  // TOOLS_TAVCTL_RECORD_JSON_H_
