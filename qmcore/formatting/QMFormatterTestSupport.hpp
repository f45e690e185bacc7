// Test helpers of the formatting tests: the current locale, time zone or C library locale
// changed for one scope and restored afterwards, so that tests do not depend on their order.

#ifndef QMCORE_FORMATTING_QMFORMATTERTESTSUPPORT_HPP_
#define QMCORE_FORMATTING_QMFORMATTERTESTSUPPORT_HPP_

#include <clocale>
#include <string>
#include <string_view>

#include "qmcore/platform/Locale.hpp"

namespace qm::testing {

class ScopedLocale {
 public:
  explicit ScopedLocale(std::string_view identifier) : saved_(currentLocaleIdentifier()) {
    setCurrentLocaleIdentifier(identifier);
  }
  ~ScopedLocale() { setCurrentLocaleIdentifier(saved_); }
  ScopedLocale(const ScopedLocale&) = delete;
  ScopedLocale& operator=(const ScopedLocale&) = delete;

 private:
  std::string saved_;
};

class ScopedTimeZone {
 public:
  explicit ScopedTimeZone(std::string_view identifier) : saved_(currentTimeZoneIdentifier()) {
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

#endif  // QMCORE_FORMATTING_QMFORMATTERTESTSUPPORT_HPP_
