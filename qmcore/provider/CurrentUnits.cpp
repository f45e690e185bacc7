#include "qmcore/provider/CurrentUnits.hpp"

#include <cmath>

#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/UnitsProviderKeys.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

template <typename Unit>
void addAll(UnitCatalogs::Catalog<Unit>& catalog,
            const std::vector<std::shared_ptr<const Unit>>& units) {
  for (const auto& unit : units) catalog.emplace(std::string(unit->uuid()), unit);
}

// The catalog unit whose uuid is stored under `key`. A stored uuid that is in no catalog
// keeps `kept` when it is given; with nothing stored, or nothing kept, the catalog's `fallback`.
template <typename Unit>
std::shared_ptr<const Unit> chosenUnit(const SettingsStore& store, std::string_view key,
                                       const UnitCatalogs::Catalog<Unit>& catalog,
                                       const std::shared_ptr<const Unit>& fallback,
                                       const std::shared_ptr<const Unit>* kept = nullptr) {
  if (const auto uuid = store.stringForKey(key)) {
    if (const auto it = catalog.find(*uuid); it != catalog.end()) return it->second;
    if (kept != nullptr && *kept) return *kept;
  }
  return catalog.at(std::string(fallback->uuid()));
}

// Stored small-unit types of 2 or more are not small units: they mean metres.
std::int64_t smallUnitType(std::int64_t stored) { return stored >= 2 ? 0 : stored; }

// The first of `keys` that is stored, as a small-unit type.
std::optional<std::int64_t> storedSmallUnitType(const SettingsStore& store,
                                                std::initializer_list<std::string_view> keys) {
  for (const std::string_view key : keys) {
    if (store.hasKey(key)) return smallUnitType(store.integerForKey(key));
  }
  return std::nullopt;
}

double thresholdInMeters(const SettingsStore& store, const QMUnit& unit) {
  if (!unit.canSwitchToUnit()) return -1.0;
  const std::int64_t value = automaticSwitchValueForUnit(store, unit);
  return value > QMUnitShouldNotSwitchAutomatically ? unit.ratioToMeter() * value : -1.0;
}

}  // namespace

UnitCatalogs::UnitCatalogs(const DistanceSwitchValues& switches) {
  addAll(length, QMLengthUnit::builtinUnits());
  addAll(area, QMAreaUnit::builtinUnits());
  addAll(speed, QMSpeedUnit::builtinUnits());
  addAll(verticalSpeed, QMVerticalSpeedUnit::builtinUnits());
  addAll(distance, QMDistanceUnit::builtinUnits(switches));
  addAll(altitude, QMAltitudeUnit::builtinUnits());
  addAll(pressure, QMPressureUnit::builtinUnits());
  addAll(temperature, QMTemperatureUnit::builtinUnits());
}

std::string switchValueKey(std::string_view uuid) {
  return "QMUnitSwitch_" + std::string(uuid) + "_Value";
}

std::string verticalSpeedScaleKey(std::string_view uuid) { return std::string(uuid) + "_scale"; }

std::int64_t automaticSwitchValueForUnit(const SettingsStore& store, const QMUnit& unit) {
  const std::string key = switchValueKey(unit.uuid());
  if (store.hasKey(key)) return store.integerForKey(key);
  return unit.switchToBiggerUnitByDefault() ? unit.unitSwitchesAtValue()
                                            : QMUnitShouldNotSwitchAutomatically;
}

std::int64_t storedScaleForVerticalSpeedUnit(const SettingsStore& store,
                                             const QMVerticalSpeedUnit& unit) {
  const std::string key = verticalSpeedScaleKey(unit.uuid());
  const double stored = store.doubleForKey(key);
  // A value that is no scale at all (NaN, huge) counts as none stored.
  if (!store.hasKey(key) || !(std::fabs(stored) < 1e9)) return unit.defaultScale();
  return static_cast<std::int64_t>(stored);
}

std::int64_t restoredDistanceUnitType(const SettingsStore& store, std::int64_t generalUnitType) {
  if (!isNauticalSystem(generalUnitType)) return generalUnitType;
  // Nautical mode has no small unit of its own: metres or feet as chosen (the legacy key
  // first), else the nautical default, feet.
  return storedSmallUnitType(store, {QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName,
                                     QMNauticalDistanceUnitPrefKeyName})
      .value_or(static_cast<std::int64_t>(
          QMDistanceUnit::defaultForUnitType(generalUnitType, generalUnitType)->unitType()));
}

