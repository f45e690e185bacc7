#include "qmcore/platform/DateFormatter.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <tuple>
#include <vector>

#include "qmcore/platform/Calendar.hpp"
#include "qmcore/platform/DurationFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/testing/NonFinite.hpp"
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

TEST_F(DateFormatterTest, FormatsInTheGivenOrElseTheCurrentLocaleAndTimeZoneAtEachCall) {
  const char* const xml = "yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ";
  EXPECT_EQ(DateFormatter(xml, "en_US_POSIX", "Europe/Berlin").format(kMay),
            "2020-05-01T12:00:00.123+02:00");
  // The calendar is proleptic Gregorian: 1000-01-01, counted in Gregorian days from 1970.
  EXPECT_EQ(DateFormatter("yyyy-MM-dd", "en_US_POSIX", "UTC").format(kYear1000), "1000-01-01");

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
  const DateFormatter bad("yyyy-MM-ddTHH:mm", "en_US_POSIX", "UTC");
  EXPECT_EQ(bad.format(kMay), "");
  EXPECT_FALSE(bad.parse("2020-05-01T10:00"));
}

TEST_F(DateFormatterTest, ParsesWholeTextsStrictly) {
  const DateFormatter xml("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "Asia/Tokyo");
  const DateFormatter plain("yyyy-MM-dd HH:mm:ss", "en_US_POSIX", "Europe/Berlin");
  const DateFormatter day("yyyy-MM-dd", "en_US_POSIX", "UTC");
  const std::tuple<const DateFormatter*, const char*, std::optional<double>> cases[] = {
      {&xml, "2020-05-01T10:00:00.123+02:00", 1588320000.123},
      {&xml, "2020-05-01T10:00:00.123+02:00 ", std::nullopt},  // trailing blank
      {&xml, "2020-02-30T10:00:00.000Z", std::nullopt},        // no 30 February
      {&plain, "2020-05-01 10:00:00", 1588320000.0},           // read in the formatter's zone
      {&day, "1000-01-01", kYear1000.timeIntervalSince1970()},
  };
  for (const auto& [formatter, text, expected] : cases) {
    const std::optional<Date> parsed = formatter->parse(text);
    ASSERT_EQ(parsed.has_value(), expected.has_value()) << text;
    if (parsed) {
      EXPECT_NEAR(parsed->timeIntervalSince1970(), *expected, 1e-6) << text;
    }
  }
}

TEST_F(DateFormatterTest, ThreadsShareFormattersWhileTheCacheStartsAfresh) {
  // Threads share one formatter, each with a day of its own so that mixed-up state shows, while
  // others make more patterns than the cache keeps: it drops every formatter, those in use too.
  const DateFormatter formatter("yyyy-MM-dd HH:mm:ss", "en_US_POSIX", "UTC");
  std::atomic<int> failures = 0;
  std::atomic<int> makers = 3;
  std::vector<std::thread> threads;
  for (int t = 0; t < 3; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < 1000 || makers > 0; ++i) {
        const Date date = Date::fromUnixSeconds(t * 7 * 86400.0 + i % 3600);
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
      --makers;
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

constexpr Date kSunday2023Jan1 = Date::fromUnixSeconds(1672531200.0);  // 00:00 UTC
// Noon on Saturday 2024-03-30 in Berlin, and noon on the Sunday after, when clocks go forward.
constexpr Date kSaturdayNoon = Date::fromUnixSeconds(1711796400.0);
constexpr Date kSundayNoon = Date::fromUnixSeconds(1711879200.0);
constexpr double kDay = 86400.0;

TEST(CalendarTest, ComponentsAndDatesAreInTheCalendarsTimeZoneIfFinite) {
  const Calendar utc("en_US", "UTC");
  const Calendar berlin("de_DE", "Europe/Berlin");
  const auto components = berlin.components(kSunday2023Jan1);
  ASSERT_TRUE(components);
  EXPECT_EQ(components->hour, 1);
  EXPECT_EQ(berlin.date({2023, 1, 1, 1, 0, 0}), kSunday2023Jan1);
  // Fields beyond their range roll over.
  EXPECT_EQ(utc.date({2022, 13, 1, 0, 0, 0}), kSunday2023Jan1);
  // 02:30 does not exist on the day clocks go forward: it reads as 03:30 summer time.
  EXPECT_EQ(berlin.date({2024, 3, 31, 2, 30, 0}), Date::fromUnixSeconds(1711848600.0));
  // Dates that are not finite give no result.
  const Date nan = Date::fromUnixSeconds(testing::kNaN);
  EXPECT_FALSE(utc.components(nan));
  EXPECT_FALSE(utc.weekday(Date::fromUnixSeconds(testing::kInf)));
  EXPECT_FALSE(utc.daysBetween(Date(), nan));
  EXPECT_FALSE(utc.dateByAddingDays(1, nan));
}

TEST(CalendarTest, WeekdaysCountFromSunday) {
  const Calendar utc("en_US", "UTC");
  const struct {
    double seconds;
    int weekday;
  } cases[] = {{0.0, 5}, {1672531200.0, 1}, {1672531200.0 + 6 * kDay, 7}, {-1.0, 4}};
  for (const auto& c : cases) EXPECT_EQ(utc.weekday(Date::fromUnixSeconds(c.seconds)), c.weekday);
  // The weekday is the one of the wall-clock date in the calendar's zone.
  EXPECT_EQ(Calendar("en_US", "America/New_York").weekday(kSunday2023Jan1), 7);
}

TEST(CalendarTest, DaysAreWallClockDaysAcrossDaylightSavingChanges) {
  const Calendar berlin("de_DE", "Europe/Berlin");
  EXPECT_EQ(berlin.dateByAddingDays(1, kSaturdayNoon), kSundayNoon);
  EXPECT_EQ(berlin.dateByAddingDays(-1, kSundayNoon), kSaturdayNoon);
  EXPECT_EQ(berlin.dateByAddingWeeks(-2, kSunday2023Jan1),
            kSunday2023Jan1.addingTimeInterval(-14 * kDay));
  EXPECT_FALSE(berlin.dateByAddingDays(std::int64_t{1} << 40, kSaturdayNoon));
  // That day has 23 hours and still counts as one; only whole days count.
  EXPECT_EQ(berlin.daysBetween(kSaturdayNoon, kSundayNoon), 1);
  const Calendar utc("en_US", "UTC");
  for (const auto& [to, days] : {std::pair{kDay - 1, 0}, {kDay, 1}, {-kDay - 1, -1}}) {
    EXPECT_EQ(utc.daysBetween(Date::fromUnixSeconds(0), Date::fromUnixSeconds(to)), days) << to;
  }
}

TEST(CalendarTest, WeeksFollowTheFirstWeekday) {
  Calendar calendar("en_US", "UTC");
  EXPECT_EQ(calendar.firstWeekday(), 1);
  EXPECT_EQ(Calendar("de_DE", "UTC").firstWeekday(), 2);
  // Sunday starts its own week; with Monday first it starts on Monday 2022-12-26.
  for (const auto& [firstWeekday, start] :
       {std::pair{1, kSunday2023Jan1}, {2, Date::fromUnixSeconds(1672012800.0)}}) {
    calendar.setFirstWeekday(firstWeekday);
    const auto week = calendar.weekOfYear(kSunday2023Jan1.addingTimeInterval(3600));
    ASSERT_TRUE(week);
    EXPECT_EQ(calendar.startOfWeek(*week), start) << firstWeekday;
  }
  calendar.setFirstWeekday(8);  // out of range: ignored
  EXPECT_EQ(calendar.firstWeekday(), 2);
  // Copies are independent.
  Calendar copy = calendar;
  copy.setFirstWeekday(7);
  EXPECT_EQ(calendar.firstWeekday(), 2);
  calendar = copy;
  EXPECT_EQ(calendar.firstWeekday(), 7);
}

TEST(CalendarTest, StandaloneMonthNamesOfTheLocale) {
  // Nominative, not the genitive "января" of dates.
  const auto names = Calendar("ru_RU", "UTC").standaloneMonthSymbols();
  ASSERT_EQ(names.size(), 12u);
  EXPECT_EQ(names.front(), "январь");
}

}  // namespace
}  // namespace qm
