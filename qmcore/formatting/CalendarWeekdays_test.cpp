#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "qmcore/platform/Calendar.hpp"

namespace qm {
namespace {

using Offsets = std::vector<std::int64_t>;

constexpr double kMonday2023Jan2 = 1672617600.0;  // 00:00 UTC
constexpr double kDay = 86400.0;

Date dayAfterMonday(double days) { return Date::fromUnixSeconds(kMonday2023Jan2 + days * kDay); }

TEST(CalendarWeekdaysTest, OffsetsOfTheSelectedWeekdaysWithBothEndsCounted) {
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
      {0, {3}, {}},
      {6, {1, 2, 3, 4, 5, 6, 7}, {0, 1, 2, 3, 4, 5, 6}},
      {6, {0, 8}, {}},  // numbers that are no weekday
      {7, {}, {}},
  };
  for (const auto& c : cases) {
    const Offsets offsets =
        utc.daysForWeekdaysBetween(dayAfterMonday(0), dayAfterMonday(c.endDays), c.weekdays);
    EXPECT_EQ(offsets, c.expected) << c.endDays;
    EXPECT_EQ(utc.numberOfSelectedWeekdaysBetween(dayAfterMonday(0), dayAfterMonday(c.endDays),
                                                  c.weekdays),
              static_cast<std::int64_t>(c.expected.size()));
  }
}

TEST(CalendarWeekdaysTest, WeekdaysAreThoseOfTheCalendarsTimeZone) {
  const std::vector<int> monday = {2};
  const Date sundayNightUtc = dayAfterMonday(-0.02);
  EXPECT_EQ(Calendar("en_US", "Asia/Tokyo")
                .daysForWeekdaysBetween(sundayNightUtc, sundayNightUtc, monday),
            Offsets{0});
  EXPECT_EQ(Calendar("en_US", "UTC").daysForWeekdaysBetween(sundayNightUtc, sundayNightUtc, monday),
            Offsets{});
}

TEST(CalendarWeekdaysTest, AnUncountableRangeGivesNothing) {
  const Calendar utc("en_US", "UTC");
  const std::vector<int> all = {1, 2, 3, 4, 5, 6, 7};
  const Date nan = Date::fromUnixSeconds(std::numeric_limits<double>::quiet_NaN());
  EXPECT_EQ(utc.daysForWeekdaysBetween(nan, dayAfterMonday(1), all), Offsets{});
  EXPECT_EQ(utc.daysForWeekdaysBetween(dayAfterMonday(0), nan, all), Offsets{});
}

TEST(CalendarWeekdaysDeathTest, AnEndBeforeTheStartStopsTheProgram) {
  const Calendar utc("en_US", "UTC");
  const std::vector<int> monday = {2};
  EXPECT_DEATH(utc.daysForWeekdaysBetween(dayAfterMonday(7), dayAfterMonday(0), monday),
               "lies before its start");
}

}  // namespace
}  // namespace qm
