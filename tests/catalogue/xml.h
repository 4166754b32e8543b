// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the XML tests: a device with the directory of the file.
#ifndef TESTS_CATALOGUE_XML_H_
#define TESTS_CATALOGUE_XML_H_

#include "exports.h"

namespace test {

class AppsAsXml : public ::testing::Test {
 protected:
  AppsAsXml() { std::filesystem::create_directories(File().parent_path()); }

  std::filesystem::path File() const { return device.Root() / "data/tavcore/common/apps_info.xml"; }
  static Answer Write() { return Ask(tav_write_all_app_info_to_xml); }
  // What a call answers that has come as far as the path.
  Answer With(int result) const { return {result, File().string()}; }

  Device device;
  Log& log = device.GetLog();
};

}  // namespace test

#endif  // TESTS_CATALOGUE_XML_H_
