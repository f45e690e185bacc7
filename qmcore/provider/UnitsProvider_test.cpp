#include "qmcore/provider/UnitsProvider.hpp"

#include <gtest/gtest.h>

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

struct CurrentUnits {
  std::int64_t system;
  std::string_view distance, altitude, speed, verticalSpeed, pressure, temperature, length, area;
};

void expectUnits(const UnitsProvider& p, const CurrentUnits& e, const std::string& context) {
  EXPECT_EQ(p.generalUnitType(), e.system) << context;
  EXPECT_EQ(p.distanceUnit()->uuid(), e.distance) << context;
  EXPECT_EQ(p.altitudeUnit()->uuid(), e.altitude) << context;
  EXPECT_EQ(p.speedUnit()->uuid(), e.speed) << context;
  EXPECT_EQ(p.verticalSpeedUnit()->uuid(), e.verticalSpeed) << context;
  EXPECT_EQ(p.pressureUnit()->uuid(), e.pressure) << context;
  EXPECT_EQ(p.temperatureUnit()->uuid(), e.temperature) << context;
  EXPECT_EQ(p.lengthUnit()->uuid(), e.length) << context;
  EXPECT_EQ(p.areaUnit()->uuid(), e.area) << context;
}

constexpr CurrentUnits kMetric{0,
                               ".distance-meter",
                               ".altitude-meter",
                               ".speed-kmh",
                               ".vspeed-m/s",
                               ".pressure-hpa",
                               ".temperature-c",
                               ".length-meter",
                               ".area-squaremeter"};
constexpr CurrentUnits kImperial{1,
                                 ".distance-foot",
                                 ".altitude-foot",
                                 ".speed-mph",
                                 ".vspeed-ft/min",
                                 ".pressure-inHg",
                                 ".temperature-f",
                                 ".length-foot",
                                 ".area-squarefoot"};
constexpr CurrentUnits kNautical{2,
                                 ".distance-foot",
                                 ".altitude-foot",
                                 ".speed-knot",
                                 ".vspeed-ft/min",
                                 ".pressure-inHg",
                                 ".temperature-c",
                                 ".length-foot",
                                 ".area-squarefoot"};

TEST_F(UnitsProviderTest, FirstLaunchFollowsTheLocalesMeasurementSystem) {
  const struct {
    const char* locale;
    CurrentUnits expected;
  } cases[] = {{"de_DE", kMetric}, {"fr_FR", kMetric}, {"en_US", kImperial}, {"en_GB", kImperial}};
  for (const auto& c : cases) {
    expectUnits(launch(c.locale), c.expected, c.locale);
    EXPECT_FALSE(store_->hasKey(QMGeneralUnitPrefKeyName)) << "nothing is stored at first launch";
  }
}

TEST_F(UnitsProviderTest, SwitchingToNauticalWithNothingStored) {
  UnitsProvider& p = launch("de_DE");
  p.setGeneralUnitType(2);
  expectUnits(p, kNautical, "nautical");
  EXPECT_EQ(unitsChangedPosts(), 1);
  EXPECT_EQ(store_->integerForKey(QMGeneralUnitPrefKeyName), 2);
  EXPECT_EQ(delegate_->switchedTo, std::vector<DistanceUnitType>{DistanceUnitType::kNautical});
  expectUnits(launch("de_DE"), kNautical, "after a new launch");
}

TEST_F(UnitsProviderTest, LegacyKeyOverridesNauticalChoicesUntilTheDistanceTypeIsSetAgain) {
  store_->setInteger(QMGeneralUnitPrefKeyName, 2);
  store_->setInteger(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName, 0);
  store_->setInteger(QMNauticalDistanceUnitPrefKeyName, 1);
  store_->setInteger(QMAltitudeUnitPrefKeyName, 1);
  UnitsProvider& p = launch();
  EXPECT_EQ(p.distanceUnit()->uuid(), ".distance-meter");
  EXPECT_EQ(p.altitudeUnit()->uuid(), ".altitude-meter");

  p.setNauticalDistanceUnitType(1);
  EXPECT_FALSE(store_->hasKey(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName));
  EXPECT_EQ(p.distanceUnit()->uuid(), ".distance-foot");
  EXPECT_EQ(unitsChangedPosts(), 1);
  // The altitude type is only re-read on the next launch, from its own key.
  EXPECT_EQ(launch().altitudeUnit()->uuid(), ".altitude-foot");
}

TEST_F(UnitsProviderTest, StoredSmallUnitTypesOfTwoOrMoreMeanMetres) {
  store_->setInteger(QMGeneralUnitPrefKeyName, 2);
  store_->setInteger(QMNauticalDistanceUnitPrefKeyName, 7);
  store_->setInteger(QMAltitudeUnitPrefKeyName, 2);
  const UnitsProvider& p = launch();
  EXPECT_EQ(p.distanceUnitType(), 0);
  EXPECT_EQ(p.altitudeUnitType(), 0);
}

