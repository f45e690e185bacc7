#include "qmcore/formatting/QMDateFormatter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <functional>
#include <vector>

#include "qmcore/platform/Locale.hpp"

namespace qm {
namespace {

// 2020-05-01T10:00:00.123Z: summer time in Berlin.
constexpr Date kMay = Date::fromUnixSeconds(1588327200.123);
// 2021-01-15T23:30:00.987Z: winter; already the 16th in Berlin.
constexpr Date kJanuary = Date::fromUnixSeconds(1610753400.987);

class QMDateFormatterTest : public ::testing::Test {
 protected:
  void SetUp() override {
    savedLocale_ = currentLocaleIdentifier();
    savedTimeZone_ = currentTimeZoneIdentifier();
  }
  void TearDown() override {
    setCurrentLocaleIdentifier(savedLocale_);
    setCurrentTimeZoneIdentifier(savedTimeZone_);
  }

  const QMDateFormatter& dates_ = QMDateFormatter::sharedInstance();

 private:
  std::string savedLocale_;
  std::string savedTimeZone_;
};

TEST_F(QMDateFormatterTest, FixedFormatsInTwoLocalesAndTwoTimeZones) {
  using Format = std::function<std::string(Date)>;
  const QMDateFormatter& d = dates_;
  const Format xml = [&](Date x) { return d.xmlStringFromDate(x); };
  const Format iso = [&](Date x) { return d.isoStringFromDate(x); };
  const Format fileName = [&](Date x) { return d.fileNameStringFromDate(x); };
  const Format shortUI = [&](Date x) { return d.datetimeSecondsToShortUIString(x); };
  const Format shortDate = [&](Date x) { return d.dateOnlyToShortUIString(x); };
  const Format time = [&](Date x) { return d.hourMinuteSecondMillisecondsFromDate(x); };
  const Format backup = [](Date x) { return QMDateFormatter::dateToBackupNameString(x); };
  const Format gmt = [](Date x) { return QMDateFormatter::timeZoneGMTPart(x); };
  const Format zone = [](Date x) { return QMDateFormatter::timeZoneLocalPart(x); };
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
      {"en_US", "UTC", &fileName, kMay, "2020-05-01T10-00-00-123+0000"},
      {"de_DE", "Europe/Berlin", &fileName, kMay, "2020-05-01T12-00-00-123+0200"},
      {"en_US", "UTC", &shortUI, kMay, "01-May-20 10:00:00"},
      {"de_DE", "Europe/Berlin", &shortUI, kMay, "01-Mai-20 12:00:00"},
      {"de_DE", "UTC", &shortUI, kJanuary, "15-Jan.-21 23:30:00"},
      {"en_US", "Europe/Berlin", &shortDate, kJanuary, "16-Jan-21"},
      {"de_DE", "Europe/Berlin", &shortDate, kJanuary, "16-Jan.-21"},
      {"en_US", "UTC", &time, kJanuary, "23:30:00.987"},
      {"de_DE", "Europe/Berlin", &time, kJanuary, "00:30:00.987"},
      {"en_US", "UTC", &backup, kJanuary, "20210115_233000"},
      {"de_DE", "Europe/Berlin", &backup, kJanuary, "20210116_003000"},
      {"en_US", "UTC", &gmt, kMay, "GMT"},
      {"en_US", "Europe/Berlin", &gmt, kMay, "GMT+2"},
      {"de_DE", "Europe/Berlin", &gmt, kJanuary, "GMT+1"},
      {"en_US", "America/New_York", &zone, kMay, "EDT"},
      {"en_US", "America/New_York", &zone, kJanuary, "EST"},
      {"en_US", "Europe/Berlin", &zone, kMay, "GMT+2"},
      {"de_DE", "Europe/Berlin", &zone, kMay, "MESZ"},
      {"de_DE", "Europe/Berlin", &zone, kJanuary, "MEZ"},
  };
  for (const auto& c : cases) {
    setCurrentLocaleIdentifier(c.locale);
    setCurrentTimeZoneIdentifier(c.timeZone);
    EXPECT_EQ((*c.format)(c.date), c.expected) << c.locale << " " << c.timeZone;
  }
}

TEST_F(QMDateFormatterTest, FixedFormatsRoundTripInEveryZone) {
  for (const char* timeZone : {"UTC", "Europe/Berlin", "America/St_Johns", "Asia/Kathmandu"}) {
    setCurrentTimeZoneIdentifier(timeZone);
    for (const double seconds : {0.0, 1588327200.123, 1610753400.987, -1234567.001}) {
      const Date date = Date::fromUnixSeconds(seconds);
      const std::optional<Date> xml = dates_.dateFromXmlString(dates_.xmlStringFromDate(date));
      ASSERT_TRUE(xml) << timeZone << " " << seconds;
      EXPECT_NEAR(xml->timeIntervalSince1970(), seconds, 1e-6);
      const std::optional<Date> file =
          dates_.dateFromFileNameString(dates_.fileNameStringFromDate(date));
      ASSERT_TRUE(file) << timeZone << " " << seconds;
      EXPECT_NEAR(file->timeIntervalSince1970(), seconds, 1e-6);
      // The ISO text keeps hundredths only (truncated toward the past).
      const std::optional<Date> iso = dates_.dateFromIsoString(dates_.isoStringFromDate(date));
      ASSERT_TRUE(iso) << timeZone << " " << seconds;
      EXPECT_NEAR(iso->timeIntervalSince1970(), std::floor(seconds * 100) / 100, 1e-6);
    }
  }
}

TEST_F(QMDateFormatterTest, ReadsXmlTimestampsWithAndWithoutFraction) {
  const struct {
    const char* text;
    std::optional<double> expected;
  } cases[] = {
      {"2020-05-01T10:00:00.123+02:00", 1588320000.123},
      {"2020-05-01T10:00:00Z", 1588327200.0},
      {"2020-05-01T10:00:00-05:30", 1588347000.0},
      {"2020-05-01T10:00:00.123", std::nullopt},
      {"2020-05-01 10:00:00Z", std::nullopt},
      {"2020-05-01T10:00Z", std::nullopt},
      {"2020-02-30T10:00:00Z", std::nullopt},
      {"", std::nullopt},
  };
  setCurrentTimeZoneIdentifier("Asia/Tokyo");  // the texts carry their own zones
  for (const auto& c : cases) {
    const std::optional<Date> date = dates_.dateFromXmlString(c.text);
    ASSERT_EQ(date.has_value(), c.expected.has_value()) << c.text;
    if (date) {
      EXPECT_NEAR(date->timeIntervalSince1970(), *c.expected, 1e-6) << c.text;
    }
  }
}

TEST_F(QMDateFormatterTest, FileNameTextsHaveNoColonsAndSortLikeTheDates) {
  setCurrentTimeZoneIdentifier("Asia/Kolkata");
  std::vector<double> times;
  for (double t = 946684800.0; t < 1e10; t = t * 1.37 + 0.017) times.push_back(t);
  times.push_back(946684800.001);
  times.push_back(946684800.01);
  std::sort(times.begin(), times.end());
  std::vector<std::string> texts;
  for (const double t : times)
    texts.push_back(dates_.fileNameStringFromDate(Date::fromUnixSeconds(t)));
  for (const std::string& text : texts) EXPECT_EQ(text.find(':'), std::string::npos) << text;
  EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
  EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end());
}

