// The keys the library's code looks up, collected from its sources, each have an English text.
// Keys written as literals in a lookup (`CLSTRING("km")`, `CLSTRING(cond ? "a" : "b")`) or in
// a constant key array (`kCardinalKeys = {"N", ...}`) are collected here; keys held as data of
// the unit catalogs and unit systems are checked by the units tests.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include "qmcore/strings/StringCatalog.hpp"

namespace qm {
namespace {

namespace fs = std::filesystem;

// The text of a source file without its comments; string literals are kept whole.
std::string withoutComments(const std::string& source) {
  std::string code;
  for (size_t i = 0; i < source.size(); ++i) {
    const char c = source[i];
    if (c == '"' || c == '\'') {
      const size_t start = i;
      for (++i; i < source.size() && source[i] != c; ++i) {
        if (source[i] == '\\') ++i;
      }
      code.append(source, start, i - start + 1);
    } else if (source.compare(i, 2, "//") == 0) {
      i = source.find('\n', i);
      if (i == std::string::npos) break;
      code += '\n';
    } else if (source.compare(i, 2, "/*") == 0) {
      i = source.find("*/", i);
      if (i == std::string::npos) break;
      ++i;
    } else {
      code += c;
    }
  }
  return code;
}

// The string literals of `code` between `begin` and the bracket that closes the one before
// `begin` (`close`), nested brackets included.
void collectLiterals(const std::string& code, size_t begin, char open, char close,
                     std::set<std::string>& keys) {
  int depth = 1;
  for (size_t i = begin; i < code.size() && depth > 0; ++i) {
    if (code[i] == open) ++depth;
    if (code[i] == close) --depth;
    if (code[i] != '"') continue;
    std::string literal;
    for (++i; i < code.size() && code[i] != '"'; ++i) {
      if (code[i] == '\\' && i + 1 < code.size()) ++i;  // the tables hold no escapes but \"
      literal += code[i];
    }
    keys.insert(literal);
  }
}

std::set<std::string> keysLookedUpIn(const std::string& source) {
  const std::string code = withoutComments(source);
  std::set<std::string> keys;
  for (size_t at = code.find("CLSTRING("); at != std::string::npos;
       at = code.find("CLSTRING(", at + 1)) {
    collectLiterals(code, at + 9, '(', ')', keys);
  }
  // Constant arrays of keys, such as the compass letters a text cache looks up.
  for (size_t at = code.find("Keys = {"); at != std::string::npos;
       at = code.find("Keys = {", at + 1)) {
    collectLiterals(code, at + 8, '{', '}', keys);
  }
  return keys;
}

std::map<std::string, std::string> keysLookedUpByTheLibrary() {
  std::map<std::string, std::string> keys;  // key -> a file that looks it up
  for (const char* folder : {"qmcore", "tools"}) {
    for (const auto& entry : fs::recursive_directory_iterator(fs::path(QM_SOURCE_DIR) / folder)) {
      const fs::path& path = entry.path();
      const std::string name = path.filename().string();
      if (!entry.is_regular_file() || name.ends_with("_test.cpp") ||
          (path.extension() != ".cpp" && path.extension() != ".hpp")) {
        continue;
      }
      std::ifstream file(path);
      std::stringstream source;
      source << file.rdbuf();
      for (const std::string& key : keysLookedUpIn(source.str())) keys.emplace(key, name);
    }
  }
  return keys;
}

TEST(StringKeysTest, CollectsTheLiteralsOfLookupsAndKeyArraysOnly) {
  const std::string source = R"(
    // CLSTRING("in a comment") is no lookup
    /* nor CLSTRING("in a block comment") */
    auto a = CoreStrings::CLSTRING("km");
    auto b = CoreStrings::CLSTRING(north ? "MagneticNorthFirstLetter"
                                         : "TrueNorthFirstLetter");
    auto c = formatLocalized(CoreStrings::CLSTRING("%@ or %@"), {x, "not a key"});
    constexpr std::array<std::string_view, 2> kLetterKeys = {"N", "E"};
    const char* d = "a plain literal";
    auto e = CoreStrings::CLSTRING(variableKey);
  )";
  const std::set<std::string> expected = {
      "km", "MagneticNorthFirstLetter", "TrueNorthFirstLetter", "%@ or %@", "N", "E"};
  EXPECT_EQ(keysLookedUpIn(source), expected);
}

TEST(StringKeysTest, EveryKeyTheCodeLooksUpHasAnEnglishText) {
  const auto keys = keysLookedUpByTheLibrary();
  // Far more than any single file: the sources were found.
  EXPECT_GT(keys.size(), 40u);
  const std::vector<std::string_view> english = StringCatalog::keys();
  const std::set<std::string_view> known(english.begin(), english.end());
  for (const auto& [key, file] : keys) {
    EXPECT_TRUE(known.contains(key))
        << file << " looks up a key the English table lacks: \"" << key << "\"";
  }
}

}  // namespace
}  // namespace qm
