// The user's current units: one current unit of every kind and a general unit system
// (0 metric, 1 imperial, 2 nautical), chosen from the locale at first launch, persisted in the
// settings store, and announced with "QMUnitsChanged" when they change.
//
//   qm::UnitsProvider& units = qm::UnitsProvider::sharedInstance();
//   units.setGeneralUnitType(1);        // stores, synchronises, posts "QMUnitsChanged"
//   units.speedUnit()->localizedName(); // "MPH"
//
// Most kinds default from the unit system; length, area, vertical speed, pressure and
// temperature have choices of their own, and the small distance and altitude units (metres or
// feet) separate settings. Every setter persists first and then derives the current units anew
// from the store (`deriveCurrentUnits` of CurrentUnits.hpp), so the state is what the store
// says, with one exception: a switch value stored for any distance unit of the small unit's
// type (the kilometre while metres are current) sets the distance threshold until the threshold
// is restored from the current distance unit (at launch, and when the system or the nautical
// distance type changes).
// Automatic switching from a small to a big unit (metres to kilometres, feet to miles) happens
// at thresholds derived from per-unit switch values; -1 means "never".
//
// Not thread-safe apart from `sharedInstance`: use a provider from one thread at a time.
// Notifications are delivered synchronously, so observers run before a setter returns.

#ifndef QMCORE_PROVIDER_UNITSPROVIDER_HPP_
#define QMCORE_PROVIDER_UNITSPROVIDER_HPP_

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/NumberFormatter.hpp"
#include "qmcore/provider/CurrentUnits.hpp"
#include "qmcore/provider/QMUIValueWithUnit.hpp"
#include "qmcore/provider/UnitsProviderKeys.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMUnitTypes.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"

namespace qm {

class DisplayOrientationSource;
class Env;
class EnvironmentSettings;
class NotificationCenter;
class SettingsStore;
struct Heading;

class UnitsProvider {
 public:
  template <typename Unit>
  using Catalog = UnitCatalogs::Catalog<Unit>;

  // Builds the catalogs (the distance foot and metre switching where `environment` says) and
  // derives the current units from `env`'s standard store, choosing from the measurement
  // system of `env`'s locale when no system is stored. Notifications go to `env`'s centre.
  // `env` and `environment` must outlive the provider.
  UnitsProvider(Env& env, EnvironmentSettings& environment);
  UnitsProvider(const UnitsProvider&) = delete;
  UnitsProvider& operator=(const UnitsProvider&) = delete;

  // The provider over `Env::Default()` and the shared environment settings, created on first
  // use (thread-safe) and kept for the process lifetime.
  static UnitsProvider& sharedInstance();

  // Everything current, as one value.
  const CurrentUnits& currentUnits() const { return current_; }

  // ---- Current state -------------------------------------------------------------------------

  std::int64_t generalUnitType() const { return current_.generalUnitType; }
  // The small distance and altitude units: 0 metres, 1 feet.
  std::int64_t distanceUnitType() const { return current_.distanceUnitType; }
  std::int64_t altitudeUnitType() const { return current_.altitudeUnitType; }
  // Reserved: always 0 (the scale shown is the vertical speed unit's).
  std::int64_t verticalSpeedUnitScale() const { return 0; }

  // Thresholds from which texts switch to the big unit, in metres (square metres for areas);
  // -1 means never.
  double distanceSmallToBigThresholdInMeters() const {
    return current_.distanceSmallToBigThreshold;
  }
  double lengthSmallToBigThresholdInMeters() const { return current_.lengthSmallToBigThreshold; }
  double areaSmallToBigThresholdInMeters() const { return current_.areaSmallToBigThreshold; }

  const std::string& localizedKmUnitAbbreviation() const { return localizedKm_; }
  const std::string& localizedMileUnitAbbreviation() const { return localizedMile_; }
  const std::string& localizedNauticalMileUnitAbbreviation() const {
    return localizedNauticalMile_;
  }
  const std::string& localizedMeterUnitAbbreviation() const { return localizedMeter_; }
  const std::string& localizedCompassTitle() const { return localizedCompassTitle_; }
  const std::string& localizedGPSCourseTitle() const { return localizedGPSCourseTitle_; }
  const std::string& localizedCourseTitle() const { return localizedCourseTitle_; }

