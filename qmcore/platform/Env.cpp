#include "qmcore/platform/Env.hpp"

#include <pwd.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

#include "qmcore/platform/DisplayOrientation.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"

namespace qm {

Env& Env::Default() {
  static ProcessEnv env;
  return env;
}

ProcessEnv::ProcessEnv(ProcessEnvOptions options)
    : options_(std::move(options)),
      memoryStore_(options_.settingsPath == ProcessEnvOptions::kInMemorySettings
                       ? SettingsStore::inMemory()
                       : nullptr) {}

Date ProcessEnv::now() const { return Date::now(); }

std::filesystem::path ProcessEnv::temporaryDirectory() const {
  if (const char* tmp = std::getenv("TMPDIR"); tmp != nullptr && *tmp != '\0') return tmp;
  return "/tmp";
}

std::filesystem::path ProcessEnv::homeDirectory() const {
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0') return home;
  std::array<char, 4096> buffer{};
  passwd entry{};
  passwd* found = nullptr;
  if (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == 0 && found != nullptr &&
      found->pw_dir != nullptr) {
    return found->pw_dir;
  }
  return ".";
}

std::shared_ptr<SettingsStore> ProcessEnv::standardSettings() {
  if (memoryStore_) return memoryStore_;
  if (options_.settingsPath.empty()) return SettingsStore::standard();
  return SettingsStore::openFile(options_.settingsPath);
}

std::shared_ptr<SettingsStore> ProcessEnv::namedSettings(std::string_view suiteName) {
  return SettingsStore::named(suiteName);
}

NotificationCenter& ProcessEnv::notificationCenter() { return NotificationCenter::defaultCenter(); }

const DisplayOrientationSource& ProcessEnv::displayOrientation() const {
  return DisplayOrientationSource::current();
}

std::string ProcessEnv::localeIdentifier() const { return currentLocaleIdentifier(); }

std::string ProcessEnv::timeZoneIdentifier() const { return currentTimeZoneIdentifier(); }

}  // namespace qm
