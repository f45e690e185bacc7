#include "qmcore/provider/UnitsProvider.hpp"

#include <cmath>
#include <utility>

#include "qmcore/geo/QMPlanimeterSettings.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/platform/TextCase.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMUnitSorting.hpp"

namespace qm {
namespace {

template <typename Unit>
void addAll(UnitsProvider::Catalog<Unit>& catalog,
            const std::vector<std::shared_ptr<const Unit>>& units) {
  for (const auto& unit : units) catalog.emplace(std::string(unit->uuid()), unit);
}

template <typename Unit>
std::shared_ptr<const Unit> find(const UnitsProvider::Catalog<Unit>& catalog,
                                 std::string_view uuid) {
  const auto it = catalog.find(uuid);
  return it == catalog.end() ? nullptr : it->second;
}

template <typename Unit>
std::vector<std::shared_ptr<const Unit>> sortedCatalog(const UnitsProvider::Catalog<Unit>& catalog,
                                                       UnitSortOrder order) {
  std::vector<std::shared_ptr<const Unit>> units;
  units.reserve(catalog.size());
  for (const auto& entry : catalog) units.push_back(entry.second);
  return sortedUnits(std::move(units), order);
}

// Stored small-unit types of 2 or more are not small units: they mean metres.
std::int64_t smallUnitType(std::int64_t stored) { return stored >= 2 ? 0 : stored; }

std::string scaleKey(std::string_view uuid) { return std::string(uuid) + "_scale"; }

}  // namespace

UnitsProvider::UnitsProvider(std::shared_ptr<SettingsStore> store, NotificationCenter& center,
                             EnvironmentSettings& environment)
    : store_(std::move(store)),
      center_(center),
      environment_(environment),
      localizedKm_(CoreStrings::CLSTRING("km")),
      // Deliberately not looked up: the mile keeps its English abbreviation.
      localizedMile_("mi"),
      localizedNauticalMile_(CoreStrings::CLSTRING("nm")),
      localizedMeter_(CoreStrings::CLSTRING("m")),
      localizedCompassTitle_(uppercaseString(CoreStrings::CLSTRING("compass"))),
      localizedGPSCourseTitle_(uppercaseString(CoreStrings::CLSTRING("gps course"))),
      localizedCourseTitle_(uppercaseString(CoreStrings::CLSTRING("course"))),
      decimalSpeedFormatter_(NumberFormatOptions{
          .minimumFractionDigits = 1, .maximumFractionDigits = 1, .minimumIntegerDigits = 1}) {
  restoreCurrentGeneralUnitType();
  restoreCurrentDistanceUnitType();
  restoreCurrentAltitudeUnitType();
  // The catalogs do not exist yet: this takes the system's default, and
  // establishCurrentUnits below looks the stored choice up again.
  restoreCurrentVerticalSpeedUnitType();
  restoreCurrentPressureUnitType();
  restoreCurrentTemperatureUnitType();
  buildCatalogs();
  establishCurrentUnits();
  restoreDistanceSmallToBigThreshold();
}

UnitsProvider& UnitsProvider::sharedInstance() {
  static UnitsProvider provider(SettingsStore::standard(), NotificationCenter::defaultCenter(),
                                EnvironmentSettings::shared());
  return provider;
}

void UnitsProvider::buildCatalogs() {
  addAll(builtinLengthUnits_, QMLengthUnit::builtinUnits());
  addAll(builtinAreaUnits_, QMAreaUnit::builtinUnits());
  addAll(builtinSpeedUnits_, QMSpeedUnit::builtinUnits());
  addAll(builtinVerticalSpeedUnits_, QMVerticalSpeedUnit::builtinUnits());
  addAll(builtinDistanceUnits_, QMDistanceUnit::builtinUnits());
  addAll(builtinAltitudeUnits_, QMAltitudeUnit::builtinUnits());
  addAll(builtinPressureUnits_, QMPressureUnit::builtinUnits());
  addAll(builtinTemperatureUnits_, QMTemperatureUnit::builtinUnits());
}

// ---- Lookups and lists ---------------------------------------------------------------------

std::shared_ptr<const QMLengthUnit> UnitsProvider::lengthUnitWithUuid(std::string_view uuid) const {
  return find(builtinLengthUnits_, uuid);
}

std::shared_ptr<const QMAreaUnit> UnitsProvider::areaUnitWithUuid(std::string_view uuid) const {
  return find(builtinAreaUnits_, uuid);
}

std::shared_ptr<const QMSpeedUnit> UnitsProvider::speedUnitWithUuid(std::string_view uuid) const {
  return find(builtinSpeedUnits_, uuid);
}

std::shared_ptr<const QMVerticalSpeedUnit> UnitsProvider::verticalSpeedUnitWithUuid(
    std::string_view uuid) const {
  return find(builtinVerticalSpeedUnits_, uuid);
}

std::shared_ptr<const QMDistanceUnit> UnitsProvider::distanceUnitWithUuid(
    std::string_view uuid) const {
  return find(builtinDistanceUnits_, uuid);
}

std::shared_ptr<const QMAltitudeUnit> UnitsProvider::altitudeUnitWithUuid(
    std::string_view uuid) const {
  auto unit = find(builtinAltitudeUnits_, uuid);
  return unit ? unit : altitudeUnit_;
}

std::shared_ptr<const QMPressureUnit> UnitsProvider::pressureUnitWithUuid(
    std::string_view uuid) const {
  auto unit = find(builtinPressureUnits_, uuid);
  return unit ? unit : pressureUnit_;
}

std::shared_ptr<const QMTemperatureUnit> UnitsProvider::temperatureUnitWithUuid(
    std::string_view uuid) const {
  auto unit = find(builtinTemperatureUnits_, uuid);
  return unit ? unit : temperatureUnit_;
}

std::vector<std::shared_ptr<const QMLengthUnit>> UnitsProvider::allLengthUnits() const {
  return sortedCatalog(builtinLengthUnits_, UnitSortOrder::kAscendingThenShorterName);
}

std::vector<std::shared_ptr<const QMAreaUnit>> UnitsProvider::allAreaUnits() const {
  return sortedCatalog(builtinAreaUnits_, UnitSortOrder::kAscendingThenShorterName);
}

std::vector<std::shared_ptr<const QMSpeedUnit>> UnitsProvider::allSpeedUnits() const {
  return sortedCatalog(builtinSpeedUnits_, UnitSortOrder::kAscending);
}

std::vector<std::shared_ptr<const QMVerticalSpeedUnit>> UnitsProvider::allVerticalSpeedUnits()
    const {
  return sortedCatalog(builtinVerticalSpeedUnits_, UnitSortOrder::kAscending);
}

std::vector<std::shared_ptr<const QMPressureUnit>> UnitsProvider::allPressureUnits() const {
  return sortedCatalog(builtinPressureUnits_, UnitSortOrder::kAscending);
}

std::vector<std::shared_ptr<const QMTemperatureUnit>> UnitsProvider::allTemperatureUnits() const {
  return sortedCatalog(builtinTemperatureUnits_, UnitSortOrder::kAscending);
}

std::vector<std::shared_ptr<const QMAltitudeUnit>> UnitsProvider::allAltitudeUnits() const {
  return sortedCatalog(builtinAltitudeUnits_, UnitSortOrder::kDescending);
}

std::vector<std::shared_ptr<const QMDistanceUnit>> UnitsProvider::allDistanceUnits() const {
  return sortedCatalog(builtinDistanceUnits_, UnitSortOrder::kDescending);
}

// ---- Restoring -----------------------------------------------------------------------------

void UnitsProvider::restoreCurrentGeneralUnitType() {
  if (!store_->hasKey(QMGeneralUnitPrefKeyName)) {
    generalUnitType_ = environment_.isMetric() ? 0 : 1;
    return;
  }
  // The stored system is taken as it is; only the small distance type is checked here.
  generalUnitType_ = store_->integerForKey(QMGeneralUnitPrefKeyName);
  distanceUnitType_ = smallUnitType(distanceUnitType_);
}

void UnitsProvider::restoreCurrentDistanceUnitType() {
  if (generalUnitType_ != 2) {
    distanceUnitType_ = generalUnitType_;
    return;
  }
  for (const std::string_view key :
       {QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName, QMNauticalDistanceUnitPrefKeyName}) {
    if (store_->hasKey(key)) {
      distanceUnitType_ = smallUnitType(store_->integerForKey(key));
      return;
    }
  }
  distanceUnitType_ = static_cast<std::int64_t>(
      QMDistanceUnit::defaultForUnitType(generalUnitType_, generalUnitType_)->unitType());
}

void UnitsProvider::restoreCurrentAltitudeUnitType() {
  if (generalUnitType_ == 2 && store_->hasKey(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName)) {
    altitudeUnitType_ =
        smallUnitType(store_->integerForKey(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName));
  } else if (store_->hasKey(QMAltitudeUnitPrefKeyName)) {
    altitudeUnitType_ = smallUnitType(store_->integerForKey(QMAltitudeUnitPrefKeyName));
  } else {
    altitudeUnitType_ = static_cast<std::int64_t>(
        QMAltitudeUnit::defaultForUnitType(generalUnitType_, generalUnitType_)->unitType());
  }
}

void UnitsProvider::restoreCurrentVerticalSpeedUnitType() {
  std::shared_ptr<const QMVerticalSpeedUnit> unit;
  if (const auto stored = store_->stringForKey(QMCurrentVerticalSpeedUnitUuidPrefKeyName)) {
    unit = verticalSpeedUnitWithUuid(*stored);
  }
  if (!unit) unit = QMVerticalSpeedUnit::defaultForDistanceUnitType(generalUnitType_);
  unit->setScale(static_cast<int>(scaleForVerticalSpeedUnit(*unit)));
  verticalSpeedUnit_ = std::move(unit);
}

void UnitsProvider::restoreCurrentPressureUnitType() {
  // A stale stored uuid keeps the current unit; before there is one, the system's default.
  const auto stored = store_->stringForKey(QMPressureUnitPrefKeyName);
  auto unit = stored ? pressureUnitWithUuid(*stored) : nullptr;
  pressureUnit_ = unit ? unit : QMPressureUnit::defaultForDistanceUnitType(generalUnitType_);
}

void UnitsProvider::restoreCurrentTemperatureUnitType() {
  const auto stored = store_->stringForKey(QMTemperatureUnitPrefKeyName);
  auto unit = stored ? temperatureUnitWithUuid(*stored) : nullptr;
  temperatureUnit_ = unit ? unit : QMTemperatureUnit::defaultForDistanceUnitType(generalUnitType_);
}

double UnitsProvider::thresholdInMetersForUnit(const QMUnit& unit) const {
  if (!unit.canSwitchToUnit()) return -1.0;
  const std::int64_t value = automaticSwitchValueForUnit(unit);
  return value > QMUnitShouldNotSwitchAutomatically ? unit.ratioToMeter() * value : -1.0;
}

void UnitsProvider::establishCurrentUnits() {
  const auto storedLength = store_->stringForKey(QMCurrentLengthUnitUuidPrefKeyName);
  lengthUnit_ = storedLength ? lengthUnitWithUuid(*storedLength) : nullptr;
  if (!lengthUnit_) lengthUnit_ = QMLengthUnit::defaultForDistanceUnitType(generalUnitType_);
  lengthSmallToBigThreshold_ = thresholdInMetersForUnit(*lengthUnit_);

  const auto storedArea = store_->stringForKey(QMCurrentAreaUnitUuidPrefKeyName);
  areaUnit_ = storedArea ? areaUnitWithUuid(*storedArea) : nullptr;
  if (!areaUnit_) areaUnit_ = QMAreaUnit::defaultForDistanceUnitType(generalUnitType_);
  areaSmallToBigThreshold_ = thresholdInMetersForUnit(*areaUnit_);

  // The speed unit always follows the system: there is no stored speed choice.
  speedUnit_ = QMSpeedUnit::defaultForDistanceUnitType(generalUnitType_);
  distanceUnit_ = distanceUnitType_ != 0 ? QMDistanceUnit::footUnit() : QMDistanceUnit::meterUnit();
  altitudeUnit_ = altitudeUnitType_ != 0 ? QMAltitudeUnit::footUnit() : QMAltitudeUnit::meterUnit();

  restoreCurrentVerticalSpeedUnitType();
  restoreCurrentPressureUnitType();
  restoreCurrentTemperatureUnitType();
}

// ---- Setters -------------------------------------------------------------------------------

void UnitsProvider::storeInteger(std::string_view key, std::int64_t value) {
  store_->setInteger(key, value);
  store_->synchronize();
}

void UnitsProvider::storeString(std::string_view key, std::string_view value) {
  store_->setString(key, value);
  store_->synchronize();
}

void UnitsProvider::synchronizeClientsIfSupported() const {
  if (environment_.supportsSync()) environment_.synchronizeClientMeasurementUnits();
}

void UnitsProvider::notifyOnUnitsChange() const {
  center_.post(QMUnitsChangedNotification, static_cast<const UnitsProvider*>(this));
}

void UnitsProvider::notifyOnMapSettingsChange() const {
  QMPlanimeterSettings::notifyOnSettingsChange(center_);
}

void UnitsProvider::setGeneralUnitType(std::int64_t type) {
  if (type == generalUnitType_) return;
  generalUnitType_ = type;
  restoreCurrentDistanceUnitType();
  restoreCurrentAltitudeUnitType();
  restoreCurrentVerticalSpeedUnitType();
  restoreCurrentPressureUnitType();
  restoreCurrentTemperatureUnitType();
  establishCurrentUnits();
  restoreDistanceSmallToBigThreshold();
  environment_.switchToDistanceUnit(static_cast<DistanceUnitType>(type));
  storeInteger(QMGeneralUnitPrefKeyName, type);
  notifyOnUnitsChange();
  synchronizeClientsIfSupported();
}

void UnitsProvider::setNauticalDistanceUnitType(std::int64_t type) {
  store_->setInteger(QMNauticalDistanceUnitPrefKeyName, type);
  store_->removeObjectForKey(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName);
  store_->synchronize();
  if (generalUnitType_ != 2 || type == distanceUnitType_) return;
  restoreCurrentDistanceUnitType();
  establishCurrentUnits();
  restoreDistanceSmallToBigThreshold();
  notifyOnUnitsChange();
  synchronizeClientsIfSupported();
}

void UnitsProvider::setAltitudeUnitType(std::int64_t type) {
  if (type == altitudeUnitType_) return;
  altitudeUnitType_ = type;
  storeInteger(QMAltitudeUnitPrefKeyName, type);
  establishCurrentUnits();
  notifyOnUnitsChange();
  synchronizeClientsIfSupported();
}

void UnitsProvider::storeUnitChoice(const QMUnit& unit, const QMUnit* current,
                                    std::string_view key) {
  if (current != nullptr && unit.uuid() == current->uuid()) return;
  storeString(key, unit.uuid());
  establishCurrentUnits();
  notifyOnUnitsChange();
}

void UnitsProvider::setPressureUnit(const QMPressureUnit& unit) {
  storeUnitChoice(unit, pressureUnit_.get(), QMPressureUnitPrefKeyName);
}

void UnitsProvider::setTemperatureUnit(const QMTemperatureUnit& unit) {
  storeUnitChoice(unit, temperatureUnit_.get(), QMTemperatureUnitPrefKeyName);
}

void UnitsProvider::setVerticalSpeedUnit(const QMVerticalSpeedUnit& unit) {
  storeUnitChoice(unit, verticalSpeedUnit_.get(), QMCurrentVerticalSpeedUnitUuidPrefKeyName);
}

template <typename Unit>
void UnitsProvider::storeMapUnitChoice(const std::shared_ptr<const Unit>& unit,
                                       std::shared_ptr<const Unit>& current, std::string_view key) {
  // Compared by identity of the identifier constant, unlike the other unit choices.
  if (unit && current && isSameConstant(unit->uuid(), current->uuid())) return;
  if (unit) {
    current = unit;
    storeString(key, unit->uuid());
  } else {
    store_->removeObjectForKey(key);
    store_->synchronize();
    current = Unit::defaultForDistanceUnitType(generalUnitType_);
  }
  establishCurrentUnits();
  notifyOnMapSettingsChange();
}

void UnitsProvider::setCurrentLengthUnit(const std::shared_ptr<const QMLengthUnit>& unit) {
  storeMapUnitChoice(unit, lengthUnit_, QMCurrentLengthUnitUuidPrefKeyName);
}

void UnitsProvider::setCurrentAreaUnit(const std::shared_ptr<const QMAreaUnit>& unit) {
  storeMapUnitChoice(unit, areaUnit_, QMCurrentAreaUnitUuidPrefKeyName);
}

void UnitsProvider::setVerticalSpeedScale(std::int64_t scale, const QMVerticalSpeedUnit& unit) {
  store_->setDouble(scaleKey(unit.uuid()), static_cast<double>(scale));
  store_->synchronize();
  if (verticalSpeedUnit_ && unit.uuid() == verticalSpeedUnit_->uuid()) {
    establishCurrentUnits();
    notifyOnUnitsChange();
  }
}

std::int64_t UnitsProvider::scaleForVerticalSpeedUnit(const QMVerticalSpeedUnit& unit) const {
  const std::string key = scaleKey(unit.uuid());
  const double stored = store_->doubleForKey(key);
  // A value that is no scale at all (NaN, huge) counts as none stored.
  if (!store_->hasKey(key) || !(std::fabs(stored) < 1e9)) return unit.defaultScale();
  return static_cast<std::int64_t>(stored);
}

// ---- Distance unit choice ------------------------------------------------------------------

QMDistanceUnitType UnitsProvider::defaultQMDistanceUnit() const {
  const std::int64_t type = generalUnitType_ == 1 || generalUnitType_ == 2 ? generalUnitType_ : 0;
  return {.isKilometric = true, .unitType = static_cast<DistanceUnitType>(type)};
}

QMDistanceUnitType UnitsProvider::defaultUnitTypeForDistance(double meters) const {
  if (distanceSmallToBigThreshold_ >= 0 && distanceSmallToBigThreshold_ <= meters) {
    return defaultQMDistanceUnit();
  }
  const bool feet = distanceUnit_ && distanceUnit_->unitType() == DistanceUnitType::kImperial;
  return {.isKilometric = false,
          .unitType = feet ? DistanceUnitType::kImperial : DistanceUnitType::kMetric};
}

}  // namespace qm
