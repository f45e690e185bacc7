#include "qmcore/formatting/QMDateFormatter.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <string>
#include <vector>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

// 2020-05-01T10:00:00.123Z: summer time in Berlin.
constexpr Date kMay = Date::fromUnixSeconds(1588327200.123);
// 2021-01-15T23:30:00.987Z: winter; already the 16th in Berlin.
constexpr Date kJanuary = Date::fromUnixSeconds(1610753400.987);

class QMDateFormatterTest : public ::testing::Test {
 protected:
  // The tests set the current locale and time zone freely; these restore them.
  const testing::ScopedLocale locale_;
  const testing::ScopedTimeZone timeZone_;
};

TEST_F(QMDateFormatterTest, FixedFormatsInTheCurrentLocaleAndZone) {
  setCurrentLocaleIdentifier("de_DE");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  const QMDateFormatter dates;
  const struct {
    std::string actual;
    const char* expected;
  } cases[] = {
      {dates.xmlStringFromDate(kMay), "2020-05-01T12:00:00.123+02:00"},
      {dates.dateOnlyToShortUIString(kJanuary), "16-Jan.-21"},
      {dates.hourMinuteSecondMillisecondsFromDate(kJanuary), "00:30:00.987"},
      {QMDateFormatter::dateToBackupNameString(kJanuary), "20210116_003000"},
      {QMDateFormatter::timeZoneGMTPart(kJanuary), "GMT+1"},
      {QMDateFormatter::timeZoneLocalPart(kMay), "MESZ"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);
}

TEST_F(QMDateFormatterTest, InstanceKeepsItsLocaleAndZoneWhileNewFormattersFollowTheCurrentOnes) {
  setCurrentLocaleIdentifier("en_US");
  setCurrentTimeZoneIdentifier("UTC");
  const QMDateFormatter dates;
  // The shared instance was made at its first use, in whatever locale and zone were current then.
  const QMDateFormatter& shared = QMDateFormatter::sharedInstance();
  const std::string sharedText = shared.datetimeSecondsToShortUIString(kMay);

  setCurrentLocaleIdentifier("de_DE");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(dates.datetimeSecondsToShortUIString(kMay), "01-May-20 10:00:00");
  EXPECT_EQ(shared.datetimeSecondsToShortUIString(kMay), sharedText);
  // Made at each call.
  EXPECT_EQ(QMDateFormatter::isoDateFormatter().format(kMay), "2020-05-01T12:00:00.12+0200");
  EXPECT_EQ(QMDateFormatter::shortUIDateOnlyFormatter().format(kMay), "01-Mai-20");
  EXPECT_EQ(dates.fileNameFormatter().format(kMay), "2020-05-01T12-00-00-123+0200");
  EXPECT_EQ(QMDateFormatter::shortUIDateFormatter().format(kMay), "01-Mai-20 12:00:00");
}

TEST_F(QMDateFormatterTest, FixedFormatsRoundTripInEveryZone) {
  for (const char* timeZone : {"America/St_Johns", "Asia/Kathmandu"}) {
    setCurrentTimeZoneIdentifier(timeZone);
    const QMDateFormatter dates;
    for (const double seconds : {0.0, 1588327200.123, -1234567.001}) {
      const Date date = Date::fromUnixSeconds(seconds);
      const auto xml = dates.dateFromXmlString(dates.xmlStringFromDate(date));
      const auto file = dates.dateFromFileNameString(dates.fileNameStringFromDate(date));
      const auto iso = dates.dateFromIsoString(dates.isoStringFromDate(date));
      ASSERT_TRUE(xml && file && iso) << timeZone << " " << seconds;
      EXPECT_NEAR(xml->timeIntervalSince1970(), seconds, 1e-6);
      EXPECT_NEAR(file->timeIntervalSince1970(), seconds, 1e-6);
      // The ISO text keeps hundredths only, truncated toward the past.
      EXPECT_NEAR(iso->timeIntervalSince1970(), std::floor(seconds * 100) / 100, 1e-6);
    }
  }
  // XML texts carry their own zones, with or without a fraction.
  const QMDateFormatter dates;
  EXPECT_EQ(dates.dateFromXmlString("2020-05-01T10:00:00.125+02:00"),
            Date::fromUnixSeconds(1588320000.125));
  EXPECT_EQ(dates.dateFromXmlString("2020-05-01T10:00:00Z"), Date::fromUnixSeconds(1588327200));
  EXPECT_FALSE(dates.dateFromXmlString("2020-05-01T10:00:00.125"));
}

TEST(QMDateFormatterClassTest, SecondsWithinTheMinuteAndWholeUnixSeconds) {
  EXPECT_NEAR(QMDateFormatter::fractionalSecondsForUnixTime(1700000012.345), 32.345, 1e-6);
  EXPECT_NEAR(QMDateFormatter::fractionalSecondsForUnixTime(-61.25), -1.25, 1e-6);
  const double before = static_cast<double>(std::time(nullptr));
  const double now = qmUnixSeconds();
  EXPECT_EQ(now, std::floor(now));
  EXPECT_GE(now, before);
  EXPECT_EQ(QMDateFormatter::unixTimeStampForDateString("1970-01-01T00:01:00Z"), 60.0);
}

}  // namespace
}  // namespace qm
