// What the library asks of the world outside, in one object: the clock, the temporary and home
// directories, the settings stores, the notification centre, the display orientation and the
// current locale and time zone.
//
// `Env::Default()` is the process's real environment; the library's shared instances
// (`UnitsProvider::sharedInstance()`, ...) are built over it. Every ordinary class takes an
// `Env&` in its constructor instead of reaching for process-wide state, so that tests can pass
// a fake one (a steppable clock, a fresh temporary directory, a store of their own):
//
//   qm::ProcessEnv env({.settingsPath = "/tmp/try.sqlite"});
//   qm::UnitsProvider provider(env, qm::EnvironmentSettings::shared());
//
// Thread-safety: every member may be called from any thread. The objects an Env hands out
// (stores, centre, orientation source) live at least as long as the Env.

#ifndef QMCORE_PLATFORM_ENV_HPP_
#define QMCORE_PLATFORM_ENV_HPP_

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

#include "qmcore/platform/Date.hpp"

namespace qm {

class DisplayOrientationSource;
class NotificationCenter;
class SettingsStore;

class Env {
 public:
  virtual ~Env() = default;

  // The process's environment (a `ProcessEnv` with default options), created on first use
  // and kept for the process lifetime.
  static Env& Default();

  // The current time.
  virtual Date now() const = 0;
  // The folder for temporary files: $TMPDIR when set and not empty, else "/tmp".
  virtual std::filesystem::path temporaryDirectory() const = 0;
  // The user's home folder: $HOME, else the password database's entry, else ".".
  virtual std::filesystem::path homeDirectory() const = 0;
  // The standard settings store and the named ones (see SettingsStore.hpp); never null.
  virtual std::shared_ptr<SettingsStore> standardSettings() = 0;
  virtual std::shared_ptr<SettingsStore> namedSettings(std::string_view suiteName) = 0;
  // Where change notifications are posted.
  virtual NotificationCenter& notificationCenter() = 0;
  // How the app's display is turned.
  virtual const DisplayOrientationSource& displayOrientation() const = 0;
  // The user's locale ("de_DE") and time zone ("Europe/Berlin").
  virtual std::string localeIdentifier() const = 0;
  virtual std::string timeZoneIdentifier() const = 0;
};

struct ProcessEnvOptions {
  // The file of the standard settings store; empty: the standard file of SettingsStore.hpp
  // (QM_SETTINGS_PATH, else the XDG configuration folder); kInMemorySettings: a store of its
  // own kept in memory only.
  std::string settingsPath;

  static constexpr std::string_view kInMemorySettings = ":memory:";
};

// The real environment: the system clock, the process's environment variables, the store
// files, the default notification centre, the orientation the host sets and the process-wide
// locale and time zone (Locale.hpp).
class ProcessEnv final : public Env {
 public:
  explicit ProcessEnv(ProcessEnvOptions options = {});

  Date now() const override;
  std::filesystem::path temporaryDirectory() const override;
  std::filesystem::path homeDirectory() const override;
  std::shared_ptr<SettingsStore> standardSettings() override;
  std::shared_ptr<SettingsStore> namedSettings(std::string_view suiteName) override;
  NotificationCenter& notificationCenter() override;
  const DisplayOrientationSource& displayOrientation() const override;
  std::string localeIdentifier() const override;
  std::string timeZoneIdentifier() const override;

 private:
  const ProcessEnvOptions options_;
  // The store kept in memory, when the options ask for one.
  const std::shared_ptr<SettingsStore> memoryStore_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_ENV_HPP_
