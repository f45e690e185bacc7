#include "qmcore/strings/CoreStrings.hpp"

#include <gtest/gtest.h>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

TEST(CoreStringsTest, LooksUpTheTableOfTheLocalesLanguageElseEnglish) {
  const struct {
    const char* locale;
    const char* key;
    const char* expected;
  } cases[] = {
      {"en_US", "m_minute", "m"},    // identifier keys read as text in English
      {"de_DE", "m_minute", "min"},  // and have their own text in each language
      {"de_AT", "Feet", "Fuß"},      // any region of a language
      {"fr_CA", "Feet", "Pieds"},   {"fr_FR", "Switch to %@", "Passer en %@"},
      {"es_MX", "Feet", "pies"},    {"ja_JP", "Feet", "フィート"},
      {"en_GB", "Feet", "Feet"},   // English words map to themselves
      {"it_IT", "m_minute", "m"},  // no Italian table: the English one answers
      {"pt_BR", "Feet", "Feet"},    {"ja_JP", "km/h", "km/h"},  // the form every language uses
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CoreStrings::CLSTRING(c.key, c.locale), c.expected) << c.locale << " " << c.key;
  }
}

TEST(CoreStringsTest, AKeyTheTableLacksComesBackAsItIs) {
  for (const char* locale : {"en_US", "de_DE", "fr_FR", "es_ES", "ja_JP", "it_IT", ""}) {
    EXPECT_EQ(CoreStrings::CLSTRING("no such key %@", locale), "no such key %@") << locale;
    EXPECT_EQ(CoreStrings::CLSTRING("", locale), "") << locale;
  }
}

TEST(CoreStringsTest, FollowsTheCurrentLocale) {
  const std::string saved = currentLocaleIdentifier();
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(CoreStrings::CLSTRING("Meters"), "Meter");
  setCurrentLocaleIdentifier("es_MX.UTF-8");
  EXPECT_EQ(CoreStrings::CLSTRING("Meters"), "metros");
  setCurrentLocaleIdentifier("en_US");
  EXPECT_EQ(CoreStrings::CLSTRING("Meters"), "Meters");
  setCurrentLocaleIdentifier(saved);
}

}  // namespace
}  // namespace qm
