// SPDX-License-Identifier: Apache-2.0
//
// tavctl doctor: each thing that can keep a call from its work, provoked on a device of the
// test's own. /run/tav_ready and its like are looked for under the device root.
#include <gmock/gmock.h>

#include "tavctl_doctor_test.h"

namespace test {
namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;

TEST_F(TavctlDoctor, FindsNothingWrongWithASandboxAndSaysWhatItSaw) {
  const Result result = InSandbox(
      "mkdir -p \"$TAV_DEVICE_ROOT/run\"; : >\"$TAV_DEVICE_ROOT/run/tav_ready\"; $T doctor | sed "
      "\"s|$TAV_DEVICE_ROOT|DEVICE|; s|, [0-9]* bytes|, N bytes|; s|unix:.*|ADDRESS|; "
      "s|[0-9]* ms|N ms|\"");
  EXPECT_EQ(result, (Result{0,
                            "ok  database directory: DEVICE/dbspace\n"
                            "ok  data directory: DEVICE/data/tavcore/common\n"
                            "ok  configuration directory: DEVICE/etc\n"
                            "ok  factory reset: none is under way\n"
                            "ok  package recovery: none is under way\n"
                            "ok  service marker: /run/tav_ready\n"
                            "ok  database file: DEVICE/dbspace/.tavcore.db, N bytes\n"
                            "ok  database content: sound\n"
                            "ok  database tables: 2 apps, 1 hidden\n"
                            "ok  read of all apps: 2 records\n"
                            "ok  system bus: ADDRESS\n"
                            "ok  service: org.tizen.tv.tavcore.server\n"
                            "ok  heartbeat: answered within N ms\n"
                            "ok  settings: all that the service publishes are set\n"
                            "No problem was found.\n",
                            ""}));
}

TEST_F(TavctlDoctor, EndsWithStatus0WhenThereAreNotesAlone) {
  const Result result = InSandbox("$T doctor");
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out, HasSubstr("\nnote  service marker: /run/tav_ready does not exist: the "
                                    "service is not asked which built-in apps it is removing\n"));
  EXPECT_THAT(result.out, HasSubstr("\nNo problem was found.\n"));
}

TEST_F(TavctlDoctor, CountsItsFindingsAsJson) {
  const Result result =
      InSandbox("$T set-setting db/tav/factory_reset 2; $T doctor --json; echo \"status $?\"");
  EXPECT_THAT(result.out, HasSubstr("    {\n"
                                    "      \"health\" : \"problem\",\n"
                                    "      \"text\" : \"db/tav/factory_reset is 2: calls are "
                                    "refused until the reset is over\",\n"
                                    "      \"what\" : \"factory reset\"\n"
                                    "    }"));
  EXPECT_THAT(result.out, HasSubstr("{\n"
                                    "      \"advice\" : \"run with DLOG_LEVEL=W to see why\",\n"
                                    "      \"health\" : \"problem\",\n"
                                    "      \"text\" : \"tav_get_all_app_list answers -1\",\n"
                                    "      \"what\" : \"read of all apps\"\n"
                                    "    }"));
  EXPECT_THAT(result.out, HasSubstr("\n  ],\n  \"problems\" : 2\n}\nstatus 1\n"));
}

TEST_F(TavctlDoctor, TellsOfADeviceRootThatIsNotThere) {
  const Result result = Doctor("TAV_DEVICE_ROOT=/nowhere");
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(
      result.out,
      HasSubstr("PROBLEM  database directory: /nowhere/dbspace: No such file or directory\n"
                "         -> make a device with tav-sandbox --create DIR and set "
                "TAV_DEVICE_ROOT to DIR, or run the program in tav-sandbox\n"
                "note     data directory: /nowhere/data/tavcore/common: No such file or directory; "
                "no XML file can be written\n"
                "note     configuration directory: /nowhere/etc: No such file or "
                "directory; no built-in app is left out for a small device\n"));
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  database file: /nowhere/dbspace/.tavcore.db: No such "
                                    "file or directory\n"));
}

