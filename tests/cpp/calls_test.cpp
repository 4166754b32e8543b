// SPDX-License-Identifier: Apache-2.0
//
// The headers of the layer beside that of the interface: every function is called by the layer,
// and named where its call is documented.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

namespace {

using Names = std::set<std::string>;

std::string ReadFile(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << file;
  return {std::istreambuf_iterator<char>(in), {}};
}

std::string Layer() {
  std::string text;
  for (const auto& entry : std::filesystem::directory_iterator(HEADERS)) {
    if (entry.path().extension() == ".hpp") text += ReadFile(entry.path());
  }
  return text;
}

// What a pattern's first group matches, in all places.
Names Matches(const std::string& text, const std::string& pattern) {
  const std::regex regex(pattern);
  Names names;
  for (std::sregex_iterator match(text.begin(), text.end(), regex), end; match != end; ++match) {
    names.insert((*match)[1]);
  }
  return names;
}

Names Functions() {
  return Matches(ReadFile(std::filesystem::path(HEADERS) / "tav_db_api.h"),
                 R"(\nTAV_API [^(;]*?(\w+)\()");
}

// They carry a callback's address as a number; a Watch registers with the typed functions.
const Names kNotOfTheLayer = {"tav_register_value_cb", "tav_unregister_value_cb"};

TEST(CppCalls, ReachEveryFunctionOfTheInterface) {
  const std::string code =
      std::regex_replace(Layer(), std::regex(R"(/\*[^*]*\*+([^/*][^*]*\*+)*/|//[^\n]*)"), "");
  Names missing;
  for (const std::string& function : Functions()) {
    if (!std::regex_search(code, std::regex("\\b" + function + "\\b"))) missing.insert(function);
  }
  EXPECT_EQ(missing, kNotOfTheLayer);
  EXPECT_GE(Functions().size(), 60u);
}

TEST(CppCalls, NameTheFunctionOfTheInterface) {
  const Names named = Matches(Layer(), R"(\\see (\w+))");
  Names unnamed;
  for (const std::string& function : Functions()) {
    const bool is_end = function.rfind("tav_unregister_", 0) == 0;  // the Watch's destructor
    if (!is_end && kNotOfTheLayer.count(function) + named.count(function) == 0) {
      unnamed.insert(function);
    }
  }
  EXPECT_EQ(unnamed, Names());
}

}  // namespace
