// Conversions between units, between the unit systems' big distance units, and of temperatures.

#include "qmcore/units/QMUnitConversions.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/UnitKinds.hpp"

namespace qm {
namespace {

TEST(QMUnitConversions, UnitValuesGoThroughTheFactorsInOrder) {
  const auto foot = QMLengthUnit::footUnit();
  const auto meter = QMLengthUnit::meterUnit();
  const auto inch = QMLengthUnit::inchUnit();
  EXPECT_EQ(QMConvertUnitValue(*foot, *meter, 1.0), 0.30479999);
  EXPECT_EQ(QMConvertUnitValue(*meter, *foot, 1.0), 1.0 / 0.30479999);
  EXPECT_EQ(QMConvertUnitValue(*inch, *foot, 3.0), 0.0254 * 3.0 / 0.30479999);  // multiplied first
  EXPECT_EQ(QMConvertToMetricValue(*QMLengthUnit::mileUnit(), 2.0), 3218.688);
  EXPECT_EQ(QMConvertMetricValue(*inch, 1.0), 1.0 / 0.0254);

  const QMUnit zero;
  EXPECT_TRUE(std::isinf(QMConvertUnitValue(*meter, zero, 1.0)));
  EXPECT_TRUE(std::isnan(QMConvertMetricValue(zero, 0.0)));

  // Units named by identifier or abbreviation (not by name) within a kind.
  const UnitList lengths = unitKindNamed("length")->builtinUnits({});
  EXPECT_TRUE(unitsNamed(lengths, "Foot").empty());
  ASSERT_EQ(unitsNamed(lengths, "ft").size(), 1u);
  EXPECT_EQ(convertBetweenUnits(1.0, *unitsNamed(lengths, "ft")[0],
                                *unitsNamed(lengths, ".length-meter")[0]),
            0.30479999);
}

// Only Celsius to Fahrenheit is rounded, half away from zero.
TEST(QMUnitConversions, TemperaturesByTheTextOfTheirIdentifiers) {
  const auto c = QMTemperatureUnit::celsiusUnit();
  const auto f = QMTemperatureUnit::farenheitUnit();
  const struct {
    double value;
    const QMUnit& from;
    const QMUnit& to;
    double expected;
  } cases[] = {
      {36.6, *c, *f, 98.0},   // 97.88
      {-17.5, *c, *f, 1.0},   // 0.5
      {-22.5, *c, *f, -9.0},  // -8.5: away from zero, not up
      {98.0, *f, *c, (98.0 - 32.0) * 5.0 / 9.0},
      {98.6, *f, *f, 98.6},
  };
  for (const auto& t : cases) {
    EXPECT_EQ(QMTemperatureUnit::convertTemperature(t.value, t.from, t.to), t.expected)
        << t.value << " " << t.from.uuid() << " -> " << t.to.uuid();
  }
  EXPECT_EQ(convertBetweenUnits(36.6, *c, *f), 98.0) << "by kind: the offset, then rounded";

  // A unit whose identifier is not the registry's constant but has its text counts as Celsius.
  class CopiedCelsius : public QMTemperatureUnit {
   public:
    CopiedCelsius() { define({.uuid = text_, .name = "°C", .abbreviation = "°C"}); }

   private:
    std::string text_ = ".temperature-c";
  };
  const CopiedCelsius copy;
  EXPECT_FALSE(isSameConstant(copy.uuid(), UnitsUuid::QMCelsiusUnitUuid));
  EXPECT_EQ(QMTemperatureUnit::convertTemperature(36.6, copy, *f), 98.0);
  EXPECT_EQ(QMTemperatureUnit::convertTemperature(36.6, copy, *c), 36.6);
}

// The unit systems' big units per kilometre and speed divisors are rounded literals, not the
// catalogs' factors.
TEST(QMUnitConversions, KiloValuesAndSpeedsUseTheRoundedLiterals) {
  const struct {
    std::int64_t from;
    std::int64_t to;
    double expected;
  } cases[] = {
      {3, 3, 10.0},  // the same type wins before validity
      {0, 1, 10.0 * 0.62137},
      {1, 0, 10.0 / 0.62137},
      {1, 2, (10.0 * 0.5399568) / 0.62137},
      {3, 0, 0.0},  // no big units per kilometre
      {-1, 1, 0.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMConvertKiloValue(c.from, c.to, 10.0), c.expected) << c.from << "->" << c.to;
  }

  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(0, 36.0), 10.0);
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(1, 10.0), 10.0 * 1000.0 / 2236.932);
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(2, 10.0), 10.0 * 1000.0 / 1943.84448);
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(3, 10.0), -1.0);  // no divisor
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(5, 36.0), -1.0);
}

}  // namespace
}  // namespace qm
