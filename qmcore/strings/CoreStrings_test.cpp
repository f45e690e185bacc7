// Lookups in the string tables: by locale, in the current locale, and through a cache.

#include "qmcore/strings/CoreStrings.hpp"

#include <gtest/gtest.h>

#include <array>
#include <thread>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/LocalizedTextCache.hpp"

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
      {"ja_JP", "Feet", "フィート"},
      {"it_IT", "m_minute", "m"},  // no Italian table: the English one answers
      {"", "Feet", "Feet"},
      // A key the table lacks comes back as it is, never as another language's text.
      {"de_DE", "no such key %@", "no such key %@"},
      {"it_IT", "", ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(CoreStrings::CLSTRING(c.key, c.locale), c.expected) << c.locale << " " << c.key;
  }
}

constexpr std::array<std::string_view, 3> kCompassKeys = {"N", "E", "SE"};
constexpr std::array<std::string_view, 2> kTimeKeys = {"h", "m_minute"};

TEST(CoreStringsTest, LookupsAndCachesFollowEveryChangeOfTheCurrentLocale) {
  const std::string saved = currentLocaleIdentifier();
  LocalizedTextCache compass(kCompassKeys);
  LocalizedTextCache time(kTimeKeys);
  using Texts = std::vector<std::string>;
  const struct {
    const char* locale;
    Texts compass;
    const char* meters;
  } steps[] = {
      {"en_US", {"N", "E", "SE"}, "Meters"},
      {"es_MX.UTF-8", {"N", "E", "SE"}, "metros"},
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

  // A cache of other keys, and one of another thread, keep their own texts.
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(time.texts()[1], "min");
  std::string seenByAnotherThread;
  std::thread([&] {
    thread_local LocalizedTextCache own(kCompassKeys);
    seenByAnotherThread = own.texts()[1];
  }).join();
  EXPECT_EQ(seenByAnotherThread, "O");
  setCurrentLocaleIdentifier(saved);
}

}  // namespace
}  // namespace qm
