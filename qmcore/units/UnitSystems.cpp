#include "qmcore/units/UnitSystems.hpp"

#include <array>

#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMUnit.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"

namespace qm {
namespace {

constexpr std::array<UnitSystem, 4> kUnitSystems = {{
    {.code = 0,
     .nameKey = "Metric",
     .bigUnit = BigDistanceUnit::kKilometer,
     .bigUnitsPerKilometer = 1.0,
     .speedDivisor = 3600.0,
     .bigUnitPluralKey = "kilometers",
     .bigUnitDistanceLeftKey = "Kilometers_to",
     .speedLabel = "km/h",
     .speedLabelIsLocalized = true,
     .speedSpeechKey = "kilometers per hour",
     .paceUnitKey = "min/km",
     .smallUnit = SmallDistanceUnit::kMeter,
     .smallUnitLongKey = "Meters",
     .smallUnitDistanceLeftKey = "Meters_to",
     .smallUnitsPerMeter = 1.0,
     .isSmallDistanceUnitType = true,
     .altitudeUnitsPerMeter = 1.0},
    {.code = 1,
     .nameKey = "Imperial",
     .bigUnit = BigDistanceUnit::kMile,
     .bigUnitsPerKilometer = kMilesPerKilometer,
     .speedDivisor = 2236.932,
     .bigUnitPluralKey = "miles",
     .bigUnitDistanceLeftKey = "Miles_to",
     .speedLabel = "mph",
     .speedLabelIsLocalized = false,
     .speedSpeechKey = "miles per hour",
     .paceUnitKey = "min/mile",
     .smallUnit = SmallDistanceUnit::kFoot,
     .smallUnitLongKey = "Feet",
     .smallUnitDistanceLeftKey = "Feet_to",
     .smallUnitsPerMeter = kFeetPerMeter,
     .isSmallDistanceUnitType = true,
     .altitudeUnitsPerMeter = kFeetPerMeter},
    {.code = 2,
     .nameKey = "Nautical",
     .bigUnit = BigDistanceUnit::kNauticalMile,
     .bigUnitsPerKilometer = kNauticalMilesPerKilometer,
     .speedDivisor = 1943.84448,
     .bigUnitPluralKey = "nautical miles",
     .bigUnitDistanceLeftKey = "NauticalMiles_to",
     .speedLabel = "kts",
     .speedLabelIsLocalized = false,
     .speedSpeechKey = "knots",
     .paceUnitKey = "min/nm",
     .smallUnit = SmallDistanceUnit::kChosen,
     .smallUnitLongKey = "",
     .smallUnitDistanceLeftKey = "",
     .smallUnitsPerMeter = 1.0,
     .isSmallDistanceUnitType = false,
     .altitudeUnitsPerMeter = std::nullopt},
    {.code = 3,
     .nameKey = "",
     .bigUnit = BigDistanceUnit::kMile,
     .bigUnitsPerKilometer = std::nullopt,
     .speedDivisor = std::nullopt,
     .bigUnitPluralKey = "miles",
     .bigUnitDistanceLeftKey = "",
     .speedLabel = "mph",
     .speedLabelIsLocalized = false,
     .speedSpeechKey = "miles per hour",
     .paceUnitKey = "",
     .smallUnit = SmallDistanceUnit::kYard,
     .smallUnitLongKey = "Yards",
     .smallUnitDistanceLeftKey = "Yards_to",
     .smallUnitsPerMeter = 1.0,
     .isSmallDistanceUnitType = false,
     .altitudeUnitsPerMeter = kYardsPerMeter},
}};

// Indexed by code; the last row is every other code's.
const std::array<UnitSystemDefaults, 5> kDefaults = {{
    {&QMSpeedUnit::kmhUnit, &QMVerticalSpeedUnit::metersPerSecondUnit, &QMPressureUnit::hpaUnit,
     &QMTemperatureUnit::celsiusUnit, &QMLengthUnit::meterUnit, &QMAreaUnit::squareMeterUnit,
     SmallDistanceUnit::kMeter},
    {&QMSpeedUnit::mphUnit, &QMVerticalSpeedUnit::feetPerMinuteUnit, &QMPressureUnit::inHgUnit,
     &QMTemperatureUnit::farenheitUnit, &QMLengthUnit::footUnit, &QMAreaUnit::squareFootUnit,
     SmallDistanceUnit::kFoot},
    {&QMSpeedUnit::knotUnit, &QMVerticalSpeedUnit::feetPerMinuteUnit, &QMPressureUnit::inHgUnit,
     &QMTemperatureUnit::celsiusUnit, &QMLengthUnit::footUnit, &QMAreaUnit::squareFootUnit,
     SmallDistanceUnit::kChosen},
    {&QMSpeedUnit::mphUnit, &QMVerticalSpeedUnit::feetPerMinuteUnit, &QMPressureUnit::hpaUnit,
     &QMTemperatureUnit::celsiusUnit, &QMLengthUnit::footUnit, &QMAreaUnit::squareFootUnit,
     SmallDistanceUnit::kMeter},
    {&QMSpeedUnit::mphUnit, &QMVerticalSpeedUnit::feetPerMinuteUnit, &QMPressureUnit::hpaUnit,
     &QMTemperatureUnit::celsiusUnit, &QMLengthUnit::footUnit, &QMAreaUnit::squareFootUnit,
     SmallDistanceUnit::kMeter},
}};

}  // namespace

const UnitSystemDefaults& unitSystemDefaults(std::int64_t code) {
  const bool known = code >= 0 && code < static_cast<std::int64_t>(kUnitSystems.size());
  return kDefaults[known ? static_cast<size_t>(code) : kDefaults.size() - 1];
}

const UnitSystem* unitSystem(std::int64_t code) {
  if (code < 0 || code >= static_cast<std::int64_t>(kUnitSystems.size())) return nullptr;
  return &kUnitSystems[static_cast<size_t>(code)];
}

std::string localizedAbbreviation(BigDistanceUnit unit) {
  switch (unit) {
    case BigDistanceUnit::kKilometer:
      return CoreStrings::CLSTRING("km");
    case BigDistanceUnit::kMile:
      return "mi";
    case BigDistanceUnit::kNauticalMile:
      return CoreStrings::CLSTRING("nm");
  }
  return "";
}

}  // namespace qm
