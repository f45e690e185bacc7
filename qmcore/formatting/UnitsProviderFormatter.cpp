// The units provider's value texts: distances, altitudes, speeds, lengths, areas, pressures,
// vertical speeds and the map ruler in the provider's current units.

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>

#include "qmcore/formatting/QMStringForFloatPrecision.hpp"
#include "qmcore/formatting/QMUnitsFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/QMUIValueWithUnit.hpp"
#include "qmcore/provider/QMUnitCalculator.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

constexpr double kMetersPerKilometer = 1000.0;
constexpr double kMetersPerNauticalMile = 1852.0;
constexpr double kFeetPerMile = 5280.0;
constexpr double kFeetPerNauticalMile = 6076.0;
// The ruler's bar is this many points long; its label states the bar's ground length.
constexpr float kScaleRulerLengthInPoints = 50.0f;

// The number of a small-unit ruler label: truncated, and rounded down to tens when `tens`.
double rulerSmallValue(double length, bool tens) {
  const double whole = std::trunc(length);
  return tens ? whole - std::fmod(whole, 10.0) : whole;
}

// 10^exponent truncated to an int, saturating at the int range.
int truncatedPowerOfTen(double exponent) {
  const double power = std::pow(10.0, exponent);
  if (power >= static_cast<double>(std::numeric_limits<int>::max())) {
    return std::numeric_limits<int>::max();
  }
  return static_cast<int>(power);
}

}  // namespace

std::string UnitsProvider::bigUnitLabel(std::int64_t unitType) const {
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr) return "";
  switch (system->bigUnit) {
    case BigDistanceUnit::kKilometer:
      return localizedKm_;
    case BigDistanceUnit::kMile:
      return localizedMile_;
    case BigDistanceUnit::kNauticalMile:
      return localizedNauticalMile_;
  }
  return "";
}

std::string UnitsProvider::smallUnitLabel(std::int64_t unitType, bool localized) const {
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr) return "";
  SmallDistanceUnit unit = system->smallUnit;
  if (unit == SmallDistanceUnit::kChosen) {
    unit = current_.distanceUnitType != 0 ? SmallDistanceUnit::kFoot : SmallDistanceUnit::kMeter;
  }
  switch (unit) {
    case SmallDistanceUnit::kMeter:
      return localized ? localizedMeter_ : "m";
    case SmallDistanceUnit::kFoot:
    case SmallDistanceUnit::kChosen:
      return "ft";
    case SmallDistanceUnit::kYard:
      return "yd";
  }
  return "";
}

std::string UnitsProvider::textForSmallDistanceUnitTypeForGeneralUnitType(
    std::int64_t unitType) const {
  return smallUnitLabel(unitType, true);
}

std::string UnitsProvider::nonLocalizedTextForUnitType(std::int64_t unitType) const {
  return smallUnitLabel(unitType, false);
}

std::string UnitsProvider::textForCurrentAltitudeUnit() const {
  return textForSmallDistanceUnitTypeForGeneralUnitType(current_.altitudeUnitType);
}

std::string UnitsProvider::speechTextForCurrentAltitudeUnit() const {
  return QMUnitsFormatter::longTextForDistanceLeftUnitType(current_.altitudeUnitType);
}

std::string UnitsProvider::textForCurrentSpeedUnit() const {
  return QMUnitsFormatter::textForKilometricSpeedType(current_.generalUnitType);
}

std::string UnitsProvider::speechTextForCurrentSpeedUnit() const {
  return QMUnitsFormatter::speechTextForKilometricSpeedType(current_.generalUnitType);
}

std::string UnitsProvider::textForCurrentVerticalSpeedUnit() const {
  return current_.verticalSpeedUnit ? current_.verticalSpeedUnit->localizedAbbreviation() : "";
}

std::string UnitsProvider::textForDistance(double meters, std::string_view unitSeparator) const {
  const double threshold = current_.distanceSmallToBigThreshold;
  const auto separatorLength = static_cast<int>(unitSeparator.size());
  if (threshold >= 0 && meters >= threshold) {
    const std::string label = bigUnitLabel(current_.generalUnitType);
    return invariantFormat("%.2f%.*s%s",
                           QMCalculateKilometricDistance(current_.generalUnitType, meters),
                           separatorLength, unitSeparator.data(), label.c_str());
  }
  // Nautical mode has no small unit of its own: metres or feet, as chosen.
  const std::int64_t code = isNauticalSystem(current_.generalUnitType) ? current_.distanceUnitType
                                                                       : current_.generalUnitType;
  const std::string label = textForSmallDistanceUnitTypeForGeneralUnitType(code);
  return invariantFormat("%.0f%.*s%s", QMCalculateDistance(code, meters), separatorLength,
                         unitSeparator.data(), label.c_str());
}

std::string UnitsProvider::textForMapDistance(double meters) const {
  return textForDistance(meters);
}

