// The user's current units as one value, and the one function that derives it from the
// settings store.
//
// The unit system and the small distance and altitude units (a `UnitSystemChoice`) are restored
// from the store at launch and when the system changes; every unit and the length and area
// thresholds then follow from that choice, the stored choices of each kind (the keys of
// UnitsProviderKeys.hpp) and the unit catalogs. The distance threshold is an input instead: the
// units provider sets it from switch values and restores it at its own times (UnitsProvider.hpp),
// and a derivation keeps the previous one. The provider derives a new value after each change it
// stores instead of updating fields one by one:
//
//   const qm::UnitSystemChoice choice = qm::restoreUnitSystemChoice(*store, /*metric=*/true);
//   const qm::CurrentUnits units = qm::deriveCurrentUnits(*store, catalogs, choice, nullptr);
//   units.speedUnit->uuid();  // ".speed-kmh" when nothing is stored
//
// Pure: reads the store, changes nothing. Thread-safe as the store is.

#ifndef QMCORE_PROVIDER_CURRENTUNITS_HPP_
#define QMCORE_PROVIDER_CURRENTUNITS_HPP_

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"

namespace qm {

class SettingsStore;

// The built-in units of each kind, keyed by uuid, made once.
struct UnitCatalogs {
  template <typename Unit>
  using Catalog = std::map<std::string, std::shared_ptr<const Unit>, std::less<>>;

  // The distance foot and metre switch at `switches` by default.
  explicit UnitCatalogs(const DistanceSwitchValues& switches);

  Catalog<QMLengthUnit> length;
  Catalog<QMAreaUnit> area;
  Catalog<QMDistanceUnit> distance;
  Catalog<QMAltitudeUnit> altitude;
  Catalog<QMPressureUnit> pressure;
  Catalog<QMTemperatureUnit> temperature;
  Catalog<QMSpeedUnit> speed;
  Catalog<QMVerticalSpeedUnit> verticalSpeed;
};

struct UnitSystemChoice {
  // 0 metric, 1 imperial, 2 nautical (stored values are taken as they are).
  std::int64_t generalUnitType = 0;
  // The small distance and altitude units: 0 metres, 1 feet (texts also know 3, yards, which
  // a setter may choose for the session but the store never restores).
  std::int64_t distanceUnitType = 0;
  std::int64_t altitudeUnitType = 0;
};

// The choice the store gives: the stored system (imperial unless `firstLaunchIsMetric` when
// none is stored), and the small distance and altitude units of that system, the stored ones
// where the system allows a choice (stored values of 2 or more mean metres).
UnitSystemChoice restoreUnitSystemChoice(const SettingsStore& store, bool firstLaunchIsMetric);
// The parts of that rule: the stored system (else by `localeIsMetric`), and the small distance
// and altitude units of `generalUnitType`.
std::int64_t restoredGeneralUnitType(const SettingsStore& store, bool localeIsMetric);
std::int64_t restoredDistanceUnitType(const SettingsStore& store, std::int64_t generalUnitType);
std::int64_t restoredAltitudeUnitType(const SettingsStore& store, std::int64_t generalUnitType);

struct CurrentUnits {
  // The choice the units were derived for.
  std::int64_t generalUnitType = 0;
  std::int64_t distanceUnitType = 0;
  std::int64_t altitudeUnitType = 0;
  // Where texts switch to the bigger unit, in metres (square metres for areas); -1 never. The
  // distance threshold is not derived: see the top of this file.
  double distanceSmallToBigThreshold = -1.0;
  double lengthSmallToBigThreshold = -1.0;
  double areaSmallToBigThreshold = -1.0;

  std::shared_ptr<const QMLengthUnit> lengthUnit;
  std::shared_ptr<const QMAreaUnit> areaUnit;
  std::shared_ptr<const QMSpeedUnit> speedUnit;
  // The catalog unit with the user's stored scale applied.
  std::shared_ptr<const QMVerticalSpeedUnit> verticalSpeedUnit;
  // The distance metre or foot, and the altitude metre or foot.
  std::shared_ptr<const QMDistanceUnit> distanceUnit;
  std::shared_ptr<const QMAltitudeUnit> altitudeUnit;
  std::shared_ptr<const QMPressureUnit> pressureUnit;
  std::shared_ptr<const QMTemperatureUnit> temperatureUnit;
};

// The current units for `choice` and the store's choices of each kind. Absent choices take the
// defaults of the unit system. A stored identifier that is in no catalog falls back to the
// system's default, except for pressure and temperature, which keep `previous`'s unit when
// there is one. The distance threshold is `previous`'s, or -1 without one.
CurrentUnits deriveCurrentUnits(const SettingsStore& store, const UnitCatalogs& catalogs,
                                const UnitSystemChoice& choice, const CurrentUnits* previous);

// The switch value of `unit`: the stored one when there is one (whatever it is), else the
// unit's built-in value when it switches by default, else -1 (never).
std::int64_t automaticSwitchValueForUnit(const SettingsStore& store, const QMUnit& unit);

// The settings keys of a unit's switch value and of a vertical speed unit's scale.
std::string switchValueKey(std::string_view uuid);
std::string verticalSpeedScaleKey(std::string_view uuid);

// The stored scale of `unit` (truncated), else its default scale.
std::int64_t storedScaleForVerticalSpeedUnit(const SettingsStore& store,
                                             const QMVerticalSpeedUnit& unit);

}  // namespace qm

#endif  // QMCORE_PROVIDER_CURRENTUNITS_HPP_
