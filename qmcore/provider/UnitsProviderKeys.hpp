// The names the units provider shares with the rest of the app: its settings keys, the names
// of the unit systems and the notifications it posts.

#ifndef QMCORE_PROVIDER_UNITSPROVIDERKEYS_HPP_
#define QMCORE_PROVIDER_UNITSPROVIDERKEYS_HPP_

#include <string_view>

namespace qm {

// Settings keys.
inline constexpr std::string_view QMGeneralUnitPrefKeyName = "DistanceUnitType";
inline constexpr std::string_view QMNauticalDistanceUnitPrefKeyName = "QMNauticalDistanceUnitType";
inline constexpr std::string_view QMAltitudeUnitPrefKeyName = "QMAltitudeUnitType";
// Legacy: overrides the nautical distance and altitude choices until the nautical distance
// type is set again.
inline constexpr std::string_view QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName =
    "knotsAltUnitType";
inline constexpr std::string_view QMPressureUnitPrefKeyName = "QMPressureUnitType";
inline constexpr std::string_view QMTemperatureUnitPrefKeyName = "QMTemperatureUnitType";
inline constexpr std::string_view QMCurrentLengthUnitUuidPrefKeyName = "QMCurrentLengthUnitUuid";
inline constexpr std::string_view QMCurrentAreaUnitUuidPrefKeyName = "QMCurrentAreaUnitUuid";
inline constexpr std::string_view QMCurrentVerticalSpeedUnitUuidPrefKeyName =
    "QMCurrentVerticalSpeedUnitUuid";
// Per unit, "%@" standing for the unit's uuid.
inline constexpr std::string_view QMUnitSwitchPrefKeyName = "QMUnitSwitch_%@_Value";
inline constexpr std::string_view QMVerticalSpeedScalePrefKeyName = "%@_scale";

// Names of the unit systems (keys of the string tables).
inline constexpr std::string_view QMMetricSystemName = "Metric";
inline constexpr std::string_view QMImperialSystemName = "Imperial";
inline constexpr std::string_view QMNauticalSystemName = "Nautical";

// Posted with the provider (`const UnitsProvider*`) as object when the current units change.
inline constexpr std::string_view QMUnitsChangedNotification = "QMUnitsChanged";
// Posted without object when the current length or area unit, or one of their switch values,
// changes: the map-annotation settings' notification, since only map displays depend on them.
inline constexpr std::string_view QMPlanimeterUnitTypeChangedNotification =
    "QMPlanimeterUnitTypeChanged";

}  // namespace qm

#endif  // QMCORE_PROVIDER_UNITSPROVIDERKEYS_HPP_
