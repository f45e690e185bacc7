// The heading texts of UnitsProvider: degrees or mils with a cardinal abbreviation, the
// display-orientation correction of compass headings, and the compass titles.

#include "qmcore/provider/UnitsProvider.hpp"

#include <cmath>
#include <string>

#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {
namespace {

constexpr int kAngleUnitDegrees = 0;
constexpr int kAngleUnitMils = 1;

// The shared body of the three bearing texts; `degreesFormat` is "%s%s%.0f" or "%s%s%.1f".
std::string bearingText(double bearing, std::string_view prefix, int angleUnit, bool skipShortPart,
                        const char* degreesFormat) {
  if (angleUnit == kAngleUnitMils) return invariantFormat("%.0f", bearing * 6400.0 / 360.0);
  const std::string cardinal =
      skipShortPart ? std::string() : UnitsProvider::shortCompassBearingText(bearing).value_or("");
  return invariantFormat(degreesFormat, std::string(prefix).c_str(), cardinal.c_str(), bearing);
}

double headingOf(const Heading& heading, std::int64_t trueOrMagnetic) {
  return trueOrMagnetic != 0 ? heading.magneticHeading : heading.trueHeading;
}

}  // namespace

std::string UnitsProvider::textForBearing(double bearing, std::string_view prefix, int angleUnit,
                                          bool skipShortPart) {
  return bearingText(bearing, prefix, angleUnit, skipShortPart, "%s%s%.0f");
}

std::string UnitsProvider::decimalTextForBearing(double bearing, std::string_view prefix,
                                                 int angleUnit, bool skipShortPart) {
  return bearingText(bearing, prefix, angleUnit, skipShortPart, "%s%s%.1f");
}

std::string UnitsProvider::decimal2TextForBearing(double bearing, std::string_view prefix,
                                                  int angleUnit, bool skipShortPart) {
  // One decimal, despite the name: apps depend on the texts as they are.
  return decimalTextForBearing(bearing, prefix, angleUnit, skipShortPart);
}

std::optional<std::string> UnitsProvider::shortCompassBearingText(double bearing) {
  if (std::isnan(bearing)) return std::nullopt;
  // 30° around the cardinal points, 60° for the diagonals; below 15 and from 345 on: north.
  const char* key = "N";
  if (bearing >= 345.0) {
    key = "N";
  } else if (bearing >= 285.0) {
    key = "NW";
  } else if (bearing >= 255.0) {
    key = "W";
  } else if (bearing >= 195.0) {
    key = "SW";
  } else if (bearing >= 165.0) {
    key = "S";
  } else if (bearing >= 105.0) {
    key = "SE";
  } else if (bearing >= 75.0) {
    key = "E";
  } else if (bearing >= 15.0) {
    key = "NE";
  }
  return CoreStrings::CLSTRING(key);
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

double UnitsProvider::orientationCorrectedForValue(double value) {
  return orientationCorrectedForValue(value, DisplayOrientationSource::current());
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
                                                  std::int64_t trueOrMagnetic) {
  return orientationCorrectedHeading(heading, trueOrMagnetic, DisplayOrientationSource::current());
}

double UnitsProvider::orientationCorrectedHeading(const Heading& heading,
                                                  std::int64_t trueOrMagnetic,
                                                  const DisplayOrientationSource& orientation) {
  return orientationCorrectedForValue(headingOf(heading, trueOrMagnetic), orientation);
}

std::string UnitsProvider::textForCompassHeading(const Heading& heading,
                                                 std::int64_t trueOrMagnetic,
                                                 std::string_view prefix, int angleUnit) {
  return textForCompassHeading(heading, trueOrMagnetic, prefix, angleUnit,
                               DisplayOrientationSource::current());
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

std::string UnitsProvider::hintForGPSCourseTitleWithAngleUnitType(int angleUnit) {
  return hintForGPSCourseTitleWithAngleUnitType(angleUnit, sharedInstance());
}

std::string UnitsProvider::hintForGPSCourseTitleWithAngleUnitType(int angleUnit,
                                                                  const UnitsProvider& provider) {
  return provider.localizedGPSCourseTitle_ + hintAbbreviationForAngleUnitType(angleUnit);
}

std::string UnitsProvider::hintForCompassTitleWithAngleUnitType(int angleUnit) {
  return hintForCompassTitleWithAngleUnitType(angleUnit, sharedInstance());
}

std::string UnitsProvider::hintForCompassTitleWithAngleUnitType(int angleUnit,
                                                                const UnitsProvider& provider) {
  return provider.compassTitle() + hintAbbreviationForAngleUnitType(angleUnit);
}

}  // namespace qm
