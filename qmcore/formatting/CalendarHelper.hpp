// Month names of the Gregorian calendar in the current locale.
//
//   qm::CalendarHelper::getGregorianMonthName(0);   // "January" (en_US), "Januar" (de_DE)
//   qm::CalendarHelper::getGregorianMonthName(12);  // no value
//
// Thread-safe.

#ifndef QMCORE_FORMATTING_CALENDARHELPER_HPP_
#define QMCORE_FORMATTING_CALENDARHELPER_HPP_

#include <cstdint>
#include <optional>
#include <string>

namespace qm {

class CalendarHelper {
 public:
  // The stand-alone name (as in a list or title, not inside a date) of the month with the
  // zero-based `index` (0 = January). Absent at or beyond the number of months; a negative
  // index stops the program.
  static std::optional<std::string> getGregorianMonthName(std::int64_t index);
  static std::optional<std::string> getGregorianMonthNameWithIndex(std::int64_t index) {
    return getGregorianMonthName(index);
  }
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_CALENDARHELPER_HPP_