TEST_F(UnitsProviderTest, SettersNotifyOnlyOnChangeAndWithTheRightNotification) {
  UnitsProvider& p = launch("de_DE");
  const auto lengthFoot = p.lengthUnitWithUuid(QMFootUnitUuid);
  const auto acre = p.areaUnitWithUuid(QMAcreUnitUuid);
  const struct {
    const char* action;
    std::function<void()> run;
    int unitsChanged;
    int mapSettings;
  } cases[] = {
      {"same system", [&] { p.setGeneralUnitType(0); }, 0, 0},
      {"same altitude type", [&] { p.setAltitudeUnitType(0); }, 0, 0},
      {"same pressure", [&] { p.setPressureUnit(*QMPressureUnit::hpaUnit()); }, 0, 0},
      {"same temperature", [&] { p.setTemperatureUnit(*QMTemperatureUnit::celsiusUnit()); }, 0, 0},
      {"same vertical speed",
       [&] { p.setVerticalSpeedUnit(*QMVerticalSpeedUnit::metersPerSecondUnit()); }, 0, 0},
      {"same length unit", [&] { p.setCurrentLengthUnit(QMLengthUnit::meterUnit()); }, 0, 0},
      {"nautical type outside nautical mode", [&] { p.setNauticalDistanceUnitType(1); }, 0, 0},
      {"altitude in feet", [&] { p.setAltitudeUnitType(1); }, 1, 0},
      {"pressure in inHg", [&] { p.setPressureUnit(*QMPressureUnit::inHgUnit()); }, 1, 0},
      {"Fahrenheit", [&] { p.setTemperatureUnit(*QMTemperatureUnit::farenheitUnit()); }, 1, 0},
      {"m/min", [&] { p.setVerticalSpeedUnit(*QMVerticalSpeedUnit::metersPerMinuteUnit()); }, 1, 0},
      {"length foot", [&] { p.setCurrentLengthUnit(lengthFoot); }, 0, 1},
      {"length foot again", [&] { p.setCurrentLengthUnit(lengthFoot); }, 0, 0},
      {"acre", [&] { p.setCurrentAreaUnit(acre); }, 0, 1},
      {"area back to default", [&] { p.setCurrentAreaUnit(nullptr); }, 0, 1},
      {"scale of another unit",
       [&] { p.setVerticalSpeedScale(2, *QMVerticalSpeedUnit::feetPerMinuteUnit()); }, 0, 0},
      {"scale of the current unit",
       [&] { p.setVerticalSpeedScale(3, *QMVerticalSpeedUnit::metersPerMinuteUnit()); }, 1, 0},
      {"imperial", [&] { p.setGeneralUnitType(1); }, 1, 0},
  };
  for (const auto& c : cases) {
    const int unitsBefore = unitsChangedPosts();
    const int mapBefore = mapSettingsPosts();
    c.run();
    EXPECT_EQ(unitsChangedPosts() - unitsBefore, c.unitsChanged) << c.action;
    EXPECT_EQ(mapSettingsPosts() - mapBefore, c.mapSettings) << c.action;
  }
  // Everything above persisted: a new launch sees it.
  const UnitsProvider& again = launch("de_DE");
  EXPECT_EQ(again.generalUnitType(), 1);
  EXPECT_EQ(again.altitudeUnit()->uuid(), ".altitude-foot");
  EXPECT_EQ(again.pressureUnit()->uuid(), ".pressure-inHg");
  EXPECT_EQ(again.temperatureUnit()->uuid(), ".temperature-f");
  EXPECT_EQ(again.verticalSpeedUnit()->uuid(), ".vspeed-m/min");
  EXPECT_EQ(again.verticalSpeedUnit()->scale(), 3);
  EXPECT_EQ(again.lengthUnit()->uuid(), ".length-foot");
  EXPECT_EQ(again.areaUnit()->uuid(), ".area-squarefoot");  // imperial default
  EXPECT_FALSE(store_->hasKey(QMCurrentAreaUnitUuidPrefKeyName));
}

TEST_F(UnitsProviderTest, SystemChangeAsksTheEnvironmentToSyncOnlyWhenSupported) {
  UnitsProvider& p = launch("de_DE");
  p.setGeneralUnitType(1);
  EXPECT_EQ(delegate_->syncCalls, 0);
  delegate_->syncSupported = true;
  p.setGeneralUnitType(2);
  p.setPressureUnit(*QMPressureUnit::hpaUnit());  // no sync step for unit choices
  EXPECT_EQ(delegate_->syncCalls, 1);
  delegate_.reset();  // a released delegate: no calls, no errors
  p.setGeneralUnitType(0);
  EXPECT_EQ(p.generalUnitType(), 0);
}

