#include "qmcore/units/QMDistanceUnit.hpp"

#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMFootDistanceUnitUuid = ".distance-foot";
const std::string_view QMMeterDistanceUnitUuid = ".distance-meter";
const std::string_view QMKilometerDistanceUnitUuid = ".distance-kilometer";
const std::string_view QMMileDistanceUnitUuid = ".distance-mile";
const std::string_view QMNauticalMileDistanceUnitUuid = ".distance-nauticalmile";

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::make(const Definition& definition,
                                                           int lengthFormatterType) {
  auto unit = std::make_shared<QMDistanceUnit>();
  unit->define(definition);
  unit->lengthFormatterType_ = lengthFormatterType;
  return unit;
}

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::footUnit(
    const DistanceSwitchValues& switches) {
  return make({.uuid = QMFootDistanceUnitUuid,
               .name = "Feet",
               .abbreviation = QMFeetAbbreviation,
               .ratioToMeter = 0.30479999,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kImperial,
               .canSwitchToUnit = mileUnit(),
               .unitSwitchesAtValue = switches.feet,
               .switchToBiggerUnitByDefault = true,
               .base = true},
              1282);
}

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::meterUnit(
    const DistanceSwitchValues& switches) {
  return make({.uuid = QMMeterDistanceUnitUuid,
               .name = "Meters",
               .abbreviation = QMMeterAbbreviation,
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kMetric,
               .canSwitchToUnit = kilometerUnit(),
               .unitSwitchesAtValue = switches.meters,
               .switchToBiggerUnitByDefault = true,
               .base = true},
              11);
}

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::kilometerUnit() {
  return make({.uuid = QMKilometerDistanceUnitUuid,
               .name = "Kilometers",
               .abbreviation = "km",
               .ratioToMeter = 1000.0,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kMetric},
              14);
}

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::mileUnit() {
  return make({.uuid = QMMileDistanceUnitUuid,
               .name = "miles",
               .abbreviation = "mi",
               .ratioToMeter = 1609.344,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kImperial},
              1284);
}

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::nauticalMileUnit() {
  return make({.uuid = QMNauticalMileDistanceUnitUuid,
               .name = "Nautical miles",
               .abbreviation = "nm",
               .ratioToMeter = 1852.0,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kNautical},
              1284);
}

std::vector<std::shared_ptr<const QMDistanceUnit>> QMDistanceUnit::builtinUnits(
    const DistanceSwitchValues& switches) {
  return {footUnit(switches), meterUnit(switches), kilometerUnit(), mileUnit(), nauticalMileUnit()};
}

std::shared_ptr<const QMDistanceUnit> QMDistanceUnit::defaultForUnitType(
    std::int64_t type, std::int64_t nauticalDistanceUnitTypePreference,
    const DistanceSwitchValues& switches) {
  const SmallDistanceUnit unit = unitSystemDefaults(type).smallUnit;
  const bool feet = unit == SmallDistanceUnit::kFoot ||
                    (unit == SmallDistanceUnit::kChosen && nauticalDistanceUnitTypePreference != 0);
  return feet ? footUnit(switches) : meterUnit(switches);
}

std::string QMDistanceUnit::localizedSubjectName() { return CoreStrings::CLSTRING("distance"); }

std::int64_t QMDistanceUnit::encodeDistanceUnit(QMDistanceUnitType type) {
  // Shifted as unsigned: the raw type is not range-checked here.
  const auto raw = static_cast<std::uint64_t>(type.unitType);
  return static_cast<std::int64_t>((type.isKilometric ? 1u : 0u) | (raw << 8));
}

QMDistanceUnitType QMDistanceUnit::decodeDistanceUnitFromInteger(std::int64_t value) {
  const std::int64_t raw = value >> 8;
  return {.isKilometric = (value & 1) != 0,
          .unitType = static_cast<DistanceUnitType>(raw >= 0 && raw <= 3 ? raw : 0)};
}

std::string QMDistanceUnit::uiDescription() const {
  if (!isSameConstant(uuid(), QMMeterDistanceUnitUuid)) return QMUnit::uiDescription();
  const auto foot = footUnit();
  return equivalenceText(1.0 / foot->ratioToMeter(), 6, foot->localizedAbbreviation());
}

}  // namespace qm
