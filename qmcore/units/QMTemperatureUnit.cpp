#include "qmcore/units/QMTemperatureUnit.hpp"

#include <cmath>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/TextCase.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

std::shared_ptr<const QMTemperatureUnit> QMTemperatureUnit::make(const Definition& definition) {
  auto unit = std::make_shared<QMTemperatureUnit>();
  unit->define(definition);
  return unit;
}

std::shared_ptr<const QMTemperatureUnit> QMTemperatureUnit::celsiusUnit() {
  return make({.uuid = UnitsUuid::QMCelsiusUnitUuid,
               .name = "°C",
               .abbreviation = "°C",
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kMetric});
}

std::shared_ptr<const QMTemperatureUnit> QMTemperatureUnit::farenheitUnit() {
  return make({.uuid = UnitsUuid::QMFarenheitUnitUuid,
               .name = "°F",
               .abbreviation = "°F",
               .ratioToMeter = 10.0,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kImperial});
}

std::vector<std::shared_ptr<const QMTemperatureUnit>> QMTemperatureUnit::builtinUnits() {
  return {celsiusUnit(), farenheitUnit()};
}

std::shared_ptr<const QMTemperatureUnit> QMTemperatureUnit::defaultForDistanceUnitType(
    std::int64_t type) {
  return unitSystemDefaults(type).temperature();
}

std::string QMTemperatureUnit::localizedSubjectName() {
  return lowercaseString(CoreStrings::CLSTRING("Temperature"));
}

double QMTemperatureUnit::convertTemperature(double value, const QMUnit& from, const QMUnit& to) {
  if (from.uuid() == to.uuid()) return value;
  if (from.uuid() == UnitsUuid::QMCelsiusUnitUuid) return std::round(value * 9.0 / 5.0 + 32.0);
  return (value - 32.0) * 5.0 / 9.0;
}

std::string QMTemperatureUnit::uiDescription() const {
  const auto other = uuid() == UnitsUuid::QMCelsiusUnitUuid ? farenheitUnit() : celsiusUnit();
  const std::string own(abbreviation());
  const std::string others(other->abbreviation());
  return invariantFormat("0%s = %.0f%s", own.c_str(), convertTemperature(0.0, *this, *other),
                         others.c_str());
}

}  // namespace qm