  const std::shared_ptr<const QMLengthUnit>& lengthUnit() const { return current_.lengthUnit; }
  const std::shared_ptr<const QMAreaUnit>& areaUnit() const { return current_.areaUnit; }
  const std::shared_ptr<const QMSpeedUnit>& speedUnit() const { return current_.speedUnit; }
  const std::shared_ptr<const QMVerticalSpeedUnit>& verticalSpeedUnit() const {
    return current_.verticalSpeedUnit;
  }
  // The small distance unit: the distance metre or foot.
  const std::shared_ptr<const QMDistanceUnit>& distanceUnit() const {
    return current_.distanceUnit;
  }
  const std::shared_ptr<const QMAltitudeUnit>& altitudeUnit() const {
    return current_.altitudeUnit;
  }
  const std::shared_ptr<const QMPressureUnit>& pressureUnit() const {
    return current_.pressureUnit;
  }
  const std::shared_ptr<const QMTemperatureUnit>& temperatureUnit() const {
    return current_.temperatureUnit;
  }

  // Plain setters: they replace the current unit only, without storing or notifying.
  void setLengthUnit(std::shared_ptr<const QMLengthUnit> unit) {
    current_.lengthUnit = std::move(unit);
  }
  void setAreaUnit(std::shared_ptr<const QMAreaUnit> unit) { current_.areaUnit = std::move(unit); }
  void setSpeedUnit(std::shared_ptr<const QMSpeedUnit> unit) {
    current_.speedUnit = std::move(unit);
  }
  void setDistanceUnit(std::shared_ptr<const QMDistanceUnit> unit) {
    current_.distanceUnit = std::move(unit);
  }
  void setAltitudeUnit(std::shared_ptr<const QMAltitudeUnit> unit) {
    current_.altitudeUnit = std::move(unit);
  }

  // Current locale, at least one integer digit, exactly one fraction digit.
  const NumberFormatter& decimalSpeedFormatter() const { return decimalSpeedFormatter_; }
  // A formatter for altitudes that apps may install; none by default.
  const std::optional<NumberFormatter>& altitudeFormatter() const { return altitudeFormatter_; }
  void setAltitudeFormatter(std::optional<NumberFormatter> formatter) {
    altitudeFormatter_ = std::move(formatter);
  }

  // ---- Catalogs, keyed by uuid ---------------------------------------------------------------

  const Catalog<QMLengthUnit>& builtinLengthUnits() const { return catalogs_.length; }
  const Catalog<QMAreaUnit>& builtinAreaUnits() const { return catalogs_.area; }
  const Catalog<QMDistanceUnit>& builtinDistanceUnits() const { return catalogs_.distance; }
  const Catalog<QMAltitudeUnit>& builtinAltitudeUnits() const { return catalogs_.altitude; }
  const Catalog<QMPressureUnit>& builtinPressureUnits() const { return catalogs_.pressure; }
  const Catalog<QMTemperatureUnit>& builtinTemperatureUnits() const {
    return catalogs_.temperature;
  }
  const Catalog<QMSpeedUnit>& builtinSpeedUnits() const { return catalogs_.speed; }
  const Catalog<QMVerticalSpeedUnit>& builtinVerticalSpeedUnits() const {
    return catalogs_.verticalSpeed;
  }

