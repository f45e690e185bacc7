#include "qmcore/units/QMSpeedUnit.hpp"

#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringFormat.hpp"
#include "qmcore/units/QMUnitConversions.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMKmhSpeedUnitUuid = ".speed-kmh";
const std::string_view QMMphSpeedUnitUuid = ".speed-mph";
const std::string_view QMKnotSpeedUnitUuid = ".speed-knot";

std::shared_ptr<const QMSpeedUnit> QMSpeedUnit::make(const Definition& definition) {
  auto unit = std::make_shared<QMSpeedUnit>();
  unit->define(definition);
  return unit;
}

std::shared_ptr<const QMSpeedUnit> QMSpeedUnit::kmhUnit() {
  return make({.uuid = QMKmhSpeedUnitUuid,
               .name = "km/h",
               .abbreviation = "km/h",
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kMetric});
}

std::shared_ptr<const QMSpeedUnit> QMSpeedUnit::mphUnit() {
  return make({.uuid = QMMphSpeedUnitUuid,
               .name = "mph",
               .abbreviation = "mph",
               .ratioToMeter = 1.60934,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kImperial});
}

std::shared_ptr<const QMSpeedUnit> QMSpeedUnit::knotUnit() {
  return make({.uuid = QMKnotSpeedUnitUuid,
               .name = "knots",
               .abbreviation = "kts",
               .ratioToMeter = 1.852,
               .numberOfDecimalPlaces = 2,
               .unitType = DistanceUnitType::kNautical});
}

std::vector<std::shared_ptr<const QMSpeedUnit>> QMSpeedUnit::builtinUnits() {
  return {kmhUnit(), mphUnit(), knotUnit()};
}

std::shared_ptr<const QMSpeedUnit> QMSpeedUnit::defaultForDistanceUnitType(std::int64_t type) {
  return unitSystemDefaults(type).speed();
}

std::string QMSpeedUnit::localizedSubjectName() {
  return lowercaseString(CoreStrings::CLSTRING("Speed"));
}

std::string QMSpeedUnit::localizedName() const { return uppercaseString(QMUnit::localizedName()); }

std::string QMSpeedUnit::uiDescription() const {
  if (isSameConstant(uuid(), QMKmhSpeedUnitUuid)) {
    return CoreStrings::CLSTRING("Metric") + ". " +
           descriptionForSpeedUnit(*this, *mphUnit(), *knotUnit());
  }
  if (isSameConstant(uuid(), QMMphSpeedUnitUuid)) {
    return CoreStrings::CLSTRING("Imperial") + ". " +
           descriptionForSpeedUnit(*this, *kmhUnit(), *knotUnit());
  }
  return CoreStrings::CLSTRING("Nautical") + ". " +
         descriptionForSpeedUnit(*this, *kmhUnit(), *mphUnit());
}

std::string QMSpeedUnit::descriptionForSpeedUnit(const QMUnit& unit, const QMUnit& contraUnit1,
                                                 const QMUnit& contraUnit2) const {
  return formatLocalized(
      CoreStrings::CLSTRING("%1$@ = %2$@ or %3$@"),
      {stringForValue(1.0), contraUnit1.stringForValue(QMConvertUnitValue(unit, contraUnit1, 1.0)),
       contraUnit2.stringForValue(QMConvertUnitValue(unit, contraUnit2, 1.0))});
}

}  // namespace qm
