#include "qmcore/formatting/CalendarHelper.hpp"

#include <gtest/gtest.h>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedLocale;

TEST(CalendarHelperTest, StandaloneMonthNamesOfTheCurrentLocale) {
  const struct {
    const char* locale;
    std::int64_t index;
    std::optional<std::string> expected;
  } cases[] = {
      {"en_US", 0, "January"},       {"en_US", 11, "December"}, {"en_US", 12, std::nullopt},
      {"en_US", 1000, std::nullopt}, {"de_DE", 2, "März"},      {"de_DE", 11, "Dezember"},
      {"ru_RU", 0, "январь"},  // stand-alone (nominative), not "января" as in a date
  };
  for (const auto& c : cases) {
    const ScopedLocale locale(c.locale);
    EXPECT_EQ(CalendarHelper::getGregorianMonthName(c.index), c.expected)
        << c.locale << " " << c.index;
    EXPECT_EQ(CalendarHelper::getGregorianMonthNameWithIndex(c.index), c.expected);
  }
}

TEST(CalendarHelperDeathTest, ANegativeIndexStopsTheProgram) {
  EXPECT_DEATH(CalendarHelper::getGregorianMonthName(-1), "Negative month index");
}

}  // namespace
}  // namespace qm
