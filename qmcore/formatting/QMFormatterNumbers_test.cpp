#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <vector>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedGermanCLocale;
using testing::ScopedLocale;

TEST(QMFormatterNumbersTest, RoundDoubleRoundsHalvesAwayFromZero) {
  // 2.675 * 100 is exactly 267.5; 1.005 * 100 is 100.4999...
  const struct {
    double x;
    int places;
    double expected;
  } cases[] = {{2.675, 2, 2.68}, {1.005, 2, 1.0}, {-2.5, 0, -3.0}, {1250.0, -2, 1300.0}};
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(QMFormatter::roundDouble(c.x, c.places), c.expected)
        << c.x << " to " << c.places;
  }
  EXPECT_TRUE(std::isnan(QMFormatter::roundDouble(std::nan(""), 2)));
}

TEST(QMFormatterNumbersTest, FixedPrecisionTextsAreInvariantUnderAHostCLocale) {
  const ScopedGermanCLocale german;
  if (!german.active()) GTEST_SKIP() << "de_DE.UTF-8 is not installed";
  char probe[16];
  std::snprintf(probe, sizeof probe, "%.1f", 1.5);
  ASSERT_STREQ(probe, "1,5");  // the host's printf now writes commas

  const struct {
    std::string actual;
    const char* expected;
  } cases[] = {
      {QMFormatter::newStringForFloatPrecision1(1.25), "1.2"},  // printf: ties to even
      {QMFormatter::newStringForFloatPrecision2(1.005), "1.00"},
      {QMFormatter::newStringForFloatPrecision3(2.0), "2.000"},
      {QMFormatter::newStringForFloatPrecision2WithSign(0.0), "+0.00"},
      {QMFormatter::newStringForFloatPrecision2WithSign(-1.25), "-1.25"},
      {QMFormatter::invariantStringForDouble(-1234567.125), "-1234567.125000"},
      {QMFormatter::newStringForInt(-1234567), "-1234567"},
      {QMFormatter::newSecondsStringForSeconds(5), "05"},
      {QMFormatter::textForTimerForMinute(5, 9), "05:09"},
      {QMFormatter::stringFromFileSize(1572864), "1.5 MB"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);
}

TEST(QMFormatterNumbersTest, AutoPrecisionFormatSwitchesAtTenThousand) {
  const struct {
    double value;
    const char* format;
  } cases[] = {{9999.999, "%.2f"}, {10000.0, "%.0f"}, {-50000.0, "%.2f"}};
  for (const auto& c : cases)
    EXPECT_EQ(QMFormatter::autoPrecisionFormatForValue(c.value), c.format);
}

TEST(QMFormatterNumbersTest, StringFromDoubleUsesADotInEveryLocaleAndRoundsHalfToEven) {
  // No grouping; a negative count of places reads as none.
  const struct {
    double value;
    int places;
    const char* expected;
  } cases[] = {{1234567.891, 1, "1234567.9"},
               {0.125, 2, "0.12"},
               {0.135, 2, "0.14"},
               {-0.004, 2, "-0.00"},
               {7.25, -1, "7"}};
  const ScopedLocale german("de_DE");
  for (const auto& c : cases) {
    EXPECT_EQ(QMFormatter::stringFromDouble(c.value, c.places), c.expected) << c.value;
  }
  EXPECT_EQ(QMFormatter::p2StringFromDouble(1.0), "1.00");
  EXPECT_EQ(QMFormatter::p3StringFromDouble(1.23456), "1.235");
  EXPECT_EQ(QMFormatter::stringFromInt(-1234567), "-1234567");
}

TEST(QMFormatterNumbersTest, ReadingNumbers) {
  const struct {
    const char* locale;
    const char* text;
    std::int64_t expected;
  } integers[] = {{"en_US", "1,234", 1234},
                  {"en_US", "-12.7", -12},
                  {"en_US", "abc", 0},
                  {"en_US", "12abc", 0},
                  {"de_DE", "1.234", 1234},
                  {"de_DE", "12,7", 12},
                  {"en_US", "99999999999999999999", INT64_MAX}};
  for (const auto& c : integers) {
    const ScopedLocale scoped(c.locale);
    EXPECT_EQ(QMFormatter::integerFromString(c.text), c.expected) << c.locale << " " << c.text;
  }

  // The invariant reader needs a dot and nothing after the number, whatever the locale.
  const ScopedLocale german("de_DE");
  const struct {
    const char* text;
    double expected;
  } invariants[] = {{"-0.25", -0.25}, {"1000", 1000.0}, {"1,5", 0.0}, {"", 0.0}, {"1.5 m", 0.0}};
  for (const auto& c : invariants) {
    EXPECT_EQ(QMFormatter::doubleFromInvariantString(c.text), c.expected) << c.text;
  }

  // Only digits and one dot; the callback hears accepted numbers only.
  const struct {
    const char* text;
    std::optional<double> number;
  } numerics[] = {{"12.5", 12.5},         {".5", 0.5},
                  {"12.", 12.0},          {"", std::nullopt},
                  {".", std::nullopt},    {"-3", std::nullopt},
                  {"1,5", std::nullopt},  {"1e3", std::nullopt},
                  {" 1", std::nullopt},   {"12\n", std::nullopt},
                  {"1.2.3", std::nullopt}};
  for (const auto& c : numerics) {
    std::vector<double> calls;
    const bool accepted =
        QMFormatter::parseNumericString(c.text, [&calls](double v) { calls.push_back(v); });
    EXPECT_EQ(accepted, c.number.has_value()) << "'" << c.text << "'";
    EXPECT_EQ(calls, c.number ? std::vector<double>{*c.number} : std::vector<double>{})
        << "'" << c.text << "'";
  }
  EXPECT_TRUE(QMFormatter::parseNumericString("3"));  // no callback given
}

TEST(QMFormatterNumbersTest, CurrencyOfTheCurrentLocale) {
  const ScopedLocale german("de_DE");
  EXPECT_EQ(QMFormatter::localizationBasedCurrencySymbol(), "€");
  EXPECT_EQ(QMFormatter::localizationBasedCurrencyCode(), "EUR");
  EXPECT_EQ(QMFormatter::currencyPropertiesString(), "Währung: € (EUR), Locale: de_DE");
}

TEST(QMFormatterNumbersTest, FileSizesInBinaryMultiplesAtTheBoundaries) {
  // Just below a megabyte: kilobytes, rounded up by printf.
  const struct {
    std::int64_t bytes;
    const char* expected;
  } cases[] = {{1023, "1023 bytes"},
               {1024, "1 KB"},
               {1048575, "1024 KB"},
               {1048576, "1.0 MB"},
               {1073741823, "1024.0 MB"},
               {1073741824, "1.00 GB"},
               {INT64_MAX, "8589934592.00 GB"},
               {-5, "-5 bytes"}};
  for (const auto& c : cases) EXPECT_EQ(QMFormatter::stringFromFileSize(c.bytes), c.expected);
}

}  // namespace
}  // namespace qm
