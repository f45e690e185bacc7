#include "qmcore/units/QMAreaUnit.hpp"

#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMSquareMeterUnitUuid = ".area-squaremeter";
const std::string_view QMTsuboUnitUuid = ".area-tsubo";
const std::string_view QMAreUnitUuid = ".area-are";
const std::string_view QMSquareKilometerUnitUuid = ".area-squarekilometer";
const std::string_view QMDecareUnitUuid = ".area-decare";
const std::string_view QMHectareUnitUuid = ".area-hectare";
const std::string_view QMSquareFootUnitUuid = ".area-squarefoot";
const std::string_view QMSquareYardUnitUuid = ".area-squareyard";
const std::string_view QMAcreUnitUuid = ".area-acre";
const std::string_view QMSquareMileUnitUuid = ".area-squaremile";

std::shared_ptr<const QMAreaUnit> QMAreaUnit::make(const Definition& definition) {
  auto unit = std::make_shared<QMAreaUnit>();
  unit->define(definition);
  return unit;
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::squareMeterUnit() {
  return make({.uuid = QMSquareMeterUnitUuid,
               .name = "Square Meter",
               .abbreviation = "m²",
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 1,
               .canSwitchToUnit = squareKilometerUnit(),
               .unitSwitchesAtValue = 100000});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::tsuboUnit() {
  return make({.uuid = QMTsuboUnitUuid,
               .name = "Tsubo (坪)",
               .abbreviation = "坪",
               .ratioToMeter = 3.306,
               .numberOfDecimalPlaces = 1});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::areUnit() {
  return make({.uuid = QMAreUnitUuid,
               .name = "Are",
               .abbreviation = "a",
               .ratioToMeter = 100.0,
               .numberOfDecimalPlaces = 2});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::squareKilometerUnit() {
  return make({.uuid = QMSquareKilometerUnitUuid,
               .name = "Square kilometer",
               .abbreviation = "km²",
               .ratioToMeter = 1000000.0,
               .numberOfDecimalPlaces = 3});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::decareUnit() {
  return make({.uuid = QMDecareUnitUuid,
               .name = "Decare",
               .abbreviation = "daa",
               .ratioToMeter = 1000.0,
               .numberOfDecimalPlaces = 3});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::hectareUnit() {
  return make({.uuid = QMHectareUnitUuid,
               .name = "Hectare",
               .abbreviation = "ha",
               .ratioToMeter = 10000.0,
               .numberOfDecimalPlaces = 3});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::squareFootUnit() {
  return make({.uuid = QMSquareFootUnitUuid,
               .name = "Square foot",
               .abbreviation = "ft²",
               .ratioToMeter = 0.09290304,
               .numberOfDecimalPlaces = 0,
               .canSwitchToUnit = squareMileUnit(),
               .unitSwitchesAtValue = 100000});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::squareYardUnit() {
  return make({.uuid = QMSquareYardUnitUuid,
               .name = "Square yard",
               .abbreviation = "yd²",
               .ratioToMeter = 0.83612736,
               .numberOfDecimalPlaces = 0,
               .canSwitchToUnit = squareMileUnit(),
               .unitSwitchesAtValue = 100000});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::acreUnit() {
  return make({.uuid = QMAcreUnitUuid,
               .name = "Acre",
               .abbreviation = "ac",
               .ratioToMeter = 4046.8564224,
               .numberOfDecimalPlaces = 3});
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::squareMileUnit() {
  return make({.uuid = QMSquareMileUnitUuid,
               .name = "Square mile",
               .abbreviation = "mi²",
               .ratioToMeter = 2589988.110336,
               .numberOfDecimalPlaces = 4});
}

std::vector<std::shared_ptr<const QMAreaUnit>> QMAreaUnit::builtinUnits() {
  return {squareMeterUnit(), tsuboUnit(),     areUnit(),        squareKilometerUnit(),
          decareUnit(),      hectareUnit(),   squareFootUnit(), squareYardUnit(),
          acreUnit(),        squareMileUnit()};
}

std::shared_ptr<const QMAreaUnit> QMAreaUnit::defaultForDistanceUnitType(std::int64_t type) {
  return unitSystemDefaults(type).area();
}

std::string QMAreaUnit::localizedSubjectName() {
  return lowercaseString(CoreStrings::CLSTRING("Area"));
}

std::string QMAreaUnit::uiDescription() const {
  return equivalenceText(ratioToMeter(), 6, squareMeterUnit()->localizedAbbreviation());
}

std::string QMAreaUnit::stringForValue(double value) const {
  return formatter().format(value) + localizedAbbreviation();
}

std::string QMAreaUnit::stringForIntegerValue(std::int64_t value) const {
  return formatterWithNumberOfDecimalPlaces(0).format(value) + localizedAbbreviation();
}

}  // namespace qm