  // The catalog unit with `uuid` (compared by content), or null.
  std::shared_ptr<const QMLengthUnit> lengthUnitWithUuid(std::string_view uuid) const;
  std::shared_ptr<const QMAreaUnit> areaUnitWithUuid(std::string_view uuid) const;
  std::shared_ptr<const QMSpeedUnit> speedUnitWithUuid(std::string_view uuid) const;
  std::shared_ptr<const QMVerticalSpeedUnit> verticalSpeedUnitWithUuid(std::string_view uuid) const;
  std::shared_ptr<const QMDistanceUnit> distanceUnitWithUuid(std::string_view uuid) const;
  // The catalog unit with `uuid`, or the current unit of the kind when there is none.
  std::shared_ptr<const QMAltitudeUnit> altitudeUnitWithUuid(std::string_view uuid) const;
  std::shared_ptr<const QMPressureUnit> pressureUnitWithUuid(std::string_view uuid) const;
  std::shared_ptr<const QMTemperatureUnit> temperatureUnitWithUuid(std::string_view uuid) const;

  // Each catalog sorted by factor: lengths and areas ascending (equal factors: shorter name
  // first), speeds, vertical speeds, pressures and temperatures ascending, altitudes and
  // distances descending (biggest first).
  std::vector<std::shared_ptr<const QMLengthUnit>> allLengthUnits() const;
  std::vector<std::shared_ptr<const QMAreaUnit>> allAreaUnits() const;
  std::vector<std::shared_ptr<const QMSpeedUnit>> allSpeedUnits() const;
  std::vector<std::shared_ptr<const QMVerticalSpeedUnit>> allVerticalSpeedUnits() const;
  std::vector<std::shared_ptr<const QMPressureUnit>> allPressureUnits() const;
  std::vector<std::shared_ptr<const QMTemperatureUnit>> allTemperatureUnits() const;
  std::vector<std::shared_ptr<const QMAltitudeUnit>> allAltitudeUnits() const;
  std::vector<std::shared_ptr<const QMDistanceUnit>> allDistanceUnits() const;

  // ---- Changing the units (each stores, synchronises and notifies unless unchanged) ----------

  // Nothing when `type` is the current one. Otherwise re-derives every unit, tells the
  // environment (`switchToDistanceUnit`), stores, posts "QMUnitsChanged", and asks the
  // environment to synchronise its clients when it supports that.
  void setGeneralUnitType(std::int64_t type);
  // Always stores `type` (0 metres, 1 feet) and removes the legacy key; re-derives and notifies
  // only in nautical mode when the small distance unit changes.
  void setNauticalDistanceUnitType(std::int64_t type);
  // 0 metres, 1 feet; nothing when unchanged.
  void setAltitudeUnitType(std::int64_t type);
  // Nothing when the unit has the current unit's uuid (by content).
  void setPressureUnit(const QMPressureUnit& unit);
  void setTemperatureUnit(const QMTemperatureUnit& unit);
  void setVerticalSpeedUnit(const QMVerticalSpeedUnit& unit);
  // Nothing when the unit's uuid is the very constant of the current unit's. Null removes the
  // choice (back to the system's default). Posts the map-annotation settings' notification
  // "QMPlanimeterUnitTypeChanged", not "QMUnitsChanged".
  void setCurrentLengthUnit(const std::shared_ptr<const QMLengthUnit>& unit);
  void setCurrentAreaUnit(const std::shared_ptr<const QMAreaUnit>& unit);
  // Stores the scale of `unit`; re-derives and notifies when it is the current unit.
  void setVerticalSpeedScale(std::int64_t scale, const QMVerticalSpeedUnit& unit);
  // The stored scale of `unit` (truncated), else its default scale.
  std::int64_t scaleForVerticalSpeedUnit(const QMVerticalSpeedUnit& unit) const;

  // Posts "QMUnitsChanged" with this provider as object.
  void notifyOnUnitsChange() const;

  // ---- Restoring and deriving from the store ------------------------------------------------
  //
  // For apps that change the store behind the provider's back: each restore re-reads its own
  // part only, without storing or notifying; `establishCurrentUnits` then derives the units for
  // the restored system and small units.
  //
  //   store->setInteger(qm::QMGeneralUnitPrefKeyName, 2);
  //   units.restoreCurrentGeneralUnitType();
  //   units.restoreCurrentDistanceUnitType();
  //   units.restoreCurrentAltitudeUnitType();
  //   units.establishCurrentUnits();
  //   units.restoreDistanceSmallToBigThreshold();

