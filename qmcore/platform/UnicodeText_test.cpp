#include "qmcore/platform/UnicodeText.hpp"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "qmcore/platform/CharacterPrefix.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/RegularExpression.hpp"
#include "qmcore/platform/TextCase.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using Clusters = std::vector<std::string>;

TEST(UnicodeTextTest, SplitsIntoUserPerceivedCharacters) {
  const struct {
    const char* text;
    Clusters expected;
  } cases[] = {
      {"", {}},
      {"e\u0301x", {"e\u0301", "x"}},                            // letter with combining accent
      {"\U0001F1E9\U0001F1EA!", {"\U0001F1E9\U0001F1EA", "!"}},  // a flag is one character
      {"\U0001F468\u200D\U0001F469\u200D\U0001F467",
       {"\U0001F468\u200D\U0001F469\u200D\U0001F467"}},
      {"a\r\nb", {"a", "\r\n", "b"}},
      {"日本", {"日", "本"}},
  };
  for (const auto& c : cases) EXPECT_EQ(graphemeClusters(c.text), c.expected) << c.text;
}

TEST(UnicodeTextTest, SplittingIsSafeFromSeveralThreads) {
  std::vector<std::thread> threads;
  std::vector<Clusters> results(4);
  for (size_t i = 0; i < results.size(); ++i) {
    threads.emplace_back([&results, i] {
      for (int n = 0; n < 200; ++n) results[i] = graphemeClusters("x\U0001F1E9\U0001F1EAy");
    });
  }
  for (auto& t : threads) t.join();
  for (const auto& r : results) EXPECT_EQ(r, (Clusters{"x", "\U0001F1E9\U0001F1EA", "y"}));
}

TEST(UnicodeTextTest, CapitalizesEachWord) {
  EXPECT_EQ(capitalizedString("hOURS and minutes"), "Hours And Minutes");
  EXPECT_EQ(capitalizedString("ärger über"), "Ärger Über");
  EXPECT_EQ(capitalizedString(""), "");
}

TEST(TextCaseTest, MapsBeyondAsciiAndIgnoresTheCurrentLocale) {
  // Turkish would map "I" to dotless "ı" if the locale were used.
  const testing::ScopedLocale turkish("tr_TR");
  const struct {
    const char* text;
    const char* lower;
    const char* upper;
  } cases[] = {
      {"Fläche", "fläche", "FLÄCHE"},
      {"Straße", "straße", "STRASSE"},
      {"Inch", "inch", "INCH"},
      {"坪", "坪", "坪"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(lowercaseString(c.text), c.lower) << c.text;
    EXPECT_EQ(uppercaseString(c.text), c.upper) << c.text;
  }
}

TEST(CharacterPrefixTest, ComparesByWholeCharacters) {
  const struct {
    const char* text;
    const char* prefix;
    bool expected;
  } cases[] = {
      {"Cafe", "Cafe", true},
      {"Cafe", "Cafe Central", false},
      {"", "", true},
      {"", "a", false},
      {"cafe Central", "Cafe", false},
      // A combining accent after the prefix belongs to its last character.
      {"Cafe\u0301 Central", "Cafe", false},
      // Canonically equivalent spellings are the same characters.
      {"Caf\u00e9 Central", "Cafe\u0301", true},
      {"Cafe\u0301 Central", "Caf\u00e9", true},
      // A flag is one character made of two code points.
      {"\U0001F1E9\U0001F1EA Berlin", "\U0001F1E9", false},
      {"\U0001F1E9\U0001F1EA Berlin", "\U0001F1E9\U0001F1EA", true},
      {"\r\nA", "\r", false},
      // Invalid UTF-8 does no harm.
      {"\xff\xfe"
       "abc",
       "\xff", true},
      {"abc", "\xc3", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hasCharacterPrefix(c.text, c.prefix), c.expected)
        << "'" << c.text << "' / '" << c.prefix << "'";
  }
}

TEST(RegularExpressionTest, MatchesWholeTextsAndRejectsInvalidPatterns) {
  EXPECT_FALSE(RegularExpression::create("(unclosed"));
  EXPECT_FALSE(RegularExpression::create("a{2,1}"));
  const auto number = RegularExpression::create("\\d+(\\.\\d+)?");
  ASSERT_TRUE(number);
  const struct {
    const char* text;
    bool matches;
  } cases[] = {{"12.5", true}, {"12.", false}, {"a12", false},
               {"12 ", false}, {"", false},    {"\u0661\u0662", true}};  // Arabic-Indic digits
  for (const auto& c : cases) EXPECT_EQ(number->matchesWholeText(c.text), c.matches) << c.text;
}

TEST(RegularExpressionTest, FirstMatchGivesGroupsAndTellsUnmatchedFromEmpty) {
  const auto expression = RegularExpression::create("@(\\d*)(x)?");
  ASSERT_TRUE(expression);
  const auto match = expression->firstMatch("ä speed@120 and @7");
  ASSERT_TRUE(match);
  EXPECT_EQ(match->numberOfGroups(), 2);
  EXPECT_EQ(match->group(0), "@120");
  EXPECT_EQ(match->group(1), "120");
  EXPECT_EQ(match->group(2), std::nullopt);  // took no part
  EXPECT_EQ(match->group(3), std::nullopt);  // no such group
  EXPECT_EQ(expression->firstMatch("x@")->group(1), "");
  EXPECT_FALSE(expression->firstMatch("no at sign"));
}

TEST(RegularExpressionTest, ReplacesEveryMatch) {
  const auto vowels = RegularExpression::create("[aeiou]", {.caseInsensitive = true});
  ASSERT_TRUE(vowels);
  EXPECT_EQ(vowels->replacingMatches("Über Alles", ""), "Übr lls");
  EXPECT_EQ(vowels->replacingMatches("Abc", "<$0>"), "<A>bc");
  EXPECT_EQ(vowels->replacingMatches("Abc", "$9"), "Abc");  // a missing group: unchanged
}

}  // namespace
}  // namespace qm
