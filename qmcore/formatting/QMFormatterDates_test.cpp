// QMFormatter's date texts and its texts of time spans.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "qmcore/formatting/QMDateFormatter.hpp"
#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::ScopedLocale;
using testing::ScopedTimeZone;

constexpr Date kMarch5th2024 = Date::fromUnixSeconds(1709647629.0);  // 14:07:09 UTC
constexpr double kDay = 86400.0;

TEST(QMFormatterDatesTest, DateToUIStringAppendsEnglishDaySuffixesInEveryLocale) {
  const Date march1st2025Noon = Date::fromUnixSeconds(1740830400.0);
  const struct {
    int day;
    const char* ending;
  } cases[] = {{1, " 1st"},   {2, " 2nd"},   {3, " 3rd"},   {4, " 4th"},
               {11, " 11th"}, {12, " 12th"}, {13, " 13th"}, {21, " 21st"},
               {22, " 22nd"}, {23, " 23rd"}, {31, " 31st"}};
  for (const auto& c : cases) {
    const std::string text =
        QMFormatter::dateToUIString(march1st2025Noon.addingTimeInterval((c.day - 1) * kDay));
    EXPECT_TRUE(text.ends_with(c.ending)) << text;
  }
  EXPECT_EQ(QMFormatter::dateToUIString(march1st2025Noon), "Saturday, March 1st");
  {
    const ScopedLocale german("de_DE");
    EXPECT_EQ(QMFormatter::dateToUIString(march1st2025Noon), "Samstag, März 1st");
  }
  // A day number in other digits cannot be read: no suffix.
  const ScopedLocale arabic("ar_EG");
  const std::string arabicText = QMFormatter::dateToUIString(march1st2025Noon);
  EXPECT_FALSE(arabicText.empty());
  EXPECT_EQ(arabicText.find("st"), std::string::npos);
}

TEST(QMFormatterDatesTest, GpsStampsAreUtcAndExifDatesLocal) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:03:05 14:07:09"), kMarch5th2024);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:03:05", "14:07:09"), kMarch5th2024);
  EXPECT_EQ(QMFormatter::dateForGPSDateString(std::nullopt, "14:07:09"), std::nullopt);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:03:05", std::nullopt), std::nullopt);
  EXPECT_EQ(QMFormatter::dateForGPSDateString(std::nullopt), std::nullopt);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024-03-05 14:07:09"), std::nullopt);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:13:05 14:07:09"), std::nullopt);

  EXPECT_EQ(QMFormatter::exifStringForDate(kMarch5th2024), "2024:03:05 15:07:09");
  EXPECT_EQ(QMFormatter::dateForExifDateString("2024:03:05 15:07:09"), kMarch5th2024);
  EXPECT_EQ(QMFormatter::dateForExifDateString("garbage"), std::nullopt);
}

TEST(QMFormatterDatesTest, StorageTextsRoundTripInTheCurrentZone) {
  for (const char* zone : {"UTC", "America/New_York", "Asia/Kolkata"}) {
    const ScopedTimeZone scoped(zone);
    const std::string text = QMFormatter::dateToStorageString(kMarch5th2024);
    EXPECT_EQ(QMFormatter::dateFromStorageString(text), Date::fromUnixSeconds(1709647620.0))
        << zone << " " << text;
  }
  EXPECT_EQ(QMFormatter::dateToStorageString(kMarch5th2024), "2024-03-05 14:07 UTC");
  EXPECT_EQ(QMFormatter::dateFromStorageString("2024-03-05"), std::nullopt);
}

