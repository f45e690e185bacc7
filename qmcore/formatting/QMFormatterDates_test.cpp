#include <gtest/gtest.h>

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
    const char* english;
    const char* german;
  } cases[] = {
      {1, "Saturday, March 1st", "Samstag, März 1st"},
      {2, "Sunday, March 2nd", "Sonntag, März 2nd"},
      {3, "Monday, March 3rd", "Montag, März 3rd"},
      {4, "Tuesday, March 4th", "Dienstag, März 4th"},
      {11, "Tuesday, March 11th", "Dienstag, März 11th"},
      {12, "Wednesday, March 12th", "Mittwoch, März 12th"},
      {13, "Thursday, March 13th", "Donnerstag, März 13th"},
      {21, "Friday, March 21st", "Freitag, März 21st"},
      {22, "Saturday, March 22nd", "Samstag, März 22nd"},
      {23, "Sunday, March 23rd", "Sonntag, März 23rd"},
      {31, "Monday, March 31st", "Montag, März 31st"},
  };
  for (const auto& c : cases) {
    const Date date = march1st2025Noon.addingTimeInterval((c.day - 1) * kDay);
    EXPECT_EQ(QMFormatter::dateToUIString(date), c.english);
    const ScopedLocale german("de_DE");
    EXPECT_EQ(QMFormatter::dateToUIString(date), c.german);
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
      {"en_US", "UTC", QMFormatter::dateToShortUIString, "05-Mar"},
      {"de_DE", "UTC", QMFormatter::dateToShortUIString, "05-März"},
      {"en_US", "Asia/Tokyo", QMFormatter::timeToShortUIString, "23:07"},
      {"en_US", "UTC", QMFormatter::timeToUIString, "14:07"},
      {"en_US", "UTC", QMFormatter::datetimeToShortUIString, "05-Mar-24, 14:07"},
      {"en_US", "UTC", QMFormatter::dateToShortDayNameUIString, "Tuesday, March 5 2024, 14:07"},
      {"de_DE", "UTC", QMFormatter::dateToShortDayNameUIString, "Dienstag, März 5 2024, 14:07"},
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
}

TEST(QMFormatterDatesTest, DateStringWithPatternNeedsAPattern) {
  EXPECT_EQ(QMFormatter::dateStringWithPattern(std::nullopt, kMarch5th2024), "");
  EXPECT_EQ(QMFormatter::dateStringWithPattern("yyyy/MM", kMarch5th2024), "2024/03");
  const ScopedLocale german("de_DE");
  EXPECT_EQ(QMFormatter::dateStringWithPattern("MMMM", kMarch5th2024), "März");
}

}  // namespace
}  // namespace qm
