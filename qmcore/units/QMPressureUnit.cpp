#include "qmcore/units/QMPressureUnit.hpp"

#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMhPaUnitUuid = ".pressure-hpa";
const std::string_view QMinHgUnitUuid = ".pressure-inHg";

std::shared_ptr<const QMPressureUnit> QMPressureUnit::make(const Definition& definition) {
  auto unit = std::make_shared<QMPressureUnit>();
  unit->define(definition);
  return unit;
}

std::shared_ptr<const QMPressureUnit> QMPressureUnit::hpaUnit() {
  return make({.uuid = QMhPaUnitUuid,
               .name = "hPa",
               .abbreviation = "hPa",
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kMetric});
}

std::shared_ptr<const QMPressureUnit> QMPressureUnit::inHgUnit() {
  return make({.uuid = QMinHgUnitUuid,
               .name = "inHg",
               .abbreviation = "inHg",
               .ratioToMeter = 33.8638815767,
               .numberOfDecimalPlaces = 3,
               .unitType = DistanceUnitType::kImperial});
}

std::vector<std::shared_ptr<const QMPressureUnit>> QMPressureUnit::builtinUnits() {
  return {hpaUnit(), inHgUnit()};
}

std::shared_ptr<const QMPressureUnit> QMPressureUnit::defaultForDistanceUnitType(
    std::int64_t type) {
  return unitSystemDefaults(type).pressure();
}

std::string QMPressureUnit::localizedSubjectName() {
  return lowercaseString(CoreStrings::CLSTRING("Pressure"));
}

std::string QMPressureUnit::uiDescription() const {
  return equivalenceText(ratioToMeter(), 2, hpaUnit()->localizedAbbreviation());
}

}  // namespace qm
