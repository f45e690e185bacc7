// A units provider over a fake environment of its own (a store file, a notification centre and
// environment settings of its own), for the provider's and the value texts' tests.

#ifndef QMCORE_TESTING_UNITSPROVIDERTESTSUPPORT_HPP_
#define QMCORE_TESTING_UNITSPROVIDERTESTSUPPORT_HPP_

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm::testing {

// Answers as configured and records the calls that report something.
class RecordingDelegate : public EnvironmentSettingsDelegate {
 public:
  std::int64_t feetThreshold = 2000;
  bool syncSupported = false;
  bool drivenBySpeed = false;
  int syncCalls = 0;
  std::vector<DistanceUnitType> switchedTo;

  std::int64_t smallToBigFeetThresholdForDistance() override { return feetThreshold; }
  std::int64_t smallToBigMetersThresholdForDistance() override { return 1500; }
  bool supportsSync() override { return syncSupported; }
  bool unitsAreDrivenBySpeedUnits() override { return drivenBySpeed; }
  void synchronizeClientMeasurementUnits() override { ++syncCalls; }
  void switchToDistanceUnit(DistanceUnitType type) override { switchedTo.push_back(type); }
};

class UnitsProviderTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLocale_ = currentLocaleIdentifier();
    environment_.setDelegate(delegate_);
    for (const char* name : {"QMUnitsChanged", "QMPlanimeterUnitTypeChanged"}) {
      observers_.push_back(env_.notificationCenter().addObserver(
          name, [this](const Notification& n) { ++posts_[n.name]; }));
    }
  }

  void TearDown() override {
    provider_.reset();
    setCurrentLocaleIdentifier(savedLocale_);
  }

  // A new provider over the test's store, as at a launch in `locale`.
  UnitsProvider& launch(const char* locale = "en_US") {
    setCurrentLocaleIdentifier(locale);
    env_.setLocaleIdentifier(locale);
    provider_.reset();
    provider_ = std::make_unique<UnitsProvider>(env_, environment_);
    posts_.clear();
    return *provider_;
  }

  int unitsChangedPosts() const { return count("QMUnitsChanged"); }
  int mapSettingsPosts() const { return count("QMPlanimeterUnitTypeChanged"); }

  FakeEnv env_;
  std::shared_ptr<SettingsStore> store_ = env_.standardSettings();
  EnvironmentSettings environment_;
  std::shared_ptr<RecordingDelegate> delegate_ = std::make_shared<RecordingDelegate>();
  std::unique_ptr<UnitsProvider> provider_;

 private:
  int count(const std::string& name) const {
    const auto it = posts_.find(name);
    return it == posts_.end() ? 0 : it->second;
  }

  std::string savedLocale_;
  std::vector<ObserverHandle> observers_;
  std::map<std::string, int> posts_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_UNITSPROVIDERTESTSUPPORT_HPP_
