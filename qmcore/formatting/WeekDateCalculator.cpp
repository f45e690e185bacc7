#include "qmcore/formatting/WeekDateCalculator.hpp"

#include "qmcore/platform/Calendar.hpp"
#include "qmcore/platform/DateFormatter.hpp"
#include "qmcore/platform/DateStylePatterns.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm {
namespace {

template <typename T>
T orStop(std::optional<T> value, std::string_view message) {
  if (!value) fatalError(message);
  return *value;
}

}  // namespace

WeekDates WeekDateCalculator::getWeekDates(std::int64_t weeksFromNow, int firstDayOfWeek) {
  return getWeekDates(weeksFromNow, firstDayOfWeek, Date::now());
}

WeekDates WeekDateCalculator::getWeekDates(std::int64_t weeksFromNow, int firstDayOfWeek,
                                           Date now) {
  Calendar calendar = Calendar::gregorian();
  calendar.setFirstWeekday(firstDayOfWeek);
  const std::optional<Calendar::WeekOfYear> thisWeek = calendar.weekOfYear(now);
  const Date thisWeekStart = orStop(thisWeek ? calendar.startOfWeek(*thisWeek) : std::nullopt,
                                    "Failed to calculate the start of the week");
  const Date start = orStop(calendar.dateByAddingWeeks(weeksFromNow, thisWeekStart),
                            "Failed to calculate the start of the requested week");
  const Date lastDay =
      orStop(calendar.dateByAddingDays(6, start), "Failed to calculate the last day of the week");
  Calendar::Components end =
      orStop(calendar.components(lastDay), "Failed to calculate the last day of the week");
  end.hour = 23;
  end.minute = 59;
  end.second = 59;
  return WeekDates(start, orStop(calendar.date(end), "Failed to calculate the end of the week"));
}

std::string WeekDateCalculator::formatDate(Date date) {
  return DateFormatter(datePatternForStyle(DateStyle::kMedium)).format(date);
}

}  // namespace qm
