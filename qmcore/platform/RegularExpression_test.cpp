#include "qmcore/platform/RegularExpression.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(RegularExpressionTest, RejectsInvalidPatterns) {
  EXPECT_FALSE(RegularExpression::create("(unclosed"));
  EXPECT_FALSE(RegularExpression::create("a{2,1}"));
  EXPECT_TRUE(RegularExpression::create(""));
}

TEST(RegularExpressionTest, MatchesWholeTextOnly) {
  const auto number = RegularExpression::create("\\d+(\\.\\d+)?");
  ASSERT_TRUE(number);
  const struct {
    const char* text;
    bool matches;
  } cases[] = {{"12", true},   {"12.5", true}, {"12.", false},        {"a12", false},
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
  EXPECT_EQ(vowels->replacingMatches("", "x"), "");
}

}  // namespace
}  // namespace qm
