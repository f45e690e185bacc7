#include "qmcore/formatting/WeekDateCalculator.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedLocale;
using testing::ScopedTimeZone;

Date at(double unixSeconds) { return Date::fromUnixSeconds(unixSeconds); }

constexpr double kSunday2023Jan1Noon = 1672574400.0;  // UTC

TEST(WeekDateCalculatorTest, WeeksAroundASundayAcrossTheYearBoundary) {
  const ScopedTimeZone utc("UTC");
  const struct {
    std::int64_t weeksFromNow;
    int firstDayOfWeek;
    double start, end;
  } cases[] = {
      // Monday first: the Sunday ends the week that began on Monday 2022-12-26.
      {0, 2, 1672012800.0, 1672617599.0},
      {1, 2, 1672617600.0, 1673222399.0},
      {-1, 2, 1671408000.0, 1672012799.0},
      {2, 2, 1673222400.0, 1673827199.0},
      // Sunday first: the Sunday starts its own week.
      {0, 1, 1672531200.0, 1673135999.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(
        WeekDateCalculator::getWeekDates(c.weeksFromNow, c.firstDayOfWeek, at(kSunday2023Jan1Noon)),
        WeekDates(at(c.start), at(c.end)))
        << c.weeksFromNow << " weeks, first day " << c.firstDayOfWeek;
  }
}

TEST(WeekDateCalculatorTest, TheWeekIsTheOneOfTheCurrentTimeZone) {
  const double sundayNightUtc = 1672615800.0;  // 2023-01-01 23:30 UTC
  const struct {
    const char* zone;
    double start, end;
  } cases[] = {
      {"Asia/Tokyo", 1672585200.0, 1673189999.0},           // already Monday there
      {"America/Los_Angeles", 1672041600.0, 1672646399.0},  // still Sunday afternoon
  };
  for (const auto& c : cases) {
    const ScopedTimeZone zone(c.zone);
    EXPECT_EQ(WeekDateCalculator::getWeekDates(0, 2, at(sundayNightUtc)),
              WeekDates(at(c.start), at(c.end)))
        << c.zone;
  }
}

TEST(WeekDateCalculatorTest, TheEndIsTheLastSecondOfTheSeventhDayAcrossSummerTime) {
  const ScopedTimeZone berlin("Europe/Berlin");
  const WeekDates week = WeekDateCalculator::getWeekDates(0, 2, at(1711537200.0));
  EXPECT_EQ(week.startDate(), at(1711321200.0));  // Monday 2024-03-25 00:00 CET
  EXPECT_EQ(week.endDate(), at(1711922399.0));    // Sunday 2024-03-31 23:59:59 CEST
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
}

TEST(WeekDateCalculatorTest, TheCurrentMomentByDefault) {
  const WeekDates week = WeekDateCalculator::getWeekDates(0, 2);
  EXPECT_LE(week.startDate(), Date::now());
  EXPECT_GE(week.endDate(), Date::now());
}

TEST(WeekDateCalculatorDeathTest, AMomentTheCalendarCannotPlaceStopsTheProgram) {
  EXPECT_DEATH(WeekDateCalculator::getWeekDates(0, 2, at(std::numeric_limits<double>::quiet_NaN())),
               "Failed to calculate the start of the week");
}

}  // namespace
}  // namespace qm
