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

TEST_F(UnitsProviderFormatterTest, DistancesSwitchToTheBigUnitAtTheThreshold) {
  const double feetThreshold = 2000 / kFeetPerMeter;  // 609.59998 m
  const struct {
    System system;
    std::int64_t switchValue;
    double meters;
    const char* text;
    QMUIValueWithUnit ui;
  } cases[] = {
      {kMetric, 1000, 999.9, "1000m", {"1000", "m"}},   // "%.0f" rounds, the unit stays small
      {kMetric, 1000, 1000, "1.00km", {"1.00", "km"}},  // equality switches
      {kMetric, 1000, -20, "-20m", {"-20", "m"}},
      {kMetric, 0, 0, "0.00km", {"0.00", "km"}},
      {kMetric, -1, 5e6, "5000000m", {"5000000", "m"}},
      {kImperial, 2000, 609.5, "2000ft", {"2000", "ft"}},
      {kImperial, 2000, feetThreshold, "0.38mi", {"0.38", "mi"}},
      {kImperial, 2000, 1609.344, "1.00mi", {"1.00", "mi"}},  // 0.62137 a km: 0.99999808
      {kImperial, -1, 1e5, "328084ft", {"328084", "ft"}},
      {kNauticalFeet, 2000, 1852, "1.00nm", {"1.00", "nm"}},
      {kNauticalMeters, 1000, 999, "999m", {"999", "m"}},
      {kNauticalMeters, 1000, 2000, "1.08nm", {"1.08", "nm"}},
      // Yards are labelled, not converted: the number stays in metres.
      {kYards, 2000, 100, "100yd", {"100", "yd"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.system.name) + " " + std::to_string(c.meters));
    const UnitsProvider& p = launchIn(c.system, c.switchValue);
    EXPECT_EQ(p.textForDistance(c.meters), c.text);
    EXPECT_EQ(p.textForMapDistance(c.meters), c.text);
    EXPECT_EQ(p.uiTextsForDistance(c.meters), c.ui);
    EXPECT_EQ(p.textForDistance(c.meters, " "), c.ui.uiValue + " " + c.ui.unitText);
  }
}

TEST_F(UnitsProviderFormatterTest, AltitudesNeverShowMinusZeroAndYardsShowNothing) {
  const struct {
    System system;
    std::int64_t altitudeType;
    double meters;
    const char* text;
  } cases[] = {
      {kMetric, 0, -0.3, "0"},
      {kMetric, 0, -0.0, "0"},
      {kMetric, 0, -0.5, "-0"},
      {kMetric, 0, -0.51, "-1"},
      {kMetric, 0, 0.5, "0"},
      {kMetric, 0, 1.5, "2"},
      {kImperial, 1, 100, "328"},
      {kImperial, 1, -0.5, "-2"},
      {kImperial, 0, 100, "100"},
      // An altitude type other than metres and feet: feet at sea, nothing elsewhere.
      {kNauticalFeet, 3, 100, "328"},
      {kMetric, 3, 100, ""},
  };
  for (const auto& c : cases) {
    UnitsProvider& p = launchIn(c.system);
    p.setAltitudeUnitType(c.altitudeType);
    EXPECT_EQ(p.textForAltitudeWithNoUnits(c.meters), c.text)
        << c.system.name << " altitude type " << c.altitudeType << " " << c.meters;
  }
}

