// SPDX-License-Identifier: Apache-2.0
//
// Damage that a count does not notice.
#ifndef TESTS_SUPPORT_UNREADABLE_ROW_H_
#define TESTS_SUPPORT_UNREADABLE_ROW_H_

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "support/device.h"

namespace test {

// Spoils the page on which an app's row lies. The lists count by an index, which stays whole, and
// which gives the rows in the order of the ids to the lists that ask for none. To be done before
// the library reads: it would have the page already.
inline void MakeUnreadable(Device& device, const std::string& id) {
  constexpr std::size_t kPageSize = 4096;
  constexpr char kLeaf = 13;  // the first byte of a page with rows
  const std::string mark = "the row of " + id;
  // Rows that fill more than half a page have one each.
  device.Sql(
      "update widgetinfo set tavorder = 'the row of ' || id || printf('%2500s', '');"
      "create index counted on widgetinfo (is_app_available, install_state, is_need_reset, "
      "id, is_hidden, app_featured, app_type, use_count, is_ticker, is_usb_app);"
      "vacuum");
  std::fstream file(device.DatabaseFile(), std::ios::in | std::ios::out | std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const std::size_t page = bytes.find(mark) / kPageSize * kPageSize;
  if (page >= bytes.size() || bytes[page] != kLeaf) throw std::runtime_error("no page: " + mark);
  file.seekp(static_cast<std::streamoff>(page)).put('\xff');
}

}  // namespace test

#endif  // TESTS_SUPPORT_UNREADABLE_ROW_H_
