// The units provider's value texts, the unit-system texts and paces they are made of, the app's
// formatters that a provider can serve, and bearing and heading texts: cardinal letters,
// quadrant bearings, degrees and mils.

#include <gtest/gtest.h>

#include <atomic>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "qmcore/formatting/BearingFormatter.hpp"
#include "qmcore/formatting/QMUnitsFormatter.hpp"
#include "qmcore/formatting/UnitFormatterWrapper.hpp"
#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/QMUIValueWithUnit.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/NonFinite.hpp"
#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/testing/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

using testing::kNaN;

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
    const char *speedLabel, *speed, *spokenSpeed;
  } cases[] = {
      {kMetric, 0, "100m", "5.00km", "123m", "120", "m", "100", "m", "meters to go", "km/h", "36",
       "kilometers per hour"},
      // An altitude type other than metres and feet: feet at sea, nothing elsewhere.
      {kNauticalFeet, 3, "328ft", "2.70nm", "405ft", "400", "ft", "328", "yd", "yards to go", "kts",
       "19", "knots"},
      // Yards label metres unconverted and have no big unit (-1), but rounded texts count feet.
      {kYards, 3, "100yd", "-1.00mi", "123yd", "400", "ft", "", "yd", "yards to go", "mph", "-1",
       "miles per hour"},
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
  }
  EXPECT_EQ(provider_->textForSmallDistanceUnitTypeForGeneralUnitType(4), "");  // unknown code
}

// A text of a value, in the form that the limits below apply to.
using Text = std::string (*)(const UnitsProvider&, double);

