#include "qmcore/platform/Locale.hpp"

#include <unicode/locid.h>
#include <unicode/timezone.h>
#include <unicode/ulocdata.h>

#include <cstdlib>
#include <mutex>

#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

constexpr std::string_view kPosixLocale = "en_US_POSIX";

// "de_DE.UTF-8@euro" -> "de_DE"; "de-DE" -> "de_DE"; "C" -> "en_US_POSIX".
std::string canonicalLocale(std::string_view identifier) {
  identifier = identifier.substr(0, identifier.find_first_of(".@"));
  if (identifier.empty() || identifier == "C" || identifier == "POSIX") {
    return std::string(kPosixLocale);
  }
  const icu::Locale locale(std::string(identifier).c_str());
  if (locale.isBogus()) return std::string(kPosixLocale);
  return locale.getName();
}

std::string localeFromEnvironment() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return canonicalLocale(value);
  }
  return std::string(kPosixLocale);
}

std::string timeZoneFromEnvironment() {
  if (const char* tz = std::getenv("TZ"); tz != nullptr && *tz != '\0') {
    std::string_view id(tz);
    if (id.front() == ':') id.remove_prefix(1);
    if (!id.empty()) return std::string(id);
  }
  const std::unique_ptr<icu::TimeZone> host(icu::TimeZone::detectHostTimeZone());
  icu::UnicodeString id;
  host->getID(id);
  return internal::toUtf8(id);
}

struct Current {
  std::mutex mutex;
  std::string locale = localeFromEnvironment();
  std::string timeZone = timeZoneFromEnvironment();
};

Current& current() {
  static Current instance;
  return instance;
}

}  // namespace

std::string currentLocaleIdentifier() {
  Current& c = current();
  const std::lock_guard lock(c.mutex);
  return c.locale;
}

void setCurrentLocaleIdentifier(std::string_view identifier) {
  std::string canonical = canonicalLocale(identifier);
  Current& c = current();
  const std::lock_guard lock(c.mutex);
  c.locale = std::move(canonical);
}

std::string_view languageOfLocale(std::string_view identifier) {
  return identifier.substr(0, identifier.find_first_of("_-"));
}

std::string currentTimeZoneIdentifier() {
  Current& c = current();
  const std::lock_guard lock(c.mutex);
  return c.timeZone;
}

void setCurrentTimeZoneIdentifier(std::string_view identifier) {
  std::string id = identifier.empty() ? timeZoneFromEnvironment() : std::string(identifier);
  Current& c = current();
  const std::lock_guard lock(c.mutex);
  c.timeZone = std::move(id);
}

MeasurementSystem measurementSystemForLocale(std::string_view identifier) {
  UErrorCode status = U_ZERO_ERROR;
  const std::string id = canonicalLocale(identifier);
  const UMeasurementSystem system = ulocdata_getMeasurementSystem(id.c_str(), &status);
  if (U_FAILURE(status)) return MeasurementSystem::kMetric;
  switch (system) {
    case UMS_US:
      return MeasurementSystem::kUS;
    case UMS_UK:
      return MeasurementSystem::kUK;
    default:
      return MeasurementSystem::kMetric;
  }
}

}  // namespace qm
