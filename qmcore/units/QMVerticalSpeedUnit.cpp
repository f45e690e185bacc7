#include "qmcore/units/QMVerticalSpeedUnit.hpp"

#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

const std::string_view QMMetersPerSecondVerticalSpeedUnitUuid = ".vspeed-m/s";
const std::string_view QMMetersPerMinuteVerticalSpeedUnitUuid = ".vspeed-m/min";
const std::string_view QMFeetPerMinuteVerticalSpeedUnitUuid = ".vspeed-ft/min";

std::shared_ptr<const QMVerticalSpeedUnit> QMVerticalSpeedUnit::make(
    const Definition& definition, int defaultScale, std::vector<int> availableScales) {
  auto unit = std::make_shared<QMVerticalSpeedUnit>();
  unit->define(definition);
  unit->defaultScale_ = defaultScale;
  unit->availableScales_ = std::move(availableScales);
  unit->scale_ = defaultScale;
  return unit;
}

std::shared_ptr<const QMVerticalSpeedUnit> QMVerticalSpeedUnit::withScale(int scale) const {
  auto unit = std::make_shared<QMVerticalSpeedUnit>();
  unit->define(definition());
  unit->defaultScale_ = defaultScale_;
  unit->availableScales_ = availableScales_;
  unit->scale_ = scale;
  return unit;
}

std::shared_ptr<const QMVerticalSpeedUnit> QMVerticalSpeedUnit::metersPerSecondUnit() {
  return make({.uuid = QMMetersPerSecondVerticalSpeedUnitUuid,
               .name = "meters/second",
               .abbreviation = "m/s",
               .ratioToMeter = 1.0,
               .numberOfDecimalPlaces = 1,
               .unitType = DistanceUnitType::kMetric},
              -1, {-1, 0, 1});
}

std::shared_ptr<const QMVerticalSpeedUnit> QMVerticalSpeedUnit::metersPerMinuteUnit() {
  return make({.uuid = QMMetersPerMinuteVerticalSpeedUnitUuid,
               .name = "meters/minute",
               .abbreviation = "m/min",
               .ratioToMeter = 0.016666666666666666,
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kMetric},
              1, {1, 2, 3});
}

std::shared_ptr<const QMVerticalSpeedUnit> QMVerticalSpeedUnit::feetPerMinuteUnit() {
  return make({.uuid = QMFeetPerMinuteVerticalSpeedUnitUuid,
               .name = "feet/minute",
               .abbreviation = "ft/min",
               .ratioToMeter = 1.0 / (kFeetPerMeter * 60.0),
               .numberOfDecimalPlaces = 0,
               .unitType = DistanceUnitType::kImperial},
              1, {1, 2, 3});
}

std::vector<std::shared_ptr<const QMVerticalSpeedUnit>> QMVerticalSpeedUnit::builtinUnits() {
  return {metersPerSecondUnit(), metersPerMinuteUnit(), feetPerMinuteUnit()};
}

std::shared_ptr<const QMVerticalSpeedUnit> QMVerticalSpeedUnit::defaultForDistanceUnitType(
    std::int64_t type) {
  return unitSystemDefaults(type).verticalSpeed();
}

std::string QMVerticalSpeedUnit::localizedSubjectName() {
  return CoreStrings::CLSTRING("vertical speed");
}

}  // namespace qm
