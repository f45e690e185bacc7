#include "qmcore/platform/DateFormatter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>
#include <vector>

#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

// 2020-05-01T10:00:00.123Z (summer time in Berlin and New York).
constexpr Date kMay = Date::fromUnixSeconds(1588327200.123);
// 2021-01-15T23:30:00Z (winter time; already the 16th in Berlin).
constexpr Date kJanuary = Date::fromUnixSeconds(1610753400.0);

class DateFormatterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLocale_ = currentLocaleIdentifier();
    savedTimeZone_ = currentTimeZoneIdentifier();
  }
  void TearDown() override {
    setCurrentLocaleIdentifier(savedLocale_);
    setCurrentTimeZoneIdentifier(savedTimeZone_);
  }

 private:
  std::string savedLocale_;
  std::string savedTimeZone_;
};

TEST_F(DateFormatterTest, FormatsPatternsInGivenLocaleAndTimeZone) {
  const struct {
    const char* pattern;
    const char* locale;
    const char* timeZone;
    Date date;
    const char* expected;
  } cases[] = {
      {"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "UTC", kMay, "2020-05-01T10:00:00.123Z"},
      {"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "Europe/Berlin", kMay,
       "2020-05-01T12:00:00.123+02:00"},
      {"yyyy'-'MM'-'dd'T'HH':'mm':'ss'.'SSZ", "en_US_POSIX", "Europe/Berlin", kJanuary,
       "2021-01-16T00:30:00.00+0100"},
      {"yyyy'-'MM'-'dd'T'HH'-'mm'-'ss'-'SSSZZZ", "en_US_POSIX", "America/New_York", kMay,
       "2020-05-01T06-00-00-123-0400"},
      {"HH:mm:ss.SSS", "en_US_POSIX", "Asia/Kolkata", kMay, "15:30:00.123"},
      {"yyyyMMdd_HHmmss", "en_US_POSIX", "UTC", kJanuary, "20210115_233000"},
      {"dd-MMM-yy HH:mm:ss", "en_US", "UTC", kMay, "01-May-20 10:00:00"},
      {"dd-MMM-yy", "de_DE", "Europe/Berlin", kJanuary, "16-Jan.-21"},
      {"dd-MMM-yy", "fr_FR", "UTC", kMay, "01-mai-20"},
      {"EEEE, MMMM d", "en_US", "UTC", kMay, "Friday, May 1"},
      {"EEEE, MMMM d", "de_DE", "UTC", kMay, "Freitag, Mai 1"},
      {"O", "en_US", "Europe/Berlin", kMay, "GMT+2"},
      {"O", "en_US", "Europe/Berlin", kJanuary, "GMT+1"},
      {"O", "en_US", "Asia/Kolkata", kMay, "GMT+5:30"},
      {"O", "en_US", "UTC", kMay, "GMT"},
      {"z", "en_US", "America/New_York", kMay, "EDT"},
      {"z", "en_US", "America/New_York", kJanuary, "EST"},
      {"z", "de_DE", "Europe/Berlin", kMay, "MESZ"},
      {"z", "en_US", "Europe/Berlin", kMay, "GMT+2"},
      {"'at' HH 'o''clock'", "en_US", "UTC", kMay, "at 10 o'clock"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(DateFormatter(c.pattern, c.locale, c.timeZone).format(c.date), c.expected)
        << c.pattern << " " << c.locale << " " << c.timeZone;
  }
}

TEST_F(DateFormatterTest, EmptyLocaleAndTimeZoneFollowTheCurrentOnesAtEachCall) {
  const DateFormatter current("dd-MMM-yy HH:mm");
  setCurrentLocaleIdentifier("en_US");
  setCurrentTimeZoneIdentifier("UTC");
  EXPECT_EQ(current.format(kJanuary), "15-Jan-21 23:30");
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_EQ(current.format(kJanuary), "15-Jan.-21 23:30");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(current.format(kJanuary), "16-Jan.-21 00:30");
  // A fixed locale stays fixed while the time zone still follows.
  const DateFormatter posix("dd-MMM-yy HH:mm", "en_US_POSIX");
  EXPECT_EQ(posix.format(kJanuary), "16-Jan-21 00:30");
}

TEST_F(DateFormatterTest, DropsFractionsOfMillisecondsAndRejectsNonFiniteDates) {
  const DateFormatter millis("HH:mm:ss.SSS", "en_US_POSIX", "UTC");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(0.9999)), "00:00:00.999");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(-0.0005)), "23:59:59.999");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(std::numeric_limits<double>::quiet_NaN())), "");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(std::numeric_limits<double>::infinity())), "");
  EXPECT_EQ(millis.format(Date::fromUnixSeconds(1e300)), "");
}

TEST_F(DateFormatterTest, BadPatternsGiveEmptyTextsAndNoDates) {
  // Unquoted ASCII letters that are not pattern letters; an unbalanced quote, by contrast,
  // just runs to the end of the pattern.
  EXPECT_EQ(DateFormatter("yyyy-MM-dd'T", "en_US_POSIX", "UTC").format(kMay), "2020-05-01T");
  for (const char* pattern : {"yyyy-MM-ddTHH:mm", "HH 'h' t"}) {
    const DateFormatter bad(pattern, "en_US_POSIX", "UTC");
    EXPECT_EQ(bad.format(kMay), "") << pattern;
    EXPECT_FALSE(bad.parse("2020-05-01T10:00")) << pattern;
  }
}

