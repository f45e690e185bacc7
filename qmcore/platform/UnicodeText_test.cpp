#include "qmcore/platform/UnicodeText.hpp"

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "qmcore/platform/CharacterPrefix.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/PostalAddressFormatter.hpp"
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

// Turkish would map "I" to dotless "ı" if the current locale were used.
TEST(TextCaseTest, MapsBeyondAsciiAndIgnoresTheCurrentLocale) {
  const testing::ScopedLocale turkish("tr_TR");
  EXPECT_EQ(lowercaseString("Inch"), "inch");
  EXPECT_EQ(uppercaseString("Inch Straße"), "INCH STRASSE");
  EXPECT_EQ(capitalizedString("hOURS and ärger"), "Hours And Ärger");
}

TEST(CharacterPrefixTest, ComparesByWholeCharacters) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      {"Cafe", "Cafe", true},
      {"Cafe", "Cafe Central", false},
      // A combining accent after the prefix belongs to its last character.
      {"Cafe\u0301 Central", "Cafe", false},
      // Canonically equivalent spellings are the same characters.
      {"Caf\u00e9 Central", "Cafe\u0301", true},
      // A flag is one character made of two code points.
      {"\U0001F1E9\U0001F1EA Berlin", "\U0001F1E9", false},
      // Invalid UTF-8 does no harm.
      {"\xff\xfe!", "\xff", true},
  };
  for (const auto& [text, prefix, expected] : cases) {
    EXPECT_EQ(hasCharacterPrefix(text, prefix), expected)
        << "'" << text << "' / '" << prefix << "'";
  }
}

TEST(RegularExpressionTest, MatchesAndReplacesWholeTextsAndRejectsInvalidPatterns) {
  EXPECT_FALSE(RegularExpression::create("(unclosed"));
  const auto number = RegularExpression::create("\\d+(\\.\\d+)?");
  ASSERT_TRUE(number);
  for (const auto& [text, matches] :
       {std::pair{"12.5", true}, {"a12", false}, {"12 ", false}, {"\u0661\u0662", true}}) {
    EXPECT_EQ(number->matchesWholeText(text), matches) << text;
  }
  const auto vowels = RegularExpression::create("[aeiou]", {.caseInsensitive = true});
  EXPECT_EQ(vowels->replacingMatches("Über Alles", ""), "Übr lls");
  EXPECT_EQ(vowels->replacingMatches("Abc", "<$0>"), "<A>bc");
  EXPECT_EQ(vowels->replacingMatches("Abc", "$9"), "Abc");  // a missing group: unchanged
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

TEST(PostalAddressFormatterTest, LaysOutEachCountryAsItsPostExpects) {
  const std::pair<const char*, const char*> cases[] = {
      {"us", "Main St 12\nSpringfield IL 62701"},
      {"BR", "Main St 12\nSpringfield - IL\n62701"},
      {"JP", "〒62701\nILSpringfield\nMain St 12"},
      {"ZZ", "Main St 12\nSpringfield IL 62701"},
  };
  const CNPostalAddressFormatter formatter;
  CNPostalAddress address{
      .street = "Main St 12", .city = "Springfield", .state = "IL", .postalCode = "62701"};
  for (const auto& [code, expected] : cases) {
    address.ISOCountryCode = code;
    EXPECT_EQ(formatter.stringFromPostalAddress(address), expected) << code;
  }
}

TEST(PostalAddressFormatterTest, LeavesOutEmptyFieldsTheirSeparatorsAndEmptyLines) {
  const CNPostalAddressFormatter formatter;
  const struct {
    const char* what;
    CNPostalAddress address;
    const char* expected;
  } cases[] = {
      {"nothing", {}, ""},
      {"country only", {.country = "Germany", .ISOCountryCode = "DE"}, "Germany"},
      {"no state: no double space",
       {.city = "Springfield", .postalCode = "62701", .ISOCountryCode = "US"},
       "Springfield 62701"},
      {"no city: the separator before the state goes too",
       {.state = "SP", .ISOCountryCode = "BR"},
       "SP"},
      {"no postcode: no prefix mark", {.city = "Tokyo", .ISOCountryCode = "JP"}, "Tokyo"},
      {"sub-locality on its own line",
       {.street = "1 High St", .subLocality = "Soho", .city = "London", .ISOCountryCode = "GB"},
       "1 High St\nSoho\nLondon"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(formatter.stringFromPostalAddress(c.address), c.expected) << c.what;
  }
}

TEST(PostalAddressFormatterTest, StreetLinePutsTheNumberWhereTheCountryDoes) {
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"Main St", "12", "US", "12 Main St"},
      {"Hauptstraße", "12", "DE", "Hauptstraße 12"},
      {"Calle Mayor", "12", "ES", "Calle Mayor, 12"},
      {"中山路", "12号", "CN", "中山路12号"},
      {"Main St", "", "DE", "Main St"},
  };
  for (const auto& [street, number, code, expected] : cases) {
    EXPECT_EQ(CNPostalAddressFormatter::streetLine(street, number, code), expected) << code;
  }
}

TEST(PostalAddressFormatterTest, CountryDisplayNames) {
  EXPECT_EQ(countryDisplayName("de", "de_DE"), "Deutschland");
  EXPECT_EQ(countryDisplayName("1$", "en_US"), "1$");
  EXPECT_EQ(countryDisplayName("", "en_US"), "");
}

}  // namespace
}  // namespace qm