std::int64_t restoredGeneralUnitType(const SettingsStore& store, bool localeIsMetric) {
  // The stored system is taken as it is, even outside 0...2.
  if (store.hasKey(QMGeneralUnitPrefKeyName)) return store.integerForKey(QMGeneralUnitPrefKeyName);
  return localeIsMetric ? 0 : 1;
}

std::int64_t restoredAltitudeUnitType(const SettingsStore& store, std::int64_t generalUnitType) {
  // The legacy key counts in nautical mode only.
  const auto stored =
      isNauticalSystem(generalUnitType)
          ? storedSmallUnitType(
                store, {QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName, QMAltitudeUnitPrefKeyName})
          : storedSmallUnitType(store, {QMAltitudeUnitPrefKeyName});
  return stored.value_or(static_cast<std::int64_t>(
      QMAltitudeUnit::defaultForUnitType(generalUnitType, generalUnitType)->unitType()));
}

UnitSystemChoice restoreUnitSystemChoice(const SettingsStore& store, bool firstLaunchIsMetric) {
  const std::int64_t system = restoredGeneralUnitType(store, firstLaunchIsMetric);
  return {.generalUnitType = system,
          .distanceUnitType = restoredDistanceUnitType(store, system),
          .altitudeUnitType = restoredAltitudeUnitType(store, system)};
}

CurrentUnits deriveCurrentUnits(const SettingsStore& store, const UnitCatalogs& catalogs,
                                const UnitSystemChoice& choice, const CurrentUnits* previous) {
  CurrentUnits units;
  units.generalUnitType = choice.generalUnitType;
  units.distanceUnitType = choice.distanceUnitType;
  units.altitudeUnitType = choice.altitudeUnitType;
  const std::int64_t system = choice.generalUnitType;

  units.lengthUnit = chosenUnit(store, QMCurrentLengthUnitUuidPrefKeyName, catalogs.length,
                                QMLengthUnit::defaultForDistanceUnitType(system));
  units.lengthSmallToBigThreshold = thresholdInMeters(store, *units.lengthUnit);
  units.areaUnit = chosenUnit(store, QMCurrentAreaUnitUuidPrefKeyName, catalogs.area,
                              QMAreaUnit::defaultForDistanceUnitType(system));
  units.areaSmallToBigThreshold = thresholdInMeters(store, *units.areaUnit);

  // The speed unit always follows the system: there is no stored speed choice.
  units.speedUnit =
      catalogs.speed.at(std::string(QMSpeedUnit::defaultForDistanceUnitType(system)->uuid()));
  units.distanceUnit = catalogs.distance.at(
      std::string(units.distanceUnitType != 0 ? QMFootDistanceUnitUuid : QMMeterDistanceUnitUuid));
  units.altitudeUnit = catalogs.altitude.at(
      std::string(units.altitudeUnitType != 0 ? QMFootAltitudeUnitUuid : QMMeterAltitudeUnitUuid));
  if (previous != nullptr)
    units.distanceSmallToBigThreshold = previous->distanceSmallToBigThreshold;

  const auto verticalSpeed =
      chosenUnit(store, QMCurrentVerticalSpeedUnitUuidPrefKeyName, catalogs.verticalSpeed,
                 QMVerticalSpeedUnit::defaultForDistanceUnitType(system));
  units.verticalSpeedUnit = verticalSpeed->withScale(
      static_cast<int>(storedScaleForVerticalSpeedUnit(store, *verticalSpeed)));

  // A stale stored pressure or temperature keeps the unit shown so far.
  units.pressureUnit = chosenUnit(store, QMPressureUnitPrefKeyName, catalogs.pressure,
                                  QMPressureUnit::defaultForDistanceUnitType(system),
                                  previous ? &previous->pressureUnit : nullptr);
  units.temperatureUnit = chosenUnit(store, QMTemperatureUnitPrefKeyName, catalogs.temperature,
                                     QMTemperatureUnit::defaultForDistanceUnitType(system),
                                     previous ? &previous->temperatureUnit : nullptr);
  return units;
}

}  // namespace qm
