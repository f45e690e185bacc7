#include "qmcore/formatting/QMDateFormatter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <functional>
#include <iterator>
#include <string>
#include <string_view>
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

// A text of an instance (made in the current locale and time zone) or of a class operation.
using Format = std::function<std::string(const QMDateFormatter&, Date)>;

Format classOperation(std::string (*format)(Date)) {
  return [format](const QMDateFormatter&, Date date) { return format(date); };
}

// The ISO and file-name formats in other zones are in the tests below.
TEST_F(QMDateFormatterTest, FixedFormatsInTwoLocalesAndTwoTimeZones) {
  const Format xml = &QMDateFormatter::xmlStringFromDate;
  const Format shortDate = &QMDateFormatter::dateOnlyToShortUIString;
  const Format time = &QMDateFormatter::hourMinuteSecondMillisecondsFromDate;
  const Format backup = classOperation(&QMDateFormatter::dateToBackupNameString);
  const Format gmt = classOperation(&QMDateFormatter::timeZoneGMTPart);
  const Format zone = classOperation(&QMDateFormatter::timeZoneLocalPart);
  const struct {
    const char* locale;
    const char* timeZone;
    const Format* format;
    Date date;
    const char* expected;
  } cases[] = {
      {"en_US", "UTC", &xml, kMay, "2020-05-01T10:00:00.123Z"},
      {"de_DE", "Europe/Berlin", &xml, kMay, "2020-05-01T12:00:00.123+02:00"},
      {"de_DE", "UTC", &shortDate, kJanuary, "15-Jan.-21"},
      {"de_DE", "Europe/Berlin", &time, kJanuary, "00:30:00.987"},
      {"de_DE", "Europe/Berlin", &backup, kJanuary, "20210116_003000"},
      {"en_US", "UTC", &gmt, kMay, "GMT"},
      {"de_DE", "Europe/Berlin", &gmt, kJanuary, "GMT+1"},
      {"en_US", "America/New_York", &zone, kMay, "EDT"},
      {"en_US", "Europe/Berlin", &zone, kMay, "GMT+2"},  // no English name for it
  };
  for (const auto& c : cases) {
    setCurrentLocaleIdentifier(c.locale);
    setCurrentTimeZoneIdentifier(c.timeZone);
    const QMDateFormatter dates;
    EXPECT_EQ((*c.format)(dates, c.date), c.expected) << c.locale << " " << c.timeZone;
  }
  EXPECT_EQ(QMDateFormatter().xmlStringFromDate(Date::fromUnixSeconds(std::nan(""))), "");
}

TEST_F(QMDateFormatterTest, InstanceKeepsItsLocaleAndZoneWhileNewFormattersFollowTheCurrentOnes) {
  setCurrentLocaleIdentifier("en_US");
  setCurrentTimeZoneIdentifier("UTC");
  const QMDateFormatter dates;
  const QMDateFormatter& shared = QMDateFormatter::sharedInstance();
  const DateFormatter keptShortUI = QMDateFormatter::shortUIDateFormatter();
  const auto made = [](DateFormatter (*make)()) {
    return [make](const QMDateFormatter&, Date date) { return make().format(date); };
  };
  const struct {
    const char* name;
    Format format;
    const char* madeInUSAndUTC;
    const char* afterSwitchingToGermanyAndBerlin;
  } cases[] = {
      // The instance's formats.
      {"short UI", &QMDateFormatter::datetimeSecondsToShortUIString, "01-May-20 10:00:00",
       "01-May-20 10:00:00"},
      {"kept formatter",
       [&](const QMDateFormatter&, Date date) { return keptShortUI.format(date); },
       "01-May-20 10:00:00", "01-May-20 10:00:00"},
      // Made at each call.
      {"new iso", made(&QMDateFormatter::isoDateFormatter), "2020-05-01T10:00:00.12+0000",
       "2020-05-01T12:00:00.12+0200"},
      {"new short date", made(&QMDateFormatter::shortUIDateOnlyFormatter), "01-May-20",
       "01-Mai-20"},
      {"new file",
       [](const QMDateFormatter& d, Date date) { return d.fileNameFormatter().format(date); },
       "2020-05-01T10-00-00-123+0000", "2020-05-01T12-00-00-123+0200"},
      {"new short UI", made(&QMDateFormatter::shortUIDateFormatter), "01-May-20 10:00:00",
       "01-Mai-20 12:00:00"},
  };
  std::vector<std::string> sharedTexts;
  for (const auto& c : cases) {
    EXPECT_EQ(c.format(dates, kMay), c.madeInUSAndUTC) << c.name;
    sharedTexts.push_back(c.format(shared, kMay));
  }

  setCurrentLocaleIdentifier("de_DE");
  setCurrentTimeZoneIdentifier("Europe/Berlin");
  for (const auto& c : cases) {
    EXPECT_EQ(c.format(dates, kMay), c.afterSwitchingToGermanyAndBerlin) << c.name;
  }
  // The shared instance was made at its first use, in whatever locale and zone were current
  // then; its kept formats (the rows whose texts do not change) do not change either.
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    if (std::string_view(cases[i].madeInUSAndUTC) == cases[i].afterSwitchingToGermanyAndBerlin) {
      EXPECT_EQ(cases[i].format(shared, kMay), sharedTexts[i]) << cases[i].name;
    }
  }
}

TEST_F(QMDateFormatterTest, FixedFormatsRoundTripInEveryZone) {
  for (const char* timeZone : {"UTC", "America/St_Johns", "Asia/Kathmandu"}) {
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
  EXPECT_FALSE(dates.dateFromXmlString("2020-05-01 10:00:00Z"));
}

TEST_F(QMDateFormatterTest, FileNameTextsHaveNoColonsAndSortLikeTheDates) {
  setCurrentTimeZoneIdentifier("Asia/Kolkata");
  const QMDateFormatter dates;
  std::vector<std::string> texts;
  for (double t = 946684800.0; t < 1e10; t = t * 1.37 + 0.017) {
    texts.push_back(dates.fileNameStringFromDate(Date::fromUnixSeconds(t)));
    EXPECT_EQ(texts.back().find(':'), std::string::npos) << texts.back();
  }
  EXPECT_TRUE(std::is_sorted(texts.begin(), texts.end()));
  EXPECT_EQ(std::adjacent_find(texts.begin(), texts.end()), texts.end());
}

TEST(QMDateFormatterClassTest, FractionalSecondsWithinTheMinute) {
  const struct {
    double unixTime;
    double expected;
  } cases[] = {{1700000012.345, 32.345}, {60.0, 0.0}, {86400.5, 0.5}, {-61.25, -1.25}};
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
  EXPECT_EQ(QMDateFormatter::unixTimeStampForDateString("1970-01-01T00:01:00Z"), 60.0);
}

}  // namespace
}  // namespace qm
