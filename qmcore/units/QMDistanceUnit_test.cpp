#include "qmcore/units/QMDistanceUnit.hpp"

#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(QMDistanceUnit, FootAndMetreKeepTheSwitchValuesTheyAreMadeWith) {
  const DistanceSwitchValues host{.feet = 3000, .meters = 1500};
  EXPECT_EQ(QMDistanceUnit::footUnit(host)->unitSwitchesAtValue(), 3000);
  EXPECT_EQ(QMDistanceUnit::meterUnit(host)->unitSwitchesAtValue(), 1500);
  EXPECT_EQ(QMDistanceUnit::defaultForUnitType(2, 1, host)->unitSwitchesAtValue(), 3000);
  EXPECT_EQ(QMDistanceUnit::footUnit()->unitSwitchesAtValue(), 2000);
  EXPECT_EQ(QMDistanceUnit::meterUnit()->unitSwitchesAtValue(), 1000);
  EXPECT_EQ(QMDistanceUnit::kilometerUnit()->unitSwitchesAtValue(), 0);
}

TEST(QMDistanceUnit, PackedDistanceUnitTypes) {
  const struct {
    std::int64_t packed;
    bool isKilometric;
    std::int64_t unitType;
    bool roundTrips;
  } cases[] = {
      {0x000, false, 0, true}, {0x001, true, 0, true},  {0x100, false, 1, true},
      {0x201, true, 2, true},  {0x301, true, 3, true},  {0x401, true, 0, false},
      {-1, true, 0, false},    {-256, false, 0, false}, {0x002, false, 0, false},
      {0x1FF, true, 1, false},
  };
  for (const auto& c : cases) {
    const QMDistanceUnitType decoded = QMDistanceUnit::decodeDistanceUnitFromInteger(c.packed);
    EXPECT_EQ(decoded.isKilometric, c.isKilometric) << c.packed;
    EXPECT_EQ(static_cast<std::int64_t>(decoded.unitType), c.unitType) << c.packed;
    EXPECT_EQ(QMDistanceUnit::encodeDistanceUnit(decoded) == c.packed, c.roundTrips) << c.packed;
  }
}

}  // namespace
}  // namespace qm
