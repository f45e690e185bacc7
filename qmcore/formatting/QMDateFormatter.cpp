#include "qmcore/formatting/QMDateFormatter.hpp"

#include <cmath>
#include <ctime>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

constexpr const char* kPosixLocale = "en_US_POSIX";

constexpr const char* kXmlPattern = "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ";
constexpr const char* kXmlWithoutFractionPattern = "yyyy-MM-dd'T'HH:mm:ssZZZZZ";
constexpr const char* kIsoPattern = "yyyy'-'MM'-'dd'T'HH':'mm':'ss'.'SSZ";
constexpr const char* kFileNamePattern = "yyyy'-'MM'-'dd'T'HH'-'mm'-'ss'-'SSSZZZ";
constexpr const char* kShortUIPattern = "dd-MMM-yy HH:mm:ss";
constexpr const char* kShortUIDateOnlyPattern = "dd-MMM-yy";
constexpr const char* kTimeWithMillisecondsPattern = "HH:mm:ss.SSS";
constexpr const char* kBackupNamePattern = "yyyyMMdd_HHmmss";

}  // namespace

const QMDateFormatter& QMDateFormatter::sharedInstance() {
  static const QMDateFormatter instance;
  return instance;
}

QMDateFormatter::QMDateFormatter()
    : QMDateFormatter(currentLocaleIdentifier(), currentTimeZoneIdentifier()) {}

// The locale and time zone are read once, so that every format of an instance shows the same
// zone and what one instance writes it also reads back, whatever the host app changes later.
QMDateFormatter::QMDateFormatter(const std::string& locale, const std::string& timeZone)
    : dateFormatter1_(kXmlPattern, kPosixLocale, timeZone),
      dateFormatter2_(kXmlWithoutFractionPattern, kPosixLocale, timeZone),
      isoFormatter_(kIsoPattern, kPosixLocale, timeZone),
      fileNameFormatter_(kFileNamePattern, locale, timeZone),
      shortUIDateFormatter_(kShortUIPattern, locale, timeZone),
      shortUIDateOnlyFormatter_(kShortUIDateOnlyPattern, locale, timeZone),
      timeHourSecondsMillisecondsFormatter_(kTimeWithMillisecondsPattern, kPosixLocale, timeZone) {}

std::string QMDateFormatter::xmlStringFromDate(Date date) const {
  return dateFormatter1_.format(date);
}

std::optional<Date> QMDateFormatter::dateFromXmlString(std::string_view text) const {
  if (std::optional<Date> date = dateFormatter1_.parse(text)) return date;
  return dateFormatter2_.parse(text);
}

std::string QMDateFormatter::isoStringFromDate(Date date) const {
  return isoFormatter_.format(date);
}

std::optional<Date> QMDateFormatter::dateFromIsoString(std::string_view text) const {
  return isoFormatter_.parse(text);
}

std::string QMDateFormatter::fileNameStringFromDate(Date date) const {
  return fileNameFormatter_.format(date);
}

std::optional<Date> QMDateFormatter::dateFromFileNameString(std::string_view text) const {
  return fileNameFormatter_.parse(text);
}

std::string QMDateFormatter::datetimeSecondsToShortUIString(Date date) const {
  return shortUIDateFormatter_.format(date);
}

std::string QMDateFormatter::dateOnlyToShortUIString(Date date) const {
  return shortUIDateOnlyFormatter_.format(date);
}

std::string QMDateFormatter::hourMinuteSecondMillisecondsFromDate(Date date) const {
  return timeHourSecondsMillisecondsFormatter_.format(date);
}

DateFormatter QMDateFormatter::isoDateFormatter() {
  return DateFormatter(kIsoPattern, kPosixLocale, currentTimeZoneIdentifier());
}

// An instance operation only because the platform's was one.
DateFormatter QMDateFormatter::fileNameFormatter() const {
  return DateFormatter(kFileNamePattern, currentLocaleIdentifier(), currentTimeZoneIdentifier());
}

DateFormatter QMDateFormatter::shortUIDateFormatter() {
  return DateFormatter(kShortUIPattern, currentLocaleIdentifier(), currentTimeZoneIdentifier());
}

DateFormatter QMDateFormatter::shortUIDateOnlyFormatter() {
  return DateFormatter(kShortUIDateOnlyPattern, currentLocaleIdentifier(),
                       currentTimeZoneIdentifier());
}

std::string QMDateFormatter::timeZoneGMTPart(Date at) { return DateFormatter("O").format(at); }

std::string QMDateFormatter::timeZoneLocalPart(Date at) { return DateFormatter("z").format(at); }

std::string QMDateFormatter::dateToBackupNameString(Date date) {
  return DateFormatter(kBackupNamePattern).format(date);
}

double QMDateFormatter::unixTimeStampForDateString(std::string_view text) {
  return QMParseISO8601Date(text);
}

double QMDateFormatter::fractionalSecondsForUnixTime(double unixTime) {
  double rest = unixTime - std::trunc(unixTime / 86400.0) * 86400.0;
  rest -= std::trunc(rest / 3600.0) * 3600.0;
  rest -= std::trunc(rest / 60.0) * 60.0;
  return rest;
}

double qmUnixSeconds() { return static_cast<double>(std::time(nullptr)); }

}  // namespace qm
