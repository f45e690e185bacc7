#include "qmcore/formatting/ISO8601.hpp"

#include <cstdint>
#include <limits>

namespace qm {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr std::int64_t kMillisPerDay = 86'400'000;
// The Julian day of 1970-01-01T00:00Z, 2440587.5, in milliseconds.
constexpr std::int64_t kJulianDayMillisOfUnixEpoch = 210'866'760'000'000;

// A reading position in a zero-terminated text. `peek` at the terminator gives '\0' and the
// position never moves past it, so nothing beyond the terminator is ever read.
class TerminatedCursor {
 public:
  explicit TerminatedCursor(const char* text) : p_(text) {}
  char peek() const { return *p_; }
  bool atEnd() const { return *p_ == '\0'; }
  void advance() { ++p_; }

 private:
  const char* p_;
};

// A reading position in a sized text; `peek` at the end gives '\0' without reading.
class SizedCursor {
 public:
  explicit SizedCursor(std::string_view text) : p_(text.data()), end_(p_ + text.size()) {}
  char peek() const { return p_ == end_ ? '\0' : *p_; }
  bool atEnd() const { return p_ == end_; }
  void advance() { ++p_; }

 private:
  const char* p_;
  const char* end_;
};

constexpr bool isDigit(char c) { return c >= '0' && c <= '9'; }
// The blanks of the C locale's isspace, without consulting any locale.
constexpr bool isBlank(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

// Reads exactly `count` digits as a number no larger than `max`.
template <typename Cursor>
bool readNumber(Cursor& cursor, int count, int max, int& value) {
  value = 0;
  for (int i = 0; i < count; ++i) {
    const char c = cursor.peek();
    if (!isDigit(c)) return false;
    value = value * 10 + (c - '0');
    cursor.advance();
  }
  return value <= max;
}

template <typename Cursor>
bool skip(Cursor& cursor, char expected) {
  if (cursor.peek() != expected) return false;
  cursor.advance();
  return true;
}

template <typename Cursor>
void skipBlanks(Cursor& cursor) {
  while (isBlank(cursor.peek())) cursor.advance();
}

// Reads the digits after the decimal point as milliseconds, rounded half away from zero on the
// exact decimal value: the fourth digit alone decides, since the digits after it can only add.
template <typename Cursor>
int readFractionMillis(Cursor& cursor) {
  int millis = 0;
  int scale = 100;
  bool roundsUp = false;
  for (int position = 0; isDigit(cursor.peek()); ++position) {
    const int digit = cursor.peek() - '0';
    if (position < 3) {
      millis += digit * scale;
      scale /= 10;
    } else if (position == 3) {
      roundsUp = digit >= 5;
    }
    cursor.advance();
  }
  return millis + (roundsUp ? 1 : 0);
}

// hh:mm[:ss[.fff]] [blanks] [zone] [blanks] and the end of the text. On success stores the
// time of day in milliseconds and the zone's offset from UTC in minutes.
template <typename Cursor>
bool readTimeAndZone(Cursor& cursor, std::int64_t& timeMillis, int& offsetMinutes) {
  int hour = 0;
  int minute = 0;
  int second = 0;
  int millis = 0;
  if (!readNumber(cursor, 2, 24, hour) || !skip(cursor, ':') ||
      !readNumber(cursor, 2, 59, minute)) {
    return false;
  }
  if (skip(cursor, ':')) {
    if (!readNumber(cursor, 2, 59, second)) return false;
    if (skip(cursor, '.')) millis = readFractionMillis(cursor);
  }
  timeMillis = hour * 3'600'000LL + minute * 60'000LL + second * 1'000LL + millis;

  skipBlanks(cursor);
  offsetMinutes = 0;
  const char zone = cursor.peek();
  if (zone == 'Z' || zone == 'z') {
    cursor.advance();
  } else if (zone == '+' || zone == '-') {
    cursor.advance();
    int zoneHours = 0;
    int zoneMinutes = 0;
    if (!readNumber(cursor, 2, 14, zoneHours)) return false;
    skip(cursor, ':');
    if (!readNumber(cursor, 2, 59, zoneMinutes)) return false;
    offsetMinutes = (zone == '-' ? -1 : 1) * (zoneHours * 60 + zoneMinutes);
  }
  skipBlanks(cursor);
  return cursor.atEnd();
}

// Milliseconds of the Julian day at 0:00 UTC of the date, by Meeus' algorithm with its
// truncating integer divisions. The day enters linearly, so day 31 of February rolls over.
std::int64_t julianDayMillis(int year, int month, int day) {
  std::int64_t y = year;
  std::int64_t m = month;
  if (m <= 2) {
    y -= 1;
    m += 12;
  }
  const std::int64_t a = y / 100;
  const std::int64_t b = 2 - a + y / 400;
  const std::int64_t x1 = 36525 * (y + 4716) / 100;
  const std::int64_t x2 = 306001 * (m + 1) / 10000;
  const double julianDay = static_cast<double>(x1 + x2 + day + b) - 1524.5;
  return static_cast<std::int64_t>(julianDay * static_cast<double>(kMillisPerDay));
}

template <typename Cursor>
double parse(Cursor cursor) {
  const bool negativeYear = skip(cursor, '-');
  int year = 0;
  int month = 0;
  int day = 0;
  if (!readNumber(cursor, 4, 9999, year) || !skip(cursor, '-') ||
      !readNumber(cursor, 2, 12, month) || month < 1 || !skip(cursor, '-') ||
      !readNumber(cursor, 2, 31, day) || day < 1) {
    return kNaN;
  }
  if (negativeYear) year = -year;

  while (cursor.peek() == 'T' || isBlank(cursor.peek())) cursor.advance();
  std::int64_t timeMillis = 0;
  int offsetMinutes = 0;
  // A bare date counts as midnight UTC; anything else after it must be a valid time.
  if (!cursor.atEnd() && !readTimeAndZone(cursor, timeMillis, offsetMinutes)) return kNaN;

  const std::int64_t millis =
      julianDayMillis(year, month, day) + timeMillis - offsetMinutes * 60'000LL;
  // Subtracting the epoch in whole milliseconds before dividing gives the double nearest the
  // exact value (1 ms past 2000 reads as 946684800.001, not 946684800.0010071).
  return static_cast<double>(millis - kJulianDayMillisOfUnixEpoch) / 1000.0;
}

}  // namespace

double QMParseISO8601Date(const char* zeroTerminated) {
  if (zeroTerminated == nullptr) return kNaN;
  return parse(TerminatedCursor(zeroTerminated));
}

double QMParseISO8601Date(std::string_view text) { return parse(SizedCursor(text)); }

}  // namespace qm
