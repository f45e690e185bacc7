// The Gregorian calendar of a locale and time zone, the stand-in for the phone platform's
// `NSCalendar`: wall-clock fields of dates, calendar arithmetic (adding days keeps the time of
// day across daylight-saving changes), weeks by the locale's or a chosen first weekday, and
// month names.
//
//   qm::Calendar calendar = qm::Calendar::gregorian();   // current locale and time zone
//   calendar.setFirstWeekday(2);                          // weeks start on Monday
//   auto week = calendar.weekOfYear(qm::Date::now());
//   auto monday = calendar.startOfWeek(*week);            // Monday 00:00 of this week
//
// Weekdays are numbered 1 = Sunday ... 7 = Saturday, months 1 = January ... 12 = December.
// Operations that ICU cannot complete (a date that is not finite or beyond the calendar's
// range, an overflowing field) return an absent result.
//
// Thread-safety: const operations may be called from several threads at once (each object
// serialises its own use of ICU); `setFirstWeekday` and assignment need exclusive access.
// Copies are independent.

#ifndef QMCORE_PLATFORM_CALENDAR_HPP_
#define QMCORE_PLATFORM_CALENDAR_HPP_

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "qmcore/platform/Date.hpp"

namespace qm {

class Calendar {
 public:
  // Wall-clock fields of a date in the calendar's time zone.
  struct Components {
    int year;
    int month;  // 1 ... 12
    int day;
    int hour;
    int minute;
    int second;
  };

  // A week as the calendar counts them: the year the week belongs to (which differs from the
  // calendar year in the days around New Year) and the week's number within it.
  struct WeekOfYear {
    int yearForWeekOfYear;
    int weekOfYear;
  };

  // A Gregorian calendar in the current locale and time zone (as they are now).
  static Calendar gregorian();

  // A Gregorian calendar in the given locale ("de_DE") and IANA time zone ("Europe/Berlin").
  // A time zone ICU does not know behaves as GMT; the locale gives the first weekday and the
  // minimum number of days in the first week of a year.
  Calendar(std::string_view localeIdentifier, std::string_view timeZoneIdentifier);

  Calendar(const Calendar& other);
  Calendar& operator=(const Calendar& other);
  ~Calendar();

  // The weekday that weeks start on (1 = Sunday ... 7 = Saturday).
  int firstWeekday() const;
  // Sets it; values outside 1 ... 7 are ignored.
  void setFirstWeekday(int weekday);

  std::optional<Components> components(Date date) const;
  // The date of the fields; fields beyond their ranges roll over (month 13 is January of the
  // next year). A wall-clock time skipped by a daylight-saving change moves forward.
  std::optional<Date> date(const Components& components) const;

  // The weekday of `date` (1 = Sunday ... 7 = Saturday).
  std::optional<int> weekday(Date date) const;

  // `date` moved by whole days or weeks of the calendar, keeping the wall-clock time.
  std::optional<Date> dateByAddingDays(std::int64_t days, Date date) const;
  std::optional<Date> dateByAddingWeeks(std::int64_t weeks, Date date) const;

  // The number of whole days from `start` to `end` (negative when `end` is earlier).
  std::optional<std::int64_t> daysBetween(Date start, Date end) const;

  std::optional<WeekOfYear> weekOfYear(Date date) const;
  // The first moment (00:00 on the first weekday) of a week.
  std::optional<Date> startOfWeek(const WeekOfYear& week) const;

  // The stand-alone month names of the calendar's locale, January first ("Januar" ...).
  std::vector<std::string> standaloneMonthSymbols() const;

  // The offsets in days from `start` of the days up to and including `end` whose weekday is
  // one of `weekdays`, in increasing order. Empty when `weekdays` is empty or the day count
  // cannot be computed; a negative day count (end before start) stops the program.
  // Defined with the other weekday texts in qmcore/formatting.
  std::vector<std::int64_t> daysForWeekdaysBetween(Date start, Date end,
                                                   std::span<const int> weekdays) const;
  // The number of entries of `daysForWeekdaysBetween`.
  std::int64_t numberOfSelectedWeekdaysBetween(Date start, Date end,
                                               std::span<const int> weekdays) const;

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_CALENDAR_HPP_