  // The stored system, taken as it is; with none stored, metric (0) when the measurement system
  // of the environment's locale is, else imperial (1). A stored system also resets a small
  // distance type of 2 or more to 0.
  void restoreCurrentGeneralUnitType();
  // The system's small distance unit; in nautical mode the legacy key, else the stored nautical
  // choice (2 or more mean metres), else feet.
  void restoreCurrentDistanceUnitType();
  // In nautical mode the legacy key; else the stored choice (2 or more mean metres), else the
  // system's default.
  void restoreCurrentAltitudeUnitType();
  // The stored unit with its stored scale, else the system's default.
  void restoreCurrentVerticalSpeedUnitType();
  // The stored unit; an identifier in no catalog keeps the current unit; none stored: the
  // system's default.
  void restoreCurrentPressureUnitType();
  void restoreCurrentTemperatureUnitType();
  // The distance threshold from the current distance unit's switch value.
  void restoreDistanceSmallToBigThreshold();
  // Derives every current unit and the length and area thresholds anew from the store for the
  // current unit system and small-unit choice (the setters do this after each write); keeps the
  // distance threshold.
  void establishCurrentUnits();

  // ---- Distance unit choice ------------------------------------------------------------------

  // The big distance unit of the current system (km, mi or nm).
  QMDistanceUnitType defaultQMDistanceUnit() const;
  // The big unit when the distance threshold is at least 0 and at most `meters`, else the
  // small one (metres or feet).
  QMDistanceUnitType defaultUnitTypeForDistance(double meters) const;

  // ---- Automatic switching -------------------------------------------------------------------

  // The stored switch value of `unit` when there is one (whatever it is); else the unit's
  // built-in value (`unitSwitchesAtValue`, what the unit was made with) when it switches by
  // default; else -1 (never).
  std::int64_t automaticSwitchValueForUnit(const QMUnit& unit) const;
  // Stores `value` for `unit`, derives the length and area thresholds anew and notifies
  // ("QMPlanimeterUnitTypeChanged" for lengths and areas, "QMUnitsChanged" otherwise). A distance
  // unit of the small unit's type, current or not, sets the distance threshold to `value` in
  // metres (-1 stays never).
  void setAutomaticSwitchValue(std::int64_t value, const QMUnit& unit);
  // "Always keep as <unit>" or "Switch to <big unit> from <value>".
  std::string rulesDescriptionForUnit(const QMUnit& unit) const;
  std::string switchDescriptionForUnit(const QMUnit& unit, std::int64_t value) const;
  std::string shortSwitchDescriptionForUnit(const QMUnit& unit) const;
  // The name of the unit `unit` switches to (nautical miles instead of kilometres or miles for
  // distances and lengths in nautical mode); empty when the unit does not switch.
  std::string localizedNameOfSwitchUnitForUnit(const QMUnit& unit) const;

  // ---- Descriptions --------------------------------------------------------------------------

  std::string descriptionOfCurrentUnits() const;
  // What unit system `type` means for distances and speeds, for this provider's small unit.
  std::string descriptionOfUnitsSystem(std::int64_t type) const;
  // The localised system names, indexed by unit system.
  static std::vector<std::string> allUnitSystems();
  // The speed subject when units follow the speed unit, else "General".
  std::string principalUnitLocalizedName() const;
  std::string restrictedDistanceUnitSelectionMessage() const;
  static std::string localizedNameOfImperialSystem();
  static std::string localizedNameOfMetricSystem();
  static std::string localizedNameOfNauticalSystem();

  // ---- Calculator (the free functions of QMUnitCalculator.hpp as class operations) -----------

  static double calculateDistance(double meters, std::int64_t unitType);
  static double calculateKilometricSpeed(double metersPerSecond, std::int64_t unitType);
  static double convertKiloValue(double value, std::int64_t from, std::int64_t to);
  static double convertDistanceValue(double value, std::int64_t from, std::int64_t to);
  static double valueForAltitudeInMeters(double meters, std::int64_t unitType,
                                         std::int64_t altType);

