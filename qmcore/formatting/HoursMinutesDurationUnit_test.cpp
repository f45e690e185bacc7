#include "qmcore/formatting/HoursMinutesDurationUnit.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

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

TEST(HoursMinutesDurationUnitTest, ValuesUseTheGivenSettingsMaximum) {
  const DurationUnitSettings longHours("Hours", 100, 1, 1, 1, 0);
  const DurationUnitSettings manyMinutes("Minutes", 1000, 1, 1, 1, 1);
  const Unit hours = Unit::hours(kHours);
  EXPECT_EQ(hours.valueForSeconds(200000, longHours, manyMinutes), 56);
  EXPECT_EQ(Unit::minutes(kMinutes).valueForSeconds(7200, longHours, manyMinutes), 120);
  EXPECT_EQ(hours.valueForSeconds(-5400, kHours, kMinutes), -2);  // halves away from zero
  EXPECT_EQ(hours.valueForSeconds(kMin, kHours, kMinutes), -2562047788015216);
}

TEST(HoursMinutesDurationUnitDeathTest, SecondsForValueStopOnOverflow) {
  EXPECT_EQ(Unit::minutes(kMinutes).secondsForValue(-3), -180);
  EXPECT_EQ(Unit::hours(kHours).secondsForValue(kMax / 3600), kMax / 3600 * 3600);
  EXPECT_DEATH(Unit::hours(kHours).secondsForValue(kMax / 3600 + 1), "overflows");
  EXPECT_DEATH(Unit::minutes(kMinutes).secondsForValue(kMin), "overflows");
}

}  // namespace
}  // namespace qm
