#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <optional>

#include "qmcore/formatting/QMFormatterTestSupport.hpp"
#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/provider/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

using O = DisplayOrientation;
constexpr int kDegrees = 0;
constexpr int kMils = 1;

TEST(UnitsProviderHeading, CardinalSectorsAtTheirBounds) {
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    double bearing;
    const char* english;
    const char* german;
  } cases[] = {
      {-10, "N", "N"},      {-inf, "N", "N"}, {14.999, "N", "N"}, {15, "NE", "NO"},
      {74.999, "NE", "NO"}, {75, "E", "O"},   {104.9, "E", "O"},  {105, "SE", "SO"},
      {164.9, "SE", "SO"},  {165, "S", "S"},  {194.9, "S", "S"},  {195, "SW", "SW"},
      {254.9, "SW", "SW"},  {255, "W", "W"},  {284.9, "W", "W"},  {285, "NW", "NW"},
      {344.9, "NW", "NW"},  {345, "N", "N"},  {360, "N", "N"},    {400, "N", "N"},
      {inf, "N", "N"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(UnitsProvider::shortCompassBearingText(c.bearing), c.english) << c.bearing;
  }
  const testing::ScopedLocale german("de_DE");
  for (const auto& c : cases) {
    EXPECT_EQ(UnitsProvider::shortCompassBearingText(c.bearing), c.german) << c.bearing;
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
      {47, "", kDegrees, false, "NE47", "NE47.0"},
      {47.25, "HDG ", kDegrees, false, "HDG NE47", "HDG NE47.2"},  // ties to even: 47.25 exact
      {47.26, "HDG ", kDegrees, true, "HDG 47", "HDG 47.3"},
      {359.6, "", kDegrees, false, "N360", "N359.6"},
      // Not normalised to 0-360.
      {400, "", kDegrees, false, "N400", "N400.0"},
      {-10, "", kDegrees, false, "N-10", "N-10.0"},
      {std::nan(""), ">", kDegrees, false, ">nan", ">nan"},
      // Codes other than mils are degrees.
      {200, "", 2, false, "SW200", "SW200.0"},
      {200, "", -1, true, "200", "200.0"},
      // Mils: no prefix, no cardinal, no decimals.
      {90, "HDG ", kMils, false, "1600", "1600"},
      {90, "HDG ", kMils, true, "1600", "1600"},
      {359.99, "", kMils, false, "6400", "6400"},
      {1, "", kMils, false, "18", "18"},
      {-45, "", kMils, false, "-800", "-800"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.bearing << " '" << c.prefix << "' unit " << c.angleUnit
                                      << (c.skipShortPart ? " skip" : ""));
    EXPECT_EQ(UnitsProvider::textForBearing(c.bearing, c.prefix, c.angleUnit, c.skipShortPart),
              c.text);
    EXPECT_EQ(
        UnitsProvider::decimalTextForBearing(c.bearing, c.prefix, c.angleUnit, c.skipShortPart),
        c.decimalText);
    EXPECT_EQ(
        UnitsProvider::decimal2TextForBearing(c.bearing, c.prefix, c.angleUnit, c.skipShortPart),
        c.decimalText);
  }
}

TEST(UnitsProviderHeading, BearingTextsUseTheLocalesLettersAndAlwaysAPoint) {
  const testing::ScopedLocale german("de_DE");
  const testing::ScopedGermanCLocale cLocale;
  EXPECT_EQ(UnitsProvider::textForBearing(120, "", kDegrees, false), "SO120");
  EXPECT_EQ(UnitsProvider::decimalTextForBearing(80.44, "", kDegrees, false), "O80.4");
}

TEST(UnitsProviderHeading, OrientationCorrectionTurnsOnceAndKeeps360) {
  const struct {
    double value;
    O orientation;
    double expected;
  } cases[] = {
      {300, O::kLandscapeLeft, 30},
      {270, O::kLandscapeLeft, 360},
      {271, O::kLandscapeLeft, 1},
      {10, O::kLandscapeRight, 280},
      {90, O::kLandscapeRight, 0},
      {0, O::kLandscapeRight, 270},
      {200, O::kPortraitUpsideDown, 20},
      {180, O::kPortraitUpsideDown, 360},
      {360, O::kPortrait, 360},
      {10, O::kUnknown, 10},
      {-30, O::kPortrait, 330},
      // One turn at most, either way.
      {725, O::kPortrait, 365},
      {-400, O::kPortrait, -40},
  };
  for (const auto& c : cases) {
    const FixedDisplayOrientation orientation(c.orientation);
    EXPECT_DOUBLE_EQ(UnitsProvider::orientationCorrectedForValue(c.value, orientation), c.expected)
        << c.value << " in orientation " << static_cast<int>(c.orientation);
  }
}

