// SPDX-License-Identifier: Apache-2.0
//
// The health of the database file, told in the log.
#ifndef TAV_DB_API_TAV_DB_CLIENT_HEALTH_H_
#define TAV_DB_API_TAV_DB_CLIENT_HEALTH_H_

// Whether the database file is usable: a regular file with content, sound by SQLite's own
// check, with both tables that the library reads. A file that its writer keeps busy counts as
// usable. Works on a connection of its own.
bool tavdb_check_is_valid();

#endif  // TAV_DB_API_TAV_DB_CLIENT_HEALTH_H_
