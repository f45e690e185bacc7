// The heading texts of UnitsProvider: degrees or mils with a cardinal abbreviation, the
// display-orientation correction of compass headings, and the compass titles.

#include "qmcore/provider/UnitsProvider.hpp"

#include <array>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>

#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/LocalizedTextCache.hpp"

namespace qm {
namespace {

constexpr int kAngleUnitDegrees = 0;
constexpr int kAngleUnitMils = 1;

// The cardinal abbreviations, in the order of `kCardinalKeys`.
enum Cardinal : std::size_t { kN, kNE, kE, kSE, kS, kSW, kW, kNW, kCardinalCount };
constexpr std::array<std::string_view, kCardinalCount> kCardinalKeys = {"N", "NE", "E", "SE",
                                                                        "S", "SW", "W", "NW"};

// 30° around the cardinal points, 60° for the diagonals; below 15 and from 345 on: north.
// Not for NaN.
Cardinal cardinalOf(double bearing) {
  if (bearing >= 345.0) return kN;
  if (bearing >= 285.0) return kNW;
  if (bearing >= 255.0) return kW;
  if (bearing >= 195.0) return kSW;
  if (bearing >= 165.0) return kS;
  if (bearing >= 105.0) return kSE;
  if (bearing >= 75.0) return kE;
  if (bearing >= 15.0) return kNE;
  return kN;
}

// The localized abbreviation of `cardinal` in the current locale. Compass screens redraw
// bearings many times a second, so each thread keeps the eight texts of its locale.
const std::string& cardinalText(Cardinal cardinal) {
  thread_local LocalizedTextCache cache(kCardinalKeys);
  return cache.texts()[cardinal];
}

// The shared body of the three bearing texts; `degreesFormat` is "%.*s%s%.0f" or "%.*s%s%.1f".
std::string bearingText(double bearing, std::string_view prefix, int angleUnit, bool skipShortPart,
                        const char* degreesFormat) {
  if (angleUnit == kAngleUnitMils) return invariantFormat("%.0f", bearing * 6400.0 / 360.0);
  const char* cardinal =
      skipShortPart || std::isnan(bearing) ? "" : cardinalText(cardinalOf(bearing)).c_str();
  return invariantFormat(degreesFormat, static_cast<int>(prefix.size()), prefix.data(), cardinal,
                         bearing);
}

double headingOf(const Heading& heading, std::int64_t trueOrMagnetic) {
  return trueOrMagnetic != 0 ? heading.magneticHeading : heading.trueHeading;
}

}  // namespace

std::string UnitsProvider::textForBearing(double bearing, std::string_view prefix, int angleUnit,
                                          bool skipShortPart) {
  return bearingText(bearing, prefix, angleUnit, skipShortPart, "%.*s%s%.0f");
}

std::string UnitsProvider::decimalTextForBearing(double bearing, std::string_view prefix,
                                                 int angleUnit, bool skipShortPart) {
  return bearingText(bearing, prefix, angleUnit, skipShortPart, "%.*s%s%.1f");
}

std::string UnitsProvider::decimal2TextForBearing(double bearing, std::string_view prefix,
                                                  int angleUnit, bool skipShortPart) {
  // One decimal, despite the name: apps depend on the texts as they are.
  return decimalTextForBearing(bearing, prefix, angleUnit, skipShortPart);
}

std::optional<std::string> UnitsProvider::shortCompassBearingText(double bearing) {
  if (std::isnan(bearing)) return std::nullopt;
  return cardinalText(cardinalOf(bearing));
}

std::string UnitsProvider::abbreviationForAngleUnitType(int angleUnit) {
  switch (angleUnit) {
    case kAngleUnitDegrees:
      return "°";
    case kAngleUnitMils:
      return "mils";
    default:
      return "";
  }
}

std::string UnitsProvider::hintAbbreviationForAngleUnitType(int angleUnit) {
  return angleUnit == kAngleUnitDegrees ? "°" : "";
}

double UnitsProvider::orientationCorrectedForValue(double value,
                                                   const DisplayOrientationSource& orientation) {
  double corrected = value;
  switch (orientation.displayOrientation()) {
    case DisplayOrientation::kPortraitUpsideDown:
      corrected += 180.0;
      break;
    case DisplayOrientation::kLandscapeLeft:
      corrected += 90.0;
      break;
    case DisplayOrientation::kLandscapeRight:
      corrected -= 90.0;
      break;
    case DisplayOrientation::kPortrait:
    case DisplayOrientation::kUnknown:
      break;
  }
  // One turn at most, and 360 itself stays: callers show 360 for north in these screens.
  if (corrected > 360.0) corrected -= 360.0;
  if (corrected < 0.0) corrected += 360.0;
  return corrected;
}

double UnitsProvider::orientationCorrectedHeading(const Heading& heading,
                                                  std::int64_t trueOrMagnetic,
                                                  const DisplayOrientationSource& orientation) {
  return orientationCorrectedForValue(headingOf(heading, trueOrMagnetic), orientation);
}

std::string UnitsProvider::textForCompassHeading(const Heading& heading,
                                                 std::int64_t trueOrMagnetic,
                                                 std::string_view prefix, int angleUnit,
                                                 const DisplayOrientationSource& orientation) {
  return textForBearing(orientationCorrectedHeading(heading, trueOrMagnetic, orientation), prefix,
                        angleUnit, false);
}

std::string UnitsProvider::compassTitle() const {
  return localizedCompassTitle_ + " (" + compassTypeTitle() + ")";
}

std::string UnitsProvider::compassTypeTitle() const {
  return CoreStrings::CLSTRING(environment_.northType() != 0 ? "MagneticNorthFirstLetter"
                                                             : "TrueNorthFirstLetter");
}

std::string UnitsProvider::hintForGPSCourseTitleWithAngleUnitType(int angleUnit,
                                                                  const UnitsProvider& provider) {
  return provider.localizedGPSCourseTitle_ + hintAbbreviationForAngleUnitType(angleUnit);
}

std::string UnitsProvider::hintForCompassTitleWithAngleUnitType(int angleUnit,
                                                                const UnitsProvider& provider) {
  return provider.compassTitle() + hintAbbreviationForAngleUnitType(angleUnit);
}

}  // namespace qm
