// Calendar weeks for weekly statistics: the first and last moments of the week some weeks
// away from now, in the current locale and time zone, and a medium-style date text.
//
//   // This week, Monday 00:00 to Sunday 23:59:59:
//   qm::WeekDates week = qm::WeekDateCalculator::getWeekDates(0, 2);
//   qm::WeekDateCalculator::formatDate(week.startDate());  // "Nov 16, 2026" (en_US)
//
// Thread-safe.

#ifndef QMCORE_FORMATTING_WEEKDATECALCULATOR_HPP_
#define QMCORE_FORMATTING_WEEKDATECALCULATOR_HPP_

#include <cstdint>
#include <string>

#include "qmcore/formatting/WeekDates.hpp"
#include "qmcore/platform/Date.hpp"

namespace qm {

class WeekDateCalculator {
 public:
  // The week `weeksFromNow` weeks after the current one (negative: before it), with weeks
  // starting on `firstDayOfWeek` (1 = Sunday, 2 = Monday, ... 7 = Saturday; other values keep
  // the current locale's first weekday). The start is 00:00 of the week's first day in the
  // current time zone; the end is 23:59:59 of its seventh day. Stops the program when the
  // calendar cannot compute the dates (they lie beyond its range).
  static WeekDates getWeekDates(std::int64_t weeksFromNow, int firstDayOfWeek);
  // The same with `now` taken as the current moment.
  static WeekDates getWeekDates(std::int64_t weeksFromNow, int firstDayOfWeek, Date now);

  // The date in the current locale's medium date style, without a time ("Nov 16, 2026",
  // German "16.11.2026"), in the current time zone.
  static std::string formatDate(Date date);
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_WEEKDATECALCULATOR_HPP_