  // ---- Value texts (UnitsProviderFormatter.cpp) ----------------------------------------------
  //
  // Measured values (metres, square metres, metres per second, hectopascals) as the texts shown
  // and spoken in the current units. Unit system codes as in "qmcore/formatting/
  // QMUnitsFormatter.hpp": 0 metric, 1 imperial, 2 nautical, 3 imperial with yards. Numbers
  // are printf texts in the POSIX locale ("." always) unless a unit's own formatter is named;
  // abbreviations are localized. Nothing throws; a current unit that is null (possible through
  // the plain setters) gives absent texts, or "" where the result is a plain string.

  // The small-unit label of a code: 0 the localized "m", 1 "ft", 2 "m" or "ft" following
  // `distanceUnitType`, 3 "yd", other codes "".
  std::string textForSmallDistanceUnitTypeForGeneralUnitType(std::int64_t unitType) const;
  // The same, never localized: "m", "ft", "yd".
  std::string nonLocalizedTextForUnitType(std::int64_t unitType) const;
  // The altitude unit's label and its spoken name ("meters to go").
  std::string textForCurrentAltitudeUnit() const;
  std::string speechTextForCurrentAltitudeUnit() const;
  // The speed label of the unit system ("km/h", "mph", "kts") and its spoken name.
  std::string textForCurrentSpeedUnit() const;
  std::string speechTextForCurrentSpeedUnit() const;
  // The vertical speed unit's localized abbreviation.
  std::string textForCurrentVerticalSpeedUnit() const;

  // A distance in the small unit below the distance threshold ("999m", "%.0f") and in the
  // big unit from the threshold on ("1.00km", "%.2f"); a negative threshold never switches.
  // In nautical mode the small unit is metres or feet as `distanceUnitType` says.
  std::string textForDistance(double meters, std::string_view unitSeparator = "") const;
  // The same as `textForDistance` with no separator.
  std::string textForMapDistance(double meters) const;
  // The number and unit of `textForDistance` apart; below the threshold always in the small
  // unit of `distanceUnitType`.
  QMUIValueWithUnit uiTextsForDistance(double meters) const;
  // "%.0f" of the altitude in metres or feet as `altitudeUnitType` says (feet in nautical
  // mode); "" for other altitude types. Values just below zero (above -0.5) give "0", not "-0".
  std::string textForAltitudeWithNoUnits(double meters) const;

  // The speed in km/h, mph or knots with one, two or four decimals.
  std::string decimalTextForAverageSpeedWithNoUnits(double metersPerSecond) const;
  std::string decimalTextFor2DecimalDigitsAverageSpeedWithNoUnits(double metersPerSecond) const;
  std::string decimalTextFor4DecimalDigitsAverageSpeedWithNoUnits(double metersPerSecond) const;
  // The speed in km/h, mph or knots: whole numbers, or below 100 with one decimal in the
  // current locale ("12,3") when the environment's `showsDecimalDotForSpeedUnder100` is on.
  std::string autoDecimalTextForMSSpeedWithNoUnits(double metersPerSecond) const;
  // That number, a blank and the spoken unit name: "36 kilometers per hour".
  std::string autoDecimalTextForMSSpeed(double metersPerSecond) const;

  // "%.0f" of the distance in feet (when `distanceUnitType` is non-zero) or metres.
  std::string textForSmallOnlyDistanceWithNoUnits(double meters) const;
  // The same number followed by the small-unit label, no separator: "328ft".
  std::string textForSmallOnlyDistance(double meters) const;
  // "%.2f" in the big unit when `unitType.isKilometric`, else "%.0f" in the small unit.
  std::string textWithNoUnitsForDistanceInMeters(double meters,
                                                 const QMDistanceUnitType& unitType) const;
  // `textForSmallOnlyDistanceWithNoUnits` rounded down to tens above 100: "120" for 128.
  std::string textForSmallRoundedDistanceWithNoUnits(double meters) const;
  // The label of a map's 50-point scale ruler at `metersPerPoint`: "120 m", "1.00 km",
  // "5270 ft", "1.02 mi" (truncated, tens above 100 small units, two decimals in big units).
  std::string rulerValueForMetersPerPixel(float metersPerPoint) const;

