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

// From several threads at once: a letter with a combining accent, a flag, a family joined by
// zero-width joiners and a CR LF are one character each.
TEST(UnicodeTextTest, SplitsIntoUserPerceivedCharactersOnEveryThread) {
  const std::string family = "\U0001F468\u200D\U0001F469\u200D\U0001F467";
  const std::string text = "e\u0301\U0001F1E9\U0001F1EA" + family + "\r\nx";
  const Clusters expected = {"e\u0301", "\U0001F1E9\U0001F1EA", family, "\r\n", "x"};
  std::vector<std::thread> threads;
  std::vector<Clusters> results(4);
  for (Clusters& result : results) {
    threads.emplace_back([&] {
      for (int n = 0; n < 200; ++n) result = graphemeClusters(text);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (const Clusters& result : results) EXPECT_EQ(result, expected);
}

TEST(UnicodeTextTest, CapitalizesEachWord) {
  EXPECT_EQ(capitalizedString("hOURS and minutes"), "Hours And Minutes");
  EXPECT_EQ(capitalizedString("ärger über"), "Ärger Über");
  EXPECT_EQ(capitalizedString(""), "");
}

TEST(TextCaseTest, MapsBeyondAsciiAndIgnoresTheCurrentLocale) {
  // Turkish would map "I" to dotless "ı" if the locale were used.
  const testing::ScopedLocale turkish("tr_TR");
  EXPECT_EQ(lowercaseString("Inch"), "inch");
  EXPECT_EQ(uppercaseString("Inch Straße"), "INCH STRASSE");
}

TEST(CharacterPrefixTest, ComparesByWholeCharacters) {
  const struct {
    const char* text;
    const char* prefix;
    bool expected;
  } cases[] = {
      {"Cafe", "Cafe", true},
      {"Cafe", "Cafe Central", false},
      {"", "a", false},
      // A combining accent after the prefix belongs to its last character.
      {"Cafe\u0301 Central", "Cafe", false},
      // Canonically equivalent spellings are the same characters.
      {"Caf\u00e9 Central", "Cafe\u0301", true},
      {"Cafe\u0301 Central", "Caf\u00e9", true},
      // A flag is one character made of two code points.
      {"\U0001F1E9\U0001F1EA Berlin", "\U0001F1E9", false},
      // Invalid UTF-8 does no harm.
      {"\xff\xfe"
       "abc",
       "\xff", true},
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
  for (const auto& [text, matches] :
       {std::pair{"12.5", true}, {"a12", false}, {"12 ", false}, {"\u0661\u0662", true}}) {
    EXPECT_EQ(number->matchesWholeText(text), matches) << text;
  }
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
