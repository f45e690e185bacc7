// The host application's say in the library's unit behaviour.
//
// The app implements `EnvironmentSettingsDelegate` and installs it with `setDelegate`; the
// library asks `EnvironmentSettings::shared()` its questions (switch thresholds, north type,
// whether units follow the speed unit, ...), which forwards each to the delegate and answers
// with a fixed value while none is installed. The settings hold the delegate weakly: when the
// app releases it, answers fall back to the fixed values, without error.
//
//   auto delegate = std::make_shared<MyAppSettings>();
//   qm::EnvironmentSettings::shared().setDelegate(delegate);
//   qm::EnvironmentSettings::shared().smallToBigFeetThresholdForDistance();  // the app's answer
//
// `isMetric` needs no delegate: it reads the measurement system of the user's locale.
//
// Thread-safety: every member of `EnvironmentSettings` may be called from any thread; each
// call re-reads the delegate and holds it strongly only while forwarding. The delegate's own
// operations run on the calling thread.

#ifndef QMCORE_PROVIDER_ENVIRONMENTSETTINGS_HPP_
#define QMCORE_PROVIDER_ENVIRONMENTSETTINGS_HPP_

#include <cstdint>
#include <memory>
#include <mutex>
#include <string_view>

#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMUnitTypes.hpp"

namespace qm {

// Implemented by the application; every query is synchronous. Each operation's default is the
// answer the library gives without a delegate, so a delegate overrides only what the app decides.
class EnvironmentSettingsDelegate {
 public:
  virtual ~EnvironmentSettingsDelegate() = default;

  // Distance (in feet) from which distances switch from feet to miles.
  virtual std::int64_t smallToBigFeetThresholdForDistance() { return 2000; }
  // Distance in metres from which distances switch to kilometres. The library never calls
  // it: `EnvironmentSettings` answers this question with the feet query.
  virtual std::int64_t smallToBigMetersThresholdForDistance() { return 1000; }
  // The north reference of headings: 0 true north, anything else magnetic north.
  virtual std::int64_t northType() { return 0; }
  virtual bool showsDecimalDotForSpeedUnder100() { return false; }
  virtual bool defaultMapShowDotsForConnectionPoints() { return false; }
  virtual bool supportsSync() { return false; }
  virtual bool unitsAreDrivenBySpeedUnits() { return false; }
  // The user's unit choices changed and should be synchronised with the app's other clients.
  virtual void synchronizeClientMeasurementUnits() {}
  // The general unit system changed to `type`.
  virtual void switchToDistanceUnit(DistanceUnitType /*type*/) {}
};

class EnvironmentSettings {
 public:
  // The process-wide instance, created on first use and kept for the process lifetime.
  static EnvironmentSettings& shared();

  // Settings without a delegate.
  EnvironmentSettings() = default;
  EnvironmentSettings(const EnvironmentSettings&) = delete;
  EnvironmentSettings& operator=(const EnvironmentSettings&) = delete;

  // The delegate, or null when none is installed or it has been released.
  std::shared_ptr<EnvironmentSettingsDelegate> delegate() const;
  // Installs `delegate` without keeping it alive; an empty pointer removes it.
  void setDelegate(std::weak_ptr<EnvironmentSettingsDelegate> delegate);

  // The delegate's answer; without one: 2000.
  std::int64_t smallToBigFeetThresholdForDistance() const;
  // The delegate's answer to the *feet* query (deliberately: the library never asks the
  // delegate's metres operation); without a delegate: 1000.
  std::int64_t smallToBigMetersThresholdForDistance() const;
  // Both answers above, for the distance unit factories.
  DistanceSwitchValues distanceSwitchValues() const;
  // The delegate's answers; without one: 0 and false.
  std::int64_t northType() const;
  bool showsDecimalDotForSpeedUnder100() const;
  bool defaultMapShowDotsForConnectionPoints() const;
  bool supportsSync() const;
  bool unitsAreDrivenBySpeedUnits() const;
  // Forwarded to the delegate; nothing happens without one.
  void synchronizeClientMeasurementUnits() const;
  void switchToDistanceUnit(DistanceUnitType type) const;

  // Whether the metric system is the default for the current locale: false when the locale
  // uses the UK or the US measurement system (en_GB, en_US), true for any other.
  bool isMetric() const;
  // The same for the locale `localeIdentifier` ("en_GB", "de_DE").
  static bool isMetric(std::string_view localeIdentifier);

 private:
  mutable std::mutex mutex_;
  std::weak_ptr<EnvironmentSettingsDelegate> delegate_;
};

}  // namespace qm

#endif  // QMCORE_PROVIDER_ENVIRONMENTSETTINGS_HPP_
