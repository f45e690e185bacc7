// Automatic switching from small to big units: per-unit switch values, the thresholds derived
// from them, and the texts that describe the rule.

#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/QMUnitCalculator.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringFormat.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

bool isKilometreOrMile(std::string_view uuid, std::string_view kilometre, std::string_view mile) {
  return isSameConstant(uuid, kilometre) || isSameConstant(uuid, mile);
}

// A switch value of a distance unit of `unitType`, in metres. Feet become metres by the division
// by 3.28084, not by the foot's factor.
double distanceThresholdInMeters(std::int64_t switchValue, std::int64_t unitType) {
  if (switchValue == QMUnitShouldNotSwitchAutomatically) return -1.0;
  return calculator::convertDistanceValue(static_cast<double>(switchValue), unitType, 0);
}

}  // namespace

std::int64_t UnitsProvider::automaticSwitchValueForUnit(const QMUnit& unit) const {
  return qm::automaticSwitchValueForUnit(*store_, unit);
}

void UnitsProvider::setAutomaticSwitchValue(std::int64_t value, const QMUnit& unit) {
  // `unit` may be one of the current units, which establishCurrentUnits replaces: read it first.
  const QMMeasurementSubject subject = unit.subject();
  const auto unitType = static_cast<std::int64_t>(unit.unitType());
  storeInteger(switchValueKey(unit.uuid()), value);
  // Any distance unit of the small unit's type, not only the current one: the kilometre's value
  // is the threshold with metres current, until the next restore.
  if (subject == QMMeasurementSubject::kDistance && unitType == current_.distanceUnitType) {
    current_.distanceSmallToBigThreshold = distanceThresholdInMeters(value, unitType);
  }
  establishCurrentUnits();
  if (subject == QMMeasurementSubject::kLength || subject == QMMeasurementSubject::kArea) {
    notifyOnMapSettingsChange();
  } else {
    notifyOnUnitsChange();
  }
}

void UnitsProvider::restoreDistanceSmallToBigThreshold() {
  // A distance unit cleared through the plain setter never switches.
  const auto& unit = current_.distanceUnit;
  current_.distanceSmallToBigThreshold =
      unit ? distanceThresholdInMeters(automaticSwitchValueForUnit(*unit),
                                       static_cast<std::int64_t>(unit->unitType()))
           : -1.0;
}

std::string UnitsProvider::rulesDescriptionForUnit(const QMUnit& unit) const {
  const std::int64_t value = automaticSwitchValueForUnit(unit);
  if (value == QMUnitShouldNotSwitchAutomatically) {
    return formatLocalized(CoreStrings::CLSTRING("Always keep as %@"), {unit.localizedName()});
  }
  return switchDescriptionForUnit(unit, value);
}

std::string UnitsProvider::switchDescriptionForUnit(const QMUnit& unit, std::int64_t value) const {
  return formatLocalized(
      CoreStrings::CLSTRING("Switch to %1$@ from %2$@"),
      {localizedNameOfSwitchUnitForUnit(unit), unit.stringForIntegerValue(value)});
}

std::string UnitsProvider::shortSwitchDescriptionForUnit(const QMUnit& unit) const {
  return formatLocalized(CoreStrings::CLSTRING("Switch to %@"),
                         {localizedNameOfSwitchUnitForUnit(unit)});
}

std::string UnitsProvider::localizedNameOfSwitchUnitForUnit(const QMUnit& unit) const {
  const auto& bigUnit = unit.canSwitchToUnit();
  if (!bigUnit) return {};
  const QMMeasurementSubject subject = unit.subject();
  if (isNauticalSystem(current_.generalUnitType) &&
      (subject == QMMeasurementSubject::kDistance || subject == QMMeasurementSubject::kLength)) {
    const std::string_view uuid = bigUnit->uuid();
    if (isKilometreOrMile(uuid, QMKilometerDistanceUnitUuid, QMMileDistanceUnitUuid)) {
      return QMDistanceUnit::nauticalMileUnit()->localizedName();
    }
    if (isKilometreOrMile(uuid, QMKilometerUnitUuid, QMMileUnitUuid)) {
      return QMLengthUnit::nauticalMileUnit()->localizedName();
    }
  }
  return bigUnit->localizedName();
}

}  // namespace qm
