#include "qmcore/platform/NumberFormatter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/NumberFormatterTesting.hpp"
#include "qmcore/testing/NonFinite.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::kInf;
using testing::kNaN;

class NumberFormatterTest : public ::testing::Test {
 protected:
  const testing::ScopedLocale locale_;
};

// Styles in fixed locales, one a rule; the test from several threads uses them too.
const struct {
  NumberFormatOptions options;
  double value;
  const char* text;
} kTexts[] = {
    // A forced "." in a locale writing ","; no groups unless asked; a rounded zero keeps its sign.
    {{.maximumFractionDigits = 1, .decimalSeparator = ".", .locale = "de_DE"}, 1234.56, "1234.6"},
    {{.minimumFractionDigits = 2, .maximumFractionDigits = 2, .locale = "en_US"}, -0.004, "-0.00"},
    // Rounding works on the shortest decimal of the double: printf would give 2.67 for 2.675.
    {{.maximumFractionDigits = 2, .locale = "en_US"}, 2.675, "2.68"},
    {{.usesGrouping = true, .locale = "hi_IN"}, 1234567, "12,34,567"},  // the Indian way
    {{.minimumIntegerDigits = 2, .locale = "en_US"}, 5, "05"},
};

TEST_F(NumberFormatterTest, WritesTheTextsOfItsStyle) {
  for (const auto& c : kTexts) {
    EXPECT_EQ(NumberFormatter(c.options).format(c.value), c.text) << c.value;
  }
  // The units' formatter: "." and no groups in the current locale, whichever it is.
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(NumberFormatter::withDecimals(1).format(12345.67), "12345.7");
}

TEST_F(NumberFormatterTest, ParsesWholeTextsOnly) {
  const NumberFormatter local(NumberFormatOptions{.maximumFractionDigits = 6, .locale = "de_DE"});
  const NumberFormatter dot(
      NumberFormatOptions{.maximumFractionDigits = 6, .decimalSeparator = ".", .locale = "de_DE"});
  EXPECT_EQ(local.parse("1,5"), 1.5);
  EXPECT_EQ(dot.parse("-1.5"), -1.5);
  for (const char* text : {"1.5x", "", "abc"}) EXPECT_FALSE(dot.parse(text)) << text;

  setCurrentLocaleIdentifier("de_DE");
  const NumberFormatter grouped(
      NumberFormatOptions{.maximumFractionDigits = 6, .usesGrouping = true});
  const std::pair<const char*, std::optional<std::int64_t>> cases[] = {
      {"-1.234,9", -1234},
      {"NaN", std::nullopt},
      // 19 digits that start like 2^63: ICU alone calls some of them out of range.
      {"9.000.000.000.000.000.000", 9000000000000000000},
      {"-9.223.372.036.854.775.809", INT64_MIN}};
  for (const auto& [text, expected] : cases)
    EXPECT_EQ(grouped.parseInteger(text), expected) << text;
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
  switch (pick(0, 4)) {
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
    default: {
      const double special[] = {0.0, -0.0, kInf, -kInf, kNaN, DBL_TRUE_MIN, 1e15, 1e300};
      return special[pick(0, 7)];
    }
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
        // The benchmarks' formatter that is made afresh for each call writes the same.
        ASSERT_EQ(internal::formatWithoutCache(formatter, -1234.5), formatter.format(-1234.5));
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
    NumberFormatOptions options;
    double value;
    const char* text;
  } cases[] = {
      // An algorithmic numbering system (Chinese numerals), which ICU writes in Latin digits.
      {{.maximumFractionDigits = 1, .locale = "zh_TW@numbers=hant"}, 12.5, "12.5"},
      {{.minimumIntegerDigits = 3, .usesGrouping = true, .locale = "en_US"}, 7.0, "007"},
      {{.maximumFractionDigits = 30, .locale = "en_US"}, 0.1, "0.1"},
      {{.minimumFractionDigits = 3, .maximumFractionDigits = 1, .locale = "en_US"}, 1.0, ""},
  };
  for (const auto& c : cases) {
    const NumberFormatter formatter(c.options);
    EXPECT_FALSE(internal::writesWithoutIcu(formatter)) << c.text;
    EXPECT_EQ(formatter.format(c.value), c.text);
  }
}

TEST_F(NumberFormatterTest, CurrencyOfALocalesRegion) {
  EXPECT_EQ(NumberFormatter::currencySymbol("de_AT"), "€");
  EXPECT_EQ(NumberFormatter::currencyCode("de"), "XXX");
  setCurrentLocaleIdentifier("en_GB");
  EXPECT_EQ(NumberFormatter::currencyCode(), "GBP");
}

