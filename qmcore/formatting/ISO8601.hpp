// A fast reader of ISO 8601 timestamps, for bulk data such as track points and log records.
//
//   qm::QMParseISO8601Date("2000-01-01T00:00:00+01:00");  // 946681200.0
//   qm::QMParseISO8601Date("2000-01-01 12:00");           // 946728000.0 (no zone: UTC)
//   qm::QMParseISO8601Date("1970-01-01");                 // 0.0 (a bare date: midnight UTC)
//   qm::QMParseISO8601Date("2000-13-01");                 // NaN
//
// The grammar is fixed; no locale and no formatter are involved, nothing is allocated and the
// text is read once, byte by byte:
//
//   [-]YYYY-MM-DD  then any run of "T" and blanks, then either the end of the text, or
//   hh:mm[:ss[.fraction]]  [blanks]  [Z | z | (+|-)hh[:]mm]  [blanks]  end of text
//
// - Year 0000-9999, "-" in front makes it negative; month 01-12; day 01-31, not checked
//   against the month (2021-02-31 is 2021-03-03). Hours 00-24 (24:00 is the next midnight),
//   minutes and seconds 00-59, any number of fraction digits, rounded half away from zero to
//   whole milliseconds. Zone hours 00-14, minutes 00-59.
// - No zone means UTC, never local time. A zone needs a time: "2000-01-01Z" is not accepted.
// - Days are counted with Meeus' Julian-day algorithm and its truncating divisions, which for
//   years after 0 is the proleptic Gregorian calendar.
//
// Result: seconds since 1970-01-01T00:00:00Z as a double with millisecond resolution (the
// double nearest the exact millisecond), or NaN when the text does not follow the grammar.
// Thread-safe; never throws.

#ifndef QMCORE_FORMATTING_ISO8601_HPP_
#define QMCORE_FORMATTING_ISO8601_HPP_

#include <string_view>

namespace qm {

// Reads a zero-terminated text; never reads past the terminating zero. A null pointer gives
// NaN.
double QMParseISO8601Date(const char* zeroTerminated);

// Reads exactly the bytes of the view (no terminator needed). A zero byte inside the view is
// an ordinary, unexpected character: the result is then NaN.
double QMParseISO8601Date(std::string_view text);

}  // namespace qm

#endif  // QMCORE_FORMATTING_ISO8601_HPP_