TEST_F(UnitsProviderFormatterTest, TextsAtTheirLimits) {
  using P = const UnitsProvider&;
  const Text distance = [](P p, double v) { return p.textForDistance(v); };
  const Text altitude = [](P p, double v) { return p.textForAltitudeWithNoUnits(v); };
  const Text speed = [](P p, double v) { return p.autoDecimalTextForMSSpeedWithNoUnits(v); };
  const Text rounded = [](P p, double v) { return p.textForSmallRoundedDistanceWithNoUnits(v); };
  const Text ruler = [](P p, double v) {
    return p.rulerValueForMetersPerPixel(static_cast<float>(v));
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

TEST_F(UnitsProviderFormatterTest, AverageSpeedsSmallOnlyExplicitUnitDistancesAndTheAppsSpeeds) {
  const UnitsProvider& p = launchIn(kMetric);
  EXPECT_EQ(p.decimalTextForAverageSpeedWithNoUnits(99.96 / 3.6), "100.0");
  EXPECT_EQ(p.decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(99.96 / 3.6), "99.96");
  EXPECT_EQ(p.decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(99.96 / 3.6), "99.9600");
  EXPECT_EQ(p.textForSmallOnlyDistanceWithNoUnits(123.4), "123");
  EXPECT_EQ(p.textWithNoUnitsForDistanceInMeters(1852, {true, DistanceUnitType::kNautical}),
            "1.00");
  EXPECT_EQ(p.textWithNoUnitsForDistanceInMeters(100, {false, DistanceUnitType::kImperial}), "328");
  // The provider serves as the app's speed formatter.
  UnitFormatterWrapper hook;
  hook.assignSpeedFormatterDelegate(std::make_shared<UnitsProviderSpeedFormatter>(p));
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(10), "36 kilometers per hour");
}

TEST_F(UnitsProviderFormatterTest, LengthsAreasAndPressuresSwitchAboveTheirThresholds) {
  UnitsProvider& metric = launchIn(kMetric);
  metric.setAutomaticSwitchValue(1000, *metric.lengthUnit());
  EXPECT_EQ(metric.stringForLengthInMeters(1000), "1000.0m");  // only above the threshold
  EXPECT_EQ(metric.uiTextsForLengthInMeters(1500), (QMUIValueWithUnit{"1.500", "km"}));
  EXPECT_EQ(metric.uiTextsForAreaInSquareMeters(2500), (QMUIValueWithUnit{"2500.0", "m²"}));
  // At sea every length that switches becomes nautical miles; areas keep their big unit.
  UnitsProvider& sea = launchIn(kNauticalFeet);
  sea.setAutomaticSwitchValue(1000, *sea.lengthUnit());
  sea.setAutomaticSwitchValue(100000, *sea.areaUnit());
  EXPECT_EQ(sea.stringForLengthInMeters(500), "0.27nm");
  EXPECT_EQ(sea.stringForAreaInSquareMeters(2589988.110336), "1.0000mi²");
  EXPECT_EQ(launchIn(kImperial).stringForPressurehPa(1013.25), "29.921inHg");
  // Any measure switches only above a threshold above -1, and only where it can go.
  const UnitsProvider& p = launchIn(kMetric);
  const auto meter = p.lengthUnitWithUuid(QMMeterUnitUuid);
  EXPECT_EQ(p.stringForMeasureInMeter(5000, meter, -1.0), "5000.0m");
  EXPECT_EQ(p.stringForMeasureInMeter(5000, meter, -0.5), "5.000km");
  EXPECT_EQ(p.stringForMeasureInMeter(5000, meter, 5000), "5000.0m");
  const auto kilometer = p.lengthUnitWithUuid(QMKilometerUnitUuid);
  EXPECT_EQ(p.stringForMeasureInMeter(5000, kilometer, 0.0), "5.000km");  // nowhere to go
  EXPECT_EQ(p.stringForMeasureInMeter(5000, nullptr, 0.0), "");
  EXPECT_EQ(p.uiTextsForMeasureInMeter(5000, nullptr, 0.0), std::nullopt);
}

TEST_F(UnitsProviderFormatterTest, VerticalSpeedsWithTheirScales) {
  UnitsProvider& p = launchIn(kMetric);
  const auto perSecond = QMVerticalSpeedUnit::metersPerSecondUnit();
  p.setVerticalSpeedUnit(*perSecond);
  EXPECT_EQ(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(2.54), "2.5");
  EXPECT_EQ(p.textForCurrentVerticalSpeedUnitScale(), "/10");  // the unit's default
  p.setVerticalSpeedScale(0, *perSecond);
  EXPECT_EQ(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(-2.54), "-2.5");
  EXPECT_EQ(p.textForCurrentVerticalSpeedUnitScale(), "x1");
  const auto perMinute = QMVerticalSpeedUnit::metersPerMinuteUnit();
  p.setVerticalSpeedUnit(*perMinute);
  p.setVerticalSpeedScale(3, *perMinute);
  EXPECT_EQ(p.textForVerticalSpeedInMetersPerSecondWithNoUnits(2.5), "150");
  EXPECT_EQ(p.textForCurrentVerticalSpeedUnitScale(), "x1000");
  EXPECT_EQ(p.textForCurrentVerticalSpeedUnit(), "m/min");
  // Powers of ten beyond the int range saturate.
  EXPECT_EQ(UnitsProvider::textForScale(10), "x2147483647");
  EXPECT_EQ(UnitsProvider::textForScale(std::numeric_limits<std::int64_t>::min()), "/2147483647");
}

using F = QMUnitsFormatter;
using OptionalView = std::optional<std::string_view>;

// The labels come from the unit-system table (the provider's tests read most of them): a row
// without a key and an unknown code give "", and the imperial speed is never translated.
TEST(QMUnitsFormatter, LabelsAndUnitTypesFromTexts) {
  EXPECT_EQ(F::longTextForPluralKilometricUnitType(3), "miles");
  EXPECT_EQ(F::textForPaceUnitWithUnitType(3), "");  // yards have no pace
  EXPECT_EQ(F::longTextForUnitType(3), "Yards");
  EXPECT_EQ(F::longTextForDistanceLeftWithUnit({true, DistanceUnitType(3)}), "");
  EXPECT_EQ(F::longTextForDistanceLeftWithUnit({false, DistanceUnitType(3)}), "yards to go");
  EXPECT_EQ(F::textForKilometricSpeedType(4), "");
  EXPECT_EQ(F::textForChargedDistance(1234, 0, ""), "1.23km");
  EXPECT_EQ(F::textForChargedDistance(1000, 3, " "), "-1.00 mi");  // no conversion for yards
  EXPECT_EQ(F::textForChargedDistance(1000, 5, ""), "-1.00");      // nor a label for code 5
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(F::textForKilometricSpeedType(1), "mph");
  // Unit types of texts read from files.
  EXPECT_EQ(F::unitTypeForSpeedString("MPH"), 1);
  EXPECT_EQ(F::unitTypeForSpeedString("KTS"), 2);
  for (const auto other : {OptionalView{"mph"}, OptionalView{" MPH"}, OptionalView{}}) {
    EXPECT_EQ(F::unitTypeForSpeedString(other), 0) << other.value_or("(absent)");
  }
  EXPECT_EQ(F::unitTypeForAltitudeString(" \t ft\r\n"), 1);
  EXPECT_EQ(F::unitTypeForAltitudeString("\u00A0yd\u3000"), 3);  // white space beyond ASCII
  for (const auto other : {OptionalView{"FT"}, OptionalView{"ftx"}, OptionalView{}}) {
    EXPECT_EQ(F::unitTypeForAltitudeString(other), 0) << other.value_or("(absent)");
  }
}

TEST(QMUnitsFormatter, PacesAreTruncatedToWholeSeconds) {
  EXPECT_EQ(F::textForPaceForSpeed(1000 / 359.9, 0), "05:59");  // never rounded up to 06:00
  EXPECT_NEAR(F::paceForSpeed(4.4704, 1), 360.0007, 1e-4);      // 10 mph by the library's 0.62137
  EXPECT_EQ(F::textForPaceForSpeed(4.4704, 1), "06:00");
  EXPECT_EQ(F::textForPaceForSpeed(1852 / 3600.0, 2), "60:00");  // not capped at an hour
  EXPECT_EQ(F::paceForSpeed(0.0099, 0), 0.0);                    // no pace below 1 cm/s
  EXPECT_EQ(F::textForPaceForSpeed(0.0099, 0), "--:--");
  EXPECT_EQ(F::textForPaceForSpeed(kNaN, 0), "--:--");
  EXPECT_EQ(F::textForPaceForSpeed(5, 7), "-60:00");  // an unknown unit converts to -1
}

// The app's speed and distance formatters, which a units provider can serve.
struct FakeSpeed : SpeedFormatterDelegate {
  explicit FakeSpeed(std::optional<std::string> text) : answer(std::move(text)) {}
  std::optional<std::string> autoDecimalTextForMSSpeed(double) override { return answer; }
  std::optional<std::string> answer;
};

struct FakeDistance : DistanceFormatterDelegate {
  std::string longTextWithLongUnitTypeForDistance(double distance) override {
    return "about " + std::to_string(static_cast<int>(distance)) + " meters";
  }
};

TEST(UnitFormatterWrapper, AssignedFormattersAnswerAndThePreviousOnesAreReleased) {
  UnitFormatterWrapper hook;
  // Without formatters: the raw number, rounded as printf rounds the exact binary value.
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(2.5), "2");
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(-7.6), "-8");

  std::weak_ptr<SpeedFormatterDelegate> previous = hook.speedFormatterDelegate();
  hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>("42 km/h"));
  EXPECT_TRUE(previous.expired());
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(11.7), "42 km/h");  // kept alive by the hook alone
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "1500") << "distance untouched";
  hook.assignDistanceFormatterDelegate(std::make_shared<FakeDistance>());
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "about 1500 meters");
  hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>(std::nullopt));
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(1), "") << "no text becomes empty text";

  // Assigning nothing puts the fallbacks back.
  hook.assignSpeedFormatterDelegate(nullptr);
  hook.assignDistanceFormatterDelegate(nullptr);
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(12.7), "13");
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "1500");
}

