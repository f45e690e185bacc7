#include "qmcore/platform/Calendar.hpp"

#include <gtest/gtest.h>

#include <limits>

namespace qm {
namespace {

constexpr Date kSunday2023Jan1 = Date::fromUnixSeconds(1672531200.0);  // 00:00 UTC
constexpr double kDay = 86400.0;

bool operator==(const Calendar::Components& a, const Calendar::Components& b) {
  return a.year == b.year && a.month == b.month && a.day == b.day && a.hour == b.hour &&
         a.minute == b.minute && a.second == b.second;
}

TEST(CalendarTest, ComponentsAndDatesAreInTheCalendarsTimeZone) {
  const Calendar utc("en_US", "UTC");
  const Calendar berlin("de_DE", "Europe/Berlin");
  EXPECT_TRUE(*utc.components(kSunday2023Jan1) == (Calendar::Components{2023, 1, 1, 0, 0, 0}));
  EXPECT_TRUE(*berlin.components(kSunday2023Jan1) == (Calendar::Components{2023, 1, 1, 1, 0, 0}));
  EXPECT_EQ(berlin.date({2023, 1, 1, 1, 0, 0}), kSunday2023Jan1);
  // Fields beyond their range roll over.
  EXPECT_EQ(utc.date({2022, 12, 32, 0, 0, 0}), kSunday2023Jan1);
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

TEST(CalendarTest, AddingDaysKeepsTheWallClockAcrossDaylightSavingChanges) {
  const Calendar berlin("de_DE", "Europe/Berlin");
  const Date saturdayNoon = Date::fromUnixSeconds(1711796400.0);
  EXPECT_EQ(berlin.dateByAddingDays(1, saturdayNoon), Date::fromUnixSeconds(1711879200.0));
  EXPECT_EQ(berlin.dateByAddingDays(-1, Date::fromUnixSeconds(1711879200.0)), saturdayNoon);
  EXPECT_EQ(berlin.dateByAddingWeeks(-2, kSunday2023Jan1),
            kSunday2023Jan1.addingTimeInterval(-14 * kDay));
  EXPECT_FALSE(berlin.dateByAddingDays(std::int64_t{1} << 40, saturdayNoon));
}

TEST(CalendarTest, DaysBetweenCountsWholeDays) {
  const Calendar utc("en_US", "UTC");
  const struct {
    double from, to;
    std::int64_t days;
  } cases[] = {
      {0, kDay - 1, 0},
      {0, kDay, 1},
      {0, 10 * kDay + 5, 10},
      {0, -kDay - 1, -1},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(utc.daysBetween(Date::fromUnixSeconds(c.from), Date::fromUnixSeconds(c.to)), c.days)
        << c.from << " -> " << c.to;
  }
  // A day across the change to summer time has 23 hours and still counts as one.
  const Calendar berlin("de_DE", "Europe/Berlin");
  EXPECT_EQ(
      berlin.daysBetween(Date::fromUnixSeconds(1711796400.0), Date::fromUnixSeconds(1711879200.0)),
      1);
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
  calendar.setFirstWeekday(0);  // out of range: ignored
  calendar.setFirstWeekday(8);
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
  const Date nan = Date::fromUnixSeconds(std::numeric_limits<double>::quiet_NaN());
  const Date infinite = Date::fromUnixSeconds(std::numeric_limits<double>::infinity());
  EXPECT_FALSE(utc.components(nan));
  EXPECT_FALSE(utc.weekday(infinite));
  EXPECT_FALSE(utc.daysBetween(Date(), nan));
  EXPECT_FALSE(utc.dateByAddingDays(1, nan));
}

TEST(CalendarTest, StandaloneMonthNamesOfTheLocale) {
  const struct {
    const char* locale;
    const char* january;
    const char* december;
  } cases[] = {
      {"en_US", "January", "December"},
      {"ru_RU", "январь", "декабрь"},  // nominative, not the genitive "января" of dates
  };
  for (const auto& c : cases) {
    const auto names = Calendar(c.locale, "UTC").standaloneMonthSymbols();
    ASSERT_EQ(names.size(), 12u) << c.locale;
    EXPECT_EQ(names.front(), c.january);
    EXPECT_EQ(names.back(), c.december);
  }
}

}  // namespace
}  // namespace qm
