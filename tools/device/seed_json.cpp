// SPDX-License-Identifier: Apache-2.0
//
// Strict JSON with line numbers.
#include "device/seed_json.h"

#include <glib.h>
#include <json/reader.h>

#include <algorithm>
#include <cmath>
#include <exception>
#include <iterator>
#include <memory>
#include <regex>

#include "device/error.h"
#include "device/handles.h"

namespace tav_device {
namespace {

// A seed is four levels deep; what nests much deeper is no seed, and must not cost stack.
constexpr int kMaxDepth = 8;

// What a complaint quotes of the file, in bytes.
constexpr std::size_t kShownLength = 60;

bool IsControl(char c) {
  return g_ascii_iscntrl(c) != 0;
}

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
  static const std::regex kBegin(R"(^\* Line (\d+), Column (\d+)\n *)");
  // Of the begin only: the rest may quote the file at any length.
  const std::string begin = report.substr(0, 60);
  std::smatch place;
  if (!std::regex_search(begin, place, kBegin)) return path + ": " + report;
  const auto why = static_cast<std::size_t>(place.length());
  return path + ":" + place.str(1) + ":" + place.str(2) + ": " +
         report.substr(why, report.find('\n', why) - why);
}

// "3:7", line and column of a byte of the text; a column is a character, as an editor counts.
std::string Place(const std::string& text, std::ptrdiff_t offset) {
  const auto at = text.begin() + offset;
  const auto line = 1 + std::count(text.begin(), at, '\n');
  const auto line_begin = std::find(std::make_reverse_iterator(at), text.rend(), '\n').base();
  const auto is_character = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  const auto column = 1 + std::count_if(line_begin, at, is_character);
  return std::to_string(line) + ":" + std::to_string(column);
}

// A value as it stands in the file, when it is short; else what kind of value it is.
std::string Shown(const Json::Value& value, const std::string& text) {
  if (value.isObject()) return "an object";
  if (value.isArray()) return "an array";
  const auto begin = static_cast<std::size_t>(value.getOffsetStart());
  const auto length = static_cast<std::size_t>(value.getOffsetLimit()) - begin;
  const bool is_shown = length <= kShownLength &&
                        g_utf8_validate(&text[begin], static_cast<gssize>(length), nullptr) != 0 &&
                        std::none_of(&text[begin], &text[begin] + length, IsControl);
  if (is_shown) return text.substr(begin, length);
  return value.isString() ? "this text" : "this number";
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
  throw DeviceError(m_path + ":" + Place(m_text, value.getOffsetStart()) + ": " + field + ": " +
                    why);
}

void SeedJson::FailToBe(const Json::Value& value, const std::string& field,
                        const std::string& what) const {
  Fail(value, field, "must be " + what + ", not " + Shown(value, m_text));
}

const Json::Value& SeedJson::Object(const Json::Value& value, const std::string& field) const {
  if (!value.isObject()) FailToBe(value, field, "an object");
  return value;
}

const Json::Value& SeedJson::Array(const Json::Value& value, const std::string& field) const {
  if (!value.isArray()) FailToBe(value, field, "an array");
  return value;
}

std::string SeedJson::Text(const Json::Value& value, const std::string& field) const {
  if (!value.isString()) FailToBe(value, field, "a text");
  std::string text = value.asString();
  // Zero bytes are refused here too: no column, setting or key file can carry one.
  if (!g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr)) {
    Fail(value, field, "must be valid UTF-8 without zero bytes");
  }
  return text;
}

int SeedJson::Integer(const Json::Value& value, const std::string& field) const {
  if (!value.isNumeric() || std::floor(value.asDouble()) != value.asDouble()) {
    FailToBe(value, field, "an integer");
  }
  if (!value.isInt()) FailToBe(value, field, "between -2147483648 and 2147483647");
  return value.asInt();
}

}  // namespace tav_device
