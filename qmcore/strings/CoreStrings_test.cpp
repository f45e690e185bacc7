// Lookups in the string tables: by locale, in the current locale, and through a cache.

#include "qmcore/strings/CoreStrings.hpp"

#include <gtest/gtest.h>

#include <array>

#include "qmcore/strings/LocalizedTextCache.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

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
      {"fr_CA", "Feet", "Pieds"},    // any region of a language
      {"it_IT", "m_minute", "m"},    // no Italian table: the English one answers
      // A key the table lacks comes back as it is, never as another language's text.
      {"de_DE", "no such key %@", "no such key %@"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CoreStrings::CLSTRING(c.key, c.locale), c.expected) << c.locale << " " << c.key;
  }
}

constexpr std::array<std::string_view, 3> kCompassKeys = {"N", "E", "SE"};

TEST(CoreStringsTest, LookupsAndCachesFollowEveryChangeOfTheCurrentLocale) {
  const testing::ScopedLocale restored;
  LocalizedTextCache compass(kCompassKeys);
  using Texts = std::vector<std::string>;
  const struct {
    const char* locale;
    Texts compass;
    const char* meters;
  } steps[] = {
      {"en_US", {"N", "E", "SE"}, "Meters"},
      {"de_DE", {"N", "O", "SO"}, "Meter"},
      {"de_DE", {"N", "O", "SO"}, "Meter"},  // unchanged: served from the cache
      {"ja_JP", {"北", "東", "南東"}, "メートル"},
  };
  for (const auto& step : steps) {
    setCurrentLocaleIdentifier(step.locale);
    const auto texts = compass.texts();
    EXPECT_EQ(Texts(texts.begin(), texts.end()), step.compass) << step.locale;
    EXPECT_EQ(CoreStrings::CLSTRING("Meters"), step.meters) << step.locale;
  }
}

}  // namespace
}  // namespace qm
