#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedLocale;

TEST(QMFormatterTimeSpansTest, ClockTextsTruncateAndCarryTheSign) {
  const struct {
    double ticks;
    const char* hms;
    const char* hm;
    const char* title;
  } cases[] = {
      {0, "00:00:00", "00:00", "00h00m00s"},
      {59.9, "00:00:59", "00:00", "00h00m59s"},
      {-0.5, "-00:00:00", "-00:00", "-00h00m00s"},
      {-3661, "-01:01:01", "-01:01", "-01h01m01s"},
      {3599.999, "00:59:59", "00:59", "00h59m59s"},
      {3600, "01:00:00", "01:00", "01h00m00s"},
      {360000, "100:00:00", "100:00", "100h00m00s"},
      {1e9 + 59, "277777:47:39", "277777:47", "277777h47m39s"},
      {std::nan(""), "00:00:00", "00:00", "00h00m00s"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMFormatter::hmsTextForTicks(c.ticks), c.hms) << c.ticks;
    EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks(c.ticks), c.hms) << c.ticks;
    EXPECT_EQ(QMFormatter::hmTextForTicks(c.ticks), c.hm) << c.ticks;
    EXPECT_EQ(QMFormatter::timeTitleTextForTicks(c.ticks), c.title) << c.ticks;
  }
}

TEST(QMFormatterTimeSpansTest, SpansBeyondTheIntRangeDoNotCrash) {
  for (const double ticks : {1e300, -1e300, std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(QMFormatter::hmsTextForTicks(ticks).empty());
    EXPECT_FALSE(QMFormatter::textPerTicks(ticks).empty());
    EXPECT_FALSE(QMFormatter::textForTicksSkipHours(ticks).empty());
    EXPECT_FALSE(QMFormatter::timeAnnouncementTextForTicks2(ticks).empty());
  }
}

TEST(QMFormatterTimeSpansTest, TitleAbbreviationsFollowTheLocale) {
  const ScopedLocale german("de_DE");
  EXPECT_EQ(QMFormatter::timeTitleTextForTicks(3723), "01h02min03s");
}

TEST(QMFormatterTimeSpansTest, SkipHoursCountsAllMinutes) {
  const struct {
    double ticks;
    const char* expected;
  } cases[] = {{0, "00:00"}, {59.9, "00:59"}, {3700, "61:40"}, {360000, "6000:00"}, {-61, "-1:-1"}};
  for (const auto& c : cases) EXPECT_EQ(QMFormatter::textForTicksSkipHours(c.ticks), c.expected);
}

TEST(QMFormatterTimeSpansTest, TextPerTicksPutsDaysAfterTheClock) {
  const struct {
    const char* locale;
    double ticks;
    const char* expected;
  } cases[] = {
      {"en_US", 5 * 3600 + 3 * 60 + 2.9, "05:03:02"},
      {"en_US", 86399, "23:59:59"},
      {"en_US", 86400, "00:00:00, 1 day"},
      {"en_US", 2 * 86400 + 5 * 3600 + 3 * 60 + 2, "05:03:02, 2 days"},
      {"en_US", 400 * 86400 + 1, "00:00:01, 400 days"},
      {"en_US", -61, "00:-1:-1"},  // no absolute value is taken
      {"de_DE", 86400 + 60, "00:01:00, 1 Tag"},
      {"de_DE", 3 * 86400, "00:00:00, 3 Tage"},
  };
  for (const auto& c : cases) {
    const ScopedLocale scoped(c.locale);
    EXPECT_EQ(QMFormatter::textPerTicks(c.ticks), c.expected) << c.locale << " " << c.ticks;
  }
}

TEST(QMFormatterTimeSpansTest, AnnouncementSpellsOutTheSpan) {
  const struct {
    const char* locale;
    double ticks;
    const char* expected;
  } cases[] = {
      {"en_US", 3903, "1 hour, 5 minutes, 3 seconds"},
      {"en_US", 7200, "2 hours"},
      {"en_US", 61.9, "1 minute, 1 second"},
      {"en_US", 0.5, "0 seconds"},
      {"en_US", 360000, "100 hours"},
      {"en_US", -61, "-1 minute, 1 second"},
      {"de_DE", 3903, "1 Stunde, 5 Minuten und 3 Sekunden"},
  };
  for (const auto& c : cases) {
    const ScopedLocale scoped(c.locale);
    EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks2(c.ticks), c.expected)
        << c.locale << " " << c.ticks;
  }
}

}  // namespace
}  // namespace qm
