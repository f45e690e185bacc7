// QMDateFormatter's fixed formats, and the one-pass ISO 8601 reader behind its date strings.

#include "qmcore/formatting/QMDateFormatter.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "qmcore/formatting/ISO8601.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

// 2020-05-01T10:00:00.123Z: summer time in Berlin.
constexpr Date kMay = Date::fromUnixSeconds(1588327200.123);
// 2021-01-15T23:30:00.987Z: winter; already the 16th in Berlin.
constexpr Date kJanuary = Date::fromUnixSeconds(1610753400.987);

class QMDateFormatterTest : public ::testing::Test {
 protected:
  // The tests set the current locale and time zone freely; these restore them.
  const testing::ScopedLocale locale_;
  const testing::ScopedTimeZone timeZone_;
};

TEST_F(QMDateFormatterTest, FixedFormatsInTheCurrentLocaleAndZoneAndSecondsOfUnixTimes) {
  setCurrentLocaleIdentifier("de_DE");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  const QMDateFormatter dates;
  const struct {
    std::string actual;
    const char* expected;
  } cases[] = {
      {dates.xmlStringFromDate(kMay), "2020-05-01T12:00:00.123+02:00"},
      {dates.dateOnlyToShortUIString(kJanuary), "16-Jan.-21"},
      {dates.hourMinuteSecondMillisecondsFromDate(kJanuary), "00:30:00.987"},
      {QMDateFormatter::dateToBackupNameString(kJanuary), "20210116_003000"},
      {QMDateFormatter::timeZoneGMTPart(kJanuary), "GMT+1"},
      {QMDateFormatter::timeZoneLocalPart(kMay), "MESZ"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);
  // Seconds within the minute, whole Unix seconds, and those of an ISO 8601 text.
  EXPECT_NEAR(QMDateFormatter::fractionalSecondsForUnixTime(1700000012.345), 32.345, 1e-6);
  EXPECT_NEAR(QMDateFormatter::fractionalSecondsForUnixTime(-61.25), -1.25, 1e-6);
  const double now = qmUnixSeconds();
  EXPECT_EQ(now, std::floor(now));
  EXPECT_EQ(QMDateFormatter::unixTimeStampForDateString("1970-01-01T00:01:00Z"), 60.0);
}

TEST_F(QMDateFormatterTest, InstanceKeepsItsLocaleAndZoneWhileNewFormattersFollowTheCurrentOnes) {
  setCurrentLocaleIdentifier("en_US");
  setCurrentTimeZoneIdentifier("UTC");
  const QMDateFormatter dates;
  // The shared instance was made at its first use, in whatever locale and zone were current then.
  const QMDateFormatter& shared = QMDateFormatter::sharedInstance();
  const std::string sharedText = shared.datetimeSecondsToShortUIString(kMay);

  setCurrentLocaleIdentifier("de_DE");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(dates.datetimeSecondsToShortUIString(kMay), "01-May-20 10:00:00");
  EXPECT_EQ(shared.datetimeSecondsToShortUIString(kMay), sharedText);
  // Made at each call.
  EXPECT_EQ(QMDateFormatter::isoDateFormatter().format(kMay), "2020-05-01T12:00:00.12+0200");
  EXPECT_EQ(QMDateFormatter::shortUIDateOnlyFormatter().format(kMay), "01-Mai-20");
  EXPECT_EQ(dates.fileNameFormatter().format(kMay), "2020-05-01T12-00-00-123+0200");
  EXPECT_EQ(QMDateFormatter::shortUIDateFormatter().format(kMay), "01-Mai-20 12:00:00");
}

TEST_F(QMDateFormatterTest, FixedFormatsRoundTripInAZoneOffByHalfAnHour) {
  setCurrentTimeZoneIdentifier("America/St_Johns");  // half an hour off, behind UTC
  const QMDateFormatter dates;
  for (const double seconds : {0.0, 1588327200.123, -1234567.001}) {
    const Date date = Date::fromUnixSeconds(seconds);
    const auto xml = dates.dateFromXmlString(dates.xmlStringFromDate(date));
    const auto file = dates.dateFromFileNameString(dates.fileNameStringFromDate(date));
    const auto iso = dates.dateFromIsoString(dates.isoStringFromDate(date));
    ASSERT_TRUE(xml && file && iso) << seconds;
    EXPECT_NEAR(xml->timeIntervalSince1970(), seconds, 1e-6);
    EXPECT_NEAR(file->timeIntervalSince1970(), seconds, 1e-6);
    // The ISO text keeps hundredths only, truncated toward the past.
    EXPECT_NEAR(iso->timeIntervalSince1970(), std::floor(seconds * 100) / 100, 1e-6);
  }
  // XML texts carry their own zones, with or without a fraction.
  EXPECT_EQ(dates.dateFromXmlString("2020-05-01T10:00:00.125+02:00"),
            Date::fromUnixSeconds(1588320000.125));
  EXPECT_EQ(dates.dateFromXmlString("2020-05-01T10:00:00Z"), Date::fromUnixSeconds(1588327200));
  EXPECT_FALSE(dates.dateFromXmlString("2020-05-01T10:00:00.125"));
}

bool same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// The parser's result for a time in whole milliseconds since 1970: Julian-day seconds less the
// epoch's, so that milliseconds carry the rounding of a double near 2.1e11.
double parsedValueOf(std::int64_t unixMillis) {
  return static_cast<double>(unixMillis + 210'866'760'000'000) / 1000.0 - 210866760000.0;
}

// Parses with both overloads and insists that they agree.
double parseBoth(const std::string& text) {
  const double terminated = QMParseISO8601Date(text.c_str());
  EXPECT_TRUE(same(terminated, QMParseISO8601Date(std::string_view(text)))) << text;
  return terminated;
}

TEST(ISO8601Test, ReadsTheGrammar) {
  const struct {
    const char* text;
    double expected;
  } cases[] = {
      // Full timestamps in years 1-9999 are left to the random test below; these are the
      // shorter shapes and the edges.
      // Separators: any run of "T" and blanks, or none; bare dates with trailing ones.
      {"2000-01-01TT \t12:00", 946728000.0},
      {"2000-01-0112:00", 946728000.0},
      {"2000-01-01 \t T ", 946684800.0},
      // Zones: lower case, blanks around.
      {"2021-06-15T13:45:30z", 1623764730.0},
      {"2021-06-15T13:45:30 +0530 ", 1623744930.0},
      // An empty fraction; rounding into the next minute.
      {"2000-01-01T00:00:00.Z", 946684800.0},
      {"2000-01-01T00:00:59.9995Z", 946684860.0},
      // Years before 1: Meeus' truncating divisions can be a day off the proleptic Gregorian
      // calendar (-0100-03-01).
      {"-0000-01-01", -62167219200.0},
      {"-4713-11-24T12:00Z", -210866760000.0},  // Julian day 0
      {"-0100-03-01", -65317708800.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(parseBoth(c.text), parsedValueOf(std::llround(c.expected * 1000))) << c.text;
  }
  // Not the nearest double to the exact time: the library's own arithmetic.
  EXPECT_EQ(QMParseISO8601Date("2000-01-01T00:00:00.001Z"), 211813444800.001 - 210866760000.0);
}

TEST(ISO8601Test, RejectsWhatTheGrammarDoesNotAllow) {
  // Among them: a zone needs a time ("2000-01-01Z"), and a fraction needs seconds.
  // clang-format off
  const char* const cases[] = {
      "", "2000-01", "2000-01-1", "20000-01-01", "+2000-01-01", " 2000-01-01", "2000/01/01",
      "2000-00-01", "2000-13-01", "2000-01-00", "2000-01-32", "2000-01-01x", "2000-01-01Z",
      "2000-01-01T10", "2000-01-01T1:00", "2000-01-01T10:61", "2000-01-01T25:00",
      "2000-01-01T10:00:60", "2000-01-01T10:00.5", "2000-01-01T10:00:00,5", "2000-01-01T10:00:00ZZ",
      "2000-01-01T10:00:00 UTC", "2000-01-01T10:00:00+01", "2000-01-01T10:00:00+01:0",
      "2000-01-01T10:00:00+15:00", "2000-01-01T10:00:00+01:60", "2000-01-01T10:00:00-01:00:00"};
  // clang-format on
  for (const char* text : cases) EXPECT_TRUE(std::isnan(parseBoth(text))) << "'" << text << "'";
  // No text at all; zero bytes inside sized texts are the fuzz target's.
  EXPECT_TRUE(std::isnan(QMParseISO8601Date(static_cast<const char*>(nullptr))));
}

// Random full timestamps checked against the standard library's calendar (years 1-9999, where
// Meeus' algorithm is the proleptic Gregorian calendar); the shorter shapes are in the rows above.
TEST(ISO8601Test, AgreesWithTheStandardCalendarOnRandomTimestamps) {
  using namespace std::chrono;
  std::mt19937_64 random(20240229);
  auto pick = [&](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  for (int i = 0; i < 200000; ++i) {
    const int y = pick(1, 9999), mo = pick(1, 12), d = pick(1, 31), h = pick(0, 24),
              mi = pick(0, 59), s = pick(0, 59), sign = pick(0, 1) ? 1 : -1, zh = pick(0, 14),
              zm = pick(0, 59);
    // Up to 12 fraction digits, rounded here with exact integers, half up.
    std::string fraction;
    std::int64_t value = 0, scale = 1;
    for (int n = pick(0, 12); n > 0; --n, scale *= 10) {
      const int digit = pick(0, 9);
      fraction += static_cast<char>('0' + digit);
      value = value * 10 + digit;
    }
    const std::string text = invariantFormat("%04d-%02d-%02d%c%02d:%02d:%02d.%s%c%02d%s%02d", y, mo,
                                             d, pick(0, 1) ? 'T' : ' ', h, mi, s, fraction.c_str(),
                                             sign > 0 ? '+' : '-', zh, pick(0, 1) ? ":" : "", zm);
    const auto day = sys_days(year(y) / mo / 1) + days(d - 1);
    const std::int64_t expected = duration_cast<milliseconds>(day.time_since_epoch()).count() +
                                  ((h * 60 + mi - sign * (zh * 60 + zm)) * 60 + s) * 1000LL +
                                  (2 * value * 1000 + scale) / (2 * scale);
    ASSERT_EQ(parseBoth(text), parsedValueOf(expected)) << text;
  }
}

// Every prefix of valid timestamps, each in a heap buffer of exactly its size: the parser must
// neither crash nor read past the end (AddressSanitizer watches in the debug build), and its two
// forms must agree. Random bytes are the ISO 8601 fuzz target's.
TEST(ISO8601Test, SurvivesTruncatedTimestamps) {
  for (const std::string text : {"2000-01-01T00:00:00.0005Z", "-0001-12-31 24:00:00.99999 -14:00",
                                 "2021-06-15T13:45:30+0530", "2000-01-01 \t"}) {
    for (std::size_t n = 0; n <= text.size(); ++n) {
      const auto sized = std::make_unique<char[]>(n);
      std::memcpy(sized.get(), text.data(), n);
      const double b = QMParseISO8601Date(std::string_view(sized.get(), n));
      EXPECT_TRUE(std::isnan(b) || std::abs(b) < 4e11) << text.substr(0, n);
      const auto terminated = std::make_unique<char[]>(n + 1);
      std::memcpy(terminated.get(), text.c_str(), n);
      terminated[n] = '\0';
      EXPECT_TRUE(same(QMParseISO8601Date(terminated.get()), b)) << text.substr(0, n);
    }
  }
}

}  // namespace
}  // namespace qm
