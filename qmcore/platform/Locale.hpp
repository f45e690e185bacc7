// The process-wide current locale and time zone, the stand-ins for the phone platform's
// `NSLocale.currentLocale` and `NSTimeZone.localTimeZone`.
//
// Both start from the environment (the locale from LC_ALL, LC_MESSAGES or LANG; the time zone
// from TZ, else the host's zone) and can be changed by the host app at any time. Every text the
// library builds in "the current locale" reads them at the time of the call, so a change takes
// effect on the next call. All functions are thread-safe.
//
//   qm::setCurrentLocaleIdentifier("de_DE");
//   qm::currentLocaleIdentifier();          // "de_DE"
//   qm::measurementSystemForLocale("en_GB"); // MeasurementSystem::kUK

#ifndef QMCORE_PLATFORM_LOCALE_HPP_
#define QMCORE_PLATFORM_LOCALE_HPP_

#include <string>
#include <string_view>

namespace qm {

// The locale identifier in ICU's form ("de_DE", "en_US_POSIX"). A C or POSIX environment
// locale, or none, gives "en_US_POSIX".
std::string currentLocaleIdentifier();

// Sets the current locale. Accepts ICU and POSIX spellings ("de-DE", "de_DE.UTF-8"); an empty
// identifier, "C" or "POSIX" gives "en_US_POSIX".
void setCurrentLocaleIdentifier(std::string_view identifier);

// The language part of a locale identifier: "de" for "de_DE", "" for "".
std::string_view languageOfLocale(std::string_view identifier);

// The current time zone as an IANA identifier ("Europe/Berlin", "UTC").
std::string currentTimeZoneIdentifier();

// Sets the current time zone; an empty identifier restores the one from the environment.
void setCurrentTimeZoneIdentifier(std::string_view identifier);

// The measurement system a locale uses, as ICU's locale data says.
enum class MeasurementSystem { kMetric, kUK, kUS };
MeasurementSystem measurementSystemForLocale(std::string_view identifier);

}  // namespace qm

#endif  // QMCORE_PLATFORM_LOCALE_HPP_
