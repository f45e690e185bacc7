#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include "qmcore/provider/QMUIValueWithUnit.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
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
  UnitsProvider& launchIn(const System& system, std::int64_t switchValue = 1000,
                          const char* locale = "en_US") {
    for (const auto& entry : store_->dictionaryRepresentation()) {
      store_->removeObjectForKey(entry.first);
    }
    store_->setInteger(QMGeneralUnitPrefKeyName, system.general);
    store_->setInteger(QMNauticalDistanceUnitPrefKeyName, system.nauticalSmall);
    delegate_->feetThreshold = switchValue;
    return launch(locale);
  }
};

// Every text of each system at values away from any limit (imperial's are among the limits
// below), and one system in German.
TEST_F(UnitsProviderFormatterTest, TextsAndLabelsOfEachSystem) {
  const struct {
    System system;
    const char* locale;
    std::int64_t altitudeType;
    // Distances of 100 m and 5000 m, switching at 1000 small units.
    const char *small, *big, *smallOnly, *rounded, *ruler;
    const char *altitude, *altitudeLabel, *spokenAltitude;
    const char *speedLabel, *speed, *spokenSpeed, *average, *verticalLabel;
  } cases[] = {
      {kMetric, "en_US", 0, "100m", "5.00km", "123m", "120", "2.00 km", "100", "m", "meters to go",
       "km/h", "36", "kilometers per hour", "36.0", "m/s"},
      // An altitude type other than metres and feet: feet at sea, nothing elsewhere.
      {kNauticalFeet, "en_US", 3, "328ft", "2.70nm", "405ft", "400", "1.08 nm", "328", "yd",
       "yards to go", "kts", "19", "knots", "19.4", "ft/min"},
      {kNauticalMeters, "en_US", 0, "100m", "2.70nm", "123m", "120", "1.08 nm", "100", "m",
       "meters to go", "kts", "19", "knots", "19.4", "ft/min"},
      // Yards label metres unconverted and have no big unit (-1), but rounded texts count feet.
      {kYards, "en_US", 3, "100yd", "-1.00mi", "123yd", "400", "-1.00 mi", "", "yd", "yards to go",
       "mph", "-1", "miles per hour", "-1.0", "ft/min"},
      {kNauticalMeters, "de_DE", 1, "100m", "2.70sm", "123m", "120", "1.08 sm", "328", "ft",
       "Fuß verbleibend", "kts", "19", "Knoten", "19.4", "ft/min"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.system.name) + " " + c.locale);
    UnitsProvider& p = launchIn(c.system, 1000, c.locale);
    p.setAltitudeUnitType(c.altitudeType);
    EXPECT_EQ(p.textForDistance(100), c.small);
    EXPECT_EQ(p.textForDistance(5000), c.big);
    EXPECT_EQ(p.textForMapDistance(5000), c.big);
    for (const double meters : {100.0, 5000.0}) {
      const QMUIValueWithUnit ui = p.uiTextsForDistance(meters);
      EXPECT_EQ(p.textForDistance(meters, " "), ui.uiValue + " " + ui.unitText);
    }
    EXPECT_EQ(p.textForSmallOnlyDistance(123.4), c.smallOnly);
    EXPECT_EQ(p.textForSmallRoundedDistanceWithNoUnits(123.4), c.rounded);
    EXPECT_EQ(p.rulerValueForMetersPerPixel(40.0f), c.ruler);
    EXPECT_EQ(p.textForAltitudeWithNoUnits(100), c.altitude);
    EXPECT_EQ(p.textForCurrentAltitudeUnit(), c.altitudeLabel);
    EXPECT_EQ(p.speechTextForCurrentAltitudeUnit(), c.spokenAltitude);
    EXPECT_EQ(p.textForCurrentSpeedUnit(), c.speedLabel);
    EXPECT_EQ(p.autoDecimalTextForMSSpeedWithNoUnits(10), c.speed);
    EXPECT_EQ(p.autoDecimalTextForMSSpeed(10), std::string(c.speed) + " " + c.spokenSpeed);
    EXPECT_EQ(p.speechTextForCurrentSpeedUnit(), c.spokenSpeed);
    EXPECT_EQ(p.decimalTextForAverageSpeedWithNoUnits(10), c.average);
    EXPECT_EQ(p.textForCurrentVerticalSpeedUnit(), c.verticalLabel);
  }

  // Code 2 has no small unit of its own: it follows the nautical small-distance choice.
  const struct {
    System system;
    std::int64_t code;
    const char* label;
  } labels[] = {{kNauticalMeters, 2, "m"}, {kNauticalFeet, 2, "ft"}, {kNauticalFeet, 4, ""}};
  for (const auto& c : labels) {
    const UnitsProvider& p = launchIn(c.system);
    EXPECT_EQ(p.textForSmallDistanceUnitTypeForGeneralUnitType(c.code), c.label) << c.code;
    EXPECT_EQ(p.nonLocalizedTextForUnitType(c.code), c.label) << c.system.name << " " << c.code;
  }
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
      {kMetric, 0, distance, 0, "0.00km"},
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
  const struct {
    bool kilometric;
    DistanceUnitType type;
    double meters;
    const char* text;
  } cases[] = {
      {true, DistanceUnitType::kMetric, 1234, "1.23"},
      {true, DistanceUnitType::kNautical, 1852, "1.00"},
      {false, DistanceUnitType::kImperial, 100, "328"},
      {false, DistanceUnitType::kNautical, 100, "100"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(p.textWithNoUnitsForDistanceInMeters(c.meters, {c.kilometric, c.type}), c.text)
        << c.kilometric << " " << static_cast<int>(c.type) << " " << c.meters;
  }
}

