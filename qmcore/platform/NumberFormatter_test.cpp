#include "qmcore/platform/NumberFormatter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/NumberFormatterTesting.hpp"

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
  } cases[] = {{"1.234", 1234},
               {"-12,9", -12},
               {"12,9", 12},
               {"x", std::nullopt},
               {"", std::nullopt},
               {"99999999999999999999", INT64_MAX},
               {"NaN", std::nullopt},
               // 19 digits that start like 2^63: ICU alone calls some of them out of range.
               {"9.000.000.000.000.000.000", 9000000000000000000},
               {"9.223.372.036.854.775.800,9", 9223372036854775800},
               {"9.220.000.000.000.000.000", 9220000000000000000},
               {"9.223.372.036.854.775.808", INT64_MAX},
               {"-9.223.372.036.854.775.808", INT64_MIN},
               {"-9.223.372.036.854.775.809", INT64_MIN}};
  for (const auto& c : cases) EXPECT_EQ(local.parseInteger(c.text), c.expected) << c.text;
}

TEST_F(NumberFormatterTest, UncachedFormatterWritesTheSameText) {
  for (const char* locale : {"en_US", "de_DE", "ar_EG"}) {
    setCurrentLocaleIdentifier(locale);
    const NumberFormatter two = NumberFormatter::withDecimals(2);
    for (const double value : {1234.5, -0.125, 1e15}) {
      EXPECT_EQ(internal::formatWithoutCache(two, value), two.format(value))
          << locale << " " << value;
    }
  }
}

// Numbers that make a fast path go wrong: ties of the shortest decimal one place beyond the
// kept ones (1.015, -0.5), near-ties, carries (9.995), numbers with many digits, tiny and huge
// ones, and the non-finite ones.
double trickyNumber(std::mt19937_64& random, int decimals) {
  const auto pick = [&random](std::int64_t low, std::int64_t high) {
    return std::uniform_int_distribution<std::int64_t>(low, high)(random);
  };
  const double sign = pick(0, 1) == 1 ? -1.0 : 1.0;
  const double place = std::pow(10.0, decimals + 1);
  switch (pick(0, 5)) {
    case 0:  // x.xx5, and x.xx49 and x.xx51 beside it
      return sign * static_cast<double>(pick(0, 10000000) * 100 + 50 + pick(-1, 1)) /
             (place * 10.0);
    case 1:  // just below a carry: 9.995, 99.9999
      return sign * (std::pow(10.0, static_cast<double>(pick(0, 6))) -
                     5.0 / place * static_cast<double>(pick(0, 1)));
    case 2:  // any double from 1e-12 to 1e17
      return sign * std::uniform_real_distribution<double>(1.0, 10.0)(random) *
             std::pow(10.0, static_cast<double>(pick(-12, 17)));
    case 3:  // whole numbers, where the grouping shows
      return sign * static_cast<double>(pick(0, INT64_C(999999999999)));
    case 4: {
      const double special[] = {0.0,
                                -0.0,
                                std::numeric_limits<double>::infinity(),
                                -std::numeric_limits<double>::infinity(),
                                std::nan(""),
                                std::numeric_limits<double>::denorm_min(),
                                1e15,
                                1e300};
      return special[pick(0, 7)];
    }
    default:
      return sign * std::uniform_real_distribution<double>(0.0, 2000.0)(random);
  }
}

TEST_F(NumberFormatterTest, TextsAreIcusInEveryLocaleAndStyle) {
  // Latin, Arabic-Indic and Bengali digits; groups of 3, of 3 then 2 (Indian), none below
  // 10000 (Spanish); minus signs of one byte and of several; "." forced over "." grouping.
  const char* const locales[] = {"en_US", "de_DE", "fr_FR", "hi_IN", "en_IN", "ar_EG",
                                 "ja_JP", "es_ES", "sv_SE", "fa_IR", "bn_BD", "en_US_POSIX"};
  std::mt19937_64 random(20240521);
  for (const char* locale : locales) {
    for (int decimals = 0; decimals <= 4; ++decimals) {
      for (const int style : {0, 1, 2, 3}) {
        const NumberFormatter formatter(NumberFormatOptions{
            .minimumFractionDigits = style % 2 == 0 ? decimals : 0,
            .maximumFractionDigits = decimals,
            .usesGrouping = style >= 2,
            .decimalSeparator =
                style == 0 || style == 3 ? std::optional<std::string>(".") : std::nullopt,
            .locale = locale});
        const std::string what = std::string(locale) + " decimals " + std::to_string(decimals) +
                                 " style " + std::to_string(style);
        ASSERT_TRUE(internal::writesWithoutIcu(formatter)) << what;
        for (int i = 0; i < 100; ++i) {
          const double value = trickyNumber(random, decimals);
          ASSERT_EQ(formatter.format(value), internal::formatWithIcu(formatter, value))
              << what << " " << value;
          const auto integer = static_cast<std::int64_t>(
              std::uniform_real_distribution<double>(-1e18, 1e18)(random) /
              std::pow(10.0, static_cast<double>(i % 19)));
          ASSERT_EQ(formatter.format(integer), internal::formatWithIcu(formatter, integer))
              << what << " " << integer;
        }
      }
    }
  }
}

TEST_F(NumberFormatterTest, StylesTheFastPathCannotWriteStillGetIcusTexts) {
  const struct {
    const char* locale;
    NumberFormatOptions options;
    double value;
    const char* text;
  } cases[] = {
      // An algorithmic numbering system (Chinese numerals), which ICU writes in Latin digits.
      {"zh_TW@numbers=hant", {.maximumFractionDigits = 1}, 12.5, "12.5"},
      {"en_US", {.minimumIntegerDigits = 3, .usesGrouping = true}, 7.0, "007"},
      {"en_US", {.maximumFractionDigits = 30}, 0.1, "0.1"},
      {"en_US", {.minimumFractionDigits = 3, .maximumFractionDigits = 1}, 1.0, ""},
  };
  for (const auto& c : cases) {
    NumberFormatOptions options = c.options;
    options.locale = c.locale;
    const NumberFormatter formatter(options);
    EXPECT_FALSE(internal::writesWithoutIcu(formatter)) << c.locale << " " << c.value;
    EXPECT_EQ(formatter.format(c.value), c.text) << c.locale << " " << c.value;
  }
}

TEST_F(NumberFormatterTest, FollowsTheCurrentLocaleOnEveryThread) {
  const NumberFormatter grouped(
      NumberFormatOptions{.maximumFractionDigits = 1, .usesGrouping = true});
  for (int round = 0; round < 3; ++round) {
    for (const auto& [locale, text] : {std::pair{"en_US", "12,345.7"},
                                       {"de_DE", "12.345,7"},
                                       {"hi_IN", "12,345.7"},
                                       {"ar_EG", "١٢٬٣٤٥٫٧"}}) {
      setCurrentLocaleIdentifier(locale);
      EXPECT_EQ(grouped.format(12345.67), text) << locale;
      std::string other;
      std::thread([&] { other = grouped.format(12345.67); }).join();
      EXPECT_EQ(other, text) << locale;
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