QMUIValueWithUnit UnitsProvider::uiTextsForDistance(double meters) const {
  const double threshold = current_.distanceSmallToBigThreshold;
  if (threshold >= 0 && meters >= threshold) {
    return {.uiValue = QMStringForFloatPrecision2(
                QMCalculateKilometricDistance(current_.generalUnitType, meters)),
            .unitText = bigUnitLabel(current_.generalUnitType)};
  }
  return {
      .uiValue = QMStringForFloatPrecision0(QMCalculateDistance(current_.distanceUnitType, meters)),
      .unitText = textForSmallDistanceUnitTypeForGeneralUnitType(current_.distanceUnitType)};
}

std::string UnitsProvider::textForAltitudeWithNoUnits(double meters) const {
  // "-0" must not be shown for an altitude that rounds to zero from below; -0.5 itself stays
  // (printf rounds it to "-0", halves to even).
  if (meters > -0.5 && meters <= 0.0) meters = 0.0;
  if (current_.altitudeUnitType == 0) return QMStringForFloatPrecision0(meters);
  if (isNauticalSystem(current_.generalUnitType) || current_.altitudeUnitType == 1) {
    return QMStringForFloatPrecision0(meters * kFeetPerMeter);
  }
  return "";
}

std::string UnitsProvider::decimalTextForAverageSpeedWithNoUnits(double metersPerSecond) const {
  return invariantFormat("%.1f",
                         calculateKilometricSpeed(metersPerSecond, current_.generalUnitType));
}

std::string UnitsProvider::decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(
    double metersPerSecond) const {
  return invariantFormat("%.2f",
                         calculateKilometricSpeed(metersPerSecond, current_.generalUnitType));
}

std::string UnitsProvider::decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(
    double metersPerSecond) const {
  return invariantFormat("%.4f",
                         calculateKilometricSpeed(metersPerSecond, current_.generalUnitType));
}

std::string UnitsProvider::autoDecimalTextForMSSpeedWithNoUnits(double metersPerSecond) const {
  const double speed = calculateKilometricSpeed(metersPerSecond, current_.generalUnitType);
  if (speed < 100.0 && environment_.showsDecimalDotForSpeedUnder100()) {
    return decimalSpeedFormatter_.format(speed);
  }
  return QMStringForFloatPrecision0(speed);
}

std::string UnitsProvider::autoDecimalTextForMSSpeed(double metersPerSecond) const {
  return autoDecimalTextForMSSpeedWithNoUnits(metersPerSecond) + " " +
         speechTextForCurrentSpeedUnit();
}

std::string UnitsProvider::textForSmallOnlyDistanceWithNoUnits(double meters) const {
  return QMStringForFloatPrecision0(current_.distanceUnitType != 0 ? meters * kFeetPerMeter
                                                                   : meters);
}

std::string UnitsProvider::textForSmallOnlyDistance(double meters) const {
  if (current_.distanceUnitType != 0) {
    return QMStringForFloatPrecision0(QMCalculateDistance(current_.distanceUnitType, meters)) +
           textForSmallDistanceUnitTypeForGeneralUnitType(current_.distanceUnitType);
  }
  return QMStringForFloatPrecision0(meters) + textForSmallDistanceUnitTypeForGeneralUnitType(0);
}

std::string UnitsProvider::textWithNoUnitsForDistanceInMeters(
    double meters, const QMDistanceUnitType& unitType) const {
  const auto code = static_cast<std::int64_t>(unitType.unitType);
  if (unitType.isKilometric) {
    return QMStringForFloatPrecision2(QMCalculateKilometricDistance(code, meters));
  }
  return QMStringForFloatPrecision0(calculateDistance(meters, code));
}

std::string UnitsProvider::textForSmallRoundedDistanceWithNoUnits(double meters) const {
  double value = current_.distanceUnitType != 0 ? meters * kFeetPerMeter : meters;
  if (value > 100.0) {
    // The remainder in single precision, as the apps have always shown it: above 2^24 the
    // result is not a multiple of ten.
    value -= std::fmod(static_cast<float>(value), 10.0f);
  }
  return QMStringForFloatPrecision0(value);
}