  // A length, area or pressure in the current unit, switched to its bigger unit above its
  // threshold: "12.5m", "1.234km", "1500.0m²", "29.921inHg" (the unit's own formatter, "."
  // always, no separator). Lengths that switch in nautical mode go to nautical miles.
  std::string stringForLengthInMeters(double meters) const;
  std::string stringForAreaInSquareMeters(double squareMeters) const;
  std::string stringForPressurehPa(double hPa) const;
  std::optional<QMUIValueWithUnit> uiTextsForLengthInMeters(double meters) const;
  std::optional<QMUIValueWithUnit> uiTextsForAreaInSquareMeters(double squareMeters) const;
  // `value` (in the SI base of `smallUnit`'s kind) in `smallUnit`, or in its `canSwitchToUnit`
  // when `value` is above the threshold and the threshold above -1. Absent (or "") for a null
  // unit.
  std::string stringForMeasureInMeter(double value, const std::shared_ptr<const QMUnit>& smallUnit,
                                      double thresholdValueInMeters) const;
  std::optional<QMUIValueWithUnit> uiTextsForMeasureInMeter(
      double value, const std::shared_ptr<const QMUnit>& smallUnit,
      double thresholdValueInMeters) const;

  // Metres per second in the current vertical speed unit (no scale applied).
  double verticalSpeedValueInCurrentUnits(double metersPerSecond) const;
  // That value by the unit's own formatter: "2.5" (m/s), "150" (m/min).
  std::string textForVerticalSpeedInMetersPerSecondWithNoUnits(double metersPerSecond) const;
  // `textForScale` of the current vertical speed unit's scale.
  std::string textForCurrentVerticalSpeedUnitScale() const;
  // "x1", "x100" for 0, 2; "/10", "/1000" for -1, -3 (10^n truncated to the 32-bit range).
  static std::string textForScale(std::int64_t scale);

  // ---- Heading texts (UnitsProviderHeading.cpp) ----------------------------------------------
  //
  // Angle units (the apps' setting): 0 degrees, 1 mils (6400 to the circle); other codes are
  // written as degrees. Bearings are degrees clockwise from north. Texts use "." as decimal
  // point in every locale; cardinal letters and titles come from the string tables. The class
  // operations may be called from any thread.

  // "NE47" for 47°: the prefix, the cardinal abbreviation (left out when `skipShortPart`) and
  // the bearing rounded to a whole, as given (400 stays 400). In mils only the number: 90°
  // gives "1600", without prefix or letters.
  static std::string textForBearing(double bearing, std::string_view prefix, int angleUnit,
                                    bool skipShortPart);
  // The same with one decimal in degrees ("NE47.0"); mils stay whole.
  static std::string decimalTextForBearing(double bearing, std::string_view prefix, int angleUnit,
                                           bool skipShortPart);
  // Identical to decimalTextForBearing (one decimal, whatever the name says).
  static std::string decimal2TextForBearing(double bearing, std::string_view prefix, int angleUnit,
                                            bool skipShortPart);
  // The cardinal abbreviation of `bearing`: "N" below 15 and from 345 on (any value, not
  // normalised), then "NE" 15-75, "E" 75-105, "SE" 105-165, "S" 165-195, "SW" 195-255,
  // "W" 255-285, "NW" 285-345 (lower bounds included). Nothing for NaN.
  static std::optional<std::string> shortCompassBearingText(double bearing);
  // 0: "°", 1: "mils", other codes: "".
  static std::string abbreviationForAngleUnitType(int angleUnit);
  // 0: "°", any other code (mils included): "".
  static std::string hintAbbreviationForAngleUnitType(int angleUnit);

