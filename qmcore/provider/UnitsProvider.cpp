#include "qmcore/provider/UnitsProvider.hpp"

#include <utility>

#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/platform/TextCase.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/units/QMUnitSorting.hpp"
#include "qmcore/units/UnitKinds.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

template <typename Unit>
std::shared_ptr<const Unit> find(const UnitsProvider::Catalog<Unit>& catalog,
                                 std::string_view uuid) {
  const auto it = catalog.find(uuid);
  return it == catalog.end() ? nullptr : it->second;
}

// The catalog in the order of its kind (UnitKinds.hpp).
template <typename Unit>
std::vector<std::shared_ptr<const Unit>> sortedCatalog(const UnitsProvider::Catalog<Unit>& catalog,
                                                       QMMeasurementSubject subject) {
  std::vector<std::shared_ptr<const Unit>> units;
  units.reserve(catalog.size());
  for (const auto& entry : catalog) units.push_back(entry.second);
  return sortedUnits(std::move(units), unitKindForSubject(subject)->sortOrder);
}

}  // namespace

UnitsProvider::UnitsProvider(Env& env, EnvironmentSettings& environment)
    : store_(env.standardSettings()),
      center_(env.notificationCenter()),
      environment_(environment),
      env_(env),
      catalogs_(environment.distanceSwitchValues()),
      current_(deriveCurrentUnits(*store_, catalogs_,
                                  restoreUnitSystemChoice(*store_, localeIsMetric()), nullptr)),
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
  restoreDistanceSmallToBigThreshold();
}

UnitsProvider& UnitsProvider::sharedInstance() {
  static UnitsProvider provider(Env::Default(), EnvironmentSettings::shared());
  return provider;
}

// ---- Lookups and lists ---------------------------------------------------------------------

std::shared_ptr<const QMLengthUnit> UnitsProvider::lengthUnitWithUuid(std::string_view uuid) const {
  return find(catalogs_.length, uuid);
}

std::shared_ptr<const QMAreaUnit> UnitsProvider::areaUnitWithUuid(std::string_view uuid) const {
  return find(catalogs_.area, uuid);
}

std::shared_ptr<const QMSpeedUnit> UnitsProvider::speedUnitWithUuid(std::string_view uuid) const {
  return find(catalogs_.speed, uuid);
}

std::shared_ptr<const QMVerticalSpeedUnit> UnitsProvider::verticalSpeedUnitWithUuid(
    std::string_view uuid) const {
  return find(catalogs_.verticalSpeed, uuid);
}

std::shared_ptr<const QMDistanceUnit> UnitsProvider::distanceUnitWithUuid(
    std::string_view uuid) const {
  return find(catalogs_.distance, uuid);
}

std::shared_ptr<const QMAltitudeUnit> UnitsProvider::altitudeUnitWithUuid(
    std::string_view uuid) const {
  auto unit = find(catalogs_.altitude, uuid);
  return unit ? unit : current_.altitudeUnit;
}

std::shared_ptr<const QMPressureUnit> UnitsProvider::pressureUnitWithUuid(
    std::string_view uuid) const {
  auto unit = find(catalogs_.pressure, uuid);
  return unit ? unit : current_.pressureUnit;
}

std::shared_ptr<const QMTemperatureUnit> UnitsProvider::temperatureUnitWithUuid(
    std::string_view uuid) const {
  auto unit = find(catalogs_.temperature, uuid);
  return unit ? unit : current_.temperatureUnit;
}

std::vector<std::shared_ptr<const QMLengthUnit>> UnitsProvider::allLengthUnits() const {
  return sortedCatalog(catalogs_.length, QMMeasurementSubject::kLength);
}

std::vector<std::shared_ptr<const QMAreaUnit>> UnitsProvider::allAreaUnits() const {
  return sortedCatalog(catalogs_.area, QMMeasurementSubject::kArea);
}

std::vector<std::shared_ptr<const QMSpeedUnit>> UnitsProvider::allSpeedUnits() const {
  return sortedCatalog(catalogs_.speed, QMMeasurementSubject::kSpeed);
}