TEST_F(UnitsProviderFormatterTest, UnitLabelsFollowTheSystem) {
  const struct {
    System system;
    std::int64_t altitudeType;
    const char *altitude, *spokenAltitude, *speed, *spokenSpeed, *verticalSpeed;
  } cases[] = {
      {kMetric, 0, "m", "meters to go", "km/h", "kilometers per hour", "m/s"},
      {kImperial, 1, "ft", "feet to go", "mph", "miles per hour", "ft/min"},
      {kNauticalMeters, 0, "m", "meters to go", "kts", "knots", "ft/min"},
      {kYards, 3, "yd", "yards to go", "mph", "miles per hour", "ft/min"},
  };
  for (const auto& c : cases) {
    UnitsProvider& p = launchIn(c.system);
    p.setAltitudeUnitType(c.altitudeType);
    EXPECT_EQ(p.textForCurrentAltitudeUnit(), c.altitude) << c.system.name;
    EXPECT_EQ(p.speechTextForCurrentAltitudeUnit(), c.spokenAltitude) << c.system.name;
    EXPECT_EQ(p.textForCurrentSpeedUnit(), c.speed) << c.system.name;
    EXPECT_EQ(p.speechTextForCurrentSpeedUnit(), c.spokenSpeed) << c.system.name;
    EXPECT_EQ(p.textForCurrentVerticalSpeedUnit(), c.verticalSpeed) << c.system.name;
  }

  // Code 2 has no small unit of its own: it follows the nautical small-distance choice.
  const struct {
    System system;
    std::int64_t code;
    const char *localized, *plain;
  } labels[] = {
      {kNauticalMeters, 0, "m", "m"}, {kNauticalMeters, 1, "ft", "ft"},
      {kNauticalMeters, 2, "m", "m"}, {kNauticalFeet, 2, "ft", "ft"},
      {kNauticalFeet, 3, "yd", "yd"}, {kNauticalFeet, 4, "", ""},
      {kNauticalFeet, -1, "", ""},
  };
  for (const auto& c : labels) {
    const UnitsProvider& p = launchIn(c.system);
    EXPECT_EQ(p.textForSmallDistanceUnitTypeForGeneralUnitType(c.code), c.localized)
        << c.system.name << " " << c.code;
    EXPECT_EQ(p.nonLocalizedTextForUnitType(c.code), c.plain) << c.system.name << " " << c.code;
  }
}

TEST_F(UnitsProviderFormatterTest, SpeedsInTheSystemsUnit) {
  const double kmh100 = 250.0 / 9.0;  // exactly 100 km/h after (v * 3600) / 1000
  const struct {
    System system;
    bool decimalUnder100;
    double metersPerSecond;
    const char *automatic, *spoken, *average, *average2, *average4;
  } cases[] = {
      {kMetric, false, 10, "36", "36 kilometers per hour", "36.0", "36.00", "36.0000"},
      {kMetric, true, 10, "36.0", "36.0 kilometers per hour", "36.0", "36.00", "36.0000"},
      {kMetric, true, kmh100, "100", "100 kilometers per hour", "100.0", "100.00", "100.0000"},
      // Below 100 by the value, though the one decimal rounds up.
      {kMetric, true, 99.96 / 3.6, "100.0", "100.0 kilometers per hour", "100.0", "99.96",
       "99.9600"},
      {kImperial, false, 10, "22", "22 miles per hour", "22.4", "22.37", "22.3693"},
      {kNauticalFeet, true, 10, "19.4", "19.4 knots", "19.4", "19.44", "19.4384"},
      {kNauticalFeet, false, 0, "0", "0 knots", "0.0", "0.00", "0.0000"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.system.name) + " " + std::to_string(c.metersPerSecond));
    const auto decimal = std::make_shared<DecimalSpeedDelegate>();
    if (c.decimalUnder100) environment_.setDelegate(decimal);
    const UnitsProvider& p = launchIn(c.system);
    EXPECT_EQ(p.autoDecimalTextForMSSpeedWithNoUnits(c.metersPerSecond), c.automatic);
    EXPECT_EQ(p.autoDecimalTextForMSSpeed(c.metersPerSecond), c.spoken);
    EXPECT_EQ(p.decimalTextForAverageSpeedWithNoUnits(c.metersPerSecond), c.average);
    EXPECT_EQ(p.decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(c.metersPerSecond), c.average2);
    EXPECT_EQ(p.decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(c.metersPerSecond), c.average4);
    environment_.setDelegate(delegate_);
  }
}