  // A compass heading against the device's top turned to be against the display's top: +180
  // upside down, +90 landscape left, -90 landscape right, then one turn added or taken away
  // when the sum is above 360 or below 0 (360 itself stays 360). Reads the orientation from
  // `orientation`, by default the process's (the one the host sets).
  static double orientationCorrectedForValue(
      double value,
      const DisplayOrientationSource& orientation = Env::Default().displayOrientation());
  // orientationCorrectedForValue of the heading's magnetic heading when `trueOrMagnetic` is
  // non-zero, else of its true heading.
  static double orientationCorrectedHeading(
      const Heading& heading, std::int64_t trueOrMagnetic,
      const DisplayOrientationSource& orientation = Env::Default().displayOrientation());
  // textForBearing of the corrected heading, with the cardinal abbreviation.
  static std::string textForCompassHeading(
      const Heading& heading, std::int64_t trueOrMagnetic, std::string_view prefix, int angleUnit,
      const DisplayOrientationSource& orientation = Env::Default().displayOrientation());

  // The upper-cased titles made when the provider was.
  const std::string& gpsCourseTitle() const { return localizedGPSCourseTitle_; }
  const std::string& courseTitle() const { return localizedCourseTitle_; }
  // "COMPASS (T)": the compass title and, in parentheses, `compassTypeTitle`.
  std::string compassTitle() const;
  // The first letter of the north that headings are against, by the environment's `northType`:
  // "M" (magnetic) when it is non-zero, else "T" (true).
  std::string compassTypeTitle() const;
  // The GPS course title of the shared provider, or of `provider`, followed by the hint
  // abbreviation: "GPS COURSE°" in degrees, "GPS COURSE" in mils.
  static std::string hintForGPSCourseTitleWithAngleUnitType(
      int angleUnit, const UnitsProvider& provider = sharedInstance());
  // The compass title of the shared provider, or of `provider`, followed by the hint
  // abbreviation: "COMPASS (T)°" in degrees, "COMPASS (T)" in mils.
  static std::string hintForCompassTitleWithAngleUnitType(
      int angleUnit, const UnitsProvider& provider = sharedInstance());

 private:
  // The provider's label of the big unit, and of the small unit, of a unit system code ("" for
  // other codes).
  std::string bigUnitLabel(std::int64_t unitType) const;
  std::string smallUnitLabel(std::int64_t unitType, bool localized) const;
  // The unit system and small units of the current units.
  UnitSystemChoice choice() const;
  // The current units for `choice` as the store gives them, and the same made current.
  CurrentUnits derived(const UnitSystemChoice& choice) const;
  void deriveFor(const UnitSystemChoice& choice);
  // Whether the environment's locale measures in metric units.
  bool localeIsMetric() const;
  // Stores the key's new value and synchronises.
  void storeInteger(std::string_view key, std::int64_t value);
  void storeString(std::string_view key, std::string_view value);
  // The common path of the pressure, temperature and vertical speed setters.
  void storeUnitChoice(const QMUnit& unit, const QMUnit* current, std::string_view key);
  // The common path of the length and area setters; null removes the choice.
  void storeMapUnitChoice(const QMUnit* unit, const QMUnit* current, std::string_view key);
  // Tells the environment to synchronise its clients when it supports that.
  void synchronizeClientsIfSupported() const;
  void notifyOnMapSettingsChange() const;

  std::shared_ptr<SettingsStore> store_;
  NotificationCenter& center_;
  EnvironmentSettings& environment_;
  // Asked for its locale whenever no system is stored.
  Env& env_;
  const UnitCatalogs catalogs_;
  CurrentUnits current_;

  std::string localizedKm_;
  std::string localizedMile_;
  std::string localizedNauticalMile_;
  std::string localizedMeter_;
  std::string localizedCompassTitle_;
  std::string localizedGPSCourseTitle_;
  std::string localizedCourseTitle_;

  NumberFormatter decimalSpeedFormatter_;
  std::optional<NumberFormatter> altitudeFormatter_;
};

}  // namespace qm

#endif  // QMCORE_PROVIDER_UNITSPROVIDER_HPP_