std::vector<std::shared_ptr<const QMVerticalSpeedUnit>> UnitsProvider::allVerticalSpeedUnits()
    const {
  return sortedCatalog(catalogs_.verticalSpeed, QMMeasurementSubject::kVerticalSpeed);
}

std::vector<std::shared_ptr<const QMPressureUnit>> UnitsProvider::allPressureUnits() const {
  return sortedCatalog(catalogs_.pressure, QMMeasurementSubject::kPressure);
}

std::vector<std::shared_ptr<const QMTemperatureUnit>> UnitsProvider::allTemperatureUnits() const {
  return sortedCatalog(catalogs_.temperature, QMMeasurementSubject::kTemperature);
}

std::vector<std::shared_ptr<const QMAltitudeUnit>> UnitsProvider::allAltitudeUnits() const {
  return sortedCatalog(catalogs_.altitude, QMMeasurementSubject::kAltitude);
}

std::vector<std::shared_ptr<const QMDistanceUnit>> UnitsProvider::allDistanceUnits() const {
  return sortedCatalog(catalogs_.distance, QMMeasurementSubject::kDistance);
}

// ---- Restoring and deriving ----------------------------------------------------------------

bool UnitsProvider::localeIsMetric() const {
  return EnvironmentSettings::isMetric(env_.localeIdentifier());
}

void UnitsProvider::restoreCurrentGeneralUnitType() {
  current_.generalUnitType = restoredGeneralUnitType(*store_, localeIsMetric());
  // Only a stored system checks the small distance type, and only that: the system itself is
  // taken as it is.
  if (store_->hasKey(QMGeneralUnitPrefKeyName) && current_.distanceUnitType >= 2) {
    current_.distanceUnitType = 0;
  }
}

void UnitsProvider::restoreCurrentDistanceUnitType() {
  current_.distanceUnitType = restoredDistanceUnitType(*store_, current_.generalUnitType);
}

void UnitsProvider::restoreCurrentAltitudeUnitType() {
  current_.altitudeUnitType = restoredAltitudeUnitType(*store_, current_.generalUnitType);
}

void UnitsProvider::restoreCurrentVerticalSpeedUnitType() {
  current_.verticalSpeedUnit = derived(choice()).verticalSpeedUnit;
}

void UnitsProvider::restoreCurrentPressureUnitType() {
  current_.pressureUnit = derived(choice()).pressureUnit;
}

void UnitsProvider::restoreCurrentTemperatureUnitType() {
  current_.temperatureUnit = derived(choice()).temperatureUnit;
}

void UnitsProvider::establishCurrentUnits() { deriveFor(choice()); }

UnitSystemChoice UnitsProvider::choice() const {
  return {.generalUnitType = current_.generalUnitType,
          .distanceUnitType = current_.distanceUnitType,
          .altitudeUnitType = current_.altitudeUnitType};
}

CurrentUnits UnitsProvider::derived(const UnitSystemChoice& choice) const {
  return deriveCurrentUnits(*store_, catalogs_, choice, &current_);
}

void UnitsProvider::deriveFor(const UnitSystemChoice& choice) { current_ = derived(choice); }

// ---- Setters -------------------------------------------------------------------------------

void UnitsProvider::setGeneralUnitType(std::int64_t type) {
  if (type == current_.generalUnitType) return;
  storeInteger(QMGeneralUnitPrefKeyName, type);
  deriveFor(restoreUnitSystemChoice(*store_, localeIsMetric()));
  restoreDistanceSmallToBigThreshold();
  environment_.switchToDistanceUnit(static_cast<DistanceUnitType>(type));
  notifyOnUnitsChange();
  synchronizeClientsIfSupported();
}

void UnitsProvider::setNauticalDistanceUnitType(std::int64_t type) {
  store_->setInteger(QMNauticalDistanceUnitPrefKeyName, type);
  store_->removeObjectForKey(QMOLDNauticalDistanceAndAltitudeUnitPrefKeyName);
  store_->synchronize();
  if (!isNauticalSystem(current_.generalUnitType) || type == current_.distanceUnitType) return;
  UnitSystemChoice next = choice();
  next.distanceUnitType = restoredDistanceUnitType(*store_, next.generalUnitType);
  deriveFor(next);
  restoreDistanceSmallToBigThreshold();
  notifyOnUnitsChange();
  synchronizeClientsIfSupported();
}

