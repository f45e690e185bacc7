// Bearing and heading texts: cardinal letters, quadrant bearings, degrees and mils.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>

#include "qmcore/formatting/BearingFormatter.hpp"
#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/testing/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

using O = DisplayOrientation;
constexpr int kDegrees = 0;
constexpr int kMils = 1;

TEST(UnitsProviderHeading, CardinalSectorsAtTheirBounds) {
  const struct {
    double bearing;
    const char* text;
  } cases[] = {{-10, "N"},  {14.999, "N"}, {15, "NE"},  {75, "E"},     {105, "SE"}, {165, "S"},
               {195, "SW"}, {255, "W"},    {285, "NW"}, {344.9, "NW"}, {345, "N"},  {400, "N"}};
  for (const auto& c : cases) {
    EXPECT_EQ(UnitsProvider::shortCompassBearingText(c.bearing), c.text) << c.bearing;
  }
  EXPECT_EQ(UnitsProvider::shortCompassBearingText(std::nan("")), std::nullopt);
}

TEST(UnitsProviderHeading, BearingTextsInDegreesAndMils) {
  const struct {
    double bearing;
    const char* prefix;
    int angleUnit;
    bool skipShortPart;
    const char* text;
    const char* decimalText;
  } cases[] = {
      {47.25, "HDG ", kDegrees, false, "HDG NE47", "HDG NE47.2"},  // printf: ties to even
      {47.26, "HDG ", kDegrees, true, "HDG 47", "HDG 47.3"},
      {-10, "", kDegrees, false, "N-10", "N-10.0"},  // not normalised
      {std::nan(""), ">", kDegrees, false, ">nan", ">nan"},
      {200, "", 2, false, "SW200", "SW200.0"},  // codes other than mils are degrees
      // Mils: no prefix, no cardinal, no decimals.
      {90, "HDG ", kMils, false, "1600", "1600"},
      {-45, "", kMils, false, "-800", "-800"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bearing);
    const auto text = [&](auto form) {
      return form(c.bearing, c.prefix, c.angleUnit, c.skipShortPart);
    };
    EXPECT_EQ(text(UnitsProvider::textForBearing), c.text);
    EXPECT_EQ(text(UnitsProvider::decimalTextForBearing), c.decimalText);
    EXPECT_EQ(text(UnitsProvider::decimal2TextForBearing), c.decimalText);
  }
  // The cardinal texts follow the locale; the point stays.
  const testing::ScopedLocale german("de_DE");
  const testing::ScopedGermanCLocale cLocale;
  EXPECT_EQ(UnitsProvider::decimalTextForBearing(120.44, "", kDegrees, false), "SO120.4");
}

TEST(UnitsProviderHeading, OrientationCorrectionTurnsOnceAndKeeps360) {
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
}

TEST(UnitsProviderHeading, CompassHeadingsPickTheirNorthAndFollowTheDisplay) {
  const Heading heading{.trueHeading = 300, .magneticHeading = 310};
  const FixedDisplayOrientation left(O::kLandscapeLeft);
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, 0, "C ", kDegrees, left), "C NE30");
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, 1, "C ", kDegrees, left), "C NE40");
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, -1, "", kMils, left), "711");
  EXPECT_EQ(UnitsProvider::orientationCorrectedHeading(heading, 2, left), 40);

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
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    double azimuth;
    const char* text;
  } cases[] = {
      // A quadrant starts at its lower bound; 0.01° is less than a minute; the sign is dropped,
      // not folded to 360 - value.
      {225.5, "S45°30'W"}, {90, "S90°0'E"},  {89.999, "N89°59'E"}, {180, "S0°0'W"},
      {179.999, "S0°0'E"}, {270, "N90°0'W"}, {359.99, "N0°0'W"},   {360, "N0°0'E"},
      {720.5, "N0°30'E"},  {-45, "N45°0'E"}, {std::nan(""), ""},   {inf, ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(BearingFormatter::textForAzimuth(c.azimuth), c.text) << c.azimuth;
  }
}

}  // namespace
}  // namespace qm
