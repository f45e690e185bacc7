#include "qmcore/strings/StringCatalog.hpp"

#include <gtest/gtest.h>

#include <algorithm>

namespace qm {
namespace {

using Placeholders = std::vector<std::string>;

TEST(StringCatalogTest, PlaceholdersNumberTheArgumentsTheyTake) {
  const struct {
    const char* format;
    Placeholders expected;
  } cases[] = {
      {"plain text", {}},
      {"", {}},
      {"%@", {"%1$@"}},
      {"%@ or %@", {"%1$@", "%2$@"}},
      {"%2$@ o %1$@", {"%1$@", "%2$@"}},  // reordered by a translation: the same arguments
      {"%1$@ = %2$@ or %3$@", {"%1$@", "%2$@", "%3$@"}},
      {"%d %@", {"%1$d", "%2$@"}},
      {"%02d:%02d", {"%1$d", "%2$d"}},  // flags and widths are no part of the argument
      {"%ld items, %.1f%%", {"%1$d", "%2$f"}},
      {"100%%", {}},
      {"up 5%!", {}},          // a "%" that no conversion follows is plain text
      {"50% done", {"%1$d"}},  // but "% d" is a conversion with the space flag, as in printf
      {"ends with %", {}},
      {"%1$", {}},
      {"%@%@", {"%1$@", "%2$@"}},
      {"%%@", {}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StringCatalog::placeholders(c.format), c.expected) << c.format;
  }
}

TEST(StringCatalogTest, PlaceholdersTellTranslationsThatLoseOrChangeAnArgument) {
  const auto same = [](const char* a, const char* b) {
    return StringCatalog::placeholders(a) == StringCatalog::placeholders(b);
  };
  EXPECT_TRUE(same("Switch to %1$@ from %2$@", "Ab %2$@ in %1$@"));
  EXPECT_FALSE(same("Switch to %1$@ from %2$@", "Ab %2$@"));      // lost
  EXPECT_FALSE(same("%@ or %@", "%@ ou %@ ou %@"));               // one too many
  EXPECT_FALSE(same("%d days", "%@ jours"));                      // another type
  EXPECT_FALSE(same("Switch to %1$@ from %2$@", "%1$@ à %1$@"));  // one used twice
  EXPECT_FALSE(same("%1$@: %2$@", "%1$@ : %3$@"));                // a wrong number
}

TEST(StringCatalogTest, RegionalLocalesUseTheirLanguagesTable) {
  const struct {
    const char* locale;
    const char* language;
  } cases[] = {
      {"fr_CA", "fr"}, {"fr_FR", "fr"}, {"fr", "fr"},          {"es_MX", "es"},
      {"es_ES", "es"}, {"de_AT", "de"}, {"de-CH", "de"},       {"ja_JP", "ja"},
      {"en_GB", "en"}, {"it_IT", "en"}, {"en_US_POSIX", "en"}, {"", "en"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(StringCatalog::tableLanguage(c.locale), c.language) << c.locale;
  }
}

TEST(StringCatalogTest, TextsComeFromTheNamedTableOnly) {
  EXPECT_EQ(StringCatalog::text("Feet", "fr"), "Pieds");
  EXPECT_EQ(StringCatalog::text("Feet", "es"), "pies");
  EXPECT_EQ(StringCatalog::text("Feet", "ja"), "フィート");
  EXPECT_EQ(StringCatalog::text("Feet", "it"), std::nullopt);
  EXPECT_EQ(StringCatalog::text("no such key", "en"), std::nullopt);
}

TEST(StringCatalogTest, ALanguageWithoutATableLacksEveryKey) {
  const auto keys = StringCatalog::keys();
  ASSERT_FALSE(keys.empty());
  EXPECT_NE(std::find(keys.begin(), keys.end(), "m_minute"), keys.end());
  EXPECT_EQ(StringCatalog::missingKeys("it_IT"), keys);
  EXPECT_EQ(StringCatalog::missingKeys(""), keys);
  EXPECT_TRUE(StringCatalog::missingKeys("en_US").empty());
}

}  // namespace
}  // namespace qm
