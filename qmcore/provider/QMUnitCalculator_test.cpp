#include "qmcore/provider/QMUnitCalculator.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

// Exact comparisons throughout: the evaluation order of the rounded constants is the contract.

TEST(UnitCalculatorTest, KilometricDistanceUsesTheRoundedFactors) {
  EXPECT_EQ(QMCalculateKilometricDistance(0, 1234.0), 1.234);
  EXPECT_EQ(QMCalculateKilometricDistance(1, 1000.0), 0.62137);
  EXPECT_EQ(QMCalculateKilometricDistance(2, 1852.0), (1852.0 / 1000.0) * 0.5399568);
  EXPECT_NE(QMCalculateKilometricDistance(2, 1852.0), 1.0);
  EXPECT_EQ(QMCalculateKilometricDistance(3, 1000.0), -1.0);
  EXPECT_EQ(QMCalculateKilometricDistance(-1, 1000.0), -1.0);
}

TEST(UnitCalculatorTest, SmallDistanceAndAngles) {
  EXPECT_EQ(QMCalculateDistance(1, 100.0), 328.084);
  EXPECT_EQ(QMCalculateDistance(0, 100.0), 100.0);
  EXPECT_EQ(QMCalculateDistance(2, 100.0), 100.0);
  EXPECT_EQ(QMCalculateDistance(3, 100.0), 100.0);
  EXPECT_EQ(QMCalculateDegreesFromAngleUnitType(1, 1600.0), 90.0);
  EXPECT_EQ(QMCalculateDegreesFromAngleUnitType(0, 1600.0), 1600.0);
}

TEST(UnitCalculatorTest, AccuracyLimitsHaveExclusiveUpperBounds) {
  const struct {
    double speed;
    double limit;
  } cases[] = {{-0.1, 0.0},  {0.0, 45.0}, {0.79, 45.0}, {0.8, 52.5},
               {3.99, 52.5}, {4.0, 60.0}, {100.0, 60.0}};
  for (const auto& c : cases) {
    EXPECT_EQ(QMMinimumAcceptedAccuracyForSpeed(c.speed), c.limit) << c.speed;
  }
  EXPECT_FALSE(QMIsLowLocationAccuracy(45.0, 0.5));
  EXPECT_TRUE(QMIsLowLocationAccuracy(45.1, 0.5));
  EXPECT_TRUE(QMIsLowLocationAccuracy(0.1, -1.0));  // unknown speed: every fix is low
  EXPECT_EQ(QMMinimumAcceptedStaticAccuracy(), 30.0);
}

TEST(UnitCalculatorTest, KilometricSpeedMultipliesFirstThenDivides) {
  EXPECT_EQ(calculator::calculateKilometricSpeed(10.0, 0), 36.0);
  EXPECT_EQ(calculator::calculateKilometricSpeed(10.0, 1), (10.0 * 3600.0 * 0.62137) / 1000.0);
  EXPECT_EQ(calculator::calculateKilometricSpeed(10.0, 2), (10.0 * 3600.0 * 0.5399568) / 1000.0);
  EXPECT_EQ(calculator::calculateKilometricSpeed(10.0, 3), -1.0);
}

TEST(UnitCalculatorTest, SmallDistanceConversionKnowsOnlyMetresAndFeet) {
  EXPECT_EQ(calculator::convertDistanceValue(7.0, 2, 2), 7.0);  // same type wins
  EXPECT_EQ(calculator::convertDistanceValue(1.0, 0, 1), 3.28084);
  EXPECT_EQ(calculator::convertDistanceValue(500.0, 1, 0), 500.0 / 3.28084);
  EXPECT_EQ(calculator::convertDistanceValue(1.0, 2, 0), 0.0);
  EXPECT_EQ(calculator::convertDistanceValue(1.0, 0, 2), 0.0);
}

TEST(UnitCalculatorTest, AltitudeValues) {
  const struct {
    std::int64_t unitType;
    std::int64_t altType;
    double expected;
  } cases[] = {{0, 0, 100.0},   {0, 1, 100.0}, {1, 0, 328.084}, {2, 0, 100.0},
               {2, 1, 328.084}, {3, 0, 109.3}, {3, 1, 109.3},   {7, 1, 100.0}};
  for (const auto& c : cases) {
    EXPECT_EQ(calculator::valueForAltitudeInMeters(100.0, c.unitType, c.altType), c.expected)
        << c.unitType << "/" << c.altType;
  }
}

}  // namespace
}  // namespace qm