TEST(UnitFormatterWrapper, AFormatterReplacedDuringACallLivesUntilTheCallEnds) {
  UnitFormatterWrapper hook;
  std::atomic<bool> done = false;
  std::thread reader([&] {
    while (!done) ASSERT_EQ(hook.autoDecimalTextForMSSpeed(1.0).size(), 1u);
  });
  for (int i = 0; i < 2000; ++i)
    hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>("a"));
  done = true;
  reader.join();
}

using O = DisplayOrientation;
constexpr int kDegrees = 0;
constexpr int kMils = 1;

TEST(UnitsProviderHeading, CardinalSectorsAndBearingTextsInDegreesAndMils) {
  const struct {
    double bearing;
    const char* text;
  } cases[] = {{-10, "N"},  {14.999, "N"}, {15, "NE"},  {75, "E"},     {105, "SE"}, {165, "S"},
               {195, "SW"}, {255, "W"},    {285, "NW"}, {344.9, "NW"}, {345, "N"},  {400, "N"}};
  for (const auto& c : cases) {
    EXPECT_EQ(UnitsProvider::shortCompassBearingText(c.bearing), c.text) << c.bearing;
  }
  EXPECT_EQ(UnitsProvider::shortCompassBearingText(kNaN), std::nullopt);
  using P = UnitsProvider;
  EXPECT_EQ(P::textForBearing(47.25, "HDG ", kDegrees, false), "HDG NE47");
  EXPECT_EQ(P::decimalTextForBearing(47.25, "HDG ", kDegrees, false), "HDG NE47.2");  // to even
  EXPECT_EQ(P::decimal2TextForBearing(47.26, "HDG ", kDegrees, true), "HDG 47.3");    // one decimal
  EXPECT_EQ(P::textForBearing(-10, "", kDegrees, false), "N-10");  // not normalised
  EXPECT_EQ(P::decimalTextForBearing(kNaN, ">", kDegrees, false), ">nan");
  EXPECT_EQ(P::decimalTextForBearing(200, "", 2, false), "SW200.0");  // other codes are degrees
  // Mils: no prefix, no cardinal, no decimals.
  EXPECT_EQ(P::decimalTextForBearing(90, "HDG ", kMils, false), "1600");
  EXPECT_EQ(P::textForBearing(-45, "", kMils, false), "-800");
  // The cardinal texts follow the locale; the point stays.
  const testing::ScopedLocale german("de_DE");
  const testing::ScopedGermanCLocale cLocale;
  EXPECT_EQ(P::decimalTextForBearing(120.44, "", kDegrees, false), "SO120.4");
}

