// Date texts of QMFormatter: photo metadata stamps, storage texts and user-interface texts.

#include <array>

#include "qmcore/formatting/QMDateFormatter.hpp"
#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/DateFormatter.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {
namespace {

constexpr std::string_view kPosixLocale = "en_US_POSIX";
constexpr std::string_view kColonDateTime = "yyyy:MM:dd HH:mm:ss";
constexpr std::string_view kStorage = "yyyy-MM-dd HH:mm zzz";

// English ordinal suffixes by day of the month; entry 0 (an unreadable day) adds nothing.
constexpr std::array<std::string_view, 32> kDaySuffixes = {
    "",   "st", "nd", "rd", "th", "th", "th", "th", "th", "th", "th", "th", "th", "th", "th", "th",
    "th", "th", "th", "th", "th", "st", "nd", "rd", "th", "th", "th", "th", "th", "th", "th", "st"};

// The number a text begins with in ASCII digits; 0 when it does not begin with one.
size_t leadingNumber(std::string_view text) {
  size_t value = 0;
  for (const char c : text) {
    if (c < '0' || c > '9' || value > kDaySuffixes.size()) break;
    value = value * 10 + static_cast<size_t>(c - '0');
  }
  return value;
}

// A formatter of the current locale and time zone.
std::string formatCurrent(std::string_view pattern, Date date) {
  return DateFormatter(std::string(pattern)).format(date);
}

}  // namespace

std::optional<Date> QMFormatter::dateForGPSDateString(std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  static const DateFormatter kGps(std::string(kColonDateTime), std::string(kPosixLocale), "UTC");
  return kGps.parse(*text);
}

std::optional<Date> QMFormatter::dateForGPSDateString(std::optional<std::string_view> date,
                                                      std::optional<std::string_view> time) {
  if (!date || !time) return std::nullopt;
  return dateForGPSDateString(std::string(*date) + " " + std::string(*time));
}

std::optional<Date> QMFormatter::dateForExifDateString(std::string_view text) {
  return DateFormatter(std::string(kColonDateTime), std::string(kPosixLocale)).parse(text);
}

std::string QMFormatter::exifStringForDate(Date date) {
  return DateFormatter(std::string(kColonDateTime), std::string(kPosixLocale)).format(date);
}

std::string QMFormatter::dateToStorageString(Date date) { return formatCurrent(kStorage, date); }

std::optional<Date> QMFormatter::dateFromStorageString(std::string_view text) {
  return DateFormatter(std::string(kStorage)).parse(text);
}

std::string QMFormatter::dateToUTCString(Date date) {
  // The unquoted "T" is kept as the texts have always been made.
  return formatCurrent("yyyy-MM-ddTHH:mmZ", date);
}

std::string QMFormatter::dateToUIString(Date date) {
  const std::string text = formatCurrent("EEEE, MMMM d", date);
  const size_t day = leadingNumber(formatCurrent("d", date));
  return text + std::string(day < kDaySuffixes.size() ? kDaySuffixes[day] : "");
}

std::string QMFormatter::dateToShortDayNameUIString(Date date) {
  return formatCurrent("EEEE, MMMM d yyyy, HH:mm", date);
}

std::string QMFormatter::dateToShortUIString(Date date) { return formatCurrent("dd-MMM", date); }

std::string QMFormatter::timeToShortUIString(Date date) { return formatCurrent("HH:mm", date); }

std::string QMFormatter::timeToUIString(Date date) { return formatCurrent("HH:mm", date); }

std::string QMFormatter::datetimeToShortUIString(Date date) {
  return formatCurrent("dd-MMM-yy, HH:mm", date);
}

std::string QMFormatter::datetimeToddMMMyy_HHcmm(Date date) {
  return formatCurrent(CoreStrings::CLSTRING(CoreStrings::defaultDayMonthYearHourMinuteFormat),
                       date);
}

std::string QMFormatter::dateStringWithPattern(std::optional<std::string_view> pattern, Date date) {
  if (!pattern) return {};
  return formatCurrent(*pattern, date);
}

std::string QMFormatter::datetimeSecondsToShortUIString2(Date date) {
  return QMDateFormatter::sharedInstance().datetimeSecondsToShortUIString(date);
}

}  // namespace qm
