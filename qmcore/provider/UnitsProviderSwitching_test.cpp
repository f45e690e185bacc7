#include <gtest/gtest.h>

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

TEST_F(UnitsProviderTest, SwitchValuesComeFromTheStoreThenTheUnitsDefaults) {
  environment_.setDelegate(std::shared_ptr<EnvironmentSettingsDelegate>());
  UnitsProvider& p = launch();
  EXPECT_EQ(p.automaticSwitchValueForUnit(*QMDistanceUnit::footUnit()), 2000);
  EXPECT_EQ(p.automaticSwitchValueForUnit(*QMDistanceUnit::meterUnit()), 1000);
  EXPECT_EQ(p.automaticSwitchValueForUnit(*QMLengthUnit::footUnit()), -1);
  EXPECT_EQ(p.automaticSwitchValueForUnit(*QMAreaUnit::squareMeterUnit()), -1);
  EXPECT_EQ(p.rulesDescriptionForUnit(*QMLengthUnit::footUnit()), "Always keep as Foot");
  EXPECT_EQ(p.rulesDescriptionForUnit(*QMDistanceUnit::footUnit()), "Switch to miles from 2000 ft");
  EXPECT_EQ(p.shortSwitchDescriptionForUnit(*QMDistanceUnit::meterUnit()), "Switch to Kilometers");

  store_->setInteger("QMUnitSwitch_.length-foot_Value", -7);  // any stored value counts
  EXPECT_EQ(p.automaticSwitchValueForUnit(*QMLengthUnit::footUnit()), -7);
}

TEST_F(UnitsProviderTest, DistanceSwitchValueBecomesTheThresholdOnlyForTheCurrentSmallUnit) {
  UnitsProvider& p = launch("en_US");  // feet
  ASSERT_EQ(p.distanceSmallToBigThresholdInMeters(), 2000 / 3.28084);

  p.setAutomaticSwitchValue(500, *QMDistanceUnit::footUnit());
  EXPECT_EQ(p.distanceSmallToBigThresholdInMeters(), 500 / 3.28084);
  EXPECT_EQ(unitsChangedPosts(), 1);

  p.setAutomaticSwitchValue(3000, *QMDistanceUnit::meterUnit());  // not the current unit
  EXPECT_EQ(p.distanceSmallToBigThresholdInMeters(), 500 / 3.28084);
  EXPECT_EQ(unitsChangedPosts(), 2);

  p.setAutomaticSwitchValue(QMUnitShouldNotSwitchAutomatically, *QMDistanceUnit::footUnit());
  EXPECT_EQ(p.distanceSmallToBigThresholdInMeters(), -1.0);
  EXPECT_FALSE(p.defaultUnitTypeForDistance(1e9).isKilometric);

  p.setGeneralUnitType(0);  // the metre's stored 3000 applies now
  EXPECT_EQ(p.distanceSmallToBigThresholdInMeters(), 3000.0);
  EXPECT_EQ(launch("en_US").distanceSmallToBigThresholdInMeters(), 3000.0);
}

TEST_F(UnitsProviderTest, LengthAndAreaThresholdsAndTheirNotification) {
  UnitsProvider& p = launch("de_DE");
  EXPECT_EQ(p.lengthSmallToBigThresholdInMeters(), -1.0);
  p.setAutomaticSwitchValue(1000, *QMLengthUnit::meterUnit());
  EXPECT_EQ(p.lengthSmallToBigThresholdInMeters(), 1000.0);
  p.setAutomaticSwitchValue(100000, *QMAreaUnit::squareMeterUnit());
  EXPECT_EQ(p.areaSmallToBigThresholdInMeters(), 100000.0);
  EXPECT_EQ(mapSettingsPosts(), 2);
  EXPECT_EQ(unitsChangedPosts(), 0);

  p.setAutomaticSwitchValue(-2, *QMAreaUnit::squareMeterUnit());  // below -1: never as well
  EXPECT_EQ(p.areaSmallToBigThresholdInMeters(), -1.0);
  p.setCurrentAreaUnit(p.areaUnitWithUuid(QMTsuboUnitUuid));  // a unit that never switches
  EXPECT_EQ(p.areaSmallToBigThresholdInMeters(), -1.0);

  p.setCurrentLengthUnit(p.lengthUnitWithUuid(QMFootUnitUuid));
  p.setAutomaticSwitchValue(500, *p.lengthUnit());  // the current unit, replaced on the way
  EXPECT_EQ(p.lengthSmallToBigThresholdInMeters(), 0.30479999 * 500);
}

TEST_F(UnitsProviderTest, NauticalModeNamesTheNauticalMileAsTheSwitchUnit) {
  UnitsProvider& p = launch("de_DE");
  setCurrentLocaleIdentifier("en_US");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMDistanceUnit::meterUnit()), "Kilometers");
  p.setGeneralUnitType(2);
  EXPECT_EQ(p.shortSwitchDescriptionForUnit(*QMDistanceUnit::meterUnit()),
            "Switch to Nautical miles");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMDistanceUnit::footUnit()), "Nautical miles");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMLengthUnit::yardUnit()), "Nautical mile");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMLengthUnit::inchUnit()), "Foot");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMAreaUnit::squareFootUnit()), "Square mile");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMLengthUnit::kilometerUnit()), "");
}

}  // namespace
}  // namespace qm
