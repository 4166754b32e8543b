// SPDX-License-Identifier: Apache-2.0
//
// The packages that are not offered, for the library's own use.
#ifndef TAV_DB_API_TAV_DB_API_BLACKLIST_H_
#define TAV_DB_API_TAV_DB_API_BLACKLIST_H_

#include <map>
#include <string>

namespace throwing {

// As the exported function, but exceptions pass: without the list, nothing would be left out.
std::map<std::string, std::string> GetUnsupportedPkgList();

}  // namespace throwing

#endif  // TAV_DB_API_TAV_DB_API_BLACKLIST_H_
