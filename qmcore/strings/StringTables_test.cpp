// Every table has every English key, once, with a text that takes the same arguments.

#include "qmcore/strings/StringTables.hpp"

#include <gtest/gtest.h>

#include <map>
#include <set>

#include "qmcore/strings/StringCatalog.hpp"

namespace qm {
namespace {

std::map<std::string_view, std::string_view> tableOf(std::string_view language) {
  std::map<std::string_view, std::string_view> table;
  for (const auto& entry : internal::stringTable(language)) {
    EXPECT_TRUE(table.emplace(entry.key, entry.text).second)
        << language << " has the key twice: " << entry.key;
    EXPECT_FALSE(entry.text.empty()) << language << " has an empty text for " << entry.key;
  }
  return table;
}

TEST(StringTablesTest, EveryLanguageHasATable) {
  const std::vector<std::string_view> expected = {"en", "de", "fr", "es", "ja"};
  EXPECT_EQ(StringCatalog::languages(), expected);
  for (const std::string_view language : expected) {
    EXPECT_FALSE(internal::stringTable(language).empty()) << language;
  }
  EXPECT_TRUE(internal::stringTable("it").empty());
  EXPECT_TRUE(internal::stringTable("").empty());
}

// A key is the English text or names it, so an untranslated key reads sensibly; when the key
// is itself a format, its English text must fill the same arguments.
TEST(StringTablesTest, EnglishTextsKeepThePlaceholdersOfTheirKeys) {
  for (const auto& [key, text] : tableOf("en")) {
    EXPECT_EQ(StringCatalog::placeholders(text), StringCatalog::placeholders(key)) << key;
  }
}

// Keys that a table has beyond the English ones are not checked: a translation may land before
// the English text of its key does, and such an entry is never looked up until it exists.
TEST(StringTablesTest, EveryTableHasEveryEnglishKeyWithTheSamePlaceholders) {
  const auto english = tableOf("en");
  for (const std::string_view language : StringCatalog::languages()) {
    const auto table = tableOf(language);
    for (const auto& [key, englishText] : english) {
      const auto it = table.find(key);
      if (it == table.end()) {
        ADD_FAILURE() << "the " << language << " table lacks the key: " << key;
        continue;
      }
      EXPECT_EQ(StringCatalog::placeholders(it->second), StringCatalog::placeholders(englishText))
          << language << " text of " << key << ": " << it->second;
    }
    EXPECT_TRUE(StringCatalog::missingKeys(language).empty()) << language;
  }
}

// Texts that the language itself writes as in English, and the abbreviations that must stay as
// they are (the pattern letters of a date format, the SI symbols).
TEST(StringTablesTest, SymbolsAndPatternsStayTheSameInEveryLanguage) {
  const char* const unchanged[] = {"km/h", "m/s", "hPa", "km²", "m²", "ha", "°C", "°F", "尺", "坪"};
  for (const std::string_view language : StringCatalog::languages()) {
    for (const std::string_view key : unchanged) {
      EXPECT_EQ(StringCatalog::text(key, language), key) << language;
    }
    const auto pattern = StringCatalog::text("ddMMMyy HH:mm", language);
    ASSERT_TRUE(pattern.has_value()) << language;
    EXPECT_NE(pattern->find("yy"), std::string_view::npos) << language << ": " << *pattern;
    EXPECT_NE(pattern->find("HH:mm"), std::string_view::npos) << language << ": " << *pattern;
  }
}

}  // namespace
}  // namespace qm
