// The units provider's value texts, and the unit-system texts and paces they are made of.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/formatting/QMStringForFloatPrecision.hpp"
#include "qmcore/formatting/QMUnitsFormatter.hpp"
#include "qmcore/provider/QMUIValueWithUnit.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/testing/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

// Unit systems as the user chooses them; nautical comes with metres or feet for short distances.
struct System {
  std::int64_t general;
  std::int64_t nauticalSmall;
  const char* name;
};
constexpr System kMetric{0, 0, "metric"};
constexpr System kImperial{1, 1, "imperial"};
constexpr System kNauticalFeet{2, 1, "nautical, feet"};
constexpr System kNauticalMeters{2, 0, "nautical, metres"};
// Imperial with yards: only a stored value leads here.
constexpr System kYards{3, 1, "yards"};

class DecimalSpeedDelegate : public testing::RecordingDelegate {
 public:
  bool showsDecimalDotForSpeedUnder100() override { return true; }
};

class UnitsProviderFormatterTest : public testing::UnitsProviderTest {
 protected:
  // A provider launched over a store holding only `system`, the distance units switching at
  // `switchValue` (in metres or feet; -1 never).
  UnitsProvider& launchIn(const System& system, std::int64_t switchValue = 1000) {
    for (const auto& entry : store_->dictionaryRepresentation()) {
      store_->removeObjectForKey(entry.first);
    }
    store_->setInteger(QMGeneralUnitPrefKeyName, system.general);
    store_->setInteger(QMNauticalDistanceUnitPrefKeyName, system.nauticalSmall);
    delegate_->feetThreshold = switchValue;
    return launch();
  }
};

// Every text of each system at values away from any limit (imperial's are among the limits
// below). Nautical with metres takes metric's paths.
TEST_F(UnitsProviderFormatterTest, TextsAndLabelsOfEachSystem) {
  const struct {
    System system;
    std::int64_t altitudeType;
    // Distances of 100 m and 5000 m, switching at 1000 small units.
    const char *small, *big, *smallOnly, *rounded, *chosenSmallLabel;
    const char *altitude, *altitudeLabel, *spokenAltitude;
    const char *speedLabel, *speed, *spokenSpeed, *average, *verticalLabel;
  } cases[] = {
      {kMetric, 0, "100m", "5.00km", "123m", "120", "m", "100", "m", "meters to go", "km/h", "36",
       "kilometers per hour", "36.0", "m/s"},
      // An altitude type other than metres and feet: feet at sea, nothing elsewhere.
      {kNauticalFeet, 3, "328ft", "2.70nm", "405ft", "400", "ft", "328", "yd", "yards to go", "kts",
       "19", "knots", "19.4", "ft/min"},
      // Yards label metres unconverted and have no big unit (-1), but rounded texts count feet.
      {kYards, 3, "100yd", "-1.00mi", "123yd", "400", "ft", "", "yd", "yards to go", "mph", "-1",
       "miles per hour", "-1.0", "ft/min"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.system.name);
    UnitsProvider& p = launchIn(c.system);
    p.setAltitudeUnitType(c.altitudeType);
    EXPECT_EQ(p.textForDistance(100), c.small);
    EXPECT_EQ(p.textForMapDistance(5000), c.big);
    for (const double meters : {100.0, 5000.0}) {
      const QMUIValueWithUnit ui = p.uiTextsForDistance(meters);
      EXPECT_EQ(p.textForDistance(meters, " "), ui.uiValue + " " + ui.unitText);
    }
    EXPECT_EQ(p.textForSmallOnlyDistance(123.4), c.smallOnly);
    EXPECT_EQ(p.textForSmallRoundedDistanceWithNoUnits(123.4), c.rounded);
    // Code 2 has no small unit of its own: it follows the small-distance choice.
    EXPECT_EQ(p.nonLocalizedTextForUnitType(2), c.chosenSmallLabel);
    EXPECT_EQ(p.textForAltitudeWithNoUnits(100), c.altitude);
    EXPECT_EQ(p.textForCurrentAltitudeUnit(), c.altitudeLabel);
    EXPECT_EQ(p.speechTextForCurrentAltitudeUnit(), c.spokenAltitude);
    EXPECT_EQ(p.textForCurrentSpeedUnit(), c.speedLabel);
    EXPECT_EQ(p.autoDecimalTextForMSSpeed(10), std::string(c.speed) + " " + c.spokenSpeed);
    EXPECT_EQ(p.decimalTextForAverageSpeedWithNoUnits(10), c.average);
    EXPECT_EQ(p.textForCurrentVerticalSpeedUnit(), c.verticalLabel);
  }
  EXPECT_EQ(provider_->textForSmallDistanceUnitTypeForGeneralUnitType(4), "");  // unknown code
}

