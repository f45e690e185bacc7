#include "qmcore/units/QMDistanceUnit.hpp"

#include <gtest/gtest.h>

#include "qmcore/provider/EnvironmentSettings.hpp"

namespace qm {
namespace {

class ThresholdDelegate : public EnvironmentSettingsDelegate {
 public:
  std::int64_t smallToBigFeetThresholdForDistance() override { return 3000; }
  std::int64_t smallToBigMetersThresholdForDistance() override { return 1500; }
};

TEST(QMDistanceUnit, SwitchValuesAskTheFeetQueryWhenTheUnitIsMade) {
  const auto before = QMDistanceUnit::meterUnit();
  auto delegate = std::make_shared<ThresholdDelegate>();
  EnvironmentSettings::shared().setDelegate(delegate);
  const auto foot = QMDistanceUnit::footUnit();
  const auto meter = QMDistanceUnit::meterUnit();
  delegate.reset();

  EXPECT_EQ(foot->unitSwitchesAtValue(), 3000);
  EXPECT_EQ(meter->unitSwitchesAtValue(), 3000) << "the metre asks the feet query";
  EXPECT_EQ(before->unitSwitchesAtValue(), 1000) << "units made earlier keep their value";
  EXPECT_EQ(QMDistanceUnit::footUnit()->unitSwitchesAtValue(), 2000) << "delegate released";
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
