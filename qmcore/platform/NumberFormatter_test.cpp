#include "qmcore/platform/NumberFormatter.hpp"

#include <gtest/gtest.h>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

class NumberFormatterTest : public ::testing::Test {
 protected:
  void SetUp() override { saved_ = currentLocaleIdentifier(); }
  void TearDown() override { setCurrentLocaleIdentifier(saved_); }
  std::string saved_;
};

TEST_F(NumberFormatterTest, FixedDecimalsWithForcedSeparatorInEveryLocale) {
  for (const char* locale : {"en_US", "de_DE", "fr_FR"}) {
    setCurrentLocaleIdentifier(locale);
    const NumberFormatter two = NumberFormatter::withDecimals(2);
    EXPECT_EQ(two.format(1234.5), "1234.50") << locale;
    EXPECT_EQ(two.format(-0.004), "-0.00") << locale;
    EXPECT_EQ(NumberFormatter::withDecimals(0).format(12345.6), "12346") << locale;
    EXPECT_EQ(NumberFormatter::withDecimals(1).format(12345.6), "12345.6") << locale;
  }
}

TEST_F(NumberFormatterTest, RoundsHalfToEvenOnTheShortestDecimal) {
  setCurrentLocaleIdentifier("en_US");
  const NumberFormatter two = NumberFormatter::withDecimals(2);
  EXPECT_EQ(two.format(0.125), "0.12");
  EXPECT_EQ(two.format(0.135), "0.14");
  EXPECT_EQ(two.format(2.675), "2.68");  // printf would give 2.67
  EXPECT_EQ(NumberFormatter::withDecimals(0).format(2.5), "2");
  EXPECT_EQ(NumberFormatter::withDecimals(0).format(3.5), "4");
}

TEST_F(NumberFormatterTest, LocaleSeparatorsAndGroupingWhenAsked) {
  const NumberFormatter grouped(NumberFormatOptions{
      .minimumFractionDigits = 1, .maximumFractionDigits = 1, .usesGrouping = true});
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(grouped.format(12345.67), "12.345,7");
  setCurrentLocaleIdentifier("en_US");
  EXPECT_EQ(grouped.format(12345.67), "12,345.7");
  const NumberFormatter fixedLocale(NumberFormatOptions{
      .minimumFractionDigits = 1, .maximumFractionDigits = 1, .locale = "de_DE"});
  EXPECT_EQ(fixedLocale.format(0.25), "0,2");
}

TEST_F(NumberFormatterTest, FormatsIntegersAndPadsIntegerDigits) {
  setCurrentLocaleIdentifier("en_US");
  EXPECT_EQ(NumberFormatter(NumberFormatOptions{}).format(std::int64_t{-42}), "-42");
  const NumberFormatter padded(NumberFormatOptions{.minimumIntegerDigits = 2});
  EXPECT_EQ(padded.format(std::int64_t{5}), "05");
}

TEST_F(NumberFormatterTest, ParsesWholeTextsOnly) {
  setCurrentLocaleIdentifier("de_DE");
  const NumberFormatter local(NumberFormatOptions{.maximumFractionDigits = 6});
  EXPECT_EQ(local.parse("1,5"), 1.5);
  const NumberFormatter invariant(
      NumberFormatOptions{.maximumFractionDigits = 6, .decimalSeparator = "."});
  EXPECT_EQ(invariant.parse("1.5"), 1.5);
  EXPECT_EQ(invariant.parse("-3"), -3.0);
  EXPECT_FALSE(invariant.parse("1.5x"));
  EXPECT_FALSE(invariant.parse(""));
  EXPECT_FALSE(invariant.parse("abc"));
}

}  // namespace
}  // namespace qm
