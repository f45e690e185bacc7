// The library's fixed date formats: XML and ISO 8601 timestamps for interchange, texts safe in
// file names, backup names, log-line times and compact dates for lists.
//
//   const qm::QMDateFormatter& dates = qm::QMDateFormatter::sharedInstance();
//   dates.xmlStringFromDate(qm::Date::fromUnixSeconds(0));   // "1970-01-01T00:00:00.000Z" (UTC)
//   dates.dateFromXmlString("2020-05-01T10:00:00Z");        // also without the fraction
//   qm::QMDateFormatter::unixTimeStampForDateString("2000-01-01 12:00");  // 946728000.0
//
// Formats (ICU date patterns, see "qmcore/platform/DateFormatter.hpp"):
//
//   xml          en_US_POSIX     yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ        (parse fallback: no .SSS)
//   iso          en_US_POSIX     yyyy'-'MM'-'dd'T'HH':'mm':'ss'.'SSZ
//   file name    current locale  yyyy'-'MM'-'dd'T'HH'-'mm'-'ss'-'SSSZZZ
//   short UI     current locale  dd-MMM-yy HH:mm:ss
//   short date   current locale  dd-MMM-yy
//   time         en_US_POSIX     HH:mm:ss.SSS
//   backup name  current locale  yyyyMMdd_HHmmss
//
// An instance keeps the locale and time zone that were current when it was made (for the
// shared instance: at its first use): a later change of the host app's current locale or time
// zone does not reach its texts. What is made at each call follows the change: the formatters
// returned by `isoDateFormatter` and its kin (which then keep the locale and zone of their
// making in turn), the backup names and the time-zone texts. The ICU formatters behind all of
// them are built once and cached (see DateFormatter), so the shared instance is cheap to use.
//
// Failures: formatting a non-finite date gives ""; a text that does not match gives an absent
// date. Thread-safety: every operation may be called from any thread.

#ifndef QMCORE_FORMATTING_QMDATEFORMATTER_HPP_
#define QMCORE_FORMATTING_QMDATEFORMATTER_HPP_

#include <optional>
#include <string>
#include <string_view>

#include "qmcore/formatting/ISO8601.hpp"
#include "qmcore/platform/Date.hpp"
#include "qmcore/platform/DateFormatter.hpp"

namespace qm {

class QMDateFormatter {
 public:
  // The one instance, created on first use (thread-safe).
  static const QMDateFormatter& sharedInstance();

  // The formats in the current locale and time zone, kept for the instance's lifetime.
  QMDateFormatter();

  // "2020-05-01T12:00:00.123+02:00"; "Z" instead of an offset in UTC.
  std::string xmlStringFromDate(Date date) const;
  // Reads the XML form with milliseconds, else the one without ("2020-05-01T10:00:00Z");
  // absent when neither matches.
  std::optional<Date> dateFromXmlString(std::string_view text) const;

  // "2020-05-01T12:00:00.12+0200": two fraction digits (truncated), offset without colon.
  std::string isoStringFromDate(Date date) const;
  std::optional<Date> dateFromIsoString(std::string_view text) const;

  // "2020-05-01T12-00-00-123+0200": no colons; within one zone offset the texts sort like
  // the dates (years 1000-9999).
  std::string fileNameStringFromDate(Date date) const;
  std::optional<Date> dateFromFileNameString(std::string_view text) const;

  // "01-May-20 12:00:00" in the current locale.
  std::string datetimeSecondsToShortUIString(Date date) const;
  // "01-May-20" in the current locale.
  std::string dateOnlyToShortUIString(Date date) const;
  // "12:00:00.123", for log lines.
  std::string hourMinuteSecondMillisecondsFromDate(Date date) const;

  // New formatters of the formats above in the current locale and time zone, for callers
  // that keep their own.
  static DateFormatter isoDateFormatter();
  DateFormatter fileNameFormatter() const;
  static DateFormatter shortUIDateFormatter();
  static DateFormatter shortUIDateOnlyFormatter();

  // The localized GMT offset of the current time zone at `at` (pattern "O": "GMT+1", "GMT").
  static std::string timeZoneGMTPart(Date at = Date::now());
  // The short name of the current time zone at `at` (pattern "z": "CET", "EDT", or a GMT
  // offset where the current locale has no name for the zone).
  static std::string timeZoneLocalPart(Date at = Date::now());

  // "20200501_120000", for backup file names.
  static std::string dateToBackupNameString(Date date);

  // `QMParseISO8601Date` of the text: Unix seconds, or NaN.
  static double unixTimeStampForDateString(std::string_view text);

  // The seconds within the minute of a Unix time, fraction kept: 1700000012.345 gives 32.345.
  // Whole days, hours and minutes are taken off by truncation toward zero, so a negative time
  // gives a result in (-60, 0]. NaN for a non-finite time.
  static double fractionalSecondsForUnixTime(double unixTime);

 private:
  QMDateFormatter(const std::string& locale, const std::string& timeZone);

  const DateFormatter dateFormatter1_;
  const DateFormatter dateFormatter2_;
  const DateFormatter isoFormatter_;
  const DateFormatter fileNameFormatter_;
  const DateFormatter shortUIDateFormatter_;
  const DateFormatter shortUIDateOnlyFormatter_;
  const DateFormatter timeHourSecondsMillisecondsFormatter_;
};

// The current time as whole seconds since 1970 (the C library's `time`).
double qmUnixSeconds();

}  // namespace qm

#endif  // QMCORE_FORMATTING_QMDATEFORMATTER_HPP_
