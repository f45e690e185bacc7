// A units provider over a store file of its own, with its own notification centre and
// environment, for the provider's tests.

#ifndef QMCORE_PROVIDER_UNITSPROVIDERTESTSUPPORT_HPP_
#define QMCORE_PROVIDER_UNITSPROVIDERTESTSUPPORT_HPP_

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"

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
    folder_ = std::filesystem::path(::testing::TempDir()) /
              ("provider-" +
               std::string(::testing::UnitTest::GetInstance()->current_test_info()->name()));
    std::filesystem::remove_all(folder_);
    store_ = SettingsStore::openFile(storePath());
    environment_.setDelegate(delegate_);
    for (const char* name : {"QMUnitsChanged", "QMPlanimeterUnitTypeChanged"}) {
      observers_.push_back(
          center_.addObserver(name, [this](const Notification& n) { ++posts_[n.name]; }));
    }
  }

  void TearDown() override {
    provider_.reset();
    store_.reset();
    std::filesystem::remove_all(folder_);
    setCurrentLocaleIdentifier(savedLocale_);
  }

  std::string storePath() const { return (folder_ / "settings.sqlite").string(); }

  // A new provider over the test's store, as at a launch in `locale`.
  UnitsProvider& launch(const char* locale = "en_US") {
    setCurrentLocaleIdentifier(locale);
    provider_.reset();
    provider_ = std::make_unique<UnitsProvider>(store_, center_, environment_);
    posts_.clear();
    return *provider_;
  }

  int unitsChangedPosts() const { return count("QMUnitsChanged"); }
  int mapSettingsPosts() const { return count("QMPlanimeterUnitTypeChanged"); }

  std::filesystem::path folder_;
  std::shared_ptr<SettingsStore> store_;
  NotificationCenter center_;
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

#endif  // QMCORE_PROVIDER_UNITSPROVIDERTESTSUPPORT_HPP_