std::string UnitsProvider::rulerValueForMetersPerPixel(float metersPerPoint) const {
  const float meters = metersPerPoint * kScaleRulerLengthInPoints;
  if (current_.distanceUnitType == 0) {
    const double limit =
        isNauticalSystem(current_.generalUnitType) ? kMetersPerNauticalMile : kMetersPerKilometer;
    if (meters > limit) {
      const std::int64_t big = current_.generalUnitType;
      // Kilometres in single precision: a 20.1-metre point makes 1.005 km, shown "1.00".
      const double value = big == 0 ? meters / 1000.0f : QMCalculateKilometricDistance(big, meters);
      const std::string label = bigUnitLabel(big);
      return invariantFormat("%.2f %s", value, label.c_str());
    }
    const std::string label = textForSmallDistanceUnitTypeForGeneralUnitType(0);
    return invariantFormat("%.0f %s", rulerSmallValue(meters, meters > 100.0f), label.c_str());
  }
  const auto feet = static_cast<float>(static_cast<double>(meters) * kFeetPerMeter);
  const double limit =
      isNauticalSystem(current_.generalUnitType) ? kFeetPerNauticalMile : kFeetPerMile;
  if (feet > limit) {
    double value = 0.0;
    std::string label;
    if (current_.generalUnitType == 1) {
      value = feet / kFeetPerMile;
      label = bigUnitLabel(current_.distanceUnitType);
    } else {
      value = QMCalculateKilometricDistance(current_.generalUnitType, meters);
      label = bigUnitLabel(current_.generalUnitType);
    }
    return invariantFormat("%.2f %s", value, label.c_str());
  }
  // In feet even when the label says yards.
  const std::string label =
      textForSmallDistanceUnitTypeForGeneralUnitType(current_.distanceUnitType);
  return invariantFormat("%.0f %s", rulerSmallValue(feet, feet >= 100.0f), label.c_str());
}

std::string UnitsProvider::stringForLengthInMeters(double meters) const {
  return stringForMeasureInMeter(meters, current_.lengthUnit, current_.lengthSmallToBigThreshold);
}

std::string UnitsProvider::stringForAreaInSquareMeters(double squareMeters) const {
  return stringForMeasureInMeter(squareMeters, current_.areaUnit, current_.areaSmallToBigThreshold);
}

std::string UnitsProvider::stringForPressurehPa(double hPa) const {
  return stringForMeasureInMeter(hPa, current_.pressureUnit, 0.0);
}

std::optional<QMUIValueWithUnit> UnitsProvider::uiTextsForLengthInMeters(double meters) const {
  return uiTextsForMeasureInMeter(meters, current_.lengthUnit, current_.lengthSmallToBigThreshold);
}

std::optional<QMUIValueWithUnit> UnitsProvider::uiTextsForAreaInSquareMeters(
    double squareMeters) const {
  return uiTextsForMeasureInMeter(squareMeters, current_.areaUnit,
                                  current_.areaSmallToBigThreshold);
}

std::string UnitsProvider::stringForMeasureInMeter(double value,
                                                   const std::shared_ptr<const QMUnit>& smallUnit,
                                                   double thresholdValueInMeters) const {
  const std::optional<QMUIValueWithUnit> texts =
      uiTextsForMeasureInMeter(value, smallUnit, thresholdValueInMeters);
  return texts ? texts->uiValue + texts->unitText : "";
}

std::optional<QMUIValueWithUnit> UnitsProvider::uiTextsForMeasureInMeter(
    double value, const std::shared_ptr<const QMUnit>& smallUnit,
    double thresholdValueInMeters) const {
  if (!smallUnit) return std::nullopt;
  std::shared_ptr<const QMUnit> unit = smallUnit;
  if (value > thresholdValueInMeters &&
      thresholdValueInMeters > static_cast<double>(QMUnitShouldNotSwitchAutomatically) &&
      smallUnit->canSwitchToUnit()) {
    unit = smallUnit->canSwitchToUnit();
    // Lengths that grow beyond their small unit are nautical miles at sea.
    if (isNauticalSystem(current_.generalUnitType) &&
        smallUnit->subject() == QMMeasurementSubject::kLength) {
      if (auto nauticalMile = lengthUnitWithUuid(QMNauticalMileUnitUuid)) {
        unit = std::move(nauticalMile);
      }
    }
  }
  return QMUIValueWithUnit{.uiValue = unit->formatter().format(value / unit->ratioToMeter()),
                           .unitText = unit->localizedAbbreviation()};
}

double UnitsProvider::verticalSpeedValueInCurrentUnits(double metersPerSecond) const {
  if (!current_.verticalSpeedUnit) return 0.0;
  return metersPerSecond / current_.verticalSpeedUnit->ratioToMeter();
}

std::string UnitsProvider::textForVerticalSpeedInMetersPerSecondWithNoUnits(
    double metersPerSecond) const {
  if (!current_.verticalSpeedUnit) return "";
  return current_.verticalSpeedUnit->formatter().format(
      verticalSpeedValueInCurrentUnits(metersPerSecond));
}

std::string UnitsProvider::textForCurrentVerticalSpeedUnitScale() const {
  return current_.verticalSpeedUnit ? textForScale(current_.verticalSpeedUnit->scale()) : "";
}

std::string UnitsProvider::textForScale(std::int64_t scale) {
  if (scale < 0) return invariantFormat("/%d", truncatedPowerOfTen(-static_cast<double>(scale)));
  return invariantFormat("x%d", truncatedPowerOfTen(static_cast<double>(scale)));
}

}  // namespace qm
