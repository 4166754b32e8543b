// SPDX-License-Identifier: Apache-2.0
//
// tavctl doctor: says why nothing works.
#include "doctor.h"

#include <json/value.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "commands.h"
#include "output.h"

namespace {

constexpr char kDoctorFooter[] =
    R"(Looks at all that a call of the library needs: directories, database, guards, bus, service
and settings. Changes nothing. A problem makes calls fail; a note, at most those that it
names.

Exit status: 0 no problem; 1 a problem was found.

Examples:
  tavctl doctor
  tavctl doctor --json)";

const char* NameOf(Health health) {
  switch (health) {
    case Health::kGood:
      return "ok";
    case Health::kNote:
      return "note";
    case Health::kProblem:
      break;
  }
  return "PROBLEM";
}

Json::Value ToJson(const Findings& findings) {
  Json::Value rows(Json::arrayValue);
  for (const Finding& finding : findings) {
    Json::Value row(Json::objectValue);
    row["health"] = finding.health == Health::kProblem ? "problem" : NameOf(finding.health);
    row["what"] = finding.what;
    row["text"] = ValidUtf8(finding.text);
    if (!finding.advice.empty()) row["advice"] = ValidUtf8(finding.advice);
    rows.append(row);
  }
  return rows;
}

void Print(const Findings& findings) {
  std::vector<NamedText> lines;
  for (const Finding& finding : findings) {
    lines.push_back(
        {NameOf(finding.health), std::string(finding.what) + ": " + Printable(finding.text)});
    if (!finding.advice.empty()) lines.push_back({"", "-> " + Printable(finding.advice)});
  }
  PrintAligned(lines);
}

void RunDoctor(bool is_json) {
  // What the examinations provoke in the log is told by the report.
  setenv("DLOG_LEVEL", "S", 0);
  Findings findings;
  ExamineDirectories(findings);
  ExamineGuards(findings);
  ExamineDatabase(findings);
  ExamineBus(findings);
  ExamineSettings(findings);
  const auto problems = std::count_if(findings.begin(), findings.end(), [](const Finding& finding) {
    return finding.health == Health::kProblem;
  });
  if (is_json) {
    Json::Value report(Json::objectValue);
    report["problems"] = static_cast<int>(problems);
    report["findings"] = ToJson(findings);
    PrintJson(report);
  } else {
    Print(findings);
    std::cout << (problems == 0   ? "No problem was found.\n"
                  : problems == 1 ? "1 problem was found.\n"
                                  : std::to_string(problems) + " problems were found.\n");
  }
  if (problems != 0) throw CLI::RuntimeError(kRefused);
}

}  // namespace

void AddDoctorCommand(CLI::App& app) {
  CLI::App* command = app.add_subcommand("doctor", "Find out why calls fail");
  const auto is_json = std::make_shared<bool>(false);
  command->add_flag("--json", *is_json, "Print one JSON object");
  command->footer(kDoctorFooter);
  command->callback([is_json] { RunDoctor(*is_json); });
}