TEST(QMFormatterDatesTest, UserInterfaceTextsInTheCurrentLocaleAndZone) {
  const struct {
    const char* locale;
    const char* zone;
    std::string (*format)(Date);
    const char* expected;
  } cases[] = {
      {"de_DE", "UTC", QMFormatter::dateToShortUIString, "05-März"},
      {"en_US", "Asia/Tokyo", QMFormatter::timeToShortUIString, "23:07"},
      {"en_US", "UTC", QMFormatter::timeToUIString, "14:07"},
      {"en_US", "UTC", QMFormatter::datetimeToShortUIString, "05-Mar-24, 14:07"},
      {"de_DE", "UTC", QMFormatter::dateToShortDayNameUIString, "Dienstag, März 5 2024, 14:07"},
      // A pattern of the locale's own.
      {"en_US", "UTC", QMFormatter::datetimeToddMMMyy_HHcmm, "05Mar24 14:07"},
      {"de_DE", "UTC", QMFormatter::datetimeToddMMMyy_HHcmm, "05.03.24 14:07"},
      {"en_US", "UTC", QMFormatter::datetimeSecondsToShortUIString2, "05-Mar-24 14:07:09"},
      // The pattern's unquoted "T" is not a pattern letter: ICU makes no text of it.
      {"en_US", "UTC", QMFormatter::dateToUTCString, ""},
  };
  for (const auto& c : cases) {
    const ScopedLocale locale(c.locale);
    const ScopedTimeZone zone(c.zone);
    EXPECT_EQ(c.format(kMarch5th2024), c.expected) << c.locale << " " << c.expected;
  }
  EXPECT_EQ(QMFormatter::dateStringWithPattern(std::nullopt, kMarch5th2024), "");
  EXPECT_EQ(QMFormatter::dateStringWithPattern("yyyy/MM", kMarch5th2024), "2024/03");
}

TEST(QMFormatterTimeSpansTest, ClockTextsTruncateAndCarryTheSign) {
  const struct {
    double ticks;
    const char *hms, *hm, *title;
  } cases[] = {
      {59.9, "00:00:59", "00:00", "00h00m59s"},
      {-0.5, "-00:00:00", "-00:00", "-00h00m00s"},
      {-3661, "-01:01:01", "-01:01", "-01h01m01s"},
      {3599.999, "00:59:59", "00:59", "00h59m59s"},
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
  const struct {
    double ticks;
    const char* expected;
  } skipHours[] = {{59.9, "00:59"}, {3700, "61:40"}, {360000, "6000:00"}, {-61, "-1:-1"}};
  for (const auto& c : skipHours) {
    EXPECT_EQ(QMFormatter::textForTicksSkipHours(c.ticks), c.expected) << c.ticks;
  }
  const ScopedLocale german("de_DE");
  EXPECT_EQ(QMFormatter::timeTitleTextForTicks(3723), "01h02min03s");
}

TEST(QMFormatterTimeSpansTest, SpansBeyondTheIntRangeDoNotCrash) {
  for (const double ticks : {1e300, -1e300, std::numeric_limits<double>::infinity()}) {
    EXPECT_FALSE(QMFormatter::hmsTextForTicks(ticks).empty());
    EXPECT_FALSE(QMFormatter::textPerTicks(ticks).empty());
    EXPECT_FALSE(QMFormatter::textForTicksSkipHours(ticks).empty());
    EXPECT_FALSE(QMFormatter::timeAnnouncementTextForTicks2(ticks).empty());
  }
}

TEST(QMFormatterTimeSpansTest, DaysAfterTheClockAndSpelledOutSpans) {
  const struct {
    const char* locale;
    double ticks;
    const char* perTicks;
    const char* announcement;
  } cases[] = {
      {"en_US", 86399, "23:59:59", "23 hours, 59 minutes, 59 seconds"},
      {"en_US", 86400, "00:00:00, 1 day", "24 hours"},
      {"en_US", 2 * kDay + 3903, "01:05:03, 2 days", "49 hours, 5 minutes, 3 seconds"},
      {"en_US", 61.9, "00:01:01", "1 minute, 1 second"},
      {"en_US", 0.5, "00:00:00", "0 seconds"},
      {"en_US", -61, "00:-1:-1", "-1 minute, 1 second"},  // no absolute value is taken
      {"de_DE", kDay + 3903, "01:05:03, 1 Tag", "25 Stunden, 5 Minuten und 3 Sekunden"},
  };
  for (const auto& c : cases) {
    const ScopedLocale scoped(c.locale);
    EXPECT_EQ(QMFormatter::textPerTicks(c.ticks), c.perTicks) << c.locale << " " << c.ticks;
    EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks2(c.ticks), c.announcement)
        << c.locale << " " << c.ticks;
  }
}

}  // namespace
}  // namespace qm
