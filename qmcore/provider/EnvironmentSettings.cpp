#include "qmcore/provider/EnvironmentSettings.hpp"

#include "qmcore/platform/Locale.hpp"

namespace qm {

EnvironmentSettings& EnvironmentSettings::shared() {
  static EnvironmentSettings settings;
  return settings;
}

std::shared_ptr<EnvironmentSettingsDelegate> EnvironmentSettings::delegate() const {
  const std::lock_guard lock(mutex_);
  return delegate_.lock();
}

void EnvironmentSettings::setDelegate(std::weak_ptr<EnvironmentSettingsDelegate> delegate) {
  const std::lock_guard lock(mutex_);
  delegate_ = std::move(delegate);
}

std::int64_t EnvironmentSettings::smallToBigFeetThresholdForDistance() const {
  const auto d = delegate();
  return d ? d->smallToBigFeetThresholdForDistance() : 2000;
}

std::int64_t EnvironmentSettings::smallToBigMetersThresholdForDistance() const {
  const auto d = delegate();
  return d ? d->smallToBigFeetThresholdForDistance() : 1000;
}

DistanceSwitchValues EnvironmentSettings::distanceSwitchValues() const {
  return {.feet = smallToBigFeetThresholdForDistance(),
          .meters = smallToBigMetersThresholdForDistance()};
}

std::int64_t EnvironmentSettings::northType() const {
  const auto d = delegate();
  return d ? d->northType() : 0;
}

bool EnvironmentSettings::showsDecimalDotForSpeedUnder100() const {
  const auto d = delegate();
  return d ? d->showsDecimalDotForSpeedUnder100() : false;
}

bool EnvironmentSettings::defaultMapShowDotsForConnectionPoints() const {
  const auto d = delegate();
  return d ? d->defaultMapShowDotsForConnectionPoints() : false;
}

bool EnvironmentSettings::supportsSync() const {
  const auto d = delegate();
  return d ? d->supportsSync() : false;
}

bool EnvironmentSettings::unitsAreDrivenBySpeedUnits() const {
  const auto d = delegate();
  return d ? d->unitsAreDrivenBySpeedUnits() : false;
}

void EnvironmentSettings::synchronizeClientMeasurementUnits() const {
  if (const auto d = delegate()) d->synchronizeClientMeasurementUnits();
}

void EnvironmentSettings::switchToDistanceUnit(DistanceUnitType type) const {
  if (const auto d = delegate()) d->switchToDistanceUnit(type);
}

bool EnvironmentSettings::isMetric() const { return isMetric(currentLocaleIdentifier()); }

bool EnvironmentSettings::isMetric(std::string_view localeIdentifier) {
  return measurementSystemForLocale(localeIdentifier) == MeasurementSystem::kMetric;
}

}  // namespace qm
