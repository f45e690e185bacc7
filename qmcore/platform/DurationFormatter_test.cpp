#include "qmcore/platform/DurationFormatter.hpp"

#include <gtest/gtest.h>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

TEST(DurationFormatterTest, SpellsOutNonZeroComponents) {
  const struct {
    const char* locale;
    std::int64_t hours, minutes, seconds;
    const char* expected;
  } cases[] = {
      {"en_US", 1, 5, 3, "1 hour, 5 minutes, 3 seconds"},
      {"en_US", 2, 0, 0, "2 hours"},
      {"en_US", 0, 1, 0, "1 minute"},
      {"en_US", 1, 0, 1, "1 hour, 1 second"},
      {"en_US", 0, 0, 0, "0 seconds"},
      {"en_US", 1234, 0, 0, "1,234 hours"},
      {"en_US", -1, 1, 1, "-1 hour, 1 minute, 1 second"},
      {"de_DE", 1, 5, 3, "1 Stunde, 5 Minuten und 3 Sekunden"},
      {"de_DE", 0, 2, 1, "2 Minuten, 1 Sekunde"},  // no "und" between two units
  };
  for (const auto& c : cases) {
    EXPECT_EQ(fullDurationText(c.hours, c.minutes, c.seconds, c.locale), c.expected)
        << c.locale << " " << c.hours << ":" << c.minutes << ":" << c.seconds;
  }
}

TEST(DurationFormatterTest, FollowsTheCurrentLocaleAtEachCall) {
  const std::string saved = currentLocaleIdentifier();
  setCurrentLocaleIdentifier("en_US");
  EXPECT_EQ(fullDurationText(0, 0, 2), "2 seconds");
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(fullDurationText(0, 0, 2), "2 Sekunden");
  setCurrentLocaleIdentifier(saved);
}

}  // namespace
}  // namespace qm