TEST_F(NumberFormatterTest, CacheServesSeveralThreadsAtOnceInTheCurrentLocale) {
  // A style without a locale follows the current one, on every thread: what the cache keeps
  // for the first locale must not serve the second.
  const NumberFormatter grouped(
      NumberFormatOptions{.maximumFractionDigits = 1, .usesGrouping = true});
  EXPECT_EQ(grouped.format(12345.67), "12,345.7");
  setCurrentLocaleIdentifier("de_DE");
  std::atomic<int> failures = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 4; ++t) {
    threads.emplace_back([&, t] {
      // A style of this thread's own, so that threads add to the cache while others read it.
      const NumberFormatter padded(NumberFormatOptions{.minimumIntegerDigits = 2 + t});
      const std::string paddedSeven = std::string(static_cast<std::size_t>(1 + t), '0') + "7";
      for (std::size_t i = 0; i < 100; ++i) {
        const std::size_t row = (static_cast<std::size_t>(t) + i) % std::size(kTexts);
        const NumberFormatter formatter(kTexts[row].options);
        if (formatter.format(kTexts[row].value) != kTexts[row].text) ++failures;
        if (padded.format(std::int64_t{7}) != paddedSeven) ++failures;
        if (grouped.format(12345.67) != "12.345,7") ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
}

// Conversions with random flags, widths and precisions, and random arguments
// (ties such as 0.125 and 2.5, huge and tiny numbers, non-finite ones), written by
// invariantFormat and by the C library's snprintf in the "C" locale.
class InvariantFormatRandomTest : public ::testing::Test {
 protected:
  std::string conversion(bool withPrecision) {
    std::string s = "<%";
    if (coin()) s += '+';
    if (coin()) s += '0';
    if (coin()) s += std::to_string(pick(0, 12));
    if (withPrecision && coin()) s += "." + std::to_string(pick(0, 12));
    return s;
  }
  double number() {
    const double scale = std::pow(10.0, pick(-8, 20));
    switch (pick(0, 2)) {
      case 0:  // a tie or near-tie in binary: k / 8, k / 1000
        return (pick(0, 1) ? -1 : 1) * pick(0, 100000) / (pick(0, 1) ? 8.0 : 1000.0);
      case 1:
        return std::uniform_real_distribution<double>(-1.0, 1.0)(random_) * scale;
      default:
        return std::vector<double>{
            0.0, -0.0, testing::kInf, testing::kNaN, DBL_MAX, DBL_TRUE_MIN}[pick(0, 5)];
    }
  }
  static std::string printed(const char* format, auto... arguments) {
    char buffer[1024];
    std::snprintf(buffer, sizeof buffer, format, arguments...);
    return buffer;
  }
  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool coin() { return pick(0, 1) == 1; }

  std::mt19937_64 random_{20240521};
};

TEST_F(InvariantFormatRandomTest, ConversionsMatchTheCLibrary) {
  const char* const words[] = {"", "m", "°", "nautical miles"};
  for (int i = 0; i < 20000; ++i) {
    const std::string f = conversion(true) + "f>";
    const double value = number();
    ASSERT_EQ(invariantFormat(f.c_str(), value), printed(f.c_str(), value)) << f << " " << value;
    const std::string d = conversion(false) + "d>";
    const int integer = coin() ? pick(-100000, 100000)
                               : std::vector<int>{0, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()}[pick(0, 2)];
    ASSERT_EQ(invariantFormat(d.c_str(), integer), printed(d.c_str(), integer)) << d;
    // Flags other than a width are undefined for texts and characters.
    const std::string width = std::to_string(pick(0, 16));
    const std::string s = "%" + width + "s|%.*s|%" + width + "c|%%|" + conversion(true) + "g>";
    const char* word = words[pick(0, 3)];
    const int precision = pick(-2, 16);
    ASSERT_EQ(invariantFormat(s.c_str(), word, precision, word, 'x', value),
              printed(s.c_str(), word, precision, word, 'x', value))
        << s << " " << word << " " << precision;
  }
  // Long texts are not cut.
  const std::string word(1000, 'x');
  EXPECT_EQ(invariantFormat("%s.%s", word.c_str(), word.c_str()), word + "." + word);
  EXPECT_EQ(invariantFormat("%.300f", 1.0), "1." + std::string(300, '0'));
}

TEST(InvariantFormatTest, IgnoresTheHostsCLocale) {
  const testing::ScopedGermanCLocale german;
  if (!german.active()) GTEST_SKIP() << "no de_DE.UTF-8 C locale (scripts/bootstrap.sh makes it)";
  EXPECT_EQ(invariantFormat("%.1f", 1.5), "1.5");
  EXPECT_EQ(invariantFormat("%.1f %g", 1.5, 2.5), "1.5 2.5");  // through the C library
}

}  // namespace
}  // namespace qm
