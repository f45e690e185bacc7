#include "qmcore/units/QMUnitConversions.hpp"

namespace qm {
namespace {

constexpr double kMilesPerKilometer = 0.62137;
constexpr double kNauticalMilesPerKilometer = 0.5399568;

}  // namespace

double QMConvertUnitValue(const QMUnit& from, const QMUnit& to, double value) {
  return from.ratioToMeter() * value / to.ratioToMeter();
}

double QMConvertMetricValue(const QMUnit& unit, double value) {
  return value / unit.ratioToMeter();
}

double QMConvertToMetricValue(const QMUnit& unit, double value) {
  return unit.ratioToMeter() * value;
}

double QMCalculateMetricSpeedForKilometric(std::int64_t unitType, double speed) {
  switch (unitType) {
    case 0:
      return speed * 1000.0 / 3600.0;
    case 1:
      return speed * 1000.0 / 2236.932;
    case 2:
      return speed * 1000.0 / 1943.84448;
    default:
      return -1.0;
  }
}

double QMConvertKiloValue(std::int64_t from, std::int64_t to, double value) {
  if (from == to) return value;
  if (from == 0 && to == 1) return value * kMilesPerKilometer;
  if (from == 0 && to == 2) return value * kNauticalMilesPerKilometer;
  if (from == 1 && to == 0) return value / kMilesPerKilometer;
  if (from == 2 && to == 0) return value / kNauticalMilesPerKilometer;
  if (from == 1 && to == 2) return (value * kNauticalMilesPerKilometer) / kMilesPerKilometer;
  if (from == 2 && to == 1) return (value * kMilesPerKilometer) / kNauticalMilesPerKilometer;
  return 0.0;
}

float kPa2hPa(float value) { return value * 10.0f; }

}  // namespace qm
