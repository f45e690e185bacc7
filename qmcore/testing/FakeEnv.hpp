// An environment for tests: a clock that stands still until stepped, a fresh temporary folder
// (removed with the Env), settings stores kept in files inside it, a notification centre and a
// display orientation of its own, and a fixed locale and time zone.
//
//   qm::testing::FakeEnv env;
//   env.advance(86400.0);                      // one day later
//   qm::UnitsProvider provider(env, environment);

#ifndef QMCORE_TESTING_FAKEENV_HPP_
#define QMCORE_TESTING_FAKEENV_HPP_

#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>

#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"

namespace qm::testing {

class FakeEnv final : public Env {
 public:
  // The clock starts at 2001-01-01 00:00:00 UTC.
  explicit FakeEnv(std::string localeIdentifier = "en_US", std::string timeZoneIdentifier = "UTC")
      : folder_(makeFolder()),
        locale_(std::move(localeIdentifier)),
        timeZone_(std::move(timeZoneIdentifier)) {}
  ~FakeEnv() override {
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
  }
  FakeEnv(const FakeEnv&) = delete;
  FakeEnv& operator=(const FakeEnv&) = delete;

  Date now() const override { return Date::fromUnixSeconds(now_.load()); }
  void setNow(Date date) { now_ = date.timeIntervalSince1970(); }
  void advance(double seconds) { now_ = now_.load() + seconds; }

  std::filesystem::path temporaryDirectory() const override { return folder_ / "tmp"; }
  std::filesystem::path homeDirectory() const override { return folder_ / "home"; }
  // The standard store's file; a store reopened from it sees what was synchronised.
  std::filesystem::path settingsPath() const { return folder_ / "settings.sqlite"; }
  std::shared_ptr<SettingsStore> standardSettings() override {
    return SettingsStore::openFile(settingsPath().string());
  }
  std::shared_ptr<SettingsStore> namedSettings(std::string_view suiteName) override {
    if (suiteName.empty()) return standardSettings();
    return SettingsStore::openFile((folder_ / (std::string(suiteName) + ".sqlite")).string());
  }
  NotificationCenter& notificationCenter() override { return center_; }
  const DisplayOrientationSource& displayOrientation() const override { return orientation_; }
  FixedDisplayOrientation& orientation() { return orientation_; }
  std::string localeIdentifier() const override { return locale_; }
  void setLocaleIdentifier(std::string identifier) { locale_ = std::move(identifier); }
  std::string timeZoneIdentifier() const override { return timeZone_; }

 private:
  static std::filesystem::path makeFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "qmcore-env-XXXXXX").string();
    const char* made = mkdtemp(pattern.data());
    const std::filesystem::path folder = made != nullptr ? made : pattern;
    std::filesystem::create_directories(folder / "tmp");
    std::filesystem::create_directories(folder / "home");
    return folder;
  }

  const std::filesystem::path folder_;
  std::atomic<double> now_ = Date::kTimeIntervalSince1970ToReferenceDate;
  NotificationCenter center_;
  FixedDisplayOrientation orientation_;
  std::string locale_;
  const std::string timeZone_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_FAKEENV_HPP_
