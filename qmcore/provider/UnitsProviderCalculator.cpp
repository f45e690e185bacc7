// The unit calculator as class operations of the provider.

#include "qmcore/provider/QMUnitCalculator.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/units/QMUnitConversions.hpp"

namespace qm {

double UnitsProvider::calculateDistance(double meters, std::int64_t unitType) {
  return QMCalculateDistance(unitType, meters);
}

double UnitsProvider::calculateKilometricSpeed(double metersPerSecond, std::int64_t unitType) {
  return calculator::calculateKilometricSpeed(metersPerSecond, unitType);
}

double UnitsProvider::convertKiloValue(double value, std::int64_t from, std::int64_t to) {
  return QMConvertKiloValue(from, to, value);
}

double UnitsProvider::convertDistanceValue(double value, std::int64_t from, std::int64_t to) {
  return calculator::convertDistanceValue(value, from, to);
}

double UnitsProvider::valueForAltitudeInMeters(double meters, std::int64_t unitType,
                                               std::int64_t altType) {
  return calculator::valueForAltitudeInMeters(meters, unitType, altType);
}

}  // namespace qm
