// Number, time-span, date, file-size and text helpers: the texts that measured values,
// headings, timers and file lists are built from.
//
// Two families of number texts are kept apart on purpose:
//
//  - Invariant texts (storage, interchange, fixed-precision numbers of value texts): printf in
//    the POSIX locale, always "." and never grouping, even after the host app has called
//    `setlocale` (the `new...`, `invariantStringForDouble` and time-span operations).
//  - User-interface texts: the current locale of "qmcore/platform/Locale.hpp", read at each
//    call (the number-formatter, spelled-out duration and date operations).
//
//   QMFormatter::newStringForFloatPrecision2(1.005);        // "1.00" (printf rounding)
//   QMFormatter::stringFromDouble(1234.5, 2);               // "1234.50" in every locale
//   QMFormatter::hmsTextForTicks(-3661);                    // "-01:01:01"
//   QMFormatter::textPerTicks(2 * 86400 + 3 * 60);          // "00:03:00, 2 days"
//   QMFormatter::timeAnnouncementTextForTicks2(3903);       // "1 hour, 5 minutes, 3 seconds"
//   QMFormatter::stringFromFileSize(1536);                  // "2 KB"
//
// Time spans ("ticks", seconds) are split into hours, minutes and seconds by truncation,
// never rounding: 59.9 s is "00:00:59". Counts beyond the 32-bit range are clamped to it.
//
// Failures: nothing throws. Parsers return their neutral value (0, 0.0, -1.0, false or an
// absent date) for text they cannot read; an unreadable file size is "--". Operations whose
// input may be absent take `std::optional` and give an absent result for it, as noted.
//
// Thread-safety: every operation may be called from any thread. Formatters of the platform
// layer are cached there, so repeated calls are cheap.

#ifndef QMCORE_FORMATTING_QMFORMATTER_HPP_
#define QMCORE_FORMATTING_QMFORMATTER_HPP_

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "qmcore/platform/Date.hpp"

namespace qm {

class QMFormatter {
 public:
  // String-keyed parameters, as given to `boolParameter` and `intParameter`.
  using Parameters = std::map<std::string, std::string, std::less<>>;

  // --- Rounding and fixed-precision texts (printf in the POSIX locale) ---

  // round(x * 10^n) / 10^n with halves away from zero; a negative n rounds to tens,
  // hundreds... (2.675 with 2 places gives 2.68, -0.5 with 0 places -1.0).
  static double roundDouble(double x, int decimalPlaces);
  static std::string newStringForInt(int value);                         // "%d"
  static std::string newSecondsStringForSeconds(int seconds);            // "%02d"
  static std::string newStringForFloatPrecision1(double value);          // "%.1f"
  static std::string newStringForFloatPrecision2(double value);          // "%.2f"
  static std::string newStringForFloatPrecision3(double value);          // "%.3f"
  static std::string newStringForFloatPrecision2WithSign(double value);  // "%+.2f": "+0.00"
  // "%f" (six decimals), for storage.
  static std::string invariantStringForDouble(double value);
  // A printf format, not a number text: "%.2f" below 10000 (negative values included),
  // "%.0f" from 10000 on.
  static std::string autoPrecisionFormatForValue(double value);

  // --- Number-formatter texts ---

  // `decimalPlaces` fraction digits, "." as separator, no grouping, digits of the current
  // locale; halves round to even. 1234.5 with 2 gives "1234.50" in every locale. A negative
  // count is taken as 0.
  static std::string stringFromDouble(double value, int decimalPlaces);
  static std::string p2StringFromDouble(double value);  // stringFromDouble(value, 2)
  static std::string p3StringFromDouble(double value);  // stringFromDouble(value, 3)
  // The plain integer text (no grouping) in the current locale's digits.
  static std::string stringFromInt(int value);
  // The integer a text denotes in the current locale (its separators and grouping accepted);
  // a fraction is dropped. 0 when the text is not a number.
  static std::int64_t integerFromString(std::string_view text);
  // The double of a text with "." as decimal separator and no grouping; 0.0 when the text is
  // not a number.
  static double doubleFromInvariantString(std::string_view text);
  // Validates a number typed by the user: optional digits, at most one ".", optional digits
  // and nothing else ("12.5", ".5" and "12." pass; "", ".", "-3", "1,5" and "1e3" do not).
  // When it passes, calls `updateBlock` (if given) once with the number and returns true.
  static bool parseNumericString(std::string_view text,
                                 const std::function<void(double)>& updateBlock = {});
  // The currency symbol ("€") and ISO code ("EUR") of the current locale.
  static std::string localizationBasedCurrencySymbol();
  static std::string localizationBasedCurrencyCode();

