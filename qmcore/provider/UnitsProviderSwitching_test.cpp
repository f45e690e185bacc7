#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/testing/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

using testing::UnitsProviderTest;

TEST_F(UnitsProviderTest, DistanceSwitchValuesAreTheOnesItsUnitsWereMadeWith) {
  // The metre asks the delegate's feet query too; without a delegate it has 1000 of its own.
  const struct {
    bool hasDelegate;
    std::int64_t feetAnswer;
    std::int64_t foot, meter;
  } cases[] = {{false, 0, 2000, 1000}, {true, 3000, 3000, 3000}, {true, 0, 0, 0}};
  for (const auto& c : cases) {
    delegate_->feetThreshold = c.feetAnswer;
    environment_.setDelegate(c.hasDelegate ? delegate_
                                           : std::shared_ptr<EnvironmentSettingsDelegate>());
    const UnitsProvider& p = launch("de_DE");
    const auto foot = p.distanceUnitWithUuid(QMFootDistanceUnitUuid);
    const auto meter = p.distanceUnitWithUuid(QMMeterDistanceUnitUuid);
    EXPECT_EQ(p.automaticSwitchValueForUnit(*foot), c.foot);
    EXPECT_EQ(p.automaticSwitchValueForUnit(*meter), c.meter);
    EXPECT_EQ(p.distanceSmallToBigThresholdInMeters(), static_cast<double>(c.meter));

    // A delegate installed later changes units made later, not this provider's.
    delegate_->feetThreshold = 4321;
    environment_.setDelegate(delegate_);
    EXPECT_EQ(p.automaticSwitchValueForUnit(*meter), c.meter);
    EXPECT_EQ(p.distanceSmallToBigThresholdInMeters(), static_cast<double>(c.meter));
    EXPECT_EQ(p.automaticSwitchValueForUnit(*QMDistanceUnit::footUnit()), 2000)
        << "a unit made elsewhere keeps its own value";
  }
}

TEST_F(UnitsProviderTest, ThresholdsFollowTheSwitchValuesOfTheCurrentUnits) {
  UnitsProvider& p = launch("en_US");  // feet, length foot, square foot
  EXPECT_EQ(p.defaultQMDistanceUnit(), (QMDistanceUnitType{true, DistanceUnitType::kImperial}));
  const auto foot = QMDistanceUnit::footUnit();
  const auto meter = QMDistanceUnit::meterUnit();
  const auto kilometer = QMDistanceUnit::kilometerUnit();
  const auto mile = QMDistanceUnit::mileUnit();
  const auto squareMeter = QMAreaUnit::squareMeterUnit();
  const auto set = [&p](std::int64_t value, const QMUnit& unit) {
    return [&p, value, &unit] { p.setAutomaticSwitchValue(value, unit); };
  };
  constexpr auto kDistance = &UnitsProvider::distanceSmallToBigThresholdInMeters;
  constexpr auto kLength = &UnitsProvider::lengthSmallToBigThresholdInMeters;
  constexpr auto kArea = &UnitsProvider::areaSmallToBigThresholdInMeters;
  // Steps on one provider, each after the one before; -1 means never.
  const struct {
    const char* step;
    std::function<void()> run;
    double (UnitsProvider::*threshold)() const;
    double expected;
  } cases[] = {
      {"launch in feet", [] {}, kDistance, 2000 / 3.28084},
      {"the foot's value", set(500, *foot), kDistance, 500 / 3.28084},
      {"metres are not current", set(3000, *meter), kDistance, 500 / 3.28084},
      {"never", set(-1, *foot), kDistance, -1.0},
      {"lengths do not switch by default", [] {}, kLength, -1.0},
      // The current unit, which the change replaces on the way.
      {"the length foot's value", [&] { p.setAutomaticSwitchValue(500, *p.lengthUnit()); }, kLength,
       0.30479999 * 500},
      {"metric: the metre's stored value", [&] { p.setGeneralUnitType(0); }, kDistance, 3000.0},
      {"zero: always the big unit", set(0, *meter), kDistance, 0.0},
      // Any unit of the small unit's type sets it, until it is restored from the current unit.
      {"the kilometre", set(7, *kilometer), kDistance, 7.0},
      {"deriving keeps it", [&] { p.establishCurrentUnits(); }, kDistance, 7.0},
      {"restoring", [&] { p.restoreDistanceSmallToBigThreshold(); }, kDistance, 0.0},
      {"the kilometre again", set(7, *kilometer), kDistance, 7.0},
      {"imperial: the foot's", [&] { p.setGeneralUnitType(1); }, kDistance, -1.0},
      {"the mile", set(9, *mile), kDistance, 9 / 3.28084},
      {"metric again: the metre's", [&] { p.setGeneralUnitType(0); }, kDistance, 0.0},
      {"square metres", set(100000, *squareMeter), kArea, 100000.0},
      {"a unit without a bigger one",
       [&] { p.setCurrentAreaUnit(p.areaUnitWithUuid(QMTsuboUnitUuid)); }, kArea, -1.0},
      {"square metres again", [&] { p.setCurrentAreaUnit(nullptr); }, kArea, 100000.0},
      {"below -1: never", set(-2, *squareMeter), kArea, -1.0},
  };
  for (const auto& c : cases) {
    c.run();
    EXPECT_EQ((p.*c.threshold)(), c.expected) << c.step;
    if (c.threshold != kDistance) continue;
    // The big unit from the threshold on, the small unit below it.
    const QMDistanceUnitType small{false, p.distanceUnit()->unitType()};
    if (c.expected < 0) {
      EXPECT_EQ(p.defaultUnitTypeForDistance(1e9), small) << c.step;
    } else {
      EXPECT_EQ(p.defaultUnitTypeForDistance(c.expected), p.defaultQMDistanceUnit()) << c.step;
      EXPECT_EQ(p.defaultUnitTypeForDistance(std::nextafter(c.expected, -1.0)), small) << c.step;
    }
  }
  EXPECT_EQ(p.automaticSwitchValueForUnit(*squareMeter), -2) << "any stored value counts";
  // Lengths and areas have the map settings' notification; a unit not current posts too.
  EXPECT_EQ(unitsChangedPosts(), 10);
  EXPECT_EQ(mapSettingsPosts(), 5);
  EXPECT_EQ(launch("en_US").distanceSmallToBigThresholdInMeters(), 0.0);
  provider_->setGeneralUnitType(5);
  EXPECT_EQ(provider_->defaultQMDistanceUnit(),
            (QMDistanceUnitType{true, DistanceUnitType::kMetric}))
      << "systems without a big unit of their own show kilometres";
}

}  // namespace
}  // namespace qm
