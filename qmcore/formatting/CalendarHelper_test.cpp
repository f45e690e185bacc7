// Month names, selected weekdays and week bounds of the current locale and time zone, and the
// hour or minute units of durations.

#include "qmcore/formatting/CalendarHelper.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "qmcore/formatting/HoursMinutesDurationUnit.hpp"
#include "qmcore/formatting/WeekDateCalculator.hpp"
#include "qmcore/platform/Calendar.hpp"
#include "qmcore/testing/NonFinite.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::kNaN;
using testing::ScopedLocale;
using testing::ScopedTimeZone;
using Offsets = std::vector<std::int64_t>;

constexpr double kMonday2023Jan2 = 1672617600.0;      // 00:00 UTC
constexpr double kSunday2023Jan1Noon = 1672574400.0;  // UTC

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

TEST(WeekDateCalculatorDeathTest, TheLocalesFirstWeekdayAndMediumDateStyle) {
  const ScopedTimeZone utc("UTC");
  const Date sunday = at(kSunday2023Jan1Noon);
  // With a first day that is no weekday, the locale's first weekday begins the week.
  const ScopedLocale english("en_US");
  EXPECT_EQ(WeekDateCalculator::getWeekDates(0, 0, sunday).startDate(), at(1672531200.0));
  EXPECT_EQ(WeekDateCalculator::formatDate(sunday), "Jan 1, 2023");
  const ScopedLocale german("de_DE");
  EXPECT_EQ(WeekDateCalculator::getWeekDates(0, 0, sunday).startDate(), at(1672012800.0));
  EXPECT_EQ(WeekDateCalculator::formatDate(sunday), "01.01.2023");
  EXPECT_GE(WeekDateCalculator::getWeekDates(0, 2).endDate(), Date::now());  // now by default
  EXPECT_DEATH(WeekDateCalculator::getWeekDates(0, 2, at(kNaN)),
               "Failed to calculate the start of the week");
}

using Unit = HoursMinutesDurationUnit;
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

// The settings with the English titles, whatever the environment's locale is.
const DurationUnitSettings kHours("Hours", 24, 1, 1, 1, 0);
const DurationUnitSettings kMinutes("Minutes", 55, 5, 10, 5, 1);

TEST(HoursMinutesDurationUnitTest, UnitAndValueForSeconds) {
  const struct {
    std::int64_t seconds;
    bool hours;
    std::int64_t value;
  } cases[] = {
      // Minutes up to 59 (capped at the settings' 55), then hours, 1.5 hours rounding up and
      // capped at 24; minutes truncate toward zero.
      {119, false, 1}, {3599, false, 55},  {3600, true, 1}, {5399, true, 1},
      {5400, true, 2}, {200000, true, 24}, {-60, false, -1}};
  for (const auto& c : cases) {
    const auto [unit, value] = Unit::unitAndValueForSeconds(c.seconds, kHours, kMinutes);
    EXPECT_EQ(unit.isHours(), c.hours) << c.seconds;
    EXPECT_EQ(unit.settings(), c.hours ? kHours : kMinutes) << c.seconds;
    EXPECT_EQ(value, c.value) << c.seconds;
  }
  // Hours are the unit whose index is asked for.
  EXPECT_FALSE(Unit::unitForIndex(1, kHours, kMinutes).isHours());
  const DurationUnitSettings hoursSecond("Hours", 24, 1, 1, 1, 1);
  EXPECT_TRUE(Unit::unitForIndex(1, hoursSecond, kMinutes).isHours());
  // The description names the unit in lower case, in the locale's words.
  EXPECT_EQ(Unit::uiDescriptionForSeconds(1800, kHours, kMinutes), "minutes: 30");
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(Unit::uiDescriptionForSeconds(7200, Unit::defaultHoursSettings(),
                                          Unit::defaultMinutesSettings()),
            "stunden: 2");
}

TEST(HoursMinutesDurationUnitDeathTest, ValuesUseTheGivenSettingsMaximumAndSecondsStopOnOverflow) {
  const DurationUnitSettings longHours("Hours", 100, 1, 1, 1, 0);
  const DurationUnitSettings manyMinutes("Minutes", 1000, 1, 1, 1, 1);
  const Unit hours = Unit::hours(kHours);
  EXPECT_EQ(hours.valueForSeconds(200000, longHours, manyMinutes), 56);
  EXPECT_EQ(Unit::minutes(kMinutes).valueForSeconds(7200, longHours, manyMinutes), 120);
  EXPECT_EQ(hours.valueForSeconds(-5400, kHours, kMinutes), -2);  // halves away from zero
  EXPECT_EQ(hours.valueForSeconds(kMin, kHours, kMinutes), -2562047788015216);
  EXPECT_EQ(Unit::minutes(kMinutes).secondsForValue(-3), -180);
  EXPECT_EQ(Unit::hours(kHours).secondsForValue(kMax / 3600), kMax / 3600 * 3600);
  EXPECT_DEATH(Unit::hours(kHours).secondsForValue(kMax / 3600 + 1), "overflows");
  EXPECT_DEATH(Unit::minutes(kMinutes).secondsForValue(kMin), "overflows");
}

}  // namespace
}  // namespace qm
