#include "qmcore/strings/CoreStrings.hpp"

#include <gtest/gtest.h>

#include <set>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/StringTables.hpp"

namespace qm {
namespace {

TEST(CoreStringsTest, LooksUpTheLanguageOfTheLocaleThenEnglishThenTheKey) {
  const struct {
    const char* locale;
    const char* key;
    const char* expected;
  } cases[] = {
      {"en_US", "m_minute", "m"},    // identifier keys read as text in English
      {"de_DE", "m_minute", "min"},  // and have their own text in German
      {"de_AT", "Feet", "Fuß"},      // any German region
      {"en_GB", "Feet", "Feet"},     // English words map to themselves
      {"fr_FR", "m_minute", "m"},    // no French table: the English one answers
      {"de_DE", "no such key %@", "no such key %@"},
      {"en_US", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CoreStrings::CLSTRING(c.key, c.locale), c.expected) << c.locale << " " << c.key;
  }
}

TEST(CoreStringsTest, FollowsTheCurrentLocale) {
  const std::string saved = currentLocaleIdentifier();
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(CoreStrings::CLSTRING("Meters"), "Meter");
  setCurrentLocaleIdentifier("en_US");
  EXPECT_EQ(CoreStrings::CLSTRING("Meters"), "Meters");
  setCurrentLocaleIdentifier(saved);
}

TEST(StringTablesTest, NoTableHasAKeyTwiceAndGermanKeysAreEnglishKeys) {
  std::set<std::string_view> english;
  for (const auto& entry : internal::stringTable("en")) {
    EXPECT_TRUE(english.insert(entry.key).second) << "duplicate English key " << entry.key;
  }
  std::set<std::string_view> german;
  for (const auto& entry : internal::stringTable("de")) {
    EXPECT_TRUE(german.insert(entry.key).second) << "duplicate German key " << entry.key;
    EXPECT_FALSE(entry.text.empty()) << entry.key;
  }
  for (const std::string_view key : german) {
    EXPECT_TRUE(english.count(key)) << "German key missing from the English table: " << key;
  }
}

}  // namespace
}  // namespace qm
