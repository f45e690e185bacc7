#include "qmcore/units/QMTemperatureUnit.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace qm {
namespace {

TEST(QMTemperatureUnit, OnlyCelsiusToFahrenheitIsRounded) {
  const auto c = QMTemperatureUnit::celsiusUnit();
  const auto f = QMTemperatureUnit::farenheitUnit();
  const struct {
    double value;
    const QMUnit& from;
    const QMUnit& to;
    double expected;
  } cases[] = {
      {36.6, *c, *f, 98.0},  // 97.88 rounded
      {0.0, *c, *f, 32.0},
      {-40.0, *c, *f, -40.0},
      {0.25, *c, *f, 32.0},   // 32.45
      {-17.5, *c, *f, 1.0},   // 0.5: half away from zero
      {-18.5, *c, *f, -1.0},  // -1.3
      {-22.5, *c, *f, -9.0},  // -8.5: half away from zero, not up
      {98.0, *f, *c, (98.0 - 32.0) * 5.0 / 9.0},
      {0.0, *f, *c, (0.0 - 32.0) * 5.0 / 9.0},
      {36.6, *c, *c, 36.6},
      {98.6, *f, *f, 98.6},
  };
  for (const auto& t : cases) {
    EXPECT_EQ(QMTemperatureUnit::convertTemperature(t.value, t.from, t.to), t.expected)
        << t.value << " " << t.from.uuid() << " -> " << t.to.uuid();
  }
  EXPECT_NEAR(QMTemperatureUnit::convertTemperature(98.0, *f, *c), 36.6667, 1e-4);
}

TEST(QMTemperatureUnit, IdentifiersAreComparedByText) {
  // A unit whose identifier is not the registry's constant but has its text still counts as
  // Celsius here.
  class CopiedCelsius : public QMTemperatureUnit {
   public:
    CopiedCelsius() { define({.uuid = text_, .name = "°C", .abbreviation = "°C"}); }

   private:
    std::string text_ = ".temperature-c";
  };
  const CopiedCelsius copy;
  const auto c = QMTemperatureUnit::celsiusUnit();
  const auto f = QMTemperatureUnit::farenheitUnit();
  EXPECT_FALSE(isSameConstant(copy.uuid(), UnitsUuid::QMCelsiusUnitUuid));
  EXPECT_EQ(QMTemperatureUnit::convertTemperature(36.6, copy, *f), 98.0);
  EXPECT_EQ(QMTemperatureUnit::convertTemperature(36.6, copy, *c), 36.6);
}

}  // namespace
}  // namespace qm
