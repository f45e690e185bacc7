// Date texts from Unicode date patterns, the stand-in for the phone platform's `NSDateFormatter`.
//
// A `DateFormatter` formats and parses dates with ICU's `SimpleDateFormat`, so pattern letters,
// quoting and locale data are those of the platform: "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ",
// "dd-MMM-yy", "O" (localized GMT offset, "GMT+1"), "z" (short zone name, "CET" or a GMT offset
// where the locale has none), "ZZZ" ("+0100"), "ZZZZZ" ("+01:00", or "Z" for UTC), and so on.
//
//   qm::DateFormatter xml("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "UTC");
//   xml.format(qm::Date::fromUnixSeconds(0.25));   // "1970-01-01T00:00:00.250Z"
//   xml.parse("2020-05-01T10:00:00.123+02:00");    // Date of 1588320000.123
//
//   qm::DateFormatter shortDate("dd-MMM-yy");      // current locale and time zone
//   shortDate.format(date);                        // "01-May-20" (en_US), "01-Mai-20" (de_DE)
//
// Locale and time zone: an empty locale means the current locale of "qmcore/platform/Locale.hpp"
// and an empty time zone the current time zone there, both read at each call, so a change by
// the host app takes effect on the next call. The calendar is the locale's (Gregorian for the
// usual ones), proleptic: dates before 1582 are not switched to the Julian calendar.
//
// Cost: ICU formatters are costly to create (tens of microseconds), so they are built once per
// (locale, time zone, pattern) and kept process-wide; a `DateFormatter` itself is a small value
// that is cheap to make and copy. A call costs what ICU's own formatting with a ready formatter
// costs (1 to 3 microseconds, more with zone names); building one per call would cost ~35.
//
// Thread-safety: a `DateFormatter` is immutable; `format` and `parse` may be called on one
// instance from any number of threads at once (each call uses an ICU formatter that no other
// thread is using at the same time).

#ifndef QMCORE_PLATFORM_DATEFORMATTER_HPP_
#define QMCORE_PLATFORM_DATEFORMATTER_HPP_

#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Date.hpp"

namespace qm {

class DateFormatter {
 public:
  // `pattern` in ICU/Unicode date-pattern syntax. `locale` is an ICU locale identifier
  // ("en_US_POSIX", "de_DE"); empty means the current locale at each call. `timeZone` is an
  // IANA identifier ("Europe/Berlin", "UTC", "GMT+02:00"); empty means the current time zone
  // at each call. An identifier ICU does not know formats and parses as GMT.
  explicit DateFormatter(std::string pattern, std::string locale = {}, std::string timeZone = {})
      : pattern_(std::move(pattern)), locale_(std::move(locale)), timeZone_(std::move(timeZone)) {}

  const std::string& pattern() const { return pattern_; }
  // The locale and time zone as given (empty: the current ones at each call).
  const std::string& locale() const { return locale_; }
  const std::string& timeZone() const { return timeZone_; }

  // The text of `date`. Fractions of a millisecond are dropped (the platform truncates, so
  // 0.9999 s shows as ".999"). Returns "" when the date is not finite or out of the calendar's
  // range, and when ICU rejects the pattern: an unquoted ASCII letter that is not a pattern
  // letter, such as the "T" in "yyyy-MM-ddTHH:mm", makes the whole text "". (An unbalanced
  // quote is not an error: the quoted literal runs to the end of the pattern.)
  std::string format(Date date) const;

  // The date that the whole of `text` denotes, read strictly (not leniently): every field must
  // be in range ("2020-02-30" fails) and nothing may follow the pattern. Fields that the
  // pattern lacks take their values from 1970-01-01 00:00:00 in the formatter's time zone; a
  // text without a zone is read in the formatter's time zone. Absent when the text does not
  // match, and for a pattern ICU rejects.
  std::optional<Date> parse(std::string_view text) const;

 private:
  std::string pattern_;
  std::string locale_;
  std::string timeZone_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_DATEFORMATTER_HPP_
