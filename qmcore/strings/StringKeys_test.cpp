// The keys the library's code looks up, collected from its sources, each have an English text.
// Keys written as literals in a lookup (`CLSTRING("km")`, `CLSTRING(cond ? "a" : "b")`) or in
// a constant key array (`kCardinalKeys = {"N", ...}`) are collected here; keys held as data of
// the unit catalogs and unit systems are checked by the units tests.

#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "qmcore/strings/StringCatalog.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;

// The string literals within the brackets of each lookup and key array of `source`, comments
// left out.
std::set<std::string> keysLookedUpIn(const std::string& source) {
  static const std::regex kToken(
      R"re(//[^\n]*|/\*(?:[^*]|\*(?!/))*\*/|"((?:[^"\\\n]|\\.)*)"|CLSTRING\(|Keys = \{|[(){}])re");
  std::set<std::string> keys;
  int depth = 0;  // of the brackets open in a lookup or key array; 0 outside them
  for (std::sregex_iterator it(source.begin(), source.end(), kToken), end; it != end; ++it) {
    const std::string token = it->str();
    if (token == "CLSTRING(" || token == "Keys = {") {
      ++depth;
    } else if (depth > 0 && (token == "(" || token == "{")) {
      ++depth;
    } else if (depth > 0 && (token == ")" || token == "}")) {
      --depth;
    } else if (depth > 0 && token.starts_with('"')) {
      keys.insert((*it)[1].str());
    }
  }
  return keys;
}

TEST(StringKeysTest, EveryKeyTheCodeLooksUpHasAnEnglishText) {
  const std::vector<std::string_view> english = StringCatalog::keys();
  const std::set<std::string_view> known(english.begin(), english.end());
  size_t lookedUp = 0;
  for (const char* folder : {"qmcore", "tools"}) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(QM_SOURCE_DIR) / folder)) {
      const fs::path& path = entry.path();
      if (path.filename().string().ends_with("_test.cpp") ||
          (path.extension() != ".cpp" && path.extension() != ".hpp")) {
        continue;
      }
      for (const std::string& key : keysLookedUpIn(testing::readFile(path))) {
        ++lookedUp;
        EXPECT_TRUE(known.contains(key))
            << path.filename() << " looks up a key the English table lacks: \"" << key << "\"";
      }
    }
  }
  EXPECT_GT(lookedUp, 40u);  // far more than any single file: the sources were found
}

}  // namespace
}  // namespace qm
