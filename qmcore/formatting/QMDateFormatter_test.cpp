#include "qmcore/formatting/QMDateFormatter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <functional>
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

  const QMDateFormatter& dates_ = QMDateFormatter::sharedInstance();
};

TEST_F(QMDateFormatterTest, FixedFormatsInTwoLocalesAndTwoTimeZones) {
  using Format = std::function<std::string(Date)>;
  const Format xml = std::bind_front(&QMDateFormatter::xmlStringFromDate, &dates_);
  const Format iso = std::bind_front(&QMDateFormatter::isoStringFromDate, &dates_);
  const Format file = std::bind_front(&QMDateFormatter::fileNameStringFromDate, &dates_);
  const Format shortUI = std::bind_front(&QMDateFormatter::datetimeSecondsToShortUIString, &dates_);
  const Format shortDate = std::bind_front(&QMDateFormatter::dateOnlyToShortUIString, &dates_);
  const Format time =
      std::bind_front(&QMDateFormatter::hourMinuteSecondMillisecondsFromDate, &dates_);
  const Format backup = &QMDateFormatter::dateToBackupNameString;
  const Format gmt = &QMDateFormatter::timeZoneGMTPart;
  const Format zone = &QMDateFormatter::timeZoneLocalPart;
  const struct {
    const char* locale;
    const char* timeZone;
    const Format* format;
    Date date;
    const char* expected;
  } cases[] = {
      {"en_US", "UTC", &xml, kMay, "2020-05-01T10:00:00.123Z"},
      {"de_DE", "Europe/Berlin", &xml, kMay, "2020-05-01T12:00:00.123+02:00"},
      {"en_US", "UTC", &iso, kJanuary, "2021-01-15T23:30:00.98+0000"},
      {"de_DE", "Europe/Berlin", &iso, kJanuary, "2021-01-16T00:30:00.98+0100"},
      {"en_US", "UTC", &file, kMay, "2020-05-01T10-00-00-123+0000"},
      {"de_DE", "Europe/Berlin", &file, kMay, "2020-05-01T12-00-00-123+0200"},
      {"en_US", "UTC", &shortUI, kMay, "01-May-20 10:00:00"},
      {"de_DE", "Europe/Berlin", &shortUI, kMay, "01-Mai-20 12:00:00"},
      {"en_US", "Europe/Berlin", &shortDate, kJanuary, "16-Jan-21"},
      {"de_DE", "UTC", &shortDate, kJanuary, "15-Jan.-21"},
      {"en_US", "UTC", &time, kJanuary, "23:30:00.987"},
      {"de_DE", "Europe/Berlin", &time, kJanuary, "00:30:00.987"},
      {"en_US", "UTC", &backup, kJanuary, "20210115_233000"},
      {"de_DE", "Europe/Berlin", &backup, kJanuary, "20210116_003000"},
      {"en_US", "UTC", &gmt, kMay, "GMT"},
      {"de_DE", "Europe/Berlin", &gmt, kJanuary, "GMT+1"},
      {"en_US", "America/New_York", &zone, kMay, "EDT"},
      {"en_US", "Europe/Berlin", &zone, kMay, "GMT+2"},  // no English name for it
      {"de_DE", "Europe/Berlin", &zone, kJanuary, "MEZ"},
  };
  for (const auto& c : cases) {
    setCurrentLocaleIdentifier(c.locale);
    setCurrentTimeZoneIdentifier(c.timeZone);
    EXPECT_EQ((*c.format)(c.date), c.expected) << c.locale << " " << c.timeZone;
  }
  EXPECT_EQ(dates_.xmlStringFromDate(Date::fromUnixSeconds(std::nan(""))), "");
}

TEST_F(QMDateFormatterTest, FixedFormatsRoundTripInEveryZone) {
  for (const char* timeZone : {"UTC", "America/St_Johns", "Asia/Kathmandu"}) {
    setCurrentTimeZoneIdentifier(timeZone);
    for (const double seconds : {0.0, 1588327200.123, -1234567.001}) {
      const Date date = Date::fromUnixSeconds(seconds);
      const auto xml = dates_.dateFromXmlString(dates_.xmlStringFromDate(date));
      const auto file = dates_.dateFromFileNameString(dates_.fileNameStringFromDate(date));
      const auto iso = dates_.dateFromIsoString(dates_.isoStringFromDate(date));
      ASSERT_TRUE(xml && file && iso) << timeZone << " " << seconds;
      EXPECT_NEAR(xml->timeIntervalSince1970(), seconds, 1e-6);
      EXPECT_NEAR(file->timeIntervalSince1970(), seconds, 1e-6);
      // The ISO text keeps hundredths only, truncated toward the past.
      EXPECT_NEAR(iso->timeIntervalSince1970(), std::floor(seconds * 100) / 100, 1e-6);
    }
  }
}

TEST_F(QMDateFormatterTest, ReadsXmlTimestampsWithAndWithoutFraction) {
  setCurrentTimeZoneIdentifier("Asia/Tokyo");  // the texts carry their own zones
  EXPECT_EQ(dates_.dateFromXmlString("2020-05-01T10:00:00.125+02:00"),
            Date::fromUnixSeconds(1588320000.125));
  EXPECT_EQ(dates_.dateFromXmlString("2020-05-01T10:00:00Z"), Date::fromUnixSeconds(1588327200));
  EXPECT_FALSE(dates_.dateFromXmlString("2020-05-01T10:00:00.125"));
  EXPECT_FALSE(dates_.dateFromXmlString("2020-05-01 10:00:00Z"));
}

TEST_F(QMDateFormatterTest, FileNameTextsHaveNoColonsAndSortLikeTheDates) {
  setCurrentTimeZoneIdentifier("Asia/Kolkata");
  std::vector<std::string> texts;
  for (double t = 946684800.0; t < 1e10; t = t * 1.37 + 0.017) {
    texts.push_back(dates_.fileNameStringFromDate(Date::fromUnixSeconds(t)));
    EXPECT_EQ(texts.back().find(':'), std::string::npos) << texts.back();
  }
  EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
  EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end());
}

TEST(QMDateFormatterClassTest, FractionalSecondsWithinTheMinute) {
  const struct {
    double unixTime;
    double expected;
  } cases[] = {{1700000012.345, 32.345}, {59.999, 59.999}, {60.0, 0.0},
               {86400.5, 0.5},           {-0.5, -0.5},     {-61.25, -1.25}};
  for (const auto& c : cases) {
    EXPECT_NEAR(QMDateFormatter::fractionalSecondsForUnixTime(c.unixTime), c.expected, 1e-6)
        << c.unixTime;
  }
}

TEST(QMDateFormatterClassTest, UnixSecondsAreWholeAndCurrent) {
  const double before = static_cast<double>(std::time(nullptr));
  const double now = qmUnixSeconds();
  EXPECT_EQ(now, std::floor(now));
  EXPECT_GE(now, before);
  EXPECT_LE(now, before + 5);
}

}  // namespace
}  // namespace qm
