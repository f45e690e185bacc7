// A point in time, the stand-in for the phone platform's `NSDate`: seconds since
// 1970-01-01T00:00:00Z as a double (fractions and negative values allowed).
//
//   qm::Date d = qm::Date::fromUnixSeconds(978307200.0);
//   d.timeIntervalSinceReferenceDate();  // 0.0: the platform's reference date 2001-01-01

#ifndef QMCORE_PLATFORM_DATE_HPP_
#define QMCORE_PLATFORM_DATE_HPP_

#include <chrono>
#include <compare>

namespace qm {

class Date {
 public:
  // Seconds from 1970-01-01 to the platform's reference date 2001-01-01 (UTC).
  static constexpr double kTimeIntervalSince1970ToReferenceDate = 978307200.0;

  constexpr Date() = default;
  static constexpr Date fromUnixSeconds(double seconds) { return Date(seconds); }
  static constexpr Date fromReferenceDateSeconds(double seconds) {
    return Date(seconds + kTimeIntervalSince1970ToReferenceDate);
  }
  static Date fromTimePoint(std::chrono::system_clock::time_point t) {
    return Date(std::chrono::duration<double>(t.time_since_epoch()).count());
  }
  // The current moment, with the system clock's resolution.
  static Date now() { return fromTimePoint(std::chrono::system_clock::now()); }

  constexpr double timeIntervalSince1970() const { return seconds_; }
  constexpr double timeIntervalSinceReferenceDate() const {
    return seconds_ - kTimeIntervalSince1970ToReferenceDate;
  }
  std::chrono::system_clock::time_point toTimePoint() const {
    return std::chrono::system_clock::time_point(
        std::chrono::duration_cast<std::chrono::system_clock::duration>(
            std::chrono::duration<double>(seconds_)));
  }
  constexpr Date addingTimeInterval(double seconds) const { return Date(seconds_ + seconds); }

  constexpr auto operator<=>(const Date&) const = default;

 private:
  constexpr explicit Date(double seconds) : seconds_(seconds) {}
  double seconds_ = 0.0;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_DATE_HPP_
