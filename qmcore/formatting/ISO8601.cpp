#include "qmcore/formatting/ISO8601.hpp"

#include <cstdint>
#include <limits>

namespace qm {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr std::int64_t kMillisPerDay = 86'400'000;
// The Julian day of 1970-01-01T00:00Z, 2440587.5, in seconds.
constexpr double kJulianDaySecondsOfUnixEpoch = 210866760000.0;

// A reading position in a zero-terminated text. `at(i)` may only be called when the bytes
// before position i are known not to be the terminator, which the parser guarantees by
// checking every byte (as a digit or a given character) before it reads the next one.
class TerminatedCursor {
 public:
  explicit TerminatedCursor(const char* text) : p_(text) {}
  unsigned char at(int i) const { return static_cast<unsigned char>(p_[i]); }
  bool atEnd() const { return *p_ == '\0'; }
  void skip(int n) { p_ += n; }

 private:
  const char* p_;
};

// A reading position in a sized text; reads at or past the end give '\0' without touching
// memory.
class SizedCursor {
 public:
  explicit SizedCursor(std::string_view text) : p_(text.data()), end_(p_ + text.size()) {}
  unsigned char at(int i) const { return i < end_ - p_ ? static_cast<unsigned char>(p_[i]) : '\0'; }
  bool atEnd() const { return p_ == end_; }
  void skip(int n) { p_ += n; }

