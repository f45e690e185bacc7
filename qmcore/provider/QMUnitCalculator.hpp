// Pure numeric helpers that turn measured SI values into the numbers shown for a unit system
// (0 metric, 1 imperial, 2 nautical), convert mils, and judge location fixes.
//
// The constants are literal and some deliberately rounded (3.28084 feet per metre, 0.62137
// miles and 0.5399568 nautical miles per kilometre, 1.093 yards per metre): values computed here
// are compared with values computed the same way elsewhere, so they must not be "corrected".
// The units provider offers the same operations as class operations.
//
//   QMCalculateKilometricDistance(1, 1609.344);  // 1.00000... miles (via 0.62137)
//   QMCalculateDistance(1, 1.0);                  // 3.28084 feet
//
// All functions are pure and thread-safe.

#ifndef QMCORE_PROVIDER_QMUNITCALCULATOR_HPP_
#define QMCORE_PROVIDER_QMUNITCALCULATOR_HPP_

#include <cstdint>

namespace qm {

// Metres to the big unit of the system: km, mi or nm. -1.0 for any other type.
double QMCalculateKilometricDistance(std::int64_t unitType, double meters);

// Metres to the small unit: feet for type 1, metres unchanged for any other type.
double QMCalculateDistance(std::int64_t unitType, double meters);

// Angle type 1 (mils, 6400 a circle) to degrees; any other type unchanged.
double QMCalculateDegreesFromAngleUnitType(std::int64_t angleType, double value);

// True when a fix of `accuracy` metres is worse than the limit for `speed` m/s.
bool QMIsLowLocationAccuracy(double accuracy, double speed);

// The worst horizontal accuracy accepted at `speed` m/s: 0 for an unknown (negative) speed,
// 45 below 0.8 m/s, 52.5 below 4 m/s, else 60.
double QMMinimumAcceptedAccuracyForSpeed(double speed);

// The accuracy accepted for a fix taken while standing still: 30 m.
double QMMinimumAcceptedStaticAccuracy();

namespace calculator {

// Metres per second to km/h, mph or knots (evaluated as (x * f) / 1000); -1.0 for other types.
double calculateKilometricSpeed(double metersPerSecond, std::int64_t unitType);

// Between the small distance units: metres (0) and feet (1). Anything with another type: 0.0.
double convertDistanceValue(double value, std::int64_t from, std::int64_t to);

// Metres of altitude to the value shown: feet for type 1 and for type 2 with a non-zero
// altitude type, yards (1.093 a metre) for type 3, else metres.
double valueForAltitudeInMeters(double meters, std::int64_t unitType, std::int64_t altType);

}  // namespace calculator
}  // namespace qm

#endif  // QMCORE_PROVIDER_QMUNITCALCULATOR_HPP_