TEST_F(TavctlDoctor, TellsOfADirectoryThatIsAFileOrBehindALink) {
  const std::filesystem::path common = Device() / "data" / "tavcore" / "common";
  std::filesystem::remove_all(common);
  WriteBelowDevice("data/tavcore/common", "");
  Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("note     data directory: " + common.string() +
                                    " is not a directory; no XML file can be written\n"));
  std::filesystem::remove(common);
  std::filesystem::create_directory_symlink(Directory(), common);
  result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("note     data directory: " + common.string() +
                                    " is behind a link; no XML file can be written\n"));
}

TEST_F(TavctlDoctor, TellsOfADataDirectoryThatThisUserMayNotWrite) {
  const Result result = AsAnybody("chmod a-w device/data/tavcore/common");
  EXPECT_THAT(result.out, HasSubstr("/data/tavcore/common: Permission denied; no XML file can be "
                                    "written\n"));
}

TEST_F(TavctlDoctor, TellsOfAPackageRecovery) {
  WriteBelowDevice("opt/dbspace/pkgreinstall", "");
  const Result result = Doctor();
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  package recovery: /opt/dbspace/pkgreinstall exists: "
                                    "calls are refused until the packages are recovered\n"));
  EXPECT_THAT(result.out,
              HasSubstr("PROBLEM  read of all apps: tav_get_all_app_list answers -1\n"));
}

TEST_F(TavctlDoctor, TakesAFactoryResetSettingThatCannotBeReadForNone) {
  Tavctl({"set-setting", "db/tav/factory_reset", "--type", "string", "1"});
  const Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("note     factory reset: db/tav/factory_reset cannot be read; "
                                    "that counts as none\n"));
  EXPECT_THAT(result.out, HasSubstr("ok       read of all apps: 2 records\n"));
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  settings: db/tav/factory_reset holds a string, not "
                                    "an int: its getter fails\n"));
}

TEST_F(TavctlDoctor, TellsOfADatabaseFileThatIsEmptyOrNoFile) {
  std::filesystem::resize_file(DatabaseFile(), 0);
  EXPECT_THAT(Doctor().out, HasSubstr(" is empty\n         -> make a new device with tav-sandbox "
                                      "--create DIR\n"));
  std::filesystem::remove(DatabaseFile());
  std::filesystem::create_directory(DatabaseFile());
  EXPECT_THAT(Doctor().out, HasSubstr("/.tavcore.db is not a file\n"));
}

TEST_F(TavctlDoctor, TellsOfADatabaseThatThisUserMayNotRead) {
  const Result result = AsAnybody("chmod 0 device/dbspace/.tavcore.db");
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out,
              HasSubstr("/.tavcore.db may not be read by this user\n         -> run the "
                        "program as a user or with a group that may\n"));
}

TEST_F(TavctlDoctor, TellsOfAWriteAheadLogWithoutItsSideFilesWhereThisUserMayNotMakeThem) {
  Execute(DatabaseFile(), "pragma journal_mode = wal; delete from widgetinfo where id = 'clock';");
  const Result result = AsAnybody("chmod a-w device/dbspace");
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out,
              HasSubstr("PROBLEM  database content: attempt to write a readonly database\n"
                        "         -> a writer left its journal behind, or a write-ahead log has no "
                        "side files: have the service, or somebody who may write there, open the "
                        "database once\n"));
}

TEST_F(TavctlDoctor, TellsOfSideFilesThatThisUserMayNotRead) {
  Execute(DatabaseFile(), "pragma journal_mode = wal;");
  const ExclusiveTransaction writer(DatabaseFile());
  const Result result = AsAnybody("chmod 0 device/dbspace/.tavcore.db-*");
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  database content: unable to open database file\n"
                                    "         -> the side files of the write-ahead log must be "
                                    "readable as the database is\n"));
}

TEST_F(TavctlDoctor, TellsOfAFileThatIsNoDatabase) {
  Write("device/dbspace/.tavcore.db", std::string(4096, 'x'));
  EXPECT_THAT(Doctor().out, HasSubstr("PROBLEM  database content: file is not a database\n"));
}