TEST_F(UnitsProviderTest, SyncStepFollowsSystemAndSmallUnitChangesOnly) {
  UnitsProvider& p = launch("de_DE");
  delegate_->syncSupported = true;
  const struct {
    const char* action;
    std::function<void()> run;
    int syncCalls;
  } cases[] = {
      {"nautical system", [&] { p.setGeneralUnitType(2); }, 1},
      {"nautical distance in metres", [&] { p.setNauticalDistanceUnitType(0); }, 1},
      {"nautical distance in metres again", [&] { p.setNauticalDistanceUnitType(0); }, 0},
      {"altitude in metres", [&] { p.setAltitudeUnitType(0); }, 1},
      {"altitude in metres again", [&] { p.setAltitudeUnitType(0); }, 0},
      {"temperature", [&] { p.setTemperatureUnit(*QMTemperatureUnit::farenheitUnit()); }, 0},
      {"switch value", [&] { p.setAutomaticSwitchValue(10, *QMDistanceUnit::meterUnit()); }, 0},
  };
  for (const auto& c : cases) {
    const int before = delegate_->syncCalls;
    c.run();
    EXPECT_EQ(delegate_->syncCalls - before, c.syncCalls) << c.action;
  }
  EXPECT_EQ(p.distanceUnit()->uuid(), ".distance-meter");
  EXPECT_EQ(p.altitudeUnit()->uuid(), ".altitude-meter");
}

TEST_F(UnitsProviderTest, StaleStoredIdentifiersFallBack) {
  store_->setString(QMTemperatureUnitPrefKeyName, ".temperature-kelvin");
  store_->setString(QMPressureUnitPrefKeyName, ".pressure-psi");
  store_->setString(QMCurrentLengthUnitUuidPrefKeyName, ".length-parsec");
  store_->setString(QMCurrentVerticalSpeedUnitUuidPrefKeyName, "nonsense");
  UnitsProvider& p = launch("en_US");
  EXPECT_EQ(p.temperatureUnit()->uuid(), ".temperature-f");
  EXPECT_EQ(p.pressureUnit()->uuid(), ".pressure-inHg");
  EXPECT_EQ(p.lengthUnit()->uuid(), ".length-foot");
  EXPECT_EQ(p.verticalSpeedUnit()->uuid(), ".vspeed-ft/min");

  p.setTemperatureUnit(*QMTemperatureUnit::celsiusUnit());
  store_->setString(QMTemperatureUnitPrefKeyName, ".temperature-kelvin");
  p.establishCurrentUnits();  // a stale identifier keeps the current unit
  EXPECT_EQ(p.temperatureUnit()->uuid(), ".temperature-c");
}

TEST_F(UnitsProviderTest, LookupsAndSortedCatalogs) {
  const UnitsProvider& p = launch();
  const auto uuids = [](const auto& units) {
    std::vector<std::string_view> result;
    for (const auto& unit : units) result.push_back(unit->uuid());
    return result;
  };
  EXPECT_EQ(
      uuids(p.allDistanceUnits()),
      (std::vector<std::string_view>{".distance-nauticalmile", ".distance-mile",
                                     ".distance-kilometer", ".distance-meter", ".distance-foot"}));
  const auto lengths = uuids(p.allLengthUnits());
  ASSERT_EQ(lengths.size(), 9u);
  EXPECT_EQ(lengths.front(), ".length-inch");
  EXPECT_EQ(lengths.back(), ".length-nauticalmile");
  EXPECT_EQ(uuids(p.allAreaUnits()).size(), 10u);
  EXPECT_EQ(uuids(p.allSpeedUnits()),
            (std::vector<std::string_view>{".speed-kmh", ".speed-mph", ".speed-knot"}));
  EXPECT_EQ(uuids(p.allVerticalSpeedUnits()),
            (std::vector<std::string_view>{".vspeed-ft/min", ".vspeed-m/min", ".vspeed-m/s"}));
  EXPECT_EQ(uuids(p.allAltitudeUnits()),
            (std::vector<std::string_view>{".altitude-meter", ".altitude-foot"}));
  EXPECT_EQ(uuids(p.allTemperatureUnits()),
            (std::vector<std::string_view>{".temperature-c", ".temperature-f"}));

  EXPECT_EQ(p.lengthUnitWithUuid(std::string(".length-yard"))->name(), "Yard");
  EXPECT_EQ(p.speedUnitWithUuid(".speed-warp"), nullptr);
  EXPECT_EQ(p.distanceUnitWithUuid(".length-yard"), nullptr);
  // These three fall back to the current unit instead of null.
  EXPECT_EQ(p.pressureUnitWithUuid("?"), p.pressureUnit());
  EXPECT_EQ(p.temperatureUnitWithUuid("?"), p.temperatureUnit());
  EXPECT_EQ(p.altitudeUnitWithUuid("?"), p.altitudeUnit());
}