void UnitsProvider::setAltitudeUnitType(std::int64_t type) {
  if (type == current_.altitudeUnitType) return;
  storeInteger(QMAltitudeUnitPrefKeyName, type);
  UnitSystemChoice next = choice();
  next.altitudeUnitType = type;
  deriveFor(next);
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
  storeUnitChoice(unit, current_.pressureUnit.get(), QMPressureUnitPrefKeyName);
}

void UnitsProvider::setTemperatureUnit(const QMTemperatureUnit& unit) {
  storeUnitChoice(unit, current_.temperatureUnit.get(), QMTemperatureUnitPrefKeyName);
}

void UnitsProvider::setVerticalSpeedUnit(const QMVerticalSpeedUnit& unit) {
  storeUnitChoice(unit, current_.verticalSpeedUnit.get(),
                  QMCurrentVerticalSpeedUnitUuidPrefKeyName);
}

void UnitsProvider::storeMapUnitChoice(const QMUnit* unit, const QMUnit* current,
                                       std::string_view key) {
  // Compared by identity of the identifier constant, unlike the other unit choices.
  if (unit != nullptr && current != nullptr && isSameConstant(unit->uuid(), current->uuid())) {
    return;
  }
  if (unit != nullptr) {
    storeString(key, unit->uuid());
  } else {
    store_->removeObjectForKey(key);
    store_->synchronize();
  }
  establishCurrentUnits();
  notifyOnMapSettingsChange();
}

void UnitsProvider::setCurrentLengthUnit(const std::shared_ptr<const QMLengthUnit>& unit) {
  storeMapUnitChoice(unit.get(), current_.lengthUnit.get(), QMCurrentLengthUnitUuidPrefKeyName);
}

void UnitsProvider::setCurrentAreaUnit(const std::shared_ptr<const QMAreaUnit>& unit) {
  storeMapUnitChoice(unit.get(), current_.areaUnit.get(), QMCurrentAreaUnitUuidPrefKeyName);
}

void UnitsProvider::setVerticalSpeedScale(std::int64_t scale, const QMVerticalSpeedUnit& unit) {
  store_->setDouble(verticalSpeedScaleKey(unit.uuid()), static_cast<double>(scale));
  store_->synchronize();
  if (current_.verticalSpeedUnit && unit.uuid() == current_.verticalSpeedUnit->uuid()) {
    establishCurrentUnits();
    notifyOnUnitsChange();
  }
}

std::int64_t UnitsProvider::scaleForVerticalSpeedUnit(const QMVerticalSpeedUnit& unit) const {
  return storedScaleForVerticalSpeedUnit(*store_, unit);
}

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
  center_.post(QMPlanimeterUnitTypeChangedNotification);
}

// ---- Distance unit choice ------------------------------------------------------------------

QMDistanceUnitType UnitsProvider::defaultQMDistanceUnit() const {
  const std::int64_t system = current_.generalUnitType;
  // Systems without a big unit of their own (3, and codes outside the table) show kilometres.
  const UnitSystem* row = unitSystem(system);
  const std::int64_t type = row != nullptr && row->bigUnitsPerKilometer ? system : 0;
  return {.isKilometric = true, .unitType = static_cast<DistanceUnitType>(type)};
}

QMDistanceUnitType UnitsProvider::defaultUnitTypeForDistance(double meters) const {
  const double threshold = current_.distanceSmallToBigThreshold;
  if (threshold >= 0 && threshold <= meters) {
    return defaultQMDistanceUnit();
  }
  const auto& distanceUnit = current_.distanceUnit;
  const bool feet = distanceUnit && distanceUnit->unitType() == DistanceUnitType::kImperial;
  return {.isKilometric = false,
          .unitType = feet ? DistanceUnitType::kImperial : DistanceUnitType::kMetric};
}

}  // namespace qm
