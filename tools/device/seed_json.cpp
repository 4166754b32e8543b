// SPDX-License-Identifier: Apache-2.0
//
// Strict JSON with line numbers.
#include "device/seed_json.h"

#include <glib.h>
#include <json/reader.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <memory>

#include "device/error.h"
#include "device/handles.h"

namespace tav_device {
namespace {

// A seed is four levels deep; what nests much deeper is no seed, and must not cost stack.
constexpr int kMaxDepth = 8;

std::string ReadFile(const std::string& path) {
  char* content = nullptr;
  gsize length = 0;
  GError* error = nullptr;
  if (!g_file_get_contents(path.c_str(), &content, &length, &error)) {
    const GErrorHandle owned(error);
    throw DeviceError(error->message);
  }
  const GTextHandle owned(content);
  return std::string(content, length);
}

// The reader's report is "* Line 3, Column 7", then what is wrong on a line of its own.
std::string FirstComplaint(const std::string& path, const std::string& report) {
  const std::string prefix = "* Line ";
  const std::size_t begin = report.find_first_not_of(" \n", report.find('\n'));
  if (report.compare(0, prefix.size(), prefix) != 0 || begin == std::string::npos) {
    return path + ": " + report;
  }
  const std::string line = report.substr(prefix.size(), report.find(',') - prefix.size());
  return path + ":" + line + ": " + report.substr(begin, report.find('\n', begin) - begin);
}

}  // namespace

SeedJson::SeedJson(const std::string& path) : m_path(path), m_text(ReadFile(path)) {
  try {
    Parse();
  } catch (const DeviceError&) {
    throw;
  } catch (const std::exception&) {  // the reader's one way to refuse a deep document
    throw DeviceError(m_path + ": nested too deeply");
  }
}

void SeedJson::Parse() {
  Json::CharReaderBuilder builder;
  Json::CharReaderBuilder::strictMode(&builder.settings_);
  builder["strictRoot"] = false;  // the root's type is checked with every other field's
  builder["stackLimit"] = kMaxDepth;
  const std::unique_ptr<Json::CharReader> reader(builder.newCharReader());
  std::string report;
  if (!reader->parse(m_text.data(), m_text.data() + m_text.size(), &m_root, &report)) {
    throw DeviceError(FirstComplaint(m_path, report));
  }
}

void SeedJson::Fail(const Json::Value& value, const std::string& field,
                    const std::string& why) const {
  const auto line = 1 + std::count(m_text.begin(), m_text.begin() + value.getOffsetStart(), '\n');
  throw DeviceError(m_path + ":" + std::to_string(line) + ": " + field + ": " + why);
}

const Json::Value& SeedJson::Object(const Json::Value& value, const std::string& field) const {
  if (!value.isObject()) Fail(value, field, "must be an object");
  return value;
}

const Json::Value& SeedJson::Array(const Json::Value& value, const std::string& field) const {
  if (!value.isArray()) Fail(value, field, "must be an array");
  return value;
}

std::string SeedJson::Text(const Json::Value& value, const std::string& field) const {
  if (!value.isString()) Fail(value, field, "must be a text");
  std::string text = value.asString();
  // Zero bytes are refused here too: no column, setting or key file can carry one.
  if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
    Fail(value, field, "must be valid UTF-8 without zero bytes");
  }
  return text;
}

int SeedJson::Integer(const Json::Value& value, const std::string& field) const {
  if (!value.isNumeric() || std::floor(value.asDouble()) != value.asDouble()) {
    Fail(value, field, "must be an integer");
  }
  if (!value.isInt()) Fail(value, field, "does not fit a 32-bit integer");
  return value.asInt();
}

}  // namespace tav_device