TEST_F(UnitsProviderTest, DistanceUnitChoiceFollowsTheThreshold) {
  environment_.setDelegate(std::shared_ptr<EnvironmentSettingsDelegate>());
  UnitsProvider& p = launch("de_DE");
  ASSERT_EQ(p.distanceSmallToBigThresholdInMeters(), 1000.0);
  const auto small = p.defaultUnitTypeForDistance(999.9);
  EXPECT_FALSE(small.isKilometric);
  EXPECT_EQ(small.unitType, DistanceUnitType::kMetric);
  EXPECT_EQ(p.defaultUnitTypeForDistance(1000.0),
            (QMDistanceUnitType{true, DistanceUnitType::kMetric}));

  p.setGeneralUnitType(1);
  EXPECT_EQ(p.defaultUnitTypeForDistance(10.0),
            (QMDistanceUnitType{false, DistanceUnitType::kImperial}));
  EXPECT_EQ(p.defaultUnitTypeForDistance(1e6),
            (QMDistanceUnitType{true, DistanceUnitType::kImperial}));
  p.setGeneralUnitType(5);  // unknown systems are kept but give the metric big unit
  EXPECT_EQ(p.defaultQMDistanceUnit(), (QMDistanceUnitType{true, DistanceUnitType::kMetric}));
}

TEST_F(UnitsProviderTest, DescriptionsInEnglishAndGerman) {
  UnitsProvider& p = launch("en_US");
  EXPECT_EQ(p.descriptionOfCurrentUnits(), "Imperial. Distance: Feet. Altitude: Feet. Speed: MPH");
  EXPECT_EQ(p.descriptionOfUnitsSystem(0), "Distance: Meters and Kilometers. Speed: KM/H");
  EXPECT_EQ(p.descriptionOfUnitsSystem(2),
            "Distance: Meters or Feet and Nautical miles. Speed: KNOTS");
  EXPECT_EQ(p.restrictedDistanceUnitSelectionMessage(),
            "For Imperial and Metric distance units are deduced from applied General units.");
  delegate_->drivenBySpeed = true;
  EXPECT_EQ(p.descriptionOfCurrentUnits(), "MPH. Distance: Feet. Altitude: Feet.");
  EXPECT_EQ(p.principalUnitLocalizedName(), "speed");
  EXPECT_EQ(UnitsProvider::allUnitSystems(),
            (std::vector<std::string>{"Metric", "Imperial", "Nautical"}));

  delegate_->drivenBySpeed = false;
  UnitsProvider& german = launch("de_DE");
  EXPECT_EQ(german.descriptionOfCurrentUnits(),
            "Metrisch. Entfernung: Meter. Höhe: Meter. Geschwindigkeit: KM/H");
  EXPECT_EQ(german.rulesDescriptionForUnit(*QMLengthUnit::footUnit()), "Immer in Fuß");
  // The translation puts the numbered arguments in another order.
  EXPECT_EQ(german.rulesDescriptionForUnit(*QMDistanceUnit::footUnit()), "Ab 2000 ft in Meilen");
}

TEST(UnitsProviderSharedInstance, IsMadeOnceFromSeveralThreadsOverTheStandardStore) {
  // The shared instance and the standard store are made once per process, and no other test
  // of this program uses them: their first use here gets a store file of this test's own.
  const std::filesystem::path folder =
      std::filesystem::path(::testing::TempDir()) / "provider-shared-instance";
  std::filesystem::remove_all(folder);
  const std::string path = (folder / "settings.sqlite").string();
  const char* saved = std::getenv("QM_SETTINGS_PATH");
  const std::optional<std::string> savedPath =
      saved != nullptr ? std::optional<std::string>(saved) : std::nullopt;
  setenv("QM_SETTINGS_PATH", path.c_str(), 1);

  constexpr int kThreads = 4;
  std::vector<const UnitsProvider*> seen(kThreads);
  std::vector<std::string> distanceUnits(kThreads);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      const UnitsProvider& provider = UnitsProvider::sharedInstance();
      seen[t] = &provider;
      distanceUnits[t] = std::string(provider.distanceUnit()->uuid());
    });
  }
  for (std::thread& thread : threads) thread.join();
  if (savedPath) {
    setenv("QM_SETTINGS_PATH", savedPath->c_str(), 1);
  } else {
    unsetenv("QM_SETTINGS_PATH");
  }

  for (int t = 1; t < kThreads; ++t) {
    EXPECT_EQ(seen[t], seen[0]) << "thread " << t;
    EXPECT_EQ(distanceUnits[t], distanceUnits[0]) << "thread " << t;
  }
  EXPECT_EQ(SettingsStore::standard(), SettingsStore::openFile(path));
  std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace qm
