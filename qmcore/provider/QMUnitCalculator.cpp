#include "qmcore/provider/QMUnitCalculator.hpp"

namespace qm {
namespace {

constexpr double kFeetPerMeter = 3.28084;
constexpr double kMilesPerKilometer = 0.62137;
constexpr double kNauticalMilesPerKilometer = 0.5399568;
constexpr double kYardsPerMeter = 1.093;

}  // namespace

double QMCalculateKilometricDistance(std::int64_t unitType, double meters) {
  switch (unitType) {
    case 0:
      return meters / 1000.0;
    case 1:
      return (meters / 1000.0) * kMilesPerKilometer;
    case 2:
      return (meters / 1000.0) * kNauticalMilesPerKilometer;
    default:
      return -1.0;
  }
}

double QMCalculateDistance(std::int64_t unitType, double meters) {
  return unitType == 1 ? kFeetPerMeter * meters : meters;
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
  switch (unitType) {
    case 0:
      return (metersPerSecond * 3600.0) / 1000.0;
    case 1:
      return (metersPerSecond * 3600.0 * kMilesPerKilometer) / 1000.0;
    case 2:
      return (metersPerSecond * 3600.0 * kNauticalMilesPerKilometer) / 1000.0;
    default:
      return -1.0;
  }
}

double convertDistanceValue(double value, std::int64_t from, std::int64_t to) {
  if (from == to) return value;
  if (from == 0 && to == 1) return kFeetPerMeter * value;
  if (from == 1 && to == 0) return value / kFeetPerMeter;
  return 0.0;
}

double valueForAltitudeInMeters(double meters, std::int64_t unitType, std::int64_t altType) {
  if (unitType == 1) return kFeetPerMeter * meters;
  if (unitType == 3) return meters * kYardsPerMeter;
  if (unitType == 2 && altType != 0) return kFeetPerMeter * meters;
  return meters;
}

}  // namespace calculator
}  // namespace qm
