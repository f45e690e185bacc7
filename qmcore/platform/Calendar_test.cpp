#include "qmcore/platform/Calendar.hpp"

#include <gtest/gtest.h>

#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

constexpr Date kSunday2023Jan1 = Date::fromUnixSeconds(1672531200.0);  // 00:00 UTC
// Noon on Saturday 2024-03-30 in Berlin, and noon on the Sunday after, when clocks go forward.
constexpr Date kSaturdayNoon = Date::fromUnixSeconds(1711796400.0);
constexpr Date kSundayNoon = Date::fromUnixSeconds(1711879200.0);
constexpr double kDay = 86400.0;

TEST(CalendarTest, ComponentsAndDatesAreInTheCalendarsTimeZone) {
  const Calendar utc("en_US", "UTC");
  const Calendar berlin("de_DE", "Europe/Berlin");
  const auto components = berlin.components(kSunday2023Jan1);
  ASSERT_TRUE(components);
  EXPECT_EQ(components->year, 2023);
  EXPECT_EQ(components->hour, 1);
  EXPECT_EQ(berlin.date({2023, 1, 1, 1, 0, 0}), kSunday2023Jan1);
  // Fields beyond their range roll over.
  EXPECT_EQ(utc.date({2022, 13, 1, 0, 0, 0}), kSunday2023Jan1);
  // 02:30 does not exist on the day clocks go forward: it reads as 03:30 summer time.
  EXPECT_EQ(berlin.date({2024, 3, 31, 2, 30, 0}), Date::fromUnixSeconds(1711848600.0));
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
  const struct {
    int firstWeekday;
    Date start;
  } cases[] = {
      {1, kSunday2023Jan1},                            // Sunday starts its own week
      {2, Date::fromUnixSeconds(1672012800.0)},        // Monday 2022-12-26
      {7, kSunday2023Jan1.addingTimeInterval(-kDay)},  // Saturday 2022-12-31
  };
  for (const auto& c : cases) {
    calendar.setFirstWeekday(c.firstWeekday);
    const auto week = calendar.weekOfYear(kSunday2023Jan1.addingTimeInterval(3600));
    ASSERT_TRUE(week);
    EXPECT_EQ(calendar.startOfWeek(*week), c.start) << c.firstWeekday;
  }
  calendar.setFirstWeekday(8);  // out of range: ignored
  EXPECT_EQ(calendar.firstWeekday(), 7);
  // Copies are independent.
  Calendar copy = calendar;
  copy.setFirstWeekday(2);
  EXPECT_EQ(calendar.firstWeekday(), 7);
  calendar = copy;
  EXPECT_EQ(calendar.firstWeekday(), 2);
}

TEST(CalendarTest, DatesThatAreNotFiniteGiveNoResult) {
  const Calendar utc("en_US", "UTC");
  const Date nan = Date::fromUnixSeconds(testing::kNaN);
  EXPECT_FALSE(utc.components(nan));
  EXPECT_FALSE(utc.weekday(Date::fromUnixSeconds(testing::kInf)));
  EXPECT_FALSE(utc.daysBetween(Date(), nan));
  EXPECT_FALSE(utc.dateByAddingDays(1, nan));
}

TEST(CalendarTest, StandaloneMonthNamesOfTheLocale) {
  // Nominative, not the genitive "января" of dates.
  const auto names = Calendar("ru_RU", "UTC").standaloneMonthSymbols();
  ASSERT_EQ(names.size(), 12u);
  EXPECT_EQ(names.front(), "январь");
}

}  // namespace
}  // namespace qm
