#include "qmcore/units/QMUnitConversions.hpp"

#include "qmcore/units/UnitSystems.hpp"

namespace qm {

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
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr || !system->speedDivisor) return -1.0;
  return speed * 1000.0 / *system->speedDivisor;
}

double QMConvertKiloValue(std::int64_t from, std::int64_t to, double value) {
  if (from == to) return value;
  const UnitSystem* source = unitSystem(from);
  const UnitSystem* target = unitSystem(to);
  if (source == nullptr || target == nullptr || !source->bigUnitsPerKilometer ||
      !target->bigUnitsPerKilometer) {
    return 0.0;
  }
  // Through kilometres, multiplied first: with the kilometre's factor 1.0 either step is exact,
  // so 0 -> 1 is v * 0.62137 and 1 -> 0 is v / 0.62137 to the last bit.
  return (value * *target->bigUnitsPerKilometer) / *source->bigUnitsPerKilometer;
}

float kPa2hPa(float value) { return value * 10.0f; }

}  // namespace qm
