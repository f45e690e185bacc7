#include "qmcore/platform/NumberFormatter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

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

TEST_F(NumberFormatterTest, ParsesIntegersByDroppingTheFraction) {
  setCurrentLocaleIdentifier("de_DE");
  const NumberFormatter local(
      NumberFormatOptions{.maximumFractionDigits = 6, .usesGrouping = true});
  const struct {
    const char* text;
    std::optional<std::int64_t> expected;
  } cases[] = {{"1.234", 1234},      {"-12,9", -12},     {"12,9", 12},
               {"x", std::nullopt},  {"", std::nullopt}, {"99999999999999999999", INT64_MAX},
               {"NaN", std::nullopt}};
  for (const auto& c : cases) EXPECT_EQ(local.parseInteger(c.text), c.expected) << c.text;
}

TEST_F(NumberFormatterTest, UncachedFormatterWritesTheSameText) {
  for (const char* locale : {"en_US", "de_DE", "ar_EG"}) {
    setCurrentLocaleIdentifier(locale);
    const NumberFormatter two = NumberFormatter::withDecimals(2);
    for (const double value : {1234.5, -0.125, 1e15}) {
      EXPECT_EQ(two.formatWithoutCache(value), two.format(value)) << locale << " " << value;
    }
  }
}

TEST_F(NumberFormatterTest, CurrencyOfALocalesRegion) {
  EXPECT_EQ(NumberFormatter::currencySymbol("de_AT"), "€");
  EXPECT_EQ(NumberFormatter::currencyCode("ja_JP"), "JPY");
  EXPECT_EQ(NumberFormatter::currencyCode("de"), "XXX");
  setCurrentLocaleIdentifier("en_GB");
  EXPECT_EQ(NumberFormatter::currencyCode(), "GBP");
}

TEST_F(NumberFormatterTest, CacheServesSeveralThreadsAtOnce) {
  // Fixed locales, so that no thread depends on the process-wide current one.
  const struct {
    NumberFormatOptions options;
    double value;
    const char* text;
    double parsed;
  } cases[] = {
      {{.maximumFractionDigits = 1, .usesGrouping = true, .locale = "de_DE"},
       12345.67,
       "12.345,7",
       12345.7},
      {{.maximumFractionDigits = 1, .usesGrouping = true, .locale = "en_US"},
       12345.67,
       "12,345.7",
       12345.7},
      {{.minimumFractionDigits = 2,
        .maximumFractionDigits = 2,
        .decimalSeparator = ".",
        .locale = "fr_FR"},
       1234.5,
       "1234.50",
       1234.5},
      {{.usesGrouping = true, .locale = "hi_IN"}, 1234567, "12,34,567", 1234567},
      {{.maximumFractionDigits = 2, .locale = "ar_EG"}, 1.5, "\u0661\u066b\u0665", 1.5},
  };
  constexpr int kThreads = 4;
  std::atomic<int> failures = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      // A style of this thread's own, so that threads add to the cache while others read it.
      const NumberFormatter padded(NumberFormatOptions{.minimumIntegerDigits = 2 + t});
      const std::string paddedSeven = std::string(static_cast<std::size_t>(1 + t), '0') + "7";
      for (int i = 0; i < 100; ++i) {
        const auto& c = cases[(t + i) % std::size(cases)];
        const NumberFormatter formatter(c.options);
        if (formatter.format(c.value) != c.text) ++failures;
        if (formatter.parse(c.text) != c.parsed) ++failures;
        if (padded.format(std::int64_t{7}) != paddedSeven) ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
}

}  // namespace
}  // namespace qm