// A text of a value, in the form that the limits below apply to.
using Text = std::string (*)(const UnitsProvider&, double);

TEST_F(UnitsProviderFormatterTest, TextsAtTheirLimits) {
  const Text distance = [](const UnitsProvider& p, double m) { return p.textForDistance(m); };
  const Text altitude = [](const UnitsProvider& p, double m) {
    return p.textForAltitudeWithNoUnits(m);
  };
  const Text speed = [](const UnitsProvider& p, double v) {
    return p.autoDecimalTextForMSSpeedWithNoUnits(v);
  };
  const Text rounded = [](const UnitsProvider& p, double m) {
    return p.textForSmallRoundedDistanceWithNoUnits(m);
  };
  const Text ruler = [](const UnitsProvider& p, double metersPerPoint) {
    return p.rulerValueForMetersPerPixel(static_cast<float>(metersPerPoint));
  };
  const struct {
    System system;
    std::int64_t switchValue;  // of the distance units, in metres or feet; -1 never
    Text text;
    double value;
    const char* expected;
  } cases[] = {
      {kMetric, 1000, distance, 999.9, "1000m"},  // "%.0f" rounds, the unit stays small
      {kMetric, 1000, distance, 1000, "1.00km"},  // equality switches
      {kMetric, -1, distance, 5e6, "5000000m"},
      {kImperial, 2000, distance, 2000 / kFeetPerMeter, "0.38mi"},
      {kMetric, 1000, altitude, -0.3, "0"},     // never "-0"
      {kMetric, 1000, altitude, -0.5, "-0"},    // printf: halves to even
      {kImperial, 1000, altitude, -0.5, "-2"},  // the metres decide, not the feet
      // With a decimal below 100 km/h asked for.
      {kMetric, 1000, speed, 10, "36.0"},
      {kMetric, 1000, speed, 250.0 / 9.0, "100"},    // exactly 100 after (v * 3600) / 1000
      {kMetric, 1000, speed, 99.96 / 3.6, "100.0"},  // below 100, though its decimal rounds up
      // The remainder is taken in single precision: 33554437 is 33554436 there.
      {kMetric, 1000, rounded, 33554437, "33554431"},
      {kMetric, 1000, ruler, 20.0f, "1000 m"},          // 1000 m is not above the 1 km limit
      {kMetric, 1000, ruler, 20.1f, "1.00 km"},         // 1.005 in single precision
      {kMetric, 1000, ruler, 2.57f, "120 m"},           // 128.5 m: truncated, tens above 100
      {kMetric, 1000, ruler, 1.999f, "99 m"},           // 99.95 m: truncated, not rounded
      {kNauticalMeters, 1000, ruler, 20.1f, "1000 m"},  // the limit at sea is a nautical mile
      {kImperial, 1000, ruler, 32.18f, "5270 ft"},      // 5278.9 ft
      {kImperial, 1000, ruler, 32.187f, "1.00 mi"},     // 5280.02 ft
      {kNauticalFeet, 1000, ruler, 37.04f, "1.00 nm"},  // 6076.1 ft
      {kYards, 1000, ruler, 10.0f, "1640 yd"},          // feet, labelled yards
  };
  // The settings keep their delegate weakly; the fixture keeps this one.
  delegate_ = std::make_shared<DecimalSpeedDelegate>();
  environment_.setDelegate(delegate_);
  for (const auto& c : cases) {
    EXPECT_EQ(c.text(launchIn(c.system, c.switchValue), c.value), c.expected)
        << c.system.name << " " << c.value;
  }
}

