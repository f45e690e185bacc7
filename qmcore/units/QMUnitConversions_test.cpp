#include "qmcore/units/QMUnitConversions.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"

namespace qm {
namespace {

TEST(QMUnitConversions, UnitValuesGoThroughTheFactorsInOrder) {
  const auto foot = QMLengthUnit::footUnit();
  const auto meter = QMLengthUnit::meterUnit();
  const auto mile = QMLengthUnit::mileUnit();
  const auto inch = QMLengthUnit::inchUnit();
  const auto altitudeFoot = QMAltitudeUnit::footUnit();
  const auto acre = QMAreaUnit::acreUnit();
  const auto hectare = QMAreaUnit::hectareUnit();
  const struct {
    const QMUnit& from;
    const QMUnit& to;
    double value;
    double expected;
  } cases[] = {
      {*foot, *meter, 1.0, 0.30479999},
      {*altitudeFoot, *meter, 1.0, 0.3048},
      {*meter, *foot, 1.0, 1.0 / 0.30479999},
      {*mile, *foot, 1.0, 1609.344 * 1.0 / 0.30479999},
      {*inch, *foot, 3.0, 0.0254 * 3.0 / 0.30479999},  // multiplied first
      {*acre, *hectare, 2.5, 4046.8564224 * 2.5 / 10000.0},
      {*meter, *meter, -7.25, -7.25},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMConvertUnitValue(c.from, c.to, c.value), c.expected)
        << c.from.uuid() << " -> " << c.to.uuid();
  }
  EXPECT_EQ(QMConvertToMetricValue(*mile, 2.0), 3218.688);
  EXPECT_EQ(QMConvertMetricValue(*foot, 0.30479999), 1.0);
  EXPECT_EQ(QMConvertMetricValue(*inch, 1.0), 1.0 / 0.0254);

  const QMUnit zero;
  EXPECT_TRUE(std::isinf(QMConvertUnitValue(*meter, zero, 1.0)));
  EXPECT_TRUE(std::isnan(QMConvertMetricValue(zero, 0.0)));
}

TEST(QMUnitConversions, MetricSpeedForKilometric) {
  const struct {
    std::int64_t type;
    double speed;
    double expected;
  } cases[] = {
      {0, 36.0, 10.0},
      {1, 10.0, 10.0 * 1000.0 / 2236.932},
      {2, 10.0, 10.0 * 1000.0 / 1943.84448},
      {3, 10.0, -1.0},
      {5, 36.0, -1.0},
      {-1, 36.0, -1.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMCalculateMetricSpeedForKilometric(c.type, c.speed), c.expected) << c.type;
  }
}

TEST(QMUnitConversions, KiloValuesUseTheRoundedLiterals) {
  const struct {
    std::int64_t from;
    std::int64_t to;
    double expected;
  } cases[] = {
      {0, 0, 10.0},
      {1, 1, 10.0},
      {3, 3, 10.0},  // the same type wins before validity
      {0, 1, 10.0 * 0.62137},
      {0, 2, 10.0 * 0.5399568},
      {1, 0, 10.0 / 0.62137},
      {2, 0, 10.0 / 0.5399568},
      {1, 2, (10.0 * 0.5399568) / 0.62137},
      {2, 1, (10.0 * 0.62137) / 0.5399568},
      {3, 0, 0.0},
      {0, 3, 0.0},
      {-1, 1, 0.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMConvertKiloValue(c.from, c.to, 10.0), c.expected) << c.from << "->" << c.to;
  }
  // Deliberately not the catalog's exact factor.
  EXPECT_NE(QMConvertKiloValue(1, 0, 1.0), 1.609344);
}

}  // namespace
}  // namespace qm