TEST_F(UnitsProviderFormatterTest, LengthsAreasAndPressuresSwitchAboveTheirThresholds) {
  enum Kind { kLength, kArea, kPressure };
  const struct {
    System system;
    Kind kind;
    std::string_view smallUnit;  // the current unit; empty: the system's default
    std::int64_t switchValue;    // stored for the current unit; 0: none stored
    double value;
    QMUIValueWithUnit ui;
  } cases[] = {
      {kMetric, kLength, "", 0, 5000, {"5000.0", "m"}},     // lengths never switch by default
      {kMetric, kLength, "", 1000, 1000, {"1000.0", "m"}},  // only above the threshold
      {kMetric, kLength, "", 1000, 1500, {"1.500", "km"}},
      // At sea every length that switches becomes nautical miles.
      {kNauticalFeet, kLength, "", 1000, 500, {"0.27", "nm"}},
      {kNauticalFeet, kLength, QMInchUnitUuid, 20, 1, {"0.00", "nm"}},  // even inches
      {kMetric, kArea, "", 100000, 250000, {"0.250", "km²"}},
      // Areas at sea keep their own big unit.
      {kNauticalFeet, kArea, "", 100000, 2589988.110336, {"1.0000", "mi²"}},
      {kImperial, kPressure, "", 0, 1013.25, {"29.921", "inHg"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.system.name) + " " + std::to_string(c.value));
    UnitsProvider& p = launchIn(c.system);
    if (!c.smallUnit.empty()) p.setCurrentLengthUnit(p.lengthUnitWithUuid(c.smallUnit));
    if (c.switchValue != 0) {
      p.setAutomaticSwitchValue(c.switchValue, c.kind == kArea
                                                   ? static_cast<const QMUnit&>(*p.areaUnit())
                                                   : *p.lengthUnit());
    }
    const std::string text = c.ui.uiValue + c.ui.unitText;
    switch (c.kind) {
      case kLength:
        EXPECT_EQ(p.stringForLengthInMeters(c.value), text);
        EXPECT_EQ(p.uiTextsForLengthInMeters(c.value), c.ui);
        break;
      case kArea:
        EXPECT_EQ(p.stringForAreaInSquareMeters(c.value), text);
        EXPECT_EQ(p.uiTextsForAreaInSquareMeters(c.value), c.ui);
        break;
      case kPressure:
        EXPECT_EQ(p.stringForPressurehPa(c.value), text);
        break;
    }
  }
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
  EXPECT_NEAR(launchIn(kMetric).verticalSpeedValueInCurrentUnits(2.54), 2.54, 1e-9);

  const struct {
    std::int64_t scale;
    const char* text;
  } scales[] = {
      {-1, "/10"}, {10, "x2147483647"}, {std::numeric_limits<std::int64_t>::min(), "/2147483647"}};
  for (const auto& c : scales) EXPECT_EQ(UnitsProvider::textForScale(c.scale), c.text) << c.scale;
}

}  // namespace
}  // namespace qm