TEST(UnitsProviderHeading, OrientationCorrectionTurnsOnceKeeps360AndPicksTheNorth) {
  const struct {
    double value;
    O orientation;
    double expected;
  } cases[] = {{300, O::kLandscapeLeft, 30},      {270, O::kLandscapeLeft, 360},
               {10, O::kLandscapeRight, 280},     {90, O::kLandscapeRight, 0},
               {200, O::kPortraitUpsideDown, 20}, {10, O::kUnknown, 10},
               {-30, O::kPortrait, 330},          {725, O::kPortrait, 365},
               {-400, O::kPortrait, -40}};  // one turn at most
  for (const auto& c : cases) {
    const FixedDisplayOrientation orientation(c.orientation);
    EXPECT_DOUBLE_EQ(UnitsProvider::orientationCorrectedForValue(c.value, orientation), c.expected)
        << c.value << " in orientation " << static_cast<int>(c.orientation);
  }

  const Heading heading{.trueHeading = 300, .magneticHeading = 310};
  const FixedDisplayOrientation left(O::kLandscapeLeft);
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, 0, "C ", kDegrees, left), "C NE30");
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, 1, "C ", kDegrees, left), "C NE40");
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, -1, "", kMils, left), "711");

  // The default forms read the orientation the host set.
  const O saved = currentDisplayOrientation();
  setCurrentDisplayOrientation(O::kPortraitUpsideDown);
  EXPECT_EQ(UnitsProvider::orientationCorrectedHeading(heading, 0), 120);
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, 1, "", kDegrees), "SE130");
  setCurrentDisplayOrientation(saved);
}

struct NorthDelegate : testing::RecordingDelegate {
  std::int64_t north = 0;
  std::int64_t northType() override { return north; }
};

TEST(UnitsProviderHeading, TitlesFollowTheNorthTypeAtEachCallAndAngleUnitsAbbreviate) {
  const auto delegate = std::make_shared<NorthDelegate>();
  EnvironmentSettings environment;
  environment.setDelegate(delegate);
  const testing::ScopedLocale locale("en_US");
  testing::FakeEnv env("en_US");
  const UnitsProvider provider(env, environment);
  EXPECT_EQ(UnitsProvider::hintForCompassTitleWithAngleUnitType(kDegrees, provider),
            "COMPASS (T)°");
  delegate->north = -1;  // read at each call, not when the provider is made
  EXPECT_EQ(UnitsProvider::hintForCompassTitleWithAngleUnitType(kMils, provider), "COMPASS (M)");
  EXPECT_EQ(UnitsProvider::hintForGPSCourseTitleWithAngleUnitType(kDegrees, provider),
            "GPS COURSE°");
  EXPECT_EQ(provider.courseTitle(), "COURSE");
  EXPECT_EQ(UnitsProvider::abbreviationForAngleUnitType(kDegrees), "°");
  EXPECT_EQ(UnitsProvider::abbreviationForAngleUnitType(kMils), "mils");
  EXPECT_EQ(UnitsProvider::abbreviationForAngleUnitType(2), "");
}

TEST(BearingFormatter, QuadrantsLettersAndTruncatedMinutes) {
  const struct {
    double azimuth;
    const char* text;
  } cases[] = {
      // A quadrant starts at its lower bound; 0.01° is less than a minute; the sign is dropped,
      // not folded to 360 - value.
      {225.5, "S45°30'W"}, {90, "S90°0'E"},     {89.999, "N89°59'E"},
      {180, "S0°0'W"},     {179.999, "S0°0'E"}, {270, "N90°0'W"},
      {359.99, "N0°0'W"},  {360, "N0°0'E"},     {720.5, "N0°30'E"},
      {-45, "N45°0'E"},    {kNaN, ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(BearingFormatter::textForAzimuth(c.azimuth), c.text) << c.azimuth;
  }
}

}  // namespace
}  // namespace qm