  // --- Time spans (ticks are seconds; fractions and negative values allowed) ---

  // "%02d:%02d": minute 5, second 9 give "05:09".
  static std::string textForTimerForMinute(int minute, int second);
  // "-01:01:01" for -3661; hours are not limited ("100:00:00").
  static std::string hmsTextForTicks(double ticks);
  // The same text as `hmsTextForTicks`, for speech callers.
  static std::string timeAnnouncementTextForTicks(double ticks);
  // The span in words in the current locale, zero components left out: "1 hour, 5 minutes,
  // 3 seconds"; "0 seconds" for less than a second; a minus sign for negative spans.
  static std::string timeAnnouncementTextForTicks2(double ticks);
  // Sign, hours, minutes and seconds, each followed by its localized abbreviation:
  // "01h02m03s" (English), "01h02min03s" (German).
  static std::string timeTitleTextForTicks(double ticks);
  // "-01:01" for -3661: sign, hours, minutes; seconds dropped.
  static std::string hmTextForTicks(double ticks);
  // Whole minutes of the whole span and the seconds: 3700 gives "61:40". Negative spans give
  // negative fields ("-1:-1" for -61).
  static std::string textForTicksSkipHours(double ticks);
  // The part below one day as "05:03:02", then ", 1 day" / ", 2 days" (localized) when the
  // span reaches a day. No absolute value is taken: negative spans give negative fields.
  static std::string textPerTicks(double ticks);

  // --- Dates (ICU date patterns; see "qmcore/platform/DateFormatter.hpp") ---

  // Reads "yyyy:MM:dd HH:mm:ss" in UTC (photo GPS stamps); absent when it does not match.
  static std::optional<Date> dateForGPSDateString(std::optional<std::string_view> text);
  // The date and time parts joined by one blank, then read as above; absent when either part
  // is absent.
  static std::optional<Date> dateForGPSDateString(std::optional<std::string_view> date,
                                                  std::optional<std::string_view> time);
  // Reads "yyyy:MM:dd HH:mm:ss" in the current time zone (photo capture dates).
  static std::optional<Date> dateForExifDateString(std::string_view text);
  // "2024:03:05 14:07:09" in the current time zone.
  static std::string exifStringForDate(Date date);
  // "2024-03-05 14:07 GMT+1": pattern "yyyy-MM-dd HH:mm zzz", current locale and zone.
  static std::string dateToStorageString(Date date);
  static std::optional<Date> dateFromStorageString(std::string_view text);
  // Pattern "yyyy-MM-ddTHH:mmZ" in the current time zone (not UTC). Its "T" stands unquoted,
  // which ICU rejects, so the result is "".
  static std::string dateToUTCString(Date date);
  // "Monday, March 3rd": the weekday, month and day in the current locale, then an English
  // day suffix ("st", "nd", "rd", "th") in every locale.
  static std::string dateToUIString(Date date);
  // "Monday, March 3 2025, 14:07" in the current locale.
  static std::string dateToShortDayNameUIString(Date date);
  // "03-Mar" in the current locale.
  static std::string dateToShortUIString(Date date);
  // "14:07" in the current locale.
  static std::string timeToShortUIString(Date date);
  static std::string timeToUIString(Date date);
  // "03-Mar-25, 14:07" in the current locale.
  static std::string datetimeToShortUIString(Date date);
  // The localized pattern of the key "ddMMMyy HH:mm" ("03Mar25 14:07" untranslated).
  static std::string datetimeToddMMMyy_HHcmm(Date date);
  // The date with the caller's pattern in the current locale; "" for an absent pattern.
  static std::string dateStringWithPattern(std::optional<std::string_view> pattern, Date date);
  // QMDateFormatter's compact date and time: "03-Mar-25 14:07:09", from the shared instance,
  // so in the locale and time zone that were current at its first use.
  static std::string datetimeSecondsToShortUIString2(Date date);