TEST_F(QMDateFormatterTest, NewFormattersAreThoseOfTheFixedFormats) {
  setCurrentLocaleIdentifier("de_DE");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  EXPECT_EQ(QMDateFormatter::isoDateFormatter().format(kMay), dates_.isoStringFromDate(kMay));
  EXPECT_EQ(dates_.fileNameFormatter().format(kMay), dates_.fileNameStringFromDate(kMay));
  EXPECT_EQ(QMDateFormatter::shortUIDateFormatter().format(kMay),
            dates_.datetimeSecondsToShortUIString(kMay));
  EXPECT_EQ(QMDateFormatter::shortUIDateOnlyFormatter().format(kMay),
            dates_.dateOnlyToShortUIString(kMay));
}

TEST_F(QMDateFormatterTest, NonFiniteDatesGiveEmptyTexts) {
  const Date nan = Date::fromUnixSeconds(std::nan(""));
  EXPECT_EQ(dates_.xmlStringFromDate(nan), "");
  EXPECT_EQ(dates_.hourMinuteSecondMillisecondsFromDate(nan), "");
  EXPECT_EQ(QMDateFormatter::dateToBackupNameString(nan), "");
}

TEST(QMDateFormatterClassTest, FractionalSecondsWithinTheMinute) {
  const struct {
    double unixTime;
    double expected;
  } cases[] = {
      {1700000012.345, 32.345}, {0.0, 0.0},   {59.999, 59.999}, {60.0, 0.0},
      {86400.5, 0.5},           {-0.5, -0.5}, {-61.25, -1.25},  {-86400.0, 0.0},
  };
  for (const auto& c : cases) {
    EXPECT_NEAR(QMDateFormatter::fractionalSecondsForUnixTime(c.unixTime), c.expected, 1e-6)
        << c.unixTime;
  }
  EXPECT_TRUE(std::isnan(QMDateFormatter::fractionalSecondsForUnixTime(INFINITY)));
}

TEST(QMDateFormatterClassTest, UnixSecondsAndTimestampStrings) {
  const double before = static_cast<double>(std::time(nullptr));
  const double now = qmUnixSeconds();
  EXPECT_EQ(now, std::floor(now));
  EXPECT_GE(now, before);
  EXPECT_LE(now, before + 5);
  EXPECT_EQ(QMDateFormatter::unixTimeStampForDateString("2000-01-01T00:00:00+01:00"), 946681200.0);
  EXPECT_TRUE(std::isnan(QMDateFormatter::unixTimeStampForDateString("yesterday")));
  EXPECT_EQ(&QMDateFormatter::sharedInstance(), &QMDateFormatter::sharedInstance());
}

}  // namespace
}  // namespace qm