class ProcessOrientation : public ::testing::Test {
 protected:
  void SetUp() override { saved_ = currentDisplayOrientation(); }
  void TearDown() override { setCurrentDisplayOrientation(saved_); }
  O saved_ = O::kUnknown;
};

TEST_F(ProcessOrientation, CompassHeadingsPickTheirNorthAndFollowTheDisplay) {
  const Heading heading{.trueHeading = 300, .magneticHeading = 310};
  const struct {
    std::int64_t trueOrMagnetic;
    int angleUnit;
    double corrected;
    const char* text;
  } cases[] = {
      {0, kDegrees, 30, "NE30"},
      {1, kDegrees, 40, "NE40"},
      {-1, kDegrees, 40, "NE40"},  // any non-zero flag is magnetic
      {0, kMils, 30, "533"},
  };
  setCurrentDisplayOrientation(O::kLandscapeLeft);
  const FixedDisplayOrientation portrait(O::kPortrait);
  for (const auto& c : cases) {
    SCOPED_TRACE(c.trueOrMagnetic);
    EXPECT_EQ(UnitsProvider::orientationCorrectedHeading(heading, c.trueOrMagnetic), c.corrected);
    EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, c.trueOrMagnetic, "", c.angleUnit),
              c.text);
    // An explicit source wins over the process-wide orientation.
    EXPECT_EQ(UnitsProvider::orientationCorrectedHeading(heading, c.trueOrMagnetic, portrait),
              c.trueOrMagnetic ? 310 : 300);
  }
  EXPECT_EQ(UnitsProvider::textForCompassHeading(heading, 0, "C ", kDegrees, portrait), "C NW300");
  setCurrentDisplayOrientation(O::kPortraitUpsideDown);
  EXPECT_EQ(UnitsProvider::orientationCorrectedForValue(10), 190);
}

TEST(UnitsProviderHeading, AngleUnitAbbreviationsAndHints) {
  const struct {
    int angleUnit;
    const char* abbreviation;
    const char* hint;
  } cases[] = {{kDegrees, "°", "°"}, {kMils, "mils", ""}, {2, "", ""}, {-1, "", ""}};
  for (const auto& c : cases) {
    EXPECT_EQ(UnitsProvider::abbreviationForAngleUnitType(c.angleUnit), c.abbreviation);
    EXPECT_EQ(UnitsProvider::hintAbbreviationForAngleUnitType(c.angleUnit), c.hint);
  }
}

struct NorthDelegate : testing::RecordingDelegate {
  std::int64_t north = 0;
  std::int64_t northType() override { return north; }
};

TEST(UnitsProviderHeading, TitlesFollowTheNorthTypeAtEachCallAndTheLocale) {
  const struct {
    const char* locale;
    std::int64_t northType;
    int angleUnit;
    const char* compassHint;
    const char* gpsCourseHint;
    const char* course;
  } cases[] = {
      {"en_US", 0, kDegrees, "COMPASS (T)°", "GPS COURSE°", "COURSE"},
      {"en_US", 1, kMils, "COMPASS (M)", "GPS COURSE", "COURSE"},
      {"en_US", -1, 2, "COMPASS (M)", "GPS COURSE", "COURSE"},
      {"de_DE", 0, kDegrees, "KOMPASS (G)°", "GPS-KURS°", "KURS"},
      {"de_DE", 2, kMils, "KOMPASS (M)", "GPS-KURS", "KURS"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.locale << " north " << c.northType);
    const auto delegate = std::make_shared<NorthDelegate>();
    EnvironmentSettings environment;
    environment.setDelegate(delegate);
    NotificationCenter center;
    const testing::ScopedLocale locale(c.locale);
    const UnitsProvider provider(SettingsStore::inMemory(), center, environment);

    delegate->north = c.northType;
    const std::string compass = c.compassHint;
    EXPECT_EQ(provider.compassTitle(), compass.substr(0, compass.find(')') + 1));
    EXPECT_EQ(UnitsProvider::hintForCompassTitleWithAngleUnitType(c.angleUnit, provider),
              c.compassHint);
    EXPECT_EQ(UnitsProvider::hintForGPSCourseTitleWithAngleUnitType(c.angleUnit, provider),
              c.gpsCourseHint);
    EXPECT_EQ(provider.gpsCourseTitle(),
              UnitsProvider::hintForGPSCourseTitleWithAngleUnitType(kMils, provider));
    EXPECT_EQ(provider.courseTitle(), c.course);
    delegate->north = 0;
    EXPECT_EQ(provider.compassTypeTitle(), c.locale[0] == 'd' ? "G" : "T");
  }
}

}  // namespace
}  // namespace qm