 private:
  const char* p_;
  const char* end_;
};

// The digit's value, or something above 9 for any other byte.
constexpr unsigned digitValue(unsigned char c) { return c - unsigned{'0'}; }

// The two digits at `i` and `i + 1` as a number; false when either is not a digit.
template <typename Cursor>
bool readTwoDigits(const Cursor& cursor, int i, unsigned& value) {
  const unsigned tens = digitValue(cursor.at(i));
  if (tens > 9) return false;
  const unsigned ones = digitValue(cursor.at(i + 1));
  if (ones > 9) return false;
  value = tens * 10 + ones;
  return true;
}

// The blanks of the C locale's isspace, without consulting any locale. Written without
// short-circuits: a branch here would be mispredicted on input that mixes "T" and " ".
constexpr std::uint64_t kBlankBits = (1ULL << ' ') | (0x1FULL << '\t');  // \t \n \v \f \r
constexpr bool isBlank(unsigned char c) { return (c < 64) & ((kBlankBits >> (c & 63)) & 1); }
constexpr bool isDateTimeSeparator(unsigned char c) { return isBlank(c) | (c == 'T'); }

template <typename Cursor>
void skipBlanks(Cursor& cursor) {
  while (isBlank(cursor.at(0))) cursor.skip(1);
}

// Digits after the decimal point as milliseconds, rounded half away from zero on the exact
// decimal value: the fourth digit alone decides, since the digits after it can only add.
template <typename Cursor>
unsigned readFractionMillis(Cursor& cursor) {
  static constexpr unsigned kPlaceValue[] = {100, 10, 1};
  unsigned millis = 0;
  for (const unsigned placeValue : kPlaceValue) {
    const unsigned digit = digitValue(cursor.at(0));
    if (digit > 9) return millis;
    millis += digit * placeValue;
    cursor.skip(1);
  }
  if (digitValue(cursor.at(0)) <= 9) {
    millis += digitValue(cursor.at(0)) >= 5 ? 1 : 0;
    while (digitValue(cursor.at(0)) <= 9) cursor.skip(1);
  }
  return millis;
}

// hh:mm[:ss[.fff]] [blanks] [zone] [blanks], then the end of the text. On success stores
// the time of day less the zone's offset, in milliseconds.
template <typename Cursor>
bool readTimeAndZone(Cursor& cursor, std::int64_t& utcMillis) {
  unsigned hour = 0;
  unsigned minute = 0;
  unsigned second = 0;
  unsigned millis = 0;
  if (!readTwoDigits(cursor, 0, hour) || cursor.at(2) != ':' || !readTwoDigits(cursor, 3, minute) ||
      hour > 24 || minute > 59) {
    return false;
  }
  cursor.skip(5);
  if (cursor.at(0) == ':') {
    if (!readTwoDigits(cursor, 1, second) || second > 59) return false;
    cursor.skip(3);
    if (cursor.at(0) == '.') {
      cursor.skip(1);
      millis = readFractionMillis(cursor);
    }
  }
  utcMillis = hour * 3'600'000LL + minute * 60'000LL + second * 1'000LL + millis;

  skipBlanks(cursor);
  const unsigned char zone = cursor.at(0);
  if ((zone | 0x20) == 'z') {
    cursor.skip(1);
  } else if (zone == '+' || zone == '-') {
    unsigned zoneHours = 0;
    unsigned zoneMinutes = 0;
    if (!readTwoDigits(cursor, 1, zoneHours) || zoneHours > 14) return false;
    cursor.skip(3);
    cursor.skip(cursor.at(0) == ':' ? 1 : 0);
    if (!readTwoDigits(cursor, 0, zoneMinutes) || zoneMinutes > 59) return false;
    cursor.skip(2);
    const std::int64_t offset = (zoneHours * 60 + zoneMinutes) * 60'000LL;
    // Arithmetic rather than a branch on the sign, which input does not predict.
    utcMillis -= (1 - 2 * (zone == '-')) * offset;
  }
  skipBlanks(cursor);
  return cursor.atEnd();
}

// Milliseconds of the Julian day at 0:00 UTC of the date, by Meeus' algorithm with its
// truncating integer divisions. The day enters linearly, so day 31 of February rolls over.
std::int64_t julianDayMillis(int year, int month, int day) {
  // 306001 * (month + 1) / 10000 for the months 3 to 14 that remain after the shift below.
  static constexpr int kMonthDays[] = {0,   0,   0,   122, 153, 183, 214, 244,
                                       275, 306, 336, 367, 397, 428, 459};
  const bool januaryOrFebruary = month <= 2;
  const int y = year - januaryOrFebruary;
  const int m = month + 12 * januaryOrFebruary;
  std::int64_t days = 0;
  if (y >= 0) {
    // The common case, in cheaper terms: truncation is floor here, so 36525 n / 100 is
    // 365 n + n / 4, and y / 400 is (y / 100) / 4. All of it fits 32 bits.
    const unsigned n = static_cast<unsigned>(y) + 4716;
    const unsigned a = static_cast<unsigned>(y) / 100;
    days = static_cast<std::int64_t>(365 * n + n / 4) + kMonthDays[m] + day + 2 -
           static_cast<int>(a) + static_cast<int>(a / 4);
  } else {
    const int a = y / 100;
    const int b = 2 - a + y / 400;
    days = 36525LL * (y + 4716) / 100 + kMonthDays[m] + day + b;
  }
  // JD = days - 1524.5, in whole milliseconds.
  return days * kMillisPerDay - 1524 * kMillisPerDay - kMillisPerDay / 2;
}

template <typename Cursor>
double parse(Cursor cursor) {
  const bool negativeYear = cursor.at(0) == '-';
  cursor.skip(negativeYear ? 1 : 0);
  unsigned century = 0;
  unsigned yearOfCentury = 0;
  unsigned month = 0;
  unsigned day = 0;
  if (!readTwoDigits(cursor, 0, century) || !readTwoDigits(cursor, 2, yearOfCentury) ||
      cursor.at(4) != '-' || !readTwoDigits(cursor, 5, month) || cursor.at(7) != '-' ||
      !readTwoDigits(cursor, 8, day) || month < 1 || month > 12 || day < 1 || day > 31) {
    return kNaN;
  }
  cursor.skip(10);
  const int year = static_cast<int>(century * 100 + yearOfCentury) * (negativeYear ? -1 : 1);

  while (isDateTimeSeparator(cursor.at(0))) cursor.skip(1);
  std::int64_t timeMillis = 0;
  // A bare date counts as midnight UTC; anything else after it must be a valid time.
  if (!cursor.atEnd() && !readTimeAndZone(cursor, timeMillis)) return kNaN;

  const std::int64_t julianMillis =
      julianDayMillis(year, static_cast<int>(month), static_cast<int>(day)) + timeMillis;
  // Julian-day seconds less those of the Unix epoch, in this order: values with milliseconds
  // carry the rounding of a double near 2.1e11 (1 ms past 2000 reads 946684800.0010071), and
  // callers compare with values computed the same way.
  return static_cast<double>(julianMillis) / 1000.0 - kJulianDaySecondsOfUnixEpoch;
}

}  // namespace

double QMParseISO8601Date(const char* zeroTerminated) {
  if (zeroTerminated == nullptr) return kNaN;
  return parse(TerminatedCursor(zeroTerminated));
}

double QMParseISO8601Date(std::string_view text) { return parse(SizedCursor(text)); }

}  // namespace qm
