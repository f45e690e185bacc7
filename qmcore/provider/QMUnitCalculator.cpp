#include "qmcore/provider/QMUnitCalculator.hpp"

#include "qmcore/units/QMUnit.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {

double QMCalculateKilometricDistance(std::int64_t unitType, double meters) {
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr || !system->bigUnitsPerKilometer) return -1.0;
  return (meters / 1000.0) * *system->bigUnitsPerKilometer;
}

double QMCalculateDistance(std::int64_t unitType, double meters) {
  const UnitSystem* system = unitSystem(unitType);
  return system == nullptr ? meters : system->smallUnitsPerMeter * meters;
}

double QMCalculateDegreesFromAngleUnitType(std::int64_t angleType, double value) {
  return angleType == 1 ? value * 360.0 / 6400.0 : value;
}

bool QMIsLowLocationAccuracy(double accuracy, double speed) {
  return QMMinimumAcceptedAccuracyForSpeed(speed) < accuracy;
}

double QMMinimumAcceptedAccuracyForSpeed(double speed) {
  // Old location stacks had a fixed 30 m limit; every platform we run on has the newer one.
  if (speed < 0.0) return 0.0;
  if (speed < 0.8) return 45.0;
  if (speed < 4.0) return 52.5;
  return 60.0;
}

double QMMinimumAcceptedStaticAccuracy() { return 30.0; }

namespace calculator {

double calculateKilometricSpeed(double metersPerSecond, std::int64_t unitType) {
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr || !system->bigUnitsPerKilometer) return -1.0;
  // All multiplications first, then the division; km/h's factor 1.0 changes nothing.
  return (metersPerSecond * 3600.0 * *system->bigUnitsPerKilometer) / 1000.0;
}

double convertDistanceValue(double value, std::int64_t from, std::int64_t to) {
  if (from == to) return value;
  const UnitSystem* source = unitSystem(from);
  const UnitSystem* target = unitSystem(to);
  if (source == nullptr || target == nullptr || !source->isSmallDistanceUnitType ||
      !target->isSmallDistanceUnitType) {
    return 0.0;
  }
  // Metres' factor is 1.0: metres to feet is 3.28084 * v, feet to metres v / 3.28084, exactly.
  return (target->smallUnitsPerMeter * value) / source->smallUnitsPerMeter;
}

double valueForAltitudeInMeters(double meters, std::int64_t unitType, std::int64_t altType) {
  const UnitSystem* system = unitSystem(unitType);
  if (system == nullptr) return meters;
  if (system->altitudeUnitsPerMeter) return *system->altitudeUnitsPerMeter * meters;
  return altType != 0 ? kFeetPerMeter * meters : meters;
}

}  // namespace calculator
}  // namespace qm