TEST_F(UnitsProviderFormatterTest, SmallOnlyAndRoundedDistances) {
  const struct {
    System system;
    double meters;
    const char *noUnits, *withUnit, *rounded;
  } cases[] = {
      {kMetric, 123.4, "123", "123m", "120"},
      {kMetric, 100.4, "100", "100m", "100"},
      {kMetric, 99.5, "100", "100m", "100"},  // printf: halves to even
      // The remainder is taken in single precision: 33554437 is 33554436 there.
      {kMetric, 33554437, "33554437", "33554437m", "33554431"},
      {kImperial, 100, "328", "328ft", "320"},
      {kNauticalFeet, 10, "33", "33ft", "33"},
      // Feet without a label, but metres labelled yards.
      {kYards, 100, "328", "100yd", "320"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(std::string(c.system.name) + " " + std::to_string(c.meters));
    const UnitsProvider& p = launchIn(c.system);
    EXPECT_EQ(p.textForSmallOnlyDistanceWithNoUnits(c.meters), c.noUnits);
    EXPECT_EQ(p.textForSmallOnlyDistance(c.meters), c.withUnit);
    EXPECT_EQ(p.textForSmallRoundedDistanceWithNoUnits(c.meters), c.rounded);
  }

  const UnitsProvider& p = launchIn(kMetric);
  const struct {
    bool kilometric;
    DistanceUnitType type;
    double meters;
    const char* text;
  } explicitUnits[] = {
      {true, DistanceUnitType::kMetric, 1234, "1.23"},
      {true, DistanceUnitType::kImperial, 1609.344, "1.00"},
      {true, DistanceUnitType::kNautical, 1852, "1.00"},
      {false, DistanceUnitType::kImperial, 100, "328"},
      {false, DistanceUnitType::kMetric, 2.5, "2"},
      {false, DistanceUnitType::kNautical, 100, "100"},
  };
  for (const auto& c : explicitUnits) {
    EXPECT_EQ(p.textWithNoUnitsForDistanceInMeters(c.meters, {c.kilometric, c.type}), c.text)
        << c.kilometric << " " << static_cast<int>(c.type) << " " << c.meters;
  }
}

TEST_F(UnitsProviderFormatterTest, RulerLabelsAroundTheirLimits) {
  const struct {
    System system;
    float metersPerPoint;
    const char* text;
  } cases[] = {
      {kMetric, 20.0f, "1000 m"},   // 1000 m is not above the 1 km limit
      {kMetric, 20.1f, "1.00 km"},  // 1.005 in single precision
      {kMetric, 2.57f, "120 m"},    // 128.5 m: truncated, tens above 100
      {kMetric, 2.0f, "100 m"},
      {kMetric, 1.999f, "99 m"},           // 99.95 m: truncated, not rounded
      {kNauticalMeters, 20.1f, "1000 m"},  // the limit at sea is a nautical mile
      {kNauticalMeters, 37.04f, "1850 m"},
      {kNauticalMeters, 40.0f, "1.08 nm"},
      {kImperial, 0.6f, "98 ft"},
      {kImperial, 32.18f, "5270 ft"},   // 5278.9 ft
      {kImperial, 32.187f, "1.00 mi"},  // 5280.02 ft
      {kNauticalFeet, 37.0f, "6060 ft"},
      {kNauticalFeet, 37.04f, "1.00 nm"},  // 6076.1 ft
      {kYards, 10.0f, "1640 yd"},          // feet, labelled yards
  };
  for (const auto& c : cases) {
    EXPECT_EQ(launchIn(c.system).rulerValueForMetersPerPixel(c.metersPerPoint), c.text)
        << c.system.name << " " << c.metersPerPoint;
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
      {kImperial, kLength, "", 0, 300, {"984", "ft"}},
      {kImperial, kLength, "", 1000, 500, {"0.311", "mi"}},
      // At sea every length that switches becomes nautical miles.
      {kNauticalFeet, kLength, "", 1000, 500, {"0.27", "nm"}},
      {kNauticalFeet, kLength, QMMeterUnitUuid, 1000, 1852, {"1.00", "nm"}},
      {kNauticalFeet, kLength, QMInchUnitUuid, 20, 1, {"0.00", "nm"}},  // even inches
      {kNauticalFeet, kLength, QMMeterUnitUuid, 0, 1852, {"1852.0", "m"}},
      {kMetric, kArea, "", 0, 1500, {"1500.0", "m²"}},
      {kMetric, kArea, "", 100000, 250000, {"0.250", "km²"}},
      // Areas at sea keep their own big unit.
      {kNauticalFeet, kArea, "", 100000, 2589988.110336, {"1.0000", "mi²"}},
      {kMetric, kPressure, "", 0, 1013.25, {"1013.25", "hPa"}},
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
  const auto kilometer = p.lengthUnitWithUuid(QMKilometerUnitUuid);
  const struct {
    std::shared_ptr<const QMUnit> unit;
    double value;
    double threshold;
    const char* text;
  } cases[] = {
      {meter, 5000, -1.0, "5000.0m"}, {meter, 5000, -2.0, "5000.0m"},
      {meter, 5000, -0.5, "5.000km"}, {meter, 5000, 4999.9, "5.000km"},
      {meter, 5000, 5000, "5000.0m"}, {kilometer, 5e6, 0.0, "5000.000km"},  // nowhere to go
      {nullptr, 5000, 0.0, ""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(p.stringForMeasureInMeter(c.value, c.unit, c.threshold), c.text)
        << c.value << " " << c.threshold;
    EXPECT_EQ(p.uiTextsForMeasureInMeter(c.value, c.unit, c.threshold).has_value(),
              c.unit != nullptr);
  }
}

TEST_F(UnitsProviderFormatterTest, VerticalSpeedsWithTheirScales) {
  const auto ms = QMVerticalSpeedUnit::metersPerSecondUnit();
  const auto mmin = QMVerticalSpeedUnit::metersPerMinuteUnit();
  const auto ftmin = QMVerticalSpeedUnit::feetPerMinuteUnit();
  const struct {
    std::shared_ptr<const QMVerticalSpeedUnit> unit;
    std::optional<std::int64_t> scale;  // stored; absent: the unit's default
    double metersPerSecond;
    double value;
    const char *text, *scaleText;
  } cases[] = {
      {ms, std::nullopt, 2.54, 2.54, "2.5", "/10"},     {ms, 0, -2.54, -2.54, "-2.5", "x1"},
      {mmin, std::nullopt, 2.5, 150, "150", "x10"},     {mmin, 3, 2.5, 150, "150", "x1000"},
      {ftmin, std::nullopt, 1, 196.8504, "197", "x10"}, {ftmin, 2, 1, 196.8504, "197", "x100"},
  };
  for (const auto& c : cases) {
    UnitsProvider& p = launchIn(kMetric);
    p.setVerticalSpeedUnit(*c.unit);
    if (c.scale) p.setVerticalSpeedScale(*c.scale, *c.unit);
    SCOPED_TRACE(c.unit->uuid());
    EXPECT_NEAR(p.verticalSpeedValueInCurrentUnits(c.metersPerSecond), c.value, 1e-9);
    EXPECT_EQ(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(c.metersPerSecond), c.text);
    EXPECT_EQ(p.textForCurrentVerticalSpeedUnitScale(), c.scaleText);
    EXPECT_EQ(p.textForCurrentVerticalSpeedUnit(), c.unit->abbreviation());
  }

  const std::int64_t int64Min = std::numeric_limits<std::int64_t>::min();
  const std::int64_t int64Max = std::numeric_limits<std::int64_t>::max();
  const struct {
    std::int64_t scale;
    const char* text;
  } scales[] = {{0, "x1"},
                {-1, "/10"},
                {9, "x1000000000"},
                {10, "x2147483647"},
                {-12, "/2147483647"},
                {int64Min, "/2147483647"},
                {int64Max, "x2147483647"}};
  for (const auto& c : scales) EXPECT_EQ(UnitsProvider::textForScale(c.scale), c.text) << c.scale;
}

TEST_F(UnitsProviderFormatterTest, GermanTexts) {
  const struct {
    System system;
    std::string_view distance, bigDistance, ruler, spokenSpeed, spokenAltitude;
  } cases[] = {
      {kMetric, "999m", "2.00km", "1.50 km", "36 Kilometer pro Stunde", "Meter verbleibend"},
      {kNauticalMeters, "999m", "1.08sm", "1.08 sm", "19 Knoten", "Fuß verbleibend"},
  };
  for (const auto& c : cases) {
    const UnitsProvider& p = launchIn(c.system, 1000, "de_DE");
    EXPECT_EQ(p.textForDistance(999), c.distance) << c.system.name;
    EXPECT_EQ(p.textForDistance(2000), c.bigDistance) << c.system.name;
    EXPECT_EQ(p.rulerValueForMetersPerPixel(c.system.general == 0 ? 30.0f : 40.0f), c.ruler);
    EXPECT_EQ(p.autoDecimalTextForMSSpeed(10), c.spokenSpeed) << c.system.name;
    EXPECT_EQ(p.speechTextForCurrentAltitudeUnit(), c.spokenAltitude) << c.system.name;
  }
}

}  // namespace
}  // namespace qm
