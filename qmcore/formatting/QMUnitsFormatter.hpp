// Unit labels, spoken unit names and pace texts for the codes of a unit system, and back.
//
// Codes are those of the provider's `generalUnitType`, `distanceUnitType` and
// `altitudeUnitType`: 0 metric, 1 imperial, 2 nautical and 3 imperial with yards as the small
// unit. As big-unit ("kilometric") codes they stand for km, mi, mi, nm; as small-unit codes for
// metres, feet and yards (2 is no small unit). A code an operation has no text for gives "".
//
//   QMUnitsFormatter::textForKilometricUnitType(2);              // "nm" (localized)
//   QMUnitsFormatter::speechTextForKilometricSpeedType(1);       // "miles per hour"
//   QMUnitsFormatter::textForPaceForSpeed(2.7785, 0);            // "05:59" (per kilometre)
//   QMUnitsFormatter::unitTypeForAltitudeString(" ft\n");        // 1
//
// Texts marked localized come from the library's string tables in the current locale, looked
// up at each call; what each code means comes from UnitSystems.hpp. Nothing throws.
// Thread-safe.

#ifndef QMCORE_FORMATTING_QMUNITSFORMATTER_HPP_
#define QMCORE_FORMATTING_QMUNITSFORMATTER_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/units/QMUnitTypes.hpp"

namespace qm {

class QMUnitsFormatter {
 public:
  // The localized km abbreviation for 0, "mi" for 1 and 3, the localized nautical mile
  // abbreviation for 2.
  static std::string textForKilometricUnitType(std::int64_t unitType);

  // Localized "kilometers" (0), "miles" (1, 3), "nautical miles" (2).
  static std::string longTextForPluralKilometricUnitType(std::int64_t unitType);
  // Localized "km/h" (0); "mph" (1, 3) and "kts" (2) as they are, never translated.
  static std::string textForKilometricSpeedType(std::int64_t unitType);
  // Localized "kilometers per hour" (0), "miles per hour" (1, 3), "knots" (2).
  static std::string speechTextForKilometricSpeedType(std::int64_t unitType);
  // Localized "min/km" (0), "min/mile" (1), "min/nm" (2); "" for 3 as for every other code.
  static std::string textForPaceUnitWithUnitType(std::int64_t unitType);
  // Localized "Meters" (0), "Feet" (1), "Yards" (3).
  static std::string longTextForUnitType(std::int64_t unitType);

  // Spoken names of a remaining distance ("meters to go"), localized: the small units
  // "Meters_to" (0), "Feet_to" (1), "Yards_to" (3); the big ones "Kilometers_to" (0),
  // "Miles_to" (1), "NauticalMiles_to" (2; 3 has none).
  static std::string longTextForDistanceLeftUnitType(std::int64_t unitType);
  static std::string longTextForKilometricDistanceLeftUnitType(std::int64_t unitType);
  // The big-unit name when `unit.isKilometric`, else the small-unit one.
  static std::string longTextForDistanceLeftWithUnit(const QMDistanceUnitType& unit);

  // "MPH" 1, "KMH" 0, "KTS" 2, exactly (case-sensitive); anything else, absent included, 0.
  static std::int64_t unitTypeForSpeedString(std::optional<std::string_view> text);
  // After trimming white space and line breaks at both ends: "ft" 1, "m" 0, "yd" 3; anything
  // else, absent included, 0.
  static std::int64_t unitTypeForAltitudeString(std::optional<std::string_view> text);

  // "%.2f" of the metres in the big unit of `unitType`, the separator and the unit's
  // abbreviation: "1.61 km". A code outside 0...2 converts to -1.0 ("-1.00mi" for 3).
  static std::string textForChargedDistance(double meters, std::int64_t unitType,
                                            std::string_view unitSeparator = "");

  // Seconds per kilometre, mile or nautical mile (`targetUnit` 0, 1, 2) at `metersPerSecond`;
  // 0.0 (no pace) below 0.01 m/s. Another code gives -3600.0.
  static double paceForSpeed(double metersPerSecond, std::int64_t targetUnit);
  // The pace as whole minutes and seconds, truncated: "05:59" for 359.9 s; "--:--" when there
  // is no pace.
  static std::string textForPaceForSpeed(double metersPerSecond, std::int64_t targetUnit);
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_QMUNITSFORMATTER_HPP_
