#include "qmcore/units/QMAltitudeUnit.hpp"

#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMFootAltitudeUnitUuid = ".altitude-foot";
const std::string_view QMMeterAltitudeUnitUuid = ".altitude-meter";

std::shared_ptr<const QMAltitudeUnit> QMAltitudeUnit::make(const Definition& definition,
                                                           int lengthFormatterType) {
  auto unit = std::make_shared<QMAltitudeUnit>();
  unit->define(definition);
  unit->lengthFormatterType_ = lengthFormatterType;
  return unit;
}

std::shared_ptr<const QMAltitudeUnit> QMAltitudeUnit::footUnit() {
  return make({.uuid = QMFootAltitudeUnitUuid,
               .name = "Feet",
               .abbreviation = QMFeetAbbreviation,
               .ratioToMeter = 0.3048,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kImperial},
              1282);
}

std::shared_ptr<const QMAltitudeUnit> QMAltitudeUnit::meterUnit() {
  return make({.uuid = QMMeterAltitudeUnitUuid,
               .name = "Meters",
               .abbreviation = QMMeterAbbreviation,
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kMetric},
              11);
}

std::vector<std::shared_ptr<const QMAltitudeUnit>> QMAltitudeUnit::builtinUnits() {
  return {footUnit(), meterUnit()};
}

std::shared_ptr<const QMAltitudeUnit> QMAltitudeUnit::defaultForUnitType(
    std::int64_t type, std::int64_t nauticalAltitudeUnitTypePreference) {
  const SmallDistanceUnit unit = unitSystemDefaults(type).smallUnit;
  const bool feet = unit == SmallDistanceUnit::kFoot ||
                    (unit == SmallDistanceUnit::kChosen && nauticalAltitudeUnitTypePreference != 0);
  return feet ? footUnit() : meterUnit();
}

std::string QMAltitudeUnit::localizedSubjectName() {
  return lowercaseString(CoreStrings::CLSTRING("Altitude"));
}

std::string QMAltitudeUnit::uiDescription() const {
  if (!isSameConstant(uuid(), QMMeterAltitudeUnitUuid)) return QMUnit::uiDescription();
  const auto foot = footUnit();
  return equivalenceText(1.0 / foot->ratioToMeter(), 6, foot->localizedAbbreviation());
}

}  // namespace qm
