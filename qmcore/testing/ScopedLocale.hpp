// Test helpers: the current locale, time zone or C library locale changed for one scope and
// restored afterwards, so that tests do not depend on their order.

#ifndef QMCORE_TESTING_SCOPEDLOCALE_HPP_
#define QMCORE_TESTING_SCOPEDLOCALE_HPP_

#include <clocale>
#include <string>
#include <string_view>

#include "qmcore/platform/Locale.hpp"

namespace qm::testing {

// Restores the current locale on destruction; the one-argument form also sets it.
class ScopedLocale {
 public:
  ScopedLocale() : saved_(currentLocaleIdentifier()) {}
  explicit ScopedLocale(std::string_view identifier) : ScopedLocale() {
    setCurrentLocaleIdentifier(identifier);
  }
  ~ScopedLocale() { setCurrentLocaleIdentifier(saved_); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;

 private:
  std::string saved_;
};

// Restores the current time zone on destruction; the one-argument form also sets it.
class ScopedTimeZone {
 public:
  ScopedTimeZone() : saved_(currentTimeZoneIdentifier()) {}
  explicit ScopedTimeZone(std::string_view identifier) : ScopedTimeZone() {
    setCurrentTimeZoneIdentifier(identifier);
  }
  ~ScopedTimeZone() { setCurrentTimeZoneIdentifier(saved_); }
  ScopedTimeZone(const ScopedTimeZone&) = delete;
  ScopedTimeZone& operator=(const ScopedTimeZone&) = delete;

 private:
  std::string saved_;
};

// Puts a C library locale with "," as decimal separator in force, as a host app may;
// `active()` is false when the machine does not have it. Restores "C".
class ScopedGermanCLocale {
 public:
  ScopedGermanCLocale() : active_(std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr) {}
  ~ScopedGermanCLocale() { std::setlocale(LC_ALL, "C"); }
  ScopedGermanCLocale(const ScopedGermanCLocale&) = delete;
  ScopedGermanCLocale& operator=(const ScopedGermanCLocale&) = delete;

  bool active() const { return active_; }

 private:
  bool active_;
};

}  // namespace qm::testing

#endif  // QMCORE_TESTING_SCOPEDLOCALE_HPP_