TEST_F(TavctlDoctor, ShowsTheFirstOfTheDamagesThatSqliteFinds) {
  Execute(DatabaseFile(),
          "create table more (n integer); create index of_more on more (n); "
          "insert into more values (1), (2), (3), (4), (5); "
          "pragma writable_schema = on; "
          "update sqlite_master set rootpage = (select rootpage from sqlite_master "
          "where name = 'widgetinfo') where name = 'of_more';");
  const Result result = Doctor();
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  database content: "));
  EXPECT_THAT(result.out, Not(HasSubstr("database content: sound")));
}

TEST_F(TavctlDoctor, TellsWhichTablesAndColumnsAreMissing) {
  Execute(DatabaseFile(),
          "alter table widgetinfo drop column title; "
          "alter table widgetinfo drop column rating;");
  EXPECT_THAT(Doctor().out,
              HasSubstr("PROBLEM  database tables: widgetinfo lacks the columns title, rating\n"));
  Execute(DatabaseFile(), "drop table widgetinfo; drop table TAVConfigTable;");
  EXPECT_THAT(Doctor().out,
              HasSubstr("PROBLEM  database tables: there is no table widgetinfo\n"
                        "         -> make a new device with tav-sandbox --create DIR\n"
                        "PROBLEM  database tables: there is no table TAVConfigTable\n"));
}

TEST_F(TavctlDoctor, TellsOfAConfigurationWithoutNames) {
  Execute(DatabaseFile(), "drop table TAVConfigTable; create table TAVConfigTable (value text);");
  EXPECT_THAT(Doctor().out,
              HasSubstr("PROBLEM  database tables: no column name or value in TAVConfigTable\n"));
}

TEST_F(TavctlDoctor, NotesThatNoAppIsVisible) {
  Execute(DatabaseFile(), "update widgetinfo set is_app_available = 0;");
  const Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("ok       database tables: 2 apps, 1 hidden\n"));
  EXPECT_THAT(result.out, HasSubstr("note     read of all apps: 0 records\n"));
}

TEST_F(TavctlDoctor, NotesThatNoAppIsInstalled) {
  Execute(DatabaseFile(), "delete from widgetinfo;");
  const Result result = Doctor();
  EXPECT_THAT(result.out, HasSubstr("note     database tables: 0 apps, 0 hidden\n"));
  EXPECT_THAT(result.out, HasSubstr("note     read of all apps: 0 records\n"));
}

TEST_F(TavctlDoctor, TellsOfAWriterThatKeepsTheDatabase) {
  const ExclusiveTransaction writer(DatabaseFile());
  const Result result = Doctor();
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out,
              HasSubstr("PROBLEM  database content: another process has kept the database for more "
                        "than a second\n         -> wait until its writer is done; until then "
                        "calls answer -2\n"));
  EXPECT_THAT(result.out,
              HasSubstr("PROBLEM  read of all apps: tav_get_all_app_list answers -2\n"));
}

TEST_F(TavctlDoctor, TellsOfABusThatIsNotThere) {
  const Result result = Doctor();
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out,
              MatchesRegex("(.|\n)*PROBLEM  system bus: unix:path=/nowhere/bus: Could not connect: "
                           "No such file or directory\n"
                           "         -> run the program in tav-sandbox, which brings a bus, or set "
                           "DBUS_SYSTEM_BUS_ADDRESS\n(.|\n)*\n1 problem was found.\n"));
  EXPECT_THAT(result.out, Not(HasSubstr("heartbeat")));
}

TEST_F(TavctlDoctor, TellsOfABusThatNeverGreets) {
  const Result result = Shell(
      "exec 3<>/dev/null; cd \"$1\"; perl -MIO::Socket::UNIX -e '$s = IO::Socket::UNIX->new(Local "
      "=> \"bus\", Listen => 1); print \"ready\\n\"; STDOUT->flush; $c = $s->accept; sleep 60' "
      ">ready & until [ -s ready ]; do sleep 0.05; done; "
      "DBUS_SYSTEM_BUS_ADDRESS=unix:path=\"$1/bus\" tavctl_with_markers doctor; status=$?; kill $!; exit $status",
      {Directory()});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("/bus: no answer within 10 s\n"));
}

