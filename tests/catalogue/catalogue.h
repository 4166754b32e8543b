// SPDX-License-Identifier: Apache-2.0
//
// The fixture of the catalogue tests: a device whose built-in apps, test apps, packages and
// grade are told in a few words.
#ifndef TESTS_CATALOGUE_CATALOGUE_H_
#define TESTS_CATALOGUE_CATALOGUE_H_

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include "inner_members.h"
#include "support/device.h"

namespace test {

// All that the catalogue tells of an app.
struct BuiltIn {
  std::string id;
  std::string tizen_id;
  std::string package;
  std::string title;
  std::string version;
  std::string icon;
  std::string tag;
  std::string type;

  auto Tied() const { return std::tie(id, tizen_id, package, title, version, icon, tag, type); }
  bool operator==(const BuiltIn& other) const { return Tied() == other.Tied(); }
};

inline std::ostream& operator<<(std::ostream& out, const BuiltIn& app) {
  return out << app.id << '|' << app.tizen_id << '|' << app.package << '|' << app.title << '|'
             << app.version << '|' << app.icon << '|' << app.tag << '|' << app.type;
}

using BuiltIns = std::vector<BuiltIn>;
using Ids = std::vector<std::string>;
using InnerApps = std::vector<_APPS_INNER_INFO_T>;

// An app of the document: the texts "<id> tizen", "<id> title" and the package "<id>".
inline BuiltIn Plain(const std::string& id) {
  return {id, id + " tizen", id, id + " title", "", "", "", ""};
}

inline _APPS_INNER_INFO_T InnerApp(const std::string& id, const std::string& package) {
  _APPS_INNER_INFO_T app;
  app.strAppID = id;
  app.strPackageName = package;
  return app;
}

// What the catalogue has filled; every other member must be as it was at first.
inline BuiltIn FromRecord(const _APPS_INNER_INFO_T& app) {
  _APPS_INNER_INFO_T expected;
  expected.strAppID = app.strAppID;
  expected.strTizenID = app.strTizenID;
  expected.strPackageName = app.strPackageName;
  expected.strTitle = app.strTitle;
  expected.strVersion = app.strVersion;
  expected.strIconPath = app.strIconPath;
  expected.strTargetGroupTag = app.strTargetGroupTag;
  expected.strTargetGroupType = app.strTargetGroupType;
  EXPECT_EQ(MembersOf(app), MembersOf(expected));
  return {app.strAppID,   app.strTizenID,  app.strPackageName,    app.strTitle,
          app.strVersion, app.strIconPath, app.strTargetGroupTag, app.strTargetGroupType};
}

inline Ids IdsOf(const InnerApps& apps) {
  Ids ids;
  for (const auto& app : apps) ids.push_back(app.strAppID);
  return ids;
}

class BuiltInApps : public ::testing::Test {
 protected:
  void Catalogue(const BuiltIns& apps) {
    std::string entries;
    for (const BuiltIn& app : apps) {
      entries += (entries.empty() ? "" : ",") + std::string(R"({"id":")") + app.id +
                 R"(","tizenId":")" + app.tizen_id + R"(","packageId":")" + app.package +
                 R"(","title":")" + app.title + R"("})";
    }
    Document(R"({"rsp":{"stat":"ok","apps":[)" + entries + "]}}");
  }
  void Catalogue(const Ids& ids) {
    BuiltIns apps;
    for (const std::string& id : ids) apps.push_back(Plain(id));
    Catalogue(apps);
  }
  void Document(const std::string& text) { device.Configure("RESERVED_15", text); }
  void TestApps(const std::string& text) { device.Configure("RESERVED_16", text); }
  void Packages(const std::string& text) { device.Write("packages.ini", text); }
  // The packages that a device of the entry grade with a small flash leaves out.
  void Blacklist(const std::string& lines) {
    device.Write("system-info.ini", "[value]\n701=1\n");
    device.Write("etc/tavcore/built_in_app/entry_smart_blacklist.txt", lines);
  }

  static BuiltIns Listed(bool test_only = false) {
    InnerApps list;
    EXPECT_EQ(GetBuiltInAppList(list, test_only), 0);
    BuiltIns apps;
    for (const auto& app : list) apps.push_back(FromRecord(app));
    return apps;
  }
  static Ids ListedIds(bool test_only = false) {
    InnerApps list;
    EXPECT_EQ(GetBuiltInAppList(list, test_only), 0);
    return IdsOf(list);
  }

  Device device;
  Log& log = device.GetLog();
};

}  // namespace test

#endif  // TESTS_CATALOGUE_CATALOGUE_H_
