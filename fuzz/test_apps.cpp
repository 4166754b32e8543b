// SPDX-License-Identifier: Apache-2.0
//
// The list of test apps. The input is its text.
#include <map>
#include <sstream>
#include <vector>

#include "support.h"
#include "tav_db_api/tav_db_api_catalogue_text.h"

namespace {

using Apps = std::map<std::string, _APPS_INNER_INFO_T>;

bool AreEqual(const Apps& one, const Apps& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](const auto& left, const auto& right) {
                      return left.first == right.first && fuzz::AreEqual(left.second, right.second);
                    });
}

std::vector<std::string> Cut(const std::string& text, char separator) {
  std::istringstream stream(text);
  std::vector<std::string> parts;
  for (std::string part; std::getline(stream, part, separator);) parts.push_back(part);
  return parts;
}

Apps Expected(const std::string& text) {
  Apps apps;
  for (const std::string& entry : Cut(text, ';')) {
    const std::vector<std::string> fields = Cut(entry + ',', ',');
    if (fields.size() < 4) continue;
    _APPS_INNER_INFO_T app;
    app.strAppID = fields[0];
    app.strVersion = fields[1];
    app.strTargetGroupType = fields[2];
    app.strTargetGroupTag = fields[3];
    apps.emplace(fields[0], app);
  }
  return apps;
}

}  // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  const std::string text(fuzz::TextOf(data, size));
  const Apps expected = Expected(text);
  Apps apps;
  ParseTestApps(text, apps);
  fuzz::Check(AreEqual(apps, expected), "the apps are the first entries of four fields of each id");
  ParseTestApps(text, apps);
  fuzz::Check(AreEqual(apps, expected), "reading a list again changes nothing");

  if (expected.empty()) return 0;
  const std::string& id = expected.begin()->first;
  Apps others = expected;
  others[id].strTitle = "before";
  Apps added = {{id, others[id]}};
  ParseTestApps(text, added);
  fuzz::Check(AreEqual(added, others), "an app that was there before stays");
  return 0;
}
