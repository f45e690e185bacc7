// Month names, selected weekdays and week bounds of the current locale and time zone.

#include "qmcore/formatting/CalendarHelper.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "qmcore/formatting/WeekDateCalculator.hpp"
#include "qmcore/platform/Calendar.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedLocale;
using testing::ScopedTimeZone;
using Offsets = std::vector<std::int64_t>;

constexpr double kMonday2023Jan2 = 1672617600.0;      // 00:00 UTC
constexpr double kSunday2023Jan1Noon = 1672574400.0;  // UTC
const double kNaN = std::numeric_limits<double>::quiet_NaN();

Date at(double unixSeconds) { return Date::fromUnixSeconds(unixSeconds); }
Date dayAfterMonday(double days) { return at(kMonday2023Jan2 + days * 86400.0); }

TEST(CalendarHelperDeathTest, StandaloneMonthNamesOfTheCurrentLocale) {
  const ScopedLocale russian("ru_RU");
  // Stand-alone (nominative), not "января" as in a date.
  EXPECT_EQ(CalendarHelper::getGregorianMonthName(0), "январь");
  EXPECT_EQ(CalendarHelper::getGregorianMonthNameWithIndex(11), "декабрь");
  EXPECT_EQ(CalendarHelper::getGregorianMonthName(12), std::nullopt);
  EXPECT_DEATH(CalendarHelper::getGregorianMonthName(-1), "Negative month index");
}

TEST(CalendarWeekdaysDeathTest, OffsetsOfTheSelectedWeekdaysWithBothEndsCounted) {
  const Calendar utc("en_US", "UTC");
  const struct {
    double endDays;  // after the start, Monday 2023-01-02 00:00
    std::vector<int> weekdays;
    Offsets expected;
  } cases[] = {
      {7, {2}, {0, 7}},              // Monday to the next Monday
      {13, {1, 7}, {5, 6, 12, 13}},  // weekends of two weeks
      {7.5, {2}, {0, 7}},            // a part day at the end counts with its start
      {6.99, {2}, {0}},              // not a whole week: the second Monday is not reached
      {0, {2}, {0}},                 // one day
      {6, {0, 8}, {}},               // numbers that are no weekday
  };
  for (const auto& c : cases) {
    const Date start = dayAfterMonday(0), end = dayAfterMonday(c.endDays);
    EXPECT_EQ(utc.daysForWeekdaysBetween(start, end, c.weekdays), c.expected) << c.endDays;
    EXPECT_EQ(utc.numberOfSelectedWeekdaysBetween(start, end, c.weekdays),
              static_cast<std::int64_t>(c.expected.size()));
  }
  // The weekdays are those of the calendar's time zone.
  const std::vector<int> monday = {2};
  const Date sundayNightUtc = dayAfterMonday(-0.02);
  EXPECT_EQ(Calendar("en_US", "Asia/Tokyo")
                .daysForWeekdaysBetween(sundayNightUtc, sundayNightUtc, monday),
            Offsets{0});
  EXPECT_EQ(utc.daysForWeekdaysBetween(sundayNightUtc, sundayNightUtc, monday), Offsets{});
  // An uncountable range gives nothing.
  EXPECT_EQ(utc.daysForWeekdaysBetween(at(kNaN), dayAfterMonday(1), monday), Offsets{});
  EXPECT_DEATH(utc.daysForWeekdaysBetween(dayAfterMonday(7), dayAfterMonday(0), monday),
               "lies before its start");
}

TEST(WeekDateCalculatorTest, WeeksAroundAMomentInTheCurrentTimeZone) {
  const double sundayNightUtc = 1672615800.0;  // 2023-01-01 23:30 UTC
  const struct {
    const char* zone;
    double moment;
    std::int64_t weeksFromNow;
    int firstDayOfWeek;
    double start, end;
  } cases[] = {
      // Monday first: the Sunday ends the week that began on Monday 2022-12-26.
      {"UTC", kSunday2023Jan1Noon, 0, 2, 1672012800.0, 1672617599.0},
      {"UTC", kSunday2023Jan1Noon, 1, 2, 1672617600.0, 1673222399.0},
      // Sunday first: the Sunday starts its own week.
      {"UTC", kSunday2023Jan1Noon, 0, 1, 1672531200.0, 1673135999.0},
      {"Asia/Tokyo", sundayNightUtc, 0, 2, 1672585200.0, 1673189999.0},  // already Monday there
      // The end is the last second of the seventh day, across the change to summer time.
      {"Europe/Berlin", 1711537200.0, 0, 2, 1711321200.0, 1711922399.0},
  };
  for (const auto& c : cases) {
    const ScopedTimeZone zone(c.zone);
    EXPECT_EQ(WeekDateCalculator::getWeekDates(c.weeksFromNow, c.firstDayOfWeek, at(c.moment)),
              WeekDates(at(c.start), at(c.end)))
        << c.zone << " " << c.weeksFromNow << " weeks, first day " << c.firstDayOfWeek;
  }
}

TEST(WeekDateCalculatorTest, TheLocalesFirstWeekdayAndMediumDateStyle) {
  const ScopedTimeZone utc("UTC");
  const struct {
    const char* locale;
    double start;  // of the week, when the first day given is no weekday
    const char* date;
  } cases[] = {{"en_US", 1672531200.0, "Jan 1, 2023"}, {"de_DE", 1672012800.0, "01.01.2023"}};
  for (const auto& c : cases) {
    const ScopedLocale locale(c.locale);
    EXPECT_EQ(WeekDateCalculator::getWeekDates(0, 0, at(kSunday2023Jan1Noon)).startDate(),
              at(c.start))
        << c.locale;
    EXPECT_EQ(WeekDateCalculator::formatDate(at(kSunday2023Jan1Noon)), c.date);
  }
  EXPECT_GE(WeekDateCalculator::getWeekDates(0, 2).endDate(), Date::now());  // now by default
}

TEST(WeekDateCalculatorDeathTest, AMomentTheCalendarCannotPlaceStopsTheProgram) {
  EXPECT_DEATH(WeekDateCalculator::getWeekDates(0, 2, at(kNaN)),
               "Failed to calculate the start of the week");
}

}  // namespace
}  // namespace qm
