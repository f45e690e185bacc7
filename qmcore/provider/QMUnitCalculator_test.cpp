#include "qmcore/provider/QMUnitCalculator.hpp"

#include <gtest/gtest.h>

#include "qmcore/provider/UnitsProvider.hpp"

namespace qm {
namespace {

// Exact comparisons throughout: the evaluation order of the rounded constants is the contract.
// Some rows go through the provider's class operations, which take their arguments in another
// order.
TEST(UnitCalculatorTest, RoundedFactorsInTheirOrderAndUnknownTypes) {
  const struct {
    const char* what;
    double result;
    double expected;
  } cases[] = {
      {"mi", QMCalculateKilometricDistance(1, 1000.0), 0.62137},
      {"nm", QMCalculateKilometricDistance(2, 1852.0), (1852.0 / 1000.0) * 0.5399568},
      {"big unit of type 3", QMCalculateKilometricDistance(3, 1000.0), -1.0},
      {"feet", UnitsProvider::calculateDistance(100.0, 1), 328.084},
      {"small unit of type 3", QMCalculateDistance(3, 100.0), 100.0},
      {"mils", QMCalculateDegreesFromAngleUnitType(1, 1600.0), 90.0},
      {"km/h", UnitsProvider::calculateKilometricSpeed(10.0, 0), 36.0},
      {"mph", calculator::calculateKilometricSpeed(10.0, 1), (10.0 * 3600.0 * 0.62137) / 1000.0},
      {"speed of type 3", calculator::calculateKilometricSpeed(10.0, 3), -1.0},
      {"same small type", calculator::convertDistanceValue(7.0, 2, 2), 7.0},
      {"metres to feet", UnitsProvider::convertDistanceValue(1.0, 0, 1), 3.28084},
      {"feet to metres", calculator::convertDistanceValue(500.0, 1, 0), 500.0 / 3.28084},
      {"from type 2", calculator::convertDistanceValue(1.0, 2, 0), 0.0},
      {"kilo values", UnitsProvider::convertKiloValue(1.0, 0, 1), 0.62137},
      // Altitudes: imperial always in feet, nautical as the altitude type.
      {"altitude 1/0", calculator::valueForAltitudeInMeters(100.0, 1, 0), 328.084},
      {"altitude 2/0", calculator::valueForAltitudeInMeters(100.0, 2, 0), 100.0},
      {"altitude 2/1", UnitsProvider::valueForAltitudeInMeters(100.0, 2, 1), 328.084},
      {"altitude in yards", calculator::valueForAltitudeInMeters(100.0, 3, 1), 109.3},
      {"altitude of type 7", calculator::valueForAltitudeInMeters(100.0, 7, 1), 100.0},
  };
  for (const auto& c : cases) EXPECT_EQ(c.result, c.expected) << c.what;
}

TEST(UnitCalculatorTest, AccuracyLimitsHaveExclusiveUpperBounds) {
  const struct {
    double speed;
    double limit;
  } cases[] = {{-0.1, 0.0}, {0.0, 45.0}, {0.79, 45.0}, {0.8, 52.5}, {3.99, 52.5}, {4.0, 60.0}};
  for (const auto& c : cases) {
    EXPECT_EQ(QMMinimumAcceptedAccuracyForSpeed(c.speed), c.limit) << c.speed;
  }
  EXPECT_FALSE(QMIsLowLocationAccuracy(45.0, 0.5));
  EXPECT_TRUE(QMIsLowLocationAccuracy(45.1, 0.5));
  EXPECT_TRUE(QMIsLowLocationAccuracy(0.1, -1.0));  // unknown speed: every fix is low
  EXPECT_EQ(QMMinimumAcceptedStaticAccuracy(), 30.0);
}

}  // namespace
}  // namespace qm
