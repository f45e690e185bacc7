#include "qmcore/provider/UnitsProvider.hpp"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/testing/UnitsProviderTestSupport.hpp"

namespace qm {
namespace {

using testing::UnitsProviderTest;
using UnitIds = std::array<std::string_view, 8>;

UnitIds unitsOf(const UnitsProvider& p) {
  return {p.speedUnit()->uuid(),         p.distanceUnit()->uuid(), p.altitudeUnit()->uuid(),
          p.verticalSpeedUnit()->uuid(), p.pressureUnit()->uuid(), p.temperatureUnit()->uuid(),
          p.lengthUnit()->uuid(),        p.areaUnit()->uuid()};
}

constexpr UnitIds kMetric = {".speed-kmh",    ".distance-meter",  ".altitude-meter",
                             ".vspeed-m/s",   ".pressure-hpa",    ".temperature-c",
                             ".length-meter", ".area-squaremeter"};
constexpr UnitIds kImperial = {".speed-mph",     ".distance-foot",  ".altitude-foot",
                               ".vspeed-ft/min", ".pressure-inHg",  ".temperature-f",
                               ".length-foot",   ".area-squarefoot"};
constexpr UnitIds kNautical = {".speed-knot",    ".distance-foot",  ".altitude-foot",
                               ".vspeed-ft/min", ".pressure-inHg",  ".temperature-c",
                               ".length-foot",   ".area-squarefoot"};

TEST_F(UnitsProviderTest, FirstLaunchFollowsTheLocaleThenTheStoredSystem) {
  EXPECT_EQ(unitsOf(launch("en_GB")), kImperial);
  EXPECT_EQ(provider_->generalUnitType(), 1);
  EXPECT_EQ(unitsOf(launch("de_DE")), kMetric);
  EXPECT_FALSE(store_->hasKey(QMGeneralUnitPrefKeyName)) << "nothing is stored at first launch";
  provider_->setGeneralUnitType(2);  // nautical with nothing else stored
  EXPECT_EQ(unitsOf(*provider_), kNautical);
  EXPECT_EQ(delegate_->switchedTo, std::vector<DistanceUnitType>{DistanceUnitType::kNautical});
  EXPECT_EQ(unitsOf(launch("de_DE")), kNautical) << "after a new launch";
}

TEST_F(UnitsProviderTest, StoredSystemAndSmallUnitTypes) {
  using Stored = std::optional<std::int64_t>;
  const auto dropsLegacyKey = [&](UnitsProvider& p) {
    p.setNauticalDistanceUnitType(1);
    EXPECT_FALSE(store_->hasKey(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName));
  };
  const auto restoreSystemInBritain = [&](UnitsProvider& p) {
    env_.setLocaleIdentifier("en_GB");
    p.restoreCurrentGeneralUnitType();
  };
  const auto restoreSmallUnits = [&](UnitsProvider& p) {
    store_->setInteger(QMNauticalDistanceUnitPrefKeyName, 0);
    store_->setInteger(QMAltitudeUnitPrefKeyName, 0);
    p.restoreCurrentDistanceUnitType();
    p.restoreCurrentAltitudeUnitType();
  };
  // What a launch in de_DE restores from the store, and what `then` leaves.
  const struct {
    const char* what;
    Stored system, legacy, nauticalDistance, altitude;
    std::int64_t expectedSystem, expectedDistance, expectedAltitude;
    std::function<void(UnitsProvider&)> then = nullptr;
  } cases[] = {
      {"nautical: feet unless stored", 2, {}, {}, 0, 2, 1, 0},
      {"the legacy key wins in nautical mode", 2, 0, 1, 1, 2, 0, 0},
      {"the legacy key counts in nautical mode only", 1, 0, {}, {}, 1, 1, 1},
      // The altitude type is re-read on the next launch only.
      {"setting the nautical distance drops the legacy key", 2, 0, {}, 1, 2, 1, 0, dropsLegacyKey},
      {"types of 2 or more mean metres", 2, {}, 7, 2, 2, 0, 0},
      {"an unknown system is kept", 5, {}, {}, {}, 5, 5, 0},
      // Restores after the store changed behind the provider's back, or the locale did.
      {"no system: the locale's", {}, {}, {}, {}, 1, 0, 0, restoreSystemInBritain},
      {"a stored system resets large small types", 5, {}, {}, {}, 5, 0, 0, restoreSystemInBritain},
      {"small units", 2, {}, {}, {}, 2, 0, 0, restoreSmallUnits},
  };
  for (const auto& c : cases) {
    const std::pair<std::string_view, Stored> stored[] = {
        {QMGeneralUnitPrefKeyName, c.system},
        {QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName, c.legacy},
        {QMNauticalDistanceUnitPrefKeyName, c.nauticalDistance},
        {QMAltitudeUnitPrefKeyName, c.altitude}};
    for (const auto& [key, value] : stored) {
      store_->removeObjectForKey(key);
      if (value) store_->setInteger(key, *value);
    }
    UnitsProvider& p = launch("de_DE");
    if (c.then) c.then(p);
    EXPECT_EQ(p.generalUnitType(), c.expectedSystem) << c.what;
    EXPECT_EQ(p.distanceUnitType(), c.expectedDistance) << c.what;
    EXPECT_EQ(p.altitudeUnitType(), c.expectedAltitude) << c.what;
  }
}

TEST_F(UnitsProviderTest, SettersNotifyAndSyncOnlyOnChange) {
  UnitsProvider& p = launch("de_DE");
  p.setGeneralUnitType(1);
  p.setGeneralUnitType(0);
  EXPECT_EQ(delegate_->syncCalls, 0) << "no sync step while the environment does not support it";
  delegate_->syncSupported = true;
  const auto lengthFoot = p.lengthUnitWithUuid(QMFootUnitUuid);
  const auto acre = p.areaUnitWithUuid(QMAcreUnitUuid);
  const auto perMinute = QMVerticalSpeedUnit::metersPerMinuteUnit();
  // Only system and small-unit changes have the sync step.
  const struct {
    const char* action;
    std::function<void()> run;
    int unitsChanged, mapSettings, syncs;
  } cases[] = {
      {"same system", [&] { p.setGeneralUnitType(0); }, 0, 0, 0},
      {"same altitude type", [&] { p.setAltitudeUnitType(0); }, 0, 0, 0},
      {"same length unit", [&] { p.setCurrentLengthUnit(QMLengthUnit::meterUnit()); }, 0, 0, 0},
      {"nautical type outside nautical mode", [&] { p.setNauticalDistanceUnitType(1); }, 0, 0, 0},
      {"altitude in feet", [&] { p.setAltitudeUnitType(1); }, 1, 0, 1},
      {"pressure in inHg", [&] { p.setPressureUnit(*QMPressureUnit::inHgUnit()); }, 1, 0, 0},
      {"m/min", [&] { p.setVerticalSpeedUnit(*perMinute); }, 1, 0, 0},
      {"switch value", [&] { p.setAutomaticSwitchValue(10, *QMDistanceUnit::meterUnit()); }, 1, 0,
       0},
      {"length foot", [&] { p.setCurrentLengthUnit(lengthFoot); }, 0, 1, 0},
      {"acre", [&] { p.setCurrentAreaUnit(acre); }, 0, 1, 0},
      {"area back to default", [&] { p.setCurrentAreaUnit(nullptr); }, 0, 1, 0},
      {"scale of another unit",
       [&] { p.setVerticalSpeedScale(2, *QMVerticalSpeedUnit::feetPerMinuteUnit()); }, 0, 0, 0},
      {"scale of the current unit", [&] { p.setVerticalSpeedScale(3, *perMinute); }, 1, 0, 0},
      {"nautical", [&] { p.setGeneralUnitType(2); }, 1, 0, 1},
      {"nautical distance in metres", [&] { p.setNauticalDistanceUnitType(0); }, 1, 0, 1},
      {"imperial", [&] { p.setGeneralUnitType(1); }, 1, 0, 1},
  };
  for (const auto& c : cases) {
    const int unitsBefore = unitsChangedPosts();
    const int mapBefore = mapSettingsPosts();
    const int syncsBefore = delegate_->syncCalls;
    c.run();
    EXPECT_EQ(unitsChangedPosts() - unitsBefore, c.unitsChanged) << c.action;
    EXPECT_EQ(mapSettingsPosts() - mapBefore, c.mapSettings) << c.action;
    EXPECT_EQ(delegate_->syncCalls - syncsBefore, c.syncs) << c.action;
  }
  // Everything above persisted: a new launch sees it.
  EXPECT_EQ(unitsOf(launch("de_DE")),
            (UnitIds{".speed-mph", ".distance-foot", ".altitude-foot", ".vspeed-m/min",
                     ".pressure-inHg", ".temperature-f", ".length-foot", ".area-squarefoot"}));
  EXPECT_EQ(provider_->verticalSpeedUnit()->scale(), 3);
  EXPECT_FALSE(store_->hasKey(QMCurrentAreaUnitUuidPrefKeyName));
}

TEST_F(UnitsProviderTest, LookupsSortedCatalogsAndStaleStoredIdentifiers) {
  store_->setString(QMTemperatureUnitPrefKeyName, ".temperature-kelvin");
  store_->setString(QMPressureUnitPrefKeyName, ".pressure-psi");
  store_->setString(QMCurrentLengthUnitUuidPrefKeyName, ".length-parsec");
  store_->setString(QMCurrentVerticalSpeedUnitUuidPrefKeyName, "nonsense");
  UnitsProvider& p = launch("en_US");
  EXPECT_EQ(unitsOf(p), kImperial);

  p.setTemperatureUnit(*QMTemperatureUnit::celsiusUnit());
  store_->setString(QMTemperatureUnitPrefKeyName, ".temperature-kelvin");
  p.establishCurrentUnits();  // a stale identifier keeps the current unit
  EXPECT_EQ(p.temperatureUnit()->uuid(), ".temperature-c");
  store_->setString(QMPressureUnitPrefKeyName, ".pressure-hpa");
  store_->setString(QMCurrentVerticalSpeedUnitUuidPrefKeyName, ".vspeed-m/min");
  store_->setDouble(".vspeed-m/min_scale", 2.0);
  p.restoreCurrentPressureUnitType();
  p.restoreCurrentTemperatureUnitType();
  p.restoreCurrentVerticalSpeedUnitType();
  EXPECT_EQ(p.pressureUnit()->uuid(), ".pressure-hpa");
  EXPECT_EQ(p.temperatureUnit()->uuid(), ".temperature-c");
  EXPECT_EQ(p.verticalSpeedUnit()->scale(), 2);

  // Distances and altitudes biggest first, every other kind smallest first.
  EXPECT_EQ(p.allDistanceUnits().front()->uuid(), ".distance-nauticalmile");
  EXPECT_EQ(p.allAltitudeUnits().front()->uuid(), ".altitude-meter");
  EXPECT_EQ(p.allLengthUnits().front()->uuid(), ".length-inch");
  EXPECT_EQ(p.allAreaUnits().front()->uuid(), ".area-squarefoot");
  EXPECT_EQ(p.allSpeedUnits().front()->uuid(), ".speed-kmh");
  EXPECT_EQ(p.allVerticalSpeedUnits().front()->uuid(), ".vspeed-ft/min");
  EXPECT_EQ(p.allPressureUnits().front()->uuid(), ".pressure-hpa");
  EXPECT_EQ(p.allTemperatureUnits().front()->uuid(), ".temperature-c");
  EXPECT_EQ(p.lengthUnitWithUuid(std::string(".length-yard"))->name(), "Yard");
  EXPECT_EQ(p.verticalSpeedUnitWithUuid(".vspeed-m/s")->name(), "meters/second");
  EXPECT_EQ(p.speedUnitWithUuid(".speed-warp"), nullptr);
  EXPECT_EQ(p.distanceUnitWithUuid(".length-yard"), nullptr);
  // These three fall back to the current unit instead of null.
  EXPECT_EQ(p.pressureUnitWithUuid("?"), p.pressureUnit());
  EXPECT_EQ(p.temperatureUnitWithUuid("?"), p.temperatureUnit());
  EXPECT_EQ(p.altitudeUnitWithUuid("?"), p.altitudeUnit());
}

TEST_F(UnitsProviderTest, DescriptionsAndSwitchUnitNamesInEnglishAndGerman) {
  UnitsProvider& p = launch("en_US");
  EXPECT_EQ(p.descriptionOfUnitsSystem(2),
            "Distance: Meters or Feet and Nautical miles. Speed: KNOTS");
  EXPECT_EQ(p.rulesDescriptionForUnit(*QMLengthUnit::footUnit()), "Always keep as Foot");
  delegate_->drivenBySpeed = true;
  EXPECT_EQ(p.descriptionOfCurrentUnits(), "MPH. Distance: Feet. Altitude: Feet.");
  EXPECT_EQ(p.principalUnitLocalizedName(), "speed");
  EXPECT_EQ(p.restrictedDistanceUnitSelectionMessage(),
            "For KM/H and MPH distance units are deduced from applied speed units.");
  delegate_->drivenBySpeed = false;
  EXPECT_EQ(p.descriptionOfUnitsSystem(0), "Distance: Meters and Kilometers. Speed: KM/H");
  EXPECT_EQ(p.restrictedDistanceUnitSelectionMessage(),
            "For Imperial and Metric distance units are deduced from applied General units.");

  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMDistanceUnit::meterUnit()), "Kilometers");
  p.setGeneralUnitType(2);  // distances and lengths switch to nautical miles instead
  EXPECT_EQ(p.shortSwitchDescriptionForUnit(*QMDistanceUnit::meterUnit()),
            "Switch to Nautical miles");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMLengthUnit::yardUnit()), "Nautical mile");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMLengthUnit::inchUnit()), "Foot");
  EXPECT_EQ(p.localizedNameOfSwitchUnitForUnit(*QMLengthUnit::kilometerUnit()), "");

  UnitsProvider& german = launch("de_DE");
  EXPECT_EQ(german.descriptionOfCurrentUnits(),
            "Nautisch. Entfernung: Fuß. Höhe: Fuß. Geschwindigkeit: KNOTEN");
  // The translation puts the numbered arguments in another order.
  EXPECT_EQ(german.rulesDescriptionForUnit(*QMDistanceUnit::footUnit()), "Ab 2000 ft in Seemeilen");
}

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
  EXPECT_EQ(unitsChangedPosts(), 9);
  EXPECT_EQ(mapSettingsPosts(), 5);
  EXPECT_EQ(launch("en_US").distanceSmallToBigThresholdInMeters(), 0.0);
  provider_->setGeneralUnitType(5);
  EXPECT_EQ(provider_->defaultQMDistanceUnit(),
            (QMDistanceUnitType{true, DistanceUnitType::kMetric}))
      << "systems without a big unit of their own show kilometres";
}

TEST(UnitsProviderSharedInstance, IsMadeOnceFromSeveralThreadsOverTheStandardStore) {
  // The shared instance and the standard store are made once per process, and no other test
  // of this program uses them: their first use here reads a store file of this test's own from
  // the variable, which nothing reads after it.
  const std::filesystem::path folder =
      std::filesystem::path(::testing::TempDir()) / "provider-shared-instance";
  std::filesystem::remove_all(folder);
  setenv("QM_SETTINGS_PATH", (folder / "settings.sqlite").c_str(), 1);

  constexpr int kThreads = 4;
  std::vector<const UnitsProvider*> seen(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const UnitsProvider& provider = UnitsProvider::sharedInstance();
      seen[t] = &provider;
      EXPECT_NE(provider.distanceUnit(), nullptr);
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 1; t < kThreads; ++t) EXPECT_EQ(seen[t], seen[0]) << "thread " << t;
  EXPECT_TRUE(std::filesystem::exists(folder / "settings.sqlite"));
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace qm
