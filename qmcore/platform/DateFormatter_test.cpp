#include "qmcore/platform/DateFormatter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include "qmcore/platform/DurationFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

// 2020-05-01T10:00:00.123Z (summer time in Berlin and New York).
constexpr Date kMay = Date::fromUnixSeconds(1588327200.123);
// 2021-01-15T23:30:00Z (winter time; already the 16th in Berlin).
constexpr Date kJanuary = Date::fromUnixSeconds(1610753400.0);
constexpr Date kYear1000 = Date::fromUnixSeconds(-30610224000.0);

class DateFormatterTest : public ::testing::Test {
 protected:
  // The tests set the current locale and time zone freely; these restore them.
  const testing::ScopedLocale locale_;
  const testing::ScopedTimeZone timeZone_;
};

TEST_F(DateFormatterTest, FormatsPatternsInGivenLocaleAndTimeZone) {
  const struct {
    const char* pattern;
    const char* locale;
    const char* timeZone;
    Date date;
    const char* expected;
  } cases[] = {
      {"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "UTC", kMay, "2020-05-01T10:00:00.123Z"},
      {"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "Europe/Berlin", kMay,
       "2020-05-01T12:00:00.123+02:00"},
      // The calendar is proleptic Gregorian: 1000-01-01, counted in Gregorian days from 1970.
      {"yyyy-MM-dd", "en_US_POSIX", "UTC", kYear1000, "1000-01-01"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DateFormatter(c.pattern, c.locale, c.timeZone).format(c.date), c.expected)
        << c.pattern << " " << c.locale << " " << c.timeZone;
  }
}

TEST_F(DateFormatterTest, EmptyLocaleAndTimeZoneFollowTheCurrentOnesAtEachCall) {
  const DateFormatter current("dd-MMM-yy HH:mm");
  setCurrentLocaleIdentifier("en_US");
  setCurrentTimeZoneIdentifier("UTC");
  EXPECT_EQ(current.format(kJanuary), "15-Jan-21 23:30");
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(current.format(kJanuary), "15-Jan.-21 23:30");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(current.format(kJanuary), "16-Jan.-21 00:30");
  // A fixed locale stays fixed while the time zone still follows.
  const DateFormatter posix("dd-MMM-yy HH:mm", "en_US_POSIX");
  EXPECT_EQ(posix.format(kJanuary), "16-Jan-21 00:30");
}

TEST_F(DateFormatterTest, TruncatesMillisecondsAndGivesEmptyTextsForWhatCannotBeShown) {
  const DateFormatter millis("HH:mm:ss.SSS", "en_US_POSIX", "UTC");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(0.9999)), "00:00:00.999");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(-0.0005)), "23:59:59.999");
  for (const double bad : {std::nan(""), HUGE_VAL, 1e300}) {
    EXPECT_EQ(millis.format(Date::fromUnixSeconds(bad)), "") << bad;
  }
  // Unquoted ASCII letters that are not pattern letters make ICU reject the pattern; an
  // unbalanced quote just runs to the end of it.
  EXPECT_EQ(DateFormatter("yyyy-MM-dd'T", "en_US_POSIX", "UTC").format(kMay), "2020-05-01T");
  for (const char* pattern : {"yyyy-MM-ddTHH:mm", "HH 'h' t"}) {
    const DateFormatter bad(pattern, "en_US_POSIX", "UTC");
    EXPECT_EQ(bad.format(kMay), "") << pattern;
    EXPECT_FALSE(bad.parse("2020-05-01T10:00")) << pattern;
  }
}

TEST_F(DateFormatterTest, ParsesWholeTextsStrictly) {
  const DateFormatter xml("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "Asia/Tokyo");
  const DateFormatter plain("yyyy-MM-dd HH:mm:ss", "en_US_POSIX", "Europe/Berlin");
  const DateFormatter shortDe("dd-MMM-yy", "de_DE", "UTC");
  const DateFormatter day("yyyy-MM-dd", "en_US_POSIX", "UTC");
  const struct {
    const DateFormatter* formatter;
    const char* text;
    std::optional<double> expected;
  } cases[] = {
      {&xml, "2020-05-01T10:00:00.123+02:00", 1588320000.123},
      {&xml, "2020-05-01T10:00:00.123+02:00 ", std::nullopt},  // trailing blank
      {&xml, "2020-02-30T10:00:00.000Z", std::nullopt},        // no 30 February
      {&plain, "2020-05-01 10:00:00", 1588320000.0},           // read in the formatter's zone
      {&shortDe, "01-Mai-20", 1588291200.0},
      {&day, "1000-01-01", kYear1000.timeIntervalSince1970()},
  };
  for (const auto& c : cases) {
    const std::optional<Date> parsed = c.formatter->parse(c.text);
    ASSERT_EQ(parsed.has_value(), c.expected.has_value()) << c.text;
    if (parsed) {
      EXPECT_NEAR(parsed->timeIntervalSince1970(), *c.expected, 1e-6) << c.text;
    }
  }
}

TEST_F(DateFormatterTest, ThreadsShareFormattersWhileTheCacheStartsAfresh) {
  // Threads use one formatter at once, each with its own day of 1970, so mixed-up state shows
  // in the text; others make more patterns than the cache keeps, so that it drops every
  // formatter, those in use too, while the first threads go on.
  const DateFormatter formatter("yyyy-MM-dd HH:mm:ss", "en_US_POSIX", "UTC");
  std::atomic<int> failures = 0;
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 1000; ++i) {
        const Date date = Date::fromUnixSeconds(t * 7 * 86400.0 + i);
        const std::string expected =
            invariantFormat("1970-01-%02d %02d:%02d:%02d", t * 7 + 1, 0, i / 60 % 60, i % 60);
        if (formatter.format(date) != expected) ++failures;
        const std::optional<Date> back = formatter.parse(expected);
        if (!back || *back != date) ++failures;
      }
    });
    threads.emplace_back([&, t] {
      for (int i = 0; i < 120; ++i) {
        const std::string tag = std::to_string(t) + "-" + std::to_string(i);
        const DateFormatter once("'" + tag + "' yyyy", "en_US_POSIX", "UTC");
        if (once.format(Date::fromUnixSeconds(0)) != tag + " 1970") ++failures;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures.load(), 0);
}

TEST_F(DateFormatterTest, DurationsSpellOutTheirNonZeroComponents) {
  EXPECT_EQ(fullDurationText(1, 0, 1, "en_US"), "1 hour, 1 second");
  EXPECT_EQ(fullDurationText(0, 0, 0, "en_US"), "0 seconds");
  EXPECT_EQ(fullDurationText(1, 5, 3, "de_DE"), "1 Stunde, 5 Minuten und 3 Sekunden");
  setCurrentLocaleIdentifier("de_DE");  // the current locale at the time of the call
  EXPECT_EQ(fullDurationText(0, 2, 0), "2 Minuten");
}

}  // namespace
}  // namespace qm
