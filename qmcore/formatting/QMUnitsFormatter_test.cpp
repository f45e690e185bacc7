#include "qmcore/formatting/QMUnitsFormatter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/formatting/QMStringForFloatPrecision.hpp"
#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/testing/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

using F = QMUnitsFormatter;

// The labels come from the unit-system table: a row without a key and an unknown code give "".
TEST(QMUnitsFormatter, LabelsOfARowWithMissingKeysAndOfAnUnknownCode) {
  const struct {
    std::int64_t code;
    const char *plural, *speed, *spokenSpeed, *pace, *small, *smallLeft, *bigLeft;
  } cases[] = {
      // Imperial with yards: miles as the big unit, but no pace and no big distance left.
      {3, "miles", "mph", "miles per hour", "", "Yards", "yards to go", ""},
      {4, "", "", "", "", "", "", ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.code);
    EXPECT_EQ(F::longTextForPluralKilometricUnitType(c.code), c.plural);
    EXPECT_EQ(F::textForKilometricSpeedType(c.code), c.speed);
    EXPECT_EQ(F::speechTextForKilometricSpeedType(c.code), c.spokenSpeed);
    EXPECT_EQ(F::textForPaceUnitWithUnitType(c.code), c.pace);
    EXPECT_EQ(F::longTextForUnitType(c.code), c.small);
    EXPECT_EQ(F::longTextForDistanceLeftUnitType(c.code), c.smallLeft);
    EXPECT_EQ(F::longTextForKilometricDistanceLeftUnitType(c.code), c.bigLeft);
    const auto type = static_cast<DistanceUnitType>(c.code);
    EXPECT_EQ(F::longTextForDistanceLeftWithUnit({.isKilometric = true, .unitType = type}),
              c.bigLeft);
    EXPECT_EQ(F::longTextForDistanceLeftWithUnit({.isKilometric = false, .unitType = type}),
              c.smallLeft);
  }
}

TEST(QMUnitsFormatter, GermanLabelsButNeverTheImperialSpeedAbbreviations) {
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(F::longTextForPluralKilometricUnitType(2), "Seemeilen");
  EXPECT_EQ(F::textForKilometricSpeedType(1), "mph");
  EXPECT_EQ(F::longTextForUnitType(1), "Fuß");
}

TEST(QMUnitsFormatter, UnitTypesFromTexts) {
  const struct {
    std::optional<std::string_view> text;
    std::int64_t speed, altitude;
  } cases[] = {{"MPH", 1, 0},        {"KTS", 2, 0},
               {"mph", 0, 0},        {" MPH", 0, 0},
               {std::nullopt, 0, 0}, {"ft", 0, 1},
               {" \t ft\r\n", 0, 1}, {"\u00A0yd\u3000", 0, 3},  // white space beyond ASCII
               {"f t", 0, 0},        {"FT", 0, 0},
               {"ftx", 0, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text.value_or("(absent)"));
    EXPECT_EQ(F::unitTypeForSpeedString(c.text), c.speed);
    EXPECT_EQ(F::unitTypeForAltitudeString(c.text), c.altitude);
  }
}

TEST(QMUnitsFormatter, PacesAreTruncatedToWholeSeconds) {
  const double nan = std::nan("");
  const struct {
    double metersPerSecond;
    std::int64_t unit;
    double pace;
    const char* text;
  } cases[] = {
      {1000 / 359.9, 0, 359.9, "05:59"},  // never rounded up to 06:00
      {1000 / 360.0, 0, 360.0, "06:00"},
      {4.4704, 1, 360.0007, "06:00"},       // 10 mph by the library's 0.62137
      {1852 / 3600.0, 2, 3600.0, "60:00"},  // minutes are not capped at an hour
      {0.0099, 0, 0.0, "--:--"},            // no pace below 1 cm/s
      {-3, 1, 0.0, "--:--"},
      {5, 7, -3600.0, "-60:00"},  // an unknown unit converts to -1
  };
  for (const auto& c : cases) {
    EXPECT_NEAR(F::paceForSpeed(c.metersPerSecond, c.unit), c.pace, 1e-3)
        << c.metersPerSecond << " " << c.unit;
    EXPECT_EQ(F::textForPaceForSpeed(c.metersPerSecond, c.unit), c.text)
        << c.metersPerSecond << " " << c.unit;
  }
  EXPECT_EQ(F::textForPaceForSpeed(nan, 0), "--:--");
}

TEST(QMStringForFloatPrecision, PrintfRoundingInEveryCLocale) {
  const struct {
    double value;
    const char *p0, *p2, *p3;
  } cases[] = {
      {2.5, "2", "2.50", "2.500"},  // halves to even
      {-0.4, "-0", "-0.40", "-0.400"},
      {1234567.891, "1234568", "1234567.89", "1234567.891"},  // no grouping
  };
  testing::ScopedGermanCLocale cLocale;  // "," would come out if the C locale leaked in
  for (const auto& c : cases) {
    EXPECT_EQ(QMStringForFloatPrecision0(c.value), c.p0) << c.value;
    EXPECT_EQ(QMStringForFloatPrecision2(c.value), c.p2) << c.value;
    EXPECT_EQ(QMStringForFloatPrecision3(c.value), c.p3) << c.value;
  }
}

TEST(QMUnitsFormatter, BigUnitAbbreviationsAndChargedDistances) {
  const struct {
    const char* locale;
    std::int64_t code;
    double meters;
    const char* separator;
    const char *abbreviation, *text;
  } cases[] = {
      {"en_US", 0, 1234, "", "km", "1.23km"},
      {"en_US", 3, 1000, "", "mi", "-1.00mi"},  // no kilometric conversion for yards
      {"en_US", 5, 1000, "", "", "-1.00"},
      {"de_DE", 2, 3704, " ", "sm", "2.00 sm"},
      {"de_DE", 1, 1609.344, "", "mi", "1.00mi"},  // the mile is never translated
  };
  for (const auto& c : cases) {
    const testing::ScopedLocale locale(c.locale);
    EXPECT_EQ(F::textForKilometricUnitType(c.code), c.abbreviation) << c.locale << c.code;
    EXPECT_EQ(F::textForChargedDistance(c.meters, c.code, c.separator), c.text)
        << c.locale << c.code;
  }
}

}  // namespace
}  // namespace qm
