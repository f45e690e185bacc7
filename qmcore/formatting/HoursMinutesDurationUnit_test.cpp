#include "qmcore/formatting/HoursMinutesDurationUnit.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedLocale;
using Unit = HoursMinutesDurationUnit;

// The settings with the English titles, whatever the environment's locale is.
const DurationUnitSettings kHours("Hours", 24, 1, 1, 1, 0);
const DurationUnitSettings kMinutes("Minutes", 55, 5, 10, 5, 1);

TEST(HoursMinutesDurationUnitTest, DefaultSettingsAndDescriptions) {
  EXPECT_EQ(Unit::defaultHoursSettings(), kHours);
  EXPECT_EQ(Unit::defaultMinutesSettings(), kMinutes);
  EXPECT_EQ(Unit::uiDescriptionForSeconds(1800, kHours, kMinutes), "minutes: 30");
  EXPECT_EQ(Unit::uiDescriptionForSeconds(5400, kHours, kMinutes), "hours: 2");
  const ScopedLocale german("de_DE");
  EXPECT_EQ(Unit::defaultHoursSettings().localizedTitle(), "Stunden");
  EXPECT_EQ(Unit::defaultMinutesSettings().localizedTitle(), "Minuten");
  EXPECT_EQ(Unit::uiDescriptionForSeconds(7200, Unit::defaultHoursSettings(),
                                          Unit::defaultMinutesSettings()),
            "stunden: 2");
}

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
    EXPECT_EQ(unit, Unit::unitForSeconds(c.seconds, kHours, kMinutes));
  }
}

TEST(HoursMinutesDurationUnitTest, ValuesUseTheGivenSettingsMaximum) {
  const DurationUnitSettings longHours("Hours", 100, 1, 1, 1, 0);
  const DurationUnitSettings manyMinutes("Minutes", 1000, 1, 1, 1, 1);
  const Unit hours = Unit::hours(kHours);
  const Unit minutes = Unit::minutes(kMinutes);
  EXPECT_EQ(hours.valueForSeconds(200000, longHours, manyMinutes), 56);
  EXPECT_EQ(minutes.valueForSeconds(7200, longHours, manyMinutes), 120);
  EXPECT_EQ(minutes.valueForSeconds(7200, kHours, kMinutes), 55);
  EXPECT_EQ(hours.valueForSeconds(-5400, kHours, kMinutes), -2);  // halves away from zero
  EXPECT_EQ(hours.valueForSeconds(std::numeric_limits<std::int64_t>::min(), kHours, kMinutes),
            -2562047788015216);
}

TEST(HoursMinutesDurationUnitTest, UnitForIndexMatchesTheHourIndexOnly) {
  const struct {
    std::int64_t index;
    bool hours;
  } cases[] = {{0, true}, {1, false}, {99, false}};
  for (const auto& c : cases) {
    EXPECT_EQ(Unit::unitForIndex(c.index, kHours, kMinutes).isHours(), c.hours) << c.index;
  }
  const DurationUnitSettings hoursSecond("Hours", 24, 1, 1, 1, 1);
  EXPECT_TRUE(Unit::unitForIndex(1, hoursSecond, kMinutes).isHours());
}

TEST(HoursMinutesDurationUnitTest, SecondsForValue) {
  EXPECT_EQ(Unit::hours(kHours).secondsForValue(2), 7200);
  EXPECT_EQ(Unit::minutes(kMinutes).secondsForValue(-3), -180);
  const std::int64_t largestHours = std::numeric_limits<std::int64_t>::max() / 3600;
  EXPECT_EQ(Unit::hours(kHours).secondsForValue(largestHours), largestHours * 3600);
}

TEST(HoursMinutesDurationUnitDeathTest, OverflowingSecondsStopTheProgram) {
  const std::int64_t tooManyHours = std::numeric_limits<std::int64_t>::max() / 3600 + 1;
  EXPECT_DEATH(Unit::hours(kHours).secondsForValue(tooManyHours), "overflows");
  EXPECT_DEATH(Unit::minutes(kMinutes).secondsForValue(std::numeric_limits<std::int64_t>::min()),
               "overflows");
}

}  // namespace
}  // namespace qm
