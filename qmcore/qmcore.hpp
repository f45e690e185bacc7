// QMCore: units of measure, the user's unit settings and the texts in which values, headings,
// dates and durations are shown and spoken. Including this header gives the whole public API:
//
//   #include "qmcore/qmcore.hpp"
//
//   qm::UnitsProvider& units = qm::UnitsProvider::sharedInstance();
//   units.textForDistance(1234.0);                            // "1.23km" in metric settings
//   qm::QMConvertUnitValue(*qm::QMLengthUnit::footUnit(),
//                          *qm::QMLengthUnit::meterUnit(), 1.0);  // 0.30479999

#ifndef QMCORE_QMCORE_HPP_
#define QMCORE_QMCORE_HPP_

#include "qmcore/formatting/BearingFormatter.hpp"
#include "qmcore/formatting/CalendarHelper.hpp"
#include "qmcore/formatting/DurationUnitSettings.hpp"
#include "qmcore/formatting/HoursMinutesDurationUnit.hpp"
#include "qmcore/formatting/ISO8601.hpp"
#include "qmcore/formatting/QMDateFormatter.hpp"
#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/formatting/QMStringForFloatPrecision.hpp"
#include "qmcore/formatting/QMUnitsFormatter.hpp"
#include "qmcore/formatting/StyledText.hpp"
#include "qmcore/formatting/UnitFormatterWrapper.hpp"
#include "qmcore/formatting/WeekDateCalculator.hpp"
#include "qmcore/formatting/WeekDates.hpp"
#include "qmcore/geo/CLPlacemark.hpp"
#include "qmcore/geo/CoordinateFormats.hpp"
#include "qmcore/geo/CoordinateRecords.hpp"
#include "qmcore/geo/GeoToCoreGraphicsHelper.hpp"
#include "qmcore/geo/MKCoordinateRegion.hpp"
#include "qmcore/geo/MKPlacemark.hpp"
#include "qmcore/geo/MapTypes.hpp"
#include "qmcore/geo/MapZoomHelper.hpp"
#include "qmcore/geo/QMPlacemarkHistoryItem.hpp"
#include "qmcore/geo/QMPlanimeterSettings.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/platform/CharacterPrefix.hpp"
#include "qmcore/platform/Date.hpp"
#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/Error.hpp"
#include "qmcore/platform/Heading.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/NumberFormatter.hpp"
#include "qmcore/platform/PostalAddressFormatter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/CurrentUnits.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/QMUIValueWithUnit.hpp"
#include "qmcore/provider/QMUnitCalculator.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/provider/UnitsProviderKeys.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringFormat.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/QMUnit.hpp"
#include "qmcore/units/QMUnitConversions.hpp"
#include "qmcore/units/QMUnitSorting.hpp"
#include "qmcore/units/QMUnitTypes.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"
#include "qmcore/units/UnitsUuid.hpp"

#endif  // QMCORE_QMCORE_HPP_
