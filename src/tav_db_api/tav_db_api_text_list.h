// SPDX-License-Identifier: Apache-2.0
//
// Lists that are kept as texts, for the library's own use.
#ifndef TAV_DB_API_TAV_DB_API_TEXT_LIST_H_
#define TAV_DB_API_TAV_DB_API_TEXT_LIST_H_

#include <map>
#include <string>

namespace throwing {

// As the exported function, but exceptions pass, and out has got all of the list or nothing: half
// a list would be taken for the whole one.
void ParseStringToList(const std::string& text, const std::string& item_separator,
                       const std::string& pair_separator, std::map<std::string, std::string>& out);

}  // namespace throwing

#endif  // TAV_DB_API_TAV_DB_API_TEXT_LIST_H_
