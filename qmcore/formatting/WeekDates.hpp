// The first and last moments of a calendar week, as `WeekDateCalculator` computes them.

#ifndef QMCORE_FORMATTING_WEEKDATES_HPP_
#define QMCORE_FORMATTING_WEEKDATES_HPP_

#include "qmcore/platform/Date.hpp"

namespace qm {

// An immutable value.
class WeekDates {
 public:
  WeekDates(Date startDate, Date endDate) : startDate_(startDate), endDate_(endDate) {}

  // 00:00 on the week's first day.
  Date startDate() const { return startDate_; }
  // 23:59:59 on the week's seventh day.
  Date endDate() const { return endDate_; }

  bool operator==(const WeekDates&) const = default;

 private:
  Date startDate_;
  Date endDate_;
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_WEEKDATES_HPP_