  // --- File sizes ---

  // Binary multiples: "1023 bytes", "2 KB" (no decimals), "1.5 MB" (one), "1.00 GB" (two).
  static std::string stringFromFileSize(std::int64_t bytes);
  // The size of the file at `path` as above; "--" when it cannot be read (no such file, or a
  // folder).
  static std::string stringSizeForFilePath(std::string_view path);

  // --- Text helpers ---

  // Percent-encodes (UTF-8, upper-case hex) every byte outside the characters allowed in a
  // URL query: letters, digits and -._~!$&'()*+,;=:@/?
  static std::string urlEncode(std::string_view text);
  // A new random (version 4) UUID, upper case: "E621E1F8-C36C-495A-93FC-0C247A3E6E5F".
  static std::string stringWithUUID();
  // Trims the blank " " at both ends (tabs and line breaks stay). Absent for absent text.
  static std::optional<std::string> stringByTrimmingSpaces(std::optional<std::string_view> text);
  static std::string stringWithBool(bool value);  // "true" / "false"
  // True only for exactly "true".
  static bool boolWithString(std::string_view text);
  // Removes http and https links; the text around them stays as it is. Absent for absent text.
  static std::optional<std::string> stringByRemovingHttpLinksFromString(
      std::optional<std::string_view> text);
  // Backslashes doubled, then double quotes escaped: a"b\ gives a\"b\\.
  static std::string escapeJsonValue(std::string_view text);
  // Each line feed becomes "<br/>". Absent for absent text.
  static std::optional<std::string> changeLinebreaksToHtmlBreaks(
      std::optional<std::string_view> text);
  // Line 1, the separator (only when both lines are present), line 2.
  static std::string stringForAddressLine1(std::optional<std::string_view> addressLine1,
                                           std::optional<std::string_view> addressLine2,
                                           std::string_view withLinesSeparator);
  // "✓" and the text when `when` is true (the default), else the text.
  static std::string embelishWithTick(std::string_view text, bool when = true);
  // "text, €" when a non-empty symbol is given, else the text.
  static std::string text(std::string_view text,
                          std::optional<std::string_view> embelishedWithCurrencySymbol);
  // "°F" or "°C".
  static std::string textForTemperatureUnit(bool isFahrenheit);
  // Each user-perceived character followed by a line feed, for texts drawn top to bottom:
  // "ab" gives "a\nb\n"; a flag emoji or an accented letter stays on one line. Absent for
  // absent text.
  static std::optional<std::string> verticalStringFor(std::optional<std::string_view> text);
  static std::optional<std::string> verticalStringFor2(std::optional<std::string_view> text);
  // Display font name: 1 "DS-Digital-BoldItalic", 2 "Helvetica", else "TrebuchetMS".
  static std::string fontForIndex(int index);
  // Localized display font title: 1 "Digital", 2 "Analog 1", else "Analog 2".
  static std::string fontNameForIndex(int index);
  // The number after the first "@" of a name ("speed@120" gives 120.0; "x@" gives 0.0);
  // -1.0 when there is no "@".
  static double parseLimitFromString(std::optional<std::string_view> text);
  // True only when the parameters hold the key with the value exactly "yes".
  static bool boolParameter(std::optional<std::string_view> key, const Parameters& parameters);
  // The integer value of the key's text (leading blanks, a sign and digits; 0 when it starts
  // otherwise; clamped to the int range) when the parameters hold the key, else the default.
  static int intParameter(std::optional<std::string_view> key, const Parameters& parameters,
                          int withDefault);
  // "Currency: € (EUR), Locale: de_DE" (the first word localized).
  static std::string currencyPropertiesString();
};

}  // namespace qm

#endif  // QMCORE_FORMATTING_QMFORMATTER_HPP_