TEST_F(DateFormatterTest, ParsesWholeTextsStrictly) {
  const DateFormatter xml("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX", "Asia/Tokyo");
  const DateFormatter plain("yyyy-MM-dd HH:mm:ss", "en_US_POSIX", "Europe/Berlin");
  const DateFormatter shortDe("dd-MMM-yy", "de_DE", "UTC");
  const struct {
    const DateFormatter* formatter;
    const char* text;
    std::optional<double> expected;
  } cases[] = {
      {&xml, "2020-05-01T10:00:00.123+02:00", 1588320000.123},
      {&xml, "2020-05-01T10:00:00.123Z", 1588327200.123},
      {&xml, "2020-05-01T10:00:00.5Z", 1588327200.5},
      {&xml, "2020-05-01T10:00:00Z", std::nullopt},            // fraction missing
      {&xml, "2020-05-01T10:00:00.123+02:00 ", std::nullopt},  // trailing blank
      {&xml, "2020-05-01T10:00:00.123", std::nullopt},         // zone missing
      {&xml, "2020-02-30T10:00:00.000Z", std::nullopt},        // no 30 February
      {&xml, "2020-05-01T25:00:00.000Z", std::nullopt},
      {&xml, "", std::nullopt},
      {&plain, "2020-05-01 10:00:00", 1588320000.0},  // read in the formatter's zone
      {&plain, "2020-01-01 10:00:00", 1577869200.0},
      {&plain, "2020-05-01 10:00", std::nullopt},
      {&shortDe, "01-Mai-20", 1588291200.0},
      {&shortDe, "01-May-20", std::nullopt},
  };
  for (const auto& c : cases) {
    const std::optional<Date> parsed = c.formatter->parse(c.text);
    ASSERT_EQ(parsed.has_value(), c.expected.has_value()) << c.text;
    if (parsed) {
      EXPECT_NEAR(parsed->timeIntervalSince1970(), *c.expected, 1e-6) << c.text;
    }
  }
}

TEST_F(DateFormatterTest, FieldsMissingFromThePatternComeFromTheEpoch) {
  const DateFormatter time("HH:mm:ss.SSS", "en_US_POSIX", "UTC");
  const std::optional<Date> parsed = time.parse("01:02:03.004");
  ASSERT_TRUE(parsed);
  EXPECT_NEAR(parsed->timeIntervalSince1970(), 3723.004, 1e-6);
}

TEST_F(DateFormatterTest, CalendarIsProlepticGregorian) {
  // 1000-01-01T00:00Z, counted in Gregorian days back from 1970.
  const Date date = Date::fromUnixSeconds(-30610224000.0);
  const DateFormatter day("yyyy-MM-dd", "en_US_POSIX", "UTC");
  EXPECT_EQ(day.format(date), "1000-01-01");
  ASSERT_TRUE(day.parse("1000-01-01"));
  EXPECT_EQ(day.parse("1000-01-01")->timeIntervalSince1970(), -30610224000.0);
}

TEST_F(DateFormatterTest, RoundTripsThroughTimeZonePatterns) {
  for (const char* zone : {"UTC", "Europe/Berlin", "America/St_Johns", "Pacific/Kiritimati"}) {
    for (const char* pattern : {"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "yyyy-MM-dd HH:mm:ss.SSS ZZZ",
                                "yyyy-MM-dd HH:mm:ss.SSS O"}) {
      const DateFormatter formatter(pattern, "en_US_POSIX", zone);
      for (const Date date : {kMay, kJanuary, Date::fromUnixSeconds(-1234567.5)}) {
        const std::string text = formatter.format(date);
        const std::optional<Date> back = formatter.parse(text);
        ASSERT_TRUE(back) << pattern << " " << zone << " " << text;
        EXPECT_EQ(back->timeIntervalSince1970(), date.timeIntervalSince1970()) << text;
      }
    }
  }
}

TEST_F(DateFormatterTest, ConcurrentCallsOnOneFormatterGiveCorrectTexts) {
  const DateFormatter formatter("yyyy-MM-dd HH:mm:ss", "en_US_POSIX", "UTC");
  constexpr int kThreads = 4;
  constexpr int kCalls = 2000;
  std::vector<int> failures(kThreads, 0);
  std::vector<std::thread> threads;
  for (int t = 0; t < kThreads; ++t) {
    threads.emplace_back([&, t] {
      for (int i = 0; i < kCalls; ++i) {
        // Each thread its own day of 1970, so mixed-up state would show in the text.
        const int day = t * 7 + 1;
        const Date date = Date::fromUnixSeconds((day - 1) * 86400.0 + i);
        const std::string expected =
            invariantFormat("1970-01-%02d %02d:%02d:%02d", day, i / 3600, i / 60 % 60, i % 60);
        if (formatter.format(date) != expected) ++failures[t];
        const std::optional<Date> back = formatter.parse(expected);
        if (!back || *back != date) ++failures[t];
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  for (int t = 0; t < kThreads; ++t) EXPECT_EQ(failures[t], 0) << "thread " << t;
}

}  // namespace
}  // namespace qm
