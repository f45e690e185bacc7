// The calendar's weekday selections, used by weekly statistics: which days of a range fall on
// chosen weekdays.

#include <algorithm>

#include "qmcore/platform/Calendar.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm {

std::vector<std::int64_t> Calendar::daysForWeekdaysBetween(Date start, Date end,
                                                           std::span<const int> weekdays) const {
  if (weekdays.empty()) return {};
  const std::optional<std::int64_t> days = daysBetween(start, end);
  if (!days) return {};
  if (*days < 0) fatalError("The end of a weekday range lies before its start");
  std::vector<std::int64_t> offsets;
  for (std::int64_t i = 0; i <= *days; ++i) {
    const std::optional<Date> day = dateByAddingDays(i, start);
    if (!day) continue;
    const std::optional<int> weekday = this->weekday(*day);
    if (weekday && std::find(weekdays.begin(), weekdays.end(), *weekday) != weekdays.end()) {
      offsets.push_back(i);
    }
  }
  return offsets;
}

std::int64_t Calendar::numberOfSelectedWeekdaysBetween(Date start, Date end,
                                                       std::span<const int> weekdays) const {
  return static_cast<std::int64_t>(daysForWeekdaysBetween(start, end, weekdays).size());
}

}  // namespace qm
