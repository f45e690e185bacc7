#include "qmcore/platform/Locale.hpp"

#include <gtest/gtest.h>

#include <cstdlib>

#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

TEST(LocaleFunctions, SetterAcceptsPosixAndBcp47Spellings) {
  const testing::ScopedLocale restore;
  for (const auto& [given, expected] : {std::pair{"de-DE", "de_DE"},
                                        {"fr_FR.utf8@euro", "fr_FR"},
                                        {"C.UTF-8", "en_US_POSIX"},
                                        {"POSIX", "en_US_POSIX"},
                                        {"", "en_US_POSIX"}}) {
    setCurrentLocaleIdentifier(given);
    EXPECT_EQ(currentLocaleIdentifier(), expected) << given;
  }
}

TEST(LocaleFunctions, LanguageMeasurementSystemAndTimeZone) {
  EXPECT_EQ(languageOfLocale("en-US"), "en");
  EXPECT_EQ(measurementSystemForLocale("en_US"), MeasurementSystem::kUS);
  EXPECT_EQ(measurementSystemForLocale("en_GB"), MeasurementSystem::kUK);
  EXPECT_EQ(measurementSystemForLocale("de_DE"), MeasurementSystem::kMetric);
  const testing::ScopedTimeZone restore;
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(currentTimeZoneIdentifier(), "Europe/Berlin");
  ::setenv("TZ", ":Asia/Tokyo", 1);
  setCurrentTimeZoneIdentifier("");  // back to the environment's
  EXPECT_EQ(currentTimeZoneIdentifier(), "Asia/Tokyo");
}

using O = DisplayOrientation;

TEST(DisplayOrientation, CodesAndSourcesTurnStrayValuesIntoUnknown) {
  for (const auto& [code, expected] : {std::pair{1, O::kPortrait},
                                       {3, O::kLandscapeLeft},
                                       {4, O::kLandscapeRight},
                                       {5, O::kUnknown}}) {
    EXPECT_EQ(displayOrientationFromCode(code), expected) << code;
  }
  const O saved = currentDisplayOrientation();
  FixedDisplayOrientation fixed(static_cast<O>(9));
  EXPECT_EQ(fixed.displayOrientation(), O::kUnknown);
  fixed.setDisplayOrientation(O::kLandscapeRight);
  setCurrentDisplayOrientation(O::kPortraitUpsideDown);
  EXPECT_EQ(fixed.displayOrientation(), O::kLandscapeRight);  // its own, not the current one
  EXPECT_EQ(DisplayOrientationSource::current().displayOrientation(), O::kPortraitUpsideDown);
  setCurrentDisplayOrientation(static_cast<O>(7));
  fixed.setDisplayOrientation(static_cast<O>(-3));
  EXPECT_EQ(currentDisplayOrientation(), O::kUnknown);
  EXPECT_EQ(fixed.displayOrientation(), O::kUnknown);
  setCurrentDisplayOrientation(saved);
}

}  // namespace
}  // namespace qm