TEST_F(UnitsProviderFormatterTest, AverageSpeedsSmallOnlyAndExplicitUnitDistances) {
  const UnitsProvider& p = launchIn(kMetric);
  EXPECT_EQ(p.decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(99.96 / 3.6), "99.96");
  EXPECT_EQ(p.decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(99.96 / 3.6), "99.9600");
  EXPECT_EQ(p.textForSmallOnlyDistanceWithNoUnits(123.4), "123");
  EXPECT_EQ(p.textWithNoUnitsForDistanceInMeters(1852, {true, DistanceUnitType::kNautical}),
            "1.00");
  EXPECT_EQ(p.textWithNoUnitsForDistanceInMeters(100, {false, DistanceUnitType::kImperial}), "328");
}

TEST_F(UnitsProviderFormatterTest, LengthsAreasAndPressuresSwitchAboveTheirThresholds) {
  using Text = std::string (UnitsProvider::*)(double) const;
  const Text length = &UnitsProvider::stringForLengthInMeters;
  const Text area = &UnitsProvider::stringForAreaInSquareMeters;
  const struct {
    System system;
    Text text;
    std::int64_t switchValue;  // stored for the current unit; 0: none stored
    double value;
    const char* expected;
  } cases[] = {
      {kMetric, length, 0, 5000, "5000.0m"},     // lengths never switch by default
      {kMetric, length, 1000, 1000, "1000.0m"},  // only above the threshold
      {kMetric, length, 1000, 1500, "1.500km"},
      // At sea every length that switches becomes nautical miles; areas keep their big unit.
      {kNauticalFeet, length, 1000, 500, "0.27nm"},
      {kNauticalFeet, area, 100000, 2589988.110336, "1.0000mi²"},
      {kImperial, &UnitsProvider::stringForPressurehPa, 0, 1013.25, "29.921inHg"},
  };
  for (const auto& c : cases) {
    UnitsProvider& p = launchIn(c.system);
    if (c.switchValue != 0) {
      p.setAutomaticSwitchValue(c.switchValue, c.text == area
                                                   ? static_cast<const QMUnit&>(*p.areaUnit())
                                                   : *p.lengthUnit());
    }
    EXPECT_EQ((p.*c.text)(c.value), c.expected) << c.system.name << " " << c.value;
  }
  const UnitsProvider& p = launchIn(kMetric);
  EXPECT_EQ(p.uiTextsForLengthInMeters(1500), (QMUIValueWithUnit{"1500.0", "m"}));
  EXPECT_EQ(p.uiTextsForAreaInSquareMeters(2500), (QMUIValueWithUnit{"2500.0", "m²"}));
}