TEST_F(TavctlDoctor, TellsOfABusAddressThatIsNone) {
  EXPECT_THAT(Doctor("DBUS_SYSTEM_BUS_ADDRESS=nonsense").out,
              HasSubstr("PROBLEM  system bus: nonsense: "));
}

TEST_F(TavctlDoctor, TellsOfAServiceThatEndsWhenItIsAskedAndIsNotThereAfterwards) {
  const Result result =
      InSandbox("$T doctor; $T doctor", {"--service-option=--fault=heartbeat=exit"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  heartbeat: Message recipient disconnected from "
                                    "message bus without replying\n"));
  EXPECT_THAT(result.out,
              HasSubstr("PROBLEM  service: nobody on the bus has the name "
                        "org.tizen.tv.tavcore.server: every request fails\n"
                        "         -> run the program in tav-sandbox, or start tavcore-sim\n"));
}

TEST_F(TavctlDoctor, NotesAHeartbeatThatIsAnsweredWithAnErrorSinceRequestsGoOn) {
  const Result result = InSandbox("$T doctor && $T lock clock",
                                  {"--service-option=--fault=heartbeat=error:a.b.Broken"});
  EXPECT_EQ(result.status, 0) << result;
  EXPECT_THAT(result.out,
              HasSubstr("note  heartbeat: answered with an error, after which requests go on: "));
}

TEST_F(TavctlDoctor, TellsOfABusThatDoesNotLetItAskTheService) {
  const Result result = InSandbox(
      "$T doctor",
      {"--service-option=--fault=heartbeat=error:org.freedesktop.DBus.Error.AccessDenied"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("         -> the bus's policy must let this user send to the "
                                    "service\n"));
}

TEST_F(TavctlDoctor, TellsOfAServiceThatDoesNotAnswer) {
  const Result result = InSandbox("$T doctor", {"--service-option=--fault=heartbeat=no-reply"});
  EXPECT_EQ(result.status, 1) << result;
  EXPECT_THAT(result.out, HasSubstr("PROBLEM  heartbeat: Timeout was reached\n         -> the "
                                    "service is there and does not answer: start it anew\n"));
}

TEST_F(TavctlDoctor, NotesAServiceThatTheBusWouldStart) {
  std::filesystem::create_directory(Directory() / "services");
  Write("services/org.tizen.tv.tavcore.server.service",
        "[D-BUS Service]\nName=org.tizen.tv.tavcore.server\nExec=/bin/false\n");
  Write("bus.conf",
        "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
        "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">"
        "<busconfig><type>session</type><listen>unix:path=" +
            Directory().string() + "/bus</listen><auth>EXTERNAL</auth><servicedir>" +
            Directory().string() +
            "/services</servicedir><policy context=\"default\"><allow user=\"*\"/>"
            "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
            "<allow own=\"*\"/></policy></busconfig>");
  const Result result = Shell(
      "dbus-daemon --config-file=\"$1/bus.conf\" --nofork --print-address >\"$1/address\" & "
      "until [ -s \"$1/address\" ]; do sleep 0.05; done; "
      "DBUS_SYSTEM_BUS_ADDRESS=unix:path=\"$1/bus\" tavctl_with_markers doctor; kill $!",
      {Directory()});
  EXPECT_THAT(result.out, HasSubstr("note  service: org.tizen.tv.tavcore.server does not run; the "
                                    "bus starts it with the first request\n"));
}

TEST_F(TavctlDoctor, TellsWhichSettingsAreMissing) {
  EXPECT_THAT(Doctor().out, HasSubstr("note     settings: not set, so their getters fail: "
                                      "memory/tav/boot_status\n"));
}

}  // namespace
}  // namespace test
