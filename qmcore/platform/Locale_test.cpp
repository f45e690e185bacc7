#include "qmcore/platform/Locale.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

TEST(LocaleFunctions, SetterAcceptsPosixAndBcp47Spellings) {
  const testing::ScopedLocale restore;
  const struct {
    const char* given;
    const char* expected;
  } cases[] = {
      {"de-DE", "de_DE"},   {"de_DE.UTF-8", "de_DE"}, {"fr_FR.utf8@euro", "fr_FR"},
      {"C", "en_US_POSIX"}, {"POSIX", "en_US_POSIX"}, {"C.UTF-8", "en_US_POSIX"},
      {"", "en_US_POSIX"},  {"en_GB", "en_GB"},
  };
  for (const auto& c : cases) {
    setCurrentLocaleIdentifier(c.given);
    EXPECT_EQ(currentLocaleIdentifier(), c.expected) << c.given;
  }
}

TEST(LocaleFunctions, LanguageAndMeasurementSystemOfALocale) {
  EXPECT_EQ(languageOfLocale("de_DE"), "de");
  EXPECT_EQ(languageOfLocale("en-US"), "en");
  EXPECT_EQ(languageOfLocale(""), "");
  EXPECT_EQ(measurementSystemForLocale("en_US"), MeasurementSystem::kUS);
  EXPECT_EQ(measurementSystemForLocale("en_GB"), MeasurementSystem::kUK);
  EXPECT_EQ(measurementSystemForLocale("de_DE"), MeasurementSystem::kMetric);
}

TEST(LocaleFunctions, TimeZoneIsSettableAndRestorable) {
  const testing::ScopedTimeZone restore;
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(currentTimeZoneIdentifier(), "Europe/Berlin");
  ::setenv("TZ", ":Asia/Tokyo", 1);
  setCurrentTimeZoneIdentifier("");  // back to the environment's
  EXPECT_EQ(currentTimeZoneIdentifier(), "Asia/Tokyo");
}

using O = DisplayOrientation;

TEST(DisplayOrientation, CodesMapToTheirOrientationsAndStrayCodesToUnknown) {
  const struct {
    int code;
    O expected;
  } cases[] = {
      {0, O::kUnknown},        {1, O::kPortrait}, {3, O::kLandscapeLeft},
      {4, O::kLandscapeRight}, {5, O::kUnknown},  {-1, O::kUnknown},
  };
  for (const auto& c : cases) EXPECT_EQ(displayOrientationFromCode(c.code), c.expected) << c.code;
}

TEST(DisplayOrientation, SourcesFollowTheirOwnSetterAndRejectStrayValues) {
  const O saved = currentDisplayOrientation();
  FixedDisplayOrientation fixed(O::kLandscapeLeft);
  setCurrentDisplayOrientation(O::kPortraitUpsideDown);
  EXPECT_EQ(DisplayOrientationSource::current().displayOrientation(), O::kPortraitUpsideDown);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeLeft);
  fixed.setDisplayOrientation(O::kLandscapeRight);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeRight);
  EXPECT_EQ(currentDisplayOrientation(), O::kPortraitUpsideDown);

  setCurrentDisplayOrientation(static_cast<O>(7));
  fixed.setDisplayOrientation(static_cast<O>(-3));
  EXPECT_EQ(DisplayOrientationSource::current().displayOrientation(), O::kUnknown);
  EXPECT_EQ(fixed.displayOrientation(), O::kUnknown);
  EXPECT_EQ(FixedDisplayOrientation(static_cast<O>(9)).displayOrientation(), O::kUnknown);
  setCurrentDisplayOrientation(saved);
}

}  // namespace
}  // namespace qm
