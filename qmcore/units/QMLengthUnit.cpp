#include "qmcore/units/QMLengthUnit.hpp"

#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMInchUnitUuid = ".length-inch";
const std::string_view QMShakuUnitUuid = ".length-shaku";
const std::string_view QMFootUnitUuid = ".length-foot";
const std::string_view QMFrenchFootUnitUuid = ".length-frenchfoot";
const std::string_view QMYardUnitUuid = ".length-yard";
const std::string_view QMMeterUnitUuid = ".length-meter";
const std::string_view QMKilometerUnitUuid = ".length-kilometer";
const std::string_view QMMileUnitUuid = ".length-mile";
const std::string_view QMNauticalMileUnitUuid = ".length-nauticalmile";

std::shared_ptr<const QMLengthUnit> QMLengthUnit::make(const Definition& definition,
                                                       int lengthFormatterType) {
  auto unit = std::make_shared<QMLengthUnit>();
  unit->define(definition);
  unit->lengthFormatterType_ = lengthFormatterType;
  return unit;
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::inchUnit() {
  return make({.uuid = QMInchUnitUuid,
               .name = "Inch",
               .abbreviation = "in",
               .ratioToMeter = 0.0254,
               .numberOfDecimalPlaces = 0,
               .canSwitchToUnit = footUnit(),
               .unitSwitchesAtValue = 20},
              1281);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::shakuUnit() {
  return make({.uuid = QMShakuUnitUuid,
               .name = "Shaku (尺)",
               .abbreviation = "尺",
               .ratioToMeter = 0.303,
               .numberOfDecimalPlaces = 0},
              1282);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::footUnit() {
  return make({.uuid = QMFootUnitUuid,
               .name = "Foot",
               .abbreviation = QMFeetAbbreviation,
               .ratioToMeter = 0.30479999,
               .numberOfDecimalPlaces = 0,
               .canSwitchToUnit = mileUnit(),
               .unitSwitchesAtValue = 1000},
              1282);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::frenchFootUnit() {
  return make({.uuid = QMFrenchFootUnitUuid,
               .name = "French Foot",
               .abbreviation = "fft",
               .ratioToMeter = 0.3248406,
               .numberOfDecimalPlaces = 0},
              1282);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::yardUnit() {
  return make({.uuid = QMYardUnitUuid,
               .name = "Yard",
               .abbreviation = "yd",
               .ratioToMeter = 0.9144,
               .numberOfDecimalPlaces = 0,
               .canSwitchToUnit = mileUnit(),
               .unitSwitchesAtValue = 1000},
              1283);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::meterUnit() {
  return make({.uuid = QMMeterUnitUuid,
               .name = "Meter",
               .abbreviation = QMMeterAbbreviation,
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 1,
               .canSwitchToUnit = kilometerUnit(),
               .unitSwitchesAtValue = 1000},
              11);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::kilometerUnit() {
  return make({.uuid = QMKilometerUnitUuid,
               .name = "Kilometer",
               .abbreviation = "km",
               .ratioToMeter = 1000.0,
               .numberOfDecimalPlaces = 3},
              14);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::mileUnit() {
  return make({.uuid = QMMileUnitUuid,
               .name = "Mile",
               .abbreviation = "mi",
               .ratioToMeter = 1609.344,
               .numberOfDecimalPlaces = 3},
              1284);
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::nauticalMileUnit() {
  return make({.uuid = QMNauticalMileUnitUuid,
               .name = "Nautical mile",
               .abbreviation = "nm",
               .ratioToMeter = 1852.0,
               .numberOfDecimalPlaces = 2},
              1284);
}

std::vector<std::shared_ptr<const QMLengthUnit>> QMLengthUnit::builtinUnits() {
  return {inchUnit(),  shakuUnit(),     footUnit(), frenchFootUnit(),  yardUnit(),
          meterUnit(), kilometerUnit(), mileUnit(), nauticalMileUnit()};
}

std::shared_ptr<const QMLengthUnit> QMLengthUnit::defaultForDistanceUnitType(std::int64_t type) {
  return unitSystemDefaults(type).length();
}

std::string QMLengthUnit::localizedSubjectName() { return CoreStrings::CLSTRING("distance"); }

}  // namespace qm