TEST_F(UnitsProviderFormatterTest, MeasuresSwitchOnlyAboveAThresholdAboveMinusOne) {
  const UnitsProvider& p = launchIn(kMetric);
  const auto meter = p.lengthUnitWithUuid(QMMeterUnitUuid);
  const struct {
    std::shared_ptr<const QMUnit> unit;
    double threshold;
    const char* text;
  } cases[] = {
      {meter, -1.0, "5000.0m"},
      {meter, -0.5, "5.000km"},
      {meter, 5000, "5000.0m"},
      {p.lengthUnitWithUuid(QMKilometerUnitUuid), 0.0, "5.000km"},  // nowhere to go
      {nullptr, 0.0, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(p.stringForMeasureInMeter(5000, c.unit, c.threshold), c.text) << c.threshold;
    EXPECT_EQ(p.uiTextsForMeasureInMeter(5000, c.unit, c.threshold).has_value(), c.unit != nullptr);
  }
}

TEST_F(UnitsProviderFormatterTest, VerticalSpeedsWithTheirScales) {
  const auto ms = QMVerticalSpeedUnit::metersPerSecondUnit();
  const struct {
    std::shared_ptr<const QMVerticalSpeedUnit> unit;
    std::optional<std::int64_t> scale;  // stored; absent: the unit's default
    double metersPerSecond;
    const char *text, *scaleText;
  } cases[] = {
      {ms, std::nullopt, 2.54, "2.5", "/10"},
      {ms, 0, -2.54, "-2.5", "x1"},
      {QMVerticalSpeedUnit::metersPerMinuteUnit(), 3, 2.5, "150", "x1000"},
      {QMVerticalSpeedUnit::feetPerMinuteUnit(), std::nullopt, 1, "197", "x10"},
  };
  for (const auto& c : cases) {
    UnitsProvider& p = launchIn(kMetric);
    p.setVerticalSpeedUnit(*c.unit);
    if (c.scale) p.setVerticalSpeedScale(*c.scale, *c.unit);
    SCOPED_TRACE(c.unit->uuid());
    EXPECT_EQ(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(c.metersPerSecond), c.text);
    EXPECT_EQ(p.textForCurrentVerticalSpeedUnitScale(), c.scaleText);
  }
  // Powers of ten beyond the int range saturate.
  EXPECT_EQ(UnitsProvider::textForScale(10), "x2147483647");
  EXPECT_EQ(UnitsProvider::textForScale(std::numeric_limits<std::int64_t>::min()), "/2147483647");
}

using F = QMUnitsFormatter;

// The labels come from the unit-system table (the provider's tests read most of them): a row
// without a key and an unknown code give "", and the imperial speed is never translated.
TEST(QMUnitsFormatter, LabelsOfARowWithMissingKeysAndOfAnUnknownCode) {
  EXPECT_EQ(F::longTextForPluralKilometricUnitType(3), "miles");
  EXPECT_EQ(F::textForPaceUnitWithUnitType(0), "min/km");
  EXPECT_EQ(F::textForPaceUnitWithUnitType(3), "");  // yards have no pace
  EXPECT_EQ(F::longTextForUnitType(3), "Yards");
  EXPECT_EQ(F::longTextForDistanceLeftWithUnit({true, DistanceUnitType(3)}), "");
  EXPECT_EQ(F::longTextForDistanceLeftWithUnit({false, DistanceUnitType(3)}), "yards to go");
  EXPECT_EQ(F::textForKilometricSpeedType(4), "");
  EXPECT_EQ(F::textForKilometricUnitType(4), "");
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(F::textForKilometricSpeedType(1), "mph");
}

TEST(QMUnitsFormatter, UnitTypesFromTexts) {
  const struct {
    std::optional<std::string_view> text;
    std::int64_t speed, altitude;
  } cases[] = {{"MPH", 1, 0},           {"KTS", 2, 0}, {"mph", 0, 0}, {" MPH", 0, 0},
               {std::nullopt, 0, 0},    {"FT", 0, 0},  {"ftx", 0, 0}, {" \t ft\r\n", 0, 1},
               {"\u00A0yd\u3000", 0, 3}};  // white space beyond ASCII
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
      {1000 / 359.9, 0, 359.9, "05:59"},    // never rounded up to 06:00
      {4.4704, 1, 360.0007, "06:00"},       // 10 mph by the library's 0.62137
      {1852 / 3600.0, 2, 3600.0, "60:00"},  // minutes are not capped at an hour
      {0.0099, 0, 0.0, "--:--"},            // no pace below 1 cm/s
      {5, 7, -3600.0, "-60:00"},            // an unknown unit converts to -1
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
  const testing::ScopedGermanCLocale cLocale;       // "," would come out if the C locale leaked in
  EXPECT_EQ(QMStringForFloatPrecision0(2.5), "2");  // halves to even
  EXPECT_EQ(QMStringForFloatPrecision0(-0.4), "-0");
  EXPECT_EQ(QMStringForFloatPrecision2(2.5), "2.50");
  EXPECT_EQ(QMStringForFloatPrecision3(-0.4), "-0.400");
}

TEST(QMUnitsFormatter, ChargedDistancesInTheBigUnit) {
  EXPECT_EQ(F::textForChargedDistance(1234, 0, ""), "1.23km");
  EXPECT_EQ(F::textForChargedDistance(1000, 3, " "), "-1.00 mi");  // no conversion for yards
  EXPECT_EQ(F::textForChargedDistance(1000, 5, ""), "-1.00");
}

}  // namespace
}  // namespace qm
