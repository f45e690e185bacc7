// The string catalog, and the rules that every string table keeps.

#include "qmcore/strings/StringCatalog.hpp"

#include <gtest/gtest.h>

#include <map>

#include "qmcore/strings/StringTables.hpp"

namespace qm {
namespace {

TEST(StringCatalogTest, PlaceholdersNumberTheArgumentsTheyTake) {
  const struct {
    const char* format;
    std::vector<std::string> expected;
  } cases[] = {
      {"%@ or %@", {"%1$@", "%2$@"}},
      {"%2$@ o %1$@", {"%1$@", "%2$@"}},  // reordered by a translation: the same arguments
      {"%02d:%2$d", {"%1$d", "%2$d"}},    // flags and widths are no part of the argument
      {"%ld items, %.1f%%", {"%1$d", "%2$f"}},
      {"up 5%!", {}},          // a "%" that no conversion follows is plain text
      {"50% done", {"%1$d"}},  // but "% d" is a conversion with the space flag, as in printf
      {"ends with %", {}},
      {"%1$", {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StringCatalog::placeholders(c.format), c.expected) << c.format;
  }
}

TEST(StringCatalogTest, TextsComeFromTheNamedTableOnly) {
  EXPECT_EQ(StringCatalog::text("Feet", "es"), "pies");
  EXPECT_EQ(StringCatalog::text("no such key", "en"), std::nullopt);
  // A language without a table lacks every key, although the English texts then answer.
  const auto keys = StringCatalog::keys();
  EXPECT_EQ(StringCatalog::missingKeys("it_IT"), keys);
  EXPECT_TRUE(StringCatalog::missingKeys("en_US").empty());
}

std::map<std::string_view, std::string_view> tableOf(std::string_view language) {
  std::map<std::string_view, std::string_view> table;
  for (const auto& entry : internal::stringTable(language)) {
    EXPECT_TRUE(table.emplace(entry.key, entry.text).second)
        << language << " has the key twice: " << entry.key;
    EXPECT_FALSE(entry.text.empty()) << language << " has an empty text for " << entry.key;
  }
  return table;
}

// A key is the English text or names it, so an untranslated key reads sensibly: a key that is a
// format has an English text that fills the same arguments. A key the English table lacks is
// never looked up: a stale or misspelt translation.
TEST(StringCatalogTest, EveryTableHasTheEnglishKeysWithTheSamePlaceholders) {
  const auto english = tableOf("en");
  for (const auto& [key, text] : english) {
    EXPECT_EQ(StringCatalog::placeholders(text), StringCatalog::placeholders(key)) << key;
  }
  for (const std::string_view language : StringCatalog::languages()) {
    auto table = tableOf(language);
    for (const auto& [key, text] : table) {
      const auto it = english.find(key);
      if (it == english.end()) {
        ADD_FAILURE() << "the " << language << " table has a key English lacks: " << key;
      } else {
        EXPECT_EQ(StringCatalog::placeholders(text), StringCatalog::placeholders(it->second))
            << language << " text of " << key << ": " << text;
      }
    }
    EXPECT_EQ(StringCatalog::missingKeys(language), std::vector<std::string_view>()) << language;
    // The pattern letters of a date format are no words to translate.
    const std::string_view pattern = table["ddMMMyy HH:mm"];
    EXPECT_NE(pattern.find("yy"), std::string_view::npos) << language << ": " << pattern;
    EXPECT_NE(pattern.find("HH:mm"), std::string_view::npos) << language << ": " << pattern;
  }
}

}  // namespace
}  // namespace qm
