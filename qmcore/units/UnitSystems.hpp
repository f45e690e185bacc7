// The unit systems by their integer codes, 0 metric, 1 imperial, 2 nautical and, in texts,
// 3 imperial with yards as the small unit: everything that differs between them, one row each.
//
// The provider's `generalUnitType`, `distanceUnitType` and `altitudeUnitType` and the
// calculator's and formatters' unit-type arguments are these codes. Code that needs what a
// system means looks it up here instead of comparing codes:
//
//   const qm::UnitSystem* system = qm::unitSystem(1);
//   system->speedSpeechKey;  // "miles per hour"
//
// The conversion factors are literals, deliberately rounded (0.62137 miles and 0.5399568
// nautical miles per kilometre, 1.093 yards and 3.28084 feet per metre): values computed with
// them are compared with values computed the same way elsewhere, so they must not be
// "corrected" to the catalogs' exact factors. Each is written once, here or in QMUnit.hpp.

#ifndef QMCORE_UNITS_UNITSYSTEMS_HPP_
#define QMCORE_UNITS_UNITSYSTEMS_HPP_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace qm {

class QMAreaUnit;
class QMLengthUnit;
class QMPressureUnit;
class QMSpeedUnit;
class QMTemperatureUnit;
class QMVerticalSpeedUnit;

inline constexpr double kMilesPerKilometer = 0.62137;
inline constexpr double kNauticalMilesPerKilometer = 0.5399568;
inline constexpr double kYardsPerMeter = 1.093;

// The big ("kilometric") distance unit a system's texts name.
enum class BigDistanceUnit { kKilometer, kMile, kNauticalMile };

// The small distance unit a system's texts name; nautical mode has none of its own and uses
// the user's choice of metres or feet.
enum class SmallDistanceUnit { kMeter, kFoot, kChosen, kYard };

struct UnitSystem {
  std::int64_t code;
  // The string-table key of the system's name; empty for code 3.
  std::string_view nameKey;

  // Big unit: what texts call it, and how many of it make a kilometre. Code 3 has the
  // mile's texts but no conversion (calculations give their "unknown" results).
  BigDistanceUnit bigUnit;
  std::optional<double> bigUnitsPerKilometer;
  // Speeds in big units per hour: metres per second = speed x 1000 / this.
  std::optional<double> speedDivisor;
  std::string_view bigUnitPluralKey;        // "kilometers"
  std::string_view bigUnitDistanceLeftKey;  // "Kilometers_to"; empty when none
  std::string_view speedLabel;              // "km/h"
  bool speedLabelIsLocalized;               // only the metric label is translated
  std::string_view speedSpeechKey;          // "kilometers per hour"
  std::string_view paceUnitKey;             // "min/km"; empty when none

  // Small unit: what texts call it, and how distances and altitudes convert into it.
  SmallDistanceUnit smallUnit;
  std::string_view smallUnitLongKey;          // "Meters"; empty when none
  std::string_view smallUnitDistanceLeftKey;  // "Meters_to"; empty when none
  // Small distance units (metres, feet) per metre; metres for the other codes.
  double smallUnitsPerMeter;
  // Whether the code is a small distance unit type at all (0 metres, 1 feet).
  bool isSmallDistanceUnitType;
  // Altitude units per metre; absent: feet when the altitude type is not metres, else metres.
  std::optional<double> altitudeUnitsPerMeter;
};

// The row of `code`, or null for a code outside 0...3.
const UnitSystem* unitSystem(std::int64_t code);

// The units a system starts with, for every code: codes outside 0...3 have defaults too. The
// catalogs' `defaultForDistanceUnitType` factories answer from here.
struct UnitSystemDefaults {
  std::shared_ptr<const QMSpeedUnit> (*speed)();
  std::shared_ptr<const QMVerticalSpeedUnit> (*verticalSpeed)();
  std::shared_ptr<const QMPressureUnit> (*pressure)();
  std::shared_ptr<const QMTemperatureUnit> (*temperature)();
  std::shared_ptr<const QMLengthUnit> (*length)();
  std::shared_ptr<const QMAreaUnit> (*area)();
  // The small distance and altitude unit: metres, feet, or (kChosen) the nautical preference.
  SmallDistanceUnit smallUnit;
};
const UnitSystemDefaults& unitSystemDefaults(std::int64_t code);

inline constexpr std::int64_t kNauticalUnitSystem = 2;
// Whether `code` is the nautical system.
constexpr bool isNauticalSystem(std::int64_t code) { return code == kNauticalUnitSystem; }

// The localized abbreviation of a big unit: "km" and "nm" from the string tables, "mi" as it
// is (the mile keeps its English abbreviation).
std::string localizedAbbreviation(BigDistanceUnit unit);

}  // namespace qm

#endif  // QMCORE_UNITS_UNITSYSTEMS_HPP_
