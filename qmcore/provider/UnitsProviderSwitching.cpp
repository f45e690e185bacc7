// Automatic switching from small to big units: per-unit switch values, the thresholds derived
// from them, and the texts that describe the rule.

#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringFormat.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

bool isKilometreOrMile(std::string_view uuid, std::string_view kilometre, std::string_view mile) {
  return isSameConstant(uuid, kilometre) || isSameConstant(uuid, mile);
}

}  // namespace

std::int64_t UnitsProvider::automaticSwitchValueForUnit(const QMUnit& unit) const {
  return qm::automaticSwitchValueForUnit(*store_, unit);
}

void UnitsProvider::setAutomaticSwitchValue(std::int64_t value, const QMUnit& unit) {
  // `unit` may be one of the current units, which establishCurrentUnits replaces: read it first.
  const QMMeasurementSubject subject = unit.subject();
  storeInteger(switchValueKey(unit.uuid()), value);
  establishCurrentUnits();
  if (subject == QMMeasurementSubject::kLength || subject == QMMeasurementSubject::kArea) {
    notifyOnMapSettingsChange();
  } else {
    notifyOnUnitsChange();
  }
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
