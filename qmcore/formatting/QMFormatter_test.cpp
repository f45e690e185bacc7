// QMFormatter's texts (numbers, dates, time spans and text helpers) and numbers in styled
// text.

#include "qmcore/formatting/QMFormatter.hpp"

#include <gtest/gtest.h>

#include <climits>
#include <filesystem>
#include <optional>
#include <regex>
#include <set>
#include <string>
#include <vector>

#include "qmcore/formatting/QMDateFormatter.hpp"
#include "qmcore/formatting/QMStringForFloatPrecision.hpp"
#include "qmcore/formatting/StyledText.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"
#include "qmcore/testing/NonFinite.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using testing::kInf;
using testing::kNaN;
using testing::ScopedGermanCLocale;
using testing::ScopedLocale;
using testing::ScopedTimeZone;
using OptionalText = std::optional<std::string>;

constexpr Date kMarch5th2024 = Date::fromUnixSeconds(1709647629.0);  // 14:07:09 UTC
constexpr double kDay = 86400.0;

TEST(QMFormatterNumbersTest, RoundingAndTextsWithADotUnderAGermanHostAndLocale) {
  // Halves away from zero: 2.675 * 100 is exactly 267.5; 1.005 * 100 is 100.4999...
  EXPECT_DOUBLE_EQ(QMFormatter::roundDouble(2.675, 2), 2.68);
  EXPECT_DOUBLE_EQ(QMFormatter::roundDouble(1.005, 2), 1.0);
  EXPECT_DOUBLE_EQ(QMFormatter::roundDouble(-2.5, 0), -3.0);
  EXPECT_DOUBLE_EQ(QMFormatter::roundDouble(1250.0, -2), 1300.0);
  const ScopedGermanCLocale cLocale;
  if (!cLocale.active()) GTEST_SKIP() << "de_DE.UTF-8 is not installed";
  const ScopedLocale german("de_DE");
  const struct {
    std::string actual;
    const char* expected;
  } cases[] = {
      {QMFormatter::newStringForFloatPrecision1(1.25), "1.2"},  // printf: ties to even
      {QMStringForFloatPrecision0(2.5), "2"},                   // the unit texts' forms too
      {QMStringForFloatPrecision3(-0.4), "-0.400"},
      {QMFormatter::newStringForFloatPrecision2(1.005), "1.00"},
      {QMFormatter::newStringForFloatPrecision3(2.0), "2.000"},
      {QMFormatter::newStringForFloatPrecision2WithSign(0.0), "+0.00"},
      {QMFormatter::invariantStringForDouble(-1234567.125), "-1234567.125000"},
      {QMFormatter::newStringForInt(-1234567), "-1234567"},
      {QMFormatter::newSecondsStringForSeconds(5), "05"},
      {QMFormatter::textForTimerForMinute(5, 9), "05:09"},
      // The format switches at ten thousand.
      {QMFormatter::autoPrecisionFormatForValue(9999.999), "%.2f"},
      {QMFormatter::autoPrecisionFormatForValue(10000.0), "%.0f"},
      // Number formatters of the locale: no grouping, halves to even, negative places as none.
      {QMFormatter::stringFromDouble(1234567.891, 1), "1234567.9"},
      {QMFormatter::stringFromDouble(0.125, 2), "0.12"},
      {QMFormatter::stringFromDouble(-0.004, 2), "-0.00"},
      {QMFormatter::stringFromDouble(7.25, -1), "7"},
      {QMFormatter::p3StringFromDouble(1.23456), "1.235"},
      {QMFormatter::stringFromInt(-1234567), "-1234567"},
      {QMFormatter::currencyPropertiesString(), "Währung: € (EUR), Locale: de_DE"},
      // File sizes in binary multiples; just below a megabyte, printf rounds up to 1024 KB.
      {QMFormatter::stringFromFileSize(1023), "1023 bytes"},
      {QMFormatter::stringFromFileSize(1024), "1 KB"},
      {QMFormatter::stringFromFileSize(1048575), "1024 KB"},
      {QMFormatter::stringFromFileSize(1048576), "1.0 MB"},
      {QMFormatter::stringFromFileSize(1073741823), "1024.0 MB"},
      {QMFormatter::stringFromFileSize(1073741824), "1.00 GB"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);
}

TEST(QMFormatterNumbersTest, ReadingNumbers) {
  // Integers in the locale's style, with grouping; the rest of the reading is the number
  // formatter's (the number fuzz target compares it with the decimal reading).
  const ScopedLocale english("en_US");
  EXPECT_EQ(QMFormatter::integerFromString("1,234"), 1234);
  EXPECT_EQ(QMFormatter::integerFromString("12abc"), 0);

  const ScopedLocale german("de_DE");
  EXPECT_EQ(QMFormatter::integerFromString("1.234"), 1234);  // read in the locale of the call
  // The invariant reader needs a dot and nothing after the number, whatever the locale.
  EXPECT_EQ(QMFormatter::doubleFromInvariantString("-0.25"), -0.25);
  EXPECT_EQ(QMFormatter::doubleFromInvariantString("1,5"), 0.0);
  EXPECT_EQ(QMFormatter::doubleFromInvariantString("1.5 m"), 0.0);

  // Only digits and one dot; the callback hears accepted numbers only. The number fuzz target
  // checks that every accepted text is a plain decimal number.
  std::vector<double> heard;
  const auto hear = [&heard](double number) { heard.push_back(number); };
  EXPECT_TRUE(QMFormatter::parseNumericString(".5", hear));
  EXPECT_TRUE(QMFormatter::parseNumericString("12.", hear));
  for (const char* text : {"", ".", "-3"}) {
    EXPECT_FALSE(QMFormatter::parseNumericString(text, hear)) << "'" << text << "'";
  }
  EXPECT_EQ(heard, (std::vector<double>{0.5, 12.0}));
  EXPECT_TRUE(QMFormatter::parseNumericString("3"));  // no callback given
}

TEST(QMFormatterDatesTest, DateToUIStringAppendsEnglishDaySuffixesInEveryLocale) {
  const Date march1st2025Noon = Date::fromUnixSeconds(1740830400.0);
  std::string endings;
  for (const int day : {2, 3, 4, 11, 12, 13, 21, 22, 23, 31}) {
    const std::string text =
        QMFormatter::dateToUIString(march1st2025Noon.addingTimeInterval((day - 1) * kDay));
    endings += text.substr(text.rfind(' '));
  }
  EXPECT_EQ(endings, " 2nd 3rd 4th 11th 12th 13th 21st 22nd 23rd 31st");
  EXPECT_EQ(QMFormatter::dateToUIString(march1st2025Noon), "Saturday, March 1st");
  // A day number in other digits cannot be read: no suffix.
  const ScopedLocale arabic("ar_EG");
  const std::string arabicText = QMFormatter::dateToUIString(march1st2025Noon);
  EXPECT_FALSE(arabicText.empty());
  EXPECT_EQ(arabicText.find("st"), std::string::npos);
}

TEST(QMFormatterDatesTest, GpsStampsAreUtcExifAndStorageDatesLocal) {
  const ScopedTimeZone berlin("Europe/Berlin");
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:03:05 14:07:09"), kMarch5th2024);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:03:05", "14:07:09"), kMarch5th2024);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:03:05", std::nullopt), std::nullopt);
  EXPECT_EQ(QMFormatter::dateForGPSDateString("2024:13:05 14:07:09"), std::nullopt);

  EXPECT_EQ(QMFormatter::exifStringForDate(kMarch5th2024), "2024:03:05 15:07:09");
  EXPECT_EQ(QMFormatter::dateForExifDateString("2024:03:05 15:07:09"), kMarch5th2024);
  EXPECT_EQ(QMFormatter::dateForExifDateString("garbage"), std::nullopt);
  // Storage texts name the current zone and round trip to the minute.
  const std::string text = QMFormatter::dateToStorageString(kMarch5th2024);
  EXPECT_EQ(text, "2024-03-05 15:07 GMT+1");
  EXPECT_EQ(QMFormatter::dateFromStorageString(text), Date::fromUnixSeconds(1709647620.0));
  EXPECT_EQ(QMFormatter::dateFromStorageString("2024-03-05"), std::nullopt);
}

TEST(QMFormatterDatesTest, UserInterfaceTextsInTheCurrentLocaleAndZone) {
  const ScopedLocale german("de_DE");
  const ScopedTimeZone tokyo("Asia/Tokyo");
  const Date date = kMarch5th2024;
  const struct {
    std::string actual;
    const char* expected;
  } cases[] = {
      {QMFormatter::dateToShortUIString(date), "05-März"},
      {QMFormatter::timeToShortUIString(date), "23:07"},
      {QMFormatter::timeToUIString(date), "23:07"},
      {QMFormatter::datetimeToShortUIString(date), "05-März-24, 23:07"},
      {QMFormatter::dateToShortDayNameUIString(date), "Dienstag, März 5 2024, 23:07"},
      {QMFormatter::datetimeToddMMMyy_HHcmm(date), "05.03.24 23:07"},  // the locale's own pattern
      // The pattern's unquoted "T" is not a pattern letter: ICU makes no text of it.
      {QMFormatter::dateToUTCString(date), ""},
      {QMFormatter::dateStringWithPattern("yyyy/MM", date), "2024/03"},
      {QMFormatter::dateStringWithPattern(std::nullopt, date), ""},
  };
  for (const auto& c : cases) EXPECT_EQ(c.actual, c.expected);
  EXPECT_EQ(QMFormatter::datetimeSecondsToShortUIString2(date),
            QMDateFormatter::sharedInstance().datetimeSecondsToShortUIString(date));
}

TEST(QMFormatterTimeSpansTest, ClockTextsTruncateAndCarryTheSign) {
  const struct {
    double ticks;
    const char* hms;
  } cases[] = {{59.9, "00:00:59"},
               {-0.5, "-00:00:00"},
               {-3661, "-01:01:01"},
               {360000, "100:00:00"},
               {kNaN, "00:00:00"}};
  for (const auto& c : cases) EXPECT_EQ(QMFormatter::hmsTextForTicks(c.ticks), c.hms) << c.ticks;
  // The other clock forms share the truncation and the sign.
  EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks(-3661.9), "-01:01:01");
  EXPECT_EQ(QMFormatter::hmTextForTicks(-3661.9), "-01:01");
  EXPECT_EQ(QMFormatter::timeTitleTextForTicks(-3661.9), "-01h01m01s");
  // Without hours the minutes go on; a negative span has two signs (paces check the rest).
  EXPECT_EQ(QMFormatter::textForTicksSkipHours(-61), "-1:-1");
  // Spans beyond the int range do not crash.
  for (const double ticks : {1e300, -1e300, kInf}) {
    EXPECT_FALSE(QMFormatter::hmsTextForTicks(ticks).empty());
    EXPECT_FALSE(QMFormatter::textPerTicks(ticks).empty());
    EXPECT_FALSE(QMFormatter::textForTicksSkipHours(ticks).empty());
    EXPECT_FALSE(QMFormatter::timeAnnouncementTextForTicks2(ticks).empty());
  }
}

TEST(QMFormatterTimeSpansTest, DaysAfterTheClockAndSpelledOutSpans) {
  const ScopedLocale english("en_US");
  EXPECT_EQ(QMFormatter::textPerTicks(86399), "23:59:59");
  EXPECT_EQ(QMFormatter::textPerTicks(86400), "00:00:00, 1 day");
  EXPECT_EQ(QMFormatter::textPerTicks(2 * kDay + 3903), "01:05:03, 2 days");
  EXPECT_EQ(QMFormatter::textPerTicks(-61), "00:-1:-1");  // no absolute value is taken
  // Spoken: hours beyond a day; the sign on the first part shown.
  EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks2(86400), "24 hours");
  EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks2(2 * kDay + 3903),
            "49 hours, 5 minutes, 3 seconds");
  EXPECT_EQ(QMFormatter::timeAnnouncementTextForTicks2(-61), "-1 minute, 1 second");
}

TEST(QMFormatterTextTest, UuidsAreRandomVersion4InCanonicalUpperCase) {
  const std::regex canonical("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}");
  std::set<std::string> seen;
  for (int i = 0; i < 200; ++i) seen.insert(QMFormatter::stringWithUUID());
  EXPECT_EQ(seen.size(), 200u);
  for (const std::string& uuid : seen) EXPECT_TRUE(std::regex_match(uuid, canonical)) << uuid;
}

TEST(QMFormatterTextTest, BooleansParametersAndLimits) {
  EXPECT_EQ(QMFormatter::stringWithBool(true), "true");
  EXPECT_FALSE(QMFormatter::boolWithString("True"));
  EXPECT_TRUE(QMFormatter::boolWithString("true"));

  const QMFormatter::Parameters parameters = {
      {"on", "yes"},   {"shout", "YES"},       {"n", "42"},
      {"neg", " -7x"}, {"big", "99999999999"}, {"", "yes"},
  };
  const struct {
    std::optional<std::string_view> key;
    bool flag;
    int number;  // with default 5
  } cases[] = {
      {"on", true, 0},         {"shout", false, 0},   {"n", false, 42},         {"neg", false, -7},
      {"big", false, INT_MAX}, {"missing", false, 5}, {std::nullopt, false, 5}, {"", true, 0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMFormatter::boolParameter(c.key, parameters), c.flag) << c.key.value_or("nil");
    EXPECT_EQ(QMFormatter::intParameter(c.key, parameters, 5), c.number) << c.key.value_or("nil");
  }
  // A limit is the number after the first "@".
  const struct {
    std::optional<std::string_view> text;
    double expected;
  } limits[] = {
      {std::nullopt, -1.0}, {"speed", -1.0}, {"speed@120", 120.0}, {"x@", 0.0},
      {"a@1@2", 1.0},       {"@12.5", 12.0}, {"@007", 7.0},
  };
  for (const auto& c : limits) {
    EXPECT_EQ(QMFormatter::parseLimitFromString(c.text), c.expected) << c.text.value_or("nil");
  }
}

// Texts that may be absent: an absent text stays absent.
TEST(QMFormatterTextTest, TextTransforms) {
  using Transform = OptionalText (*)(std::optional<std::string_view>);
  const Transform trim = &QMFormatter::stringByTrimmingSpaces;
  const Transform unlink = &QMFormatter::stringByRemovingHttpLinksFromString;
  const Transform breaks = &QMFormatter::changeLinebreaksToHtmlBreaks;
  const Transform vertical = &QMFormatter::verticalStringFor2;
  const struct {
    Transform transform;
    std::optional<std::string_view> text;
    OptionalText expected;
  } cases[] = {
      {trim, std::nullopt, std::nullopt},
      {trim, " \ta\n ", "\ta\n"},  // blanks only
      {unlink, std::nullopt, std::nullopt},
      {unlink, "see https://example.com/a?b=1&c=2 now", "see  now"},
      {unlink, "HTTP://EXAMPLE.COM/X and http://a.b", " and "},  // any case, any number
      {unlink, "end at http://a.com/x.", "end at ."},            // a link does not end on "."
      {unlink, "nohttp://example.com", "nohttp://example.com"},  // not at a word start
      {breaks, std::nullopt, std::nullopt},
      {breaks, "a\nb\r\n", "a<br/>b\r<br/>"},
      // User-perceived characters stay together.
      {vertical, std::nullopt, std::nullopt},
      {vertical, "e\u0301\U0001F1EF\U0001F1F5!", "e\u0301\n\U0001F1EF\U0001F1F5\n!\n"},
      {&QMFormatter::verticalStringFor, "ab", "a\nb\n"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.transform(c.text), c.expected) << c.text.value_or("(absent)");
  }
  EXPECT_EQ(QMFormatter::escapeJsonValue(R"(\")"), R"(\\\")");  // backslashes first
  EXPECT_EQ(QMFormatter::escapeJsonValue("$1.*"), "$1.*");
  // URL encoding keeps only query characters.
  EXPECT_EQ(QMFormatter::urlEncode("a b=x&y=1/2?z:@-._~!$'()*+,;"),
            "a%20b=x&y=1/2?z:@-._~!$'()*+,;");
  EXPECT_EQ(QMFormatter::urlEncode("#[]%\"<>\\^`{|}\n"),
            "%23%5B%5D%25%22%3C%3E%5C%5E%60%7B%7C%7D%0A");
  EXPECT_EQ(QMFormatter::urlEncode("Grüße"), "Gr%C3%BC%C3%9Fe");
  // Address lines get the separator only between two lines.
  EXPECT_EQ(QMFormatter::stringForAddressLine1("Main St 1", "Springfield", ", "),
            "Main St 1, Springfield");
  EXPECT_EQ(QMFormatter::stringForAddressLine1(std::nullopt, "Springfield", ", "), "Springfield");
  EXPECT_EQ(QMFormatter::stringForAddressLine1("", "", ", "), ", ");  // present though empty
}

TEST(QMFormatterTextTest, FileSizeOfAPath) {
  const testing::FakeEnv env;  // a home of its own, removed at the end
  const std::filesystem::path home = env.homeDirectory();
  testing::writeFile(home / "data.bin", std::string(2048, 'x'));
  EXPECT_EQ(QMFormatter::stringSizeForFilePath((home / "data.bin").string()), "2 KB");
  EXPECT_EQ(QMFormatter::stringSizeForFilePath((home / "missing").string()), "--");
}

TEST(StyledText, AppendMergesRunsOfOneFontAndSkipsEmptyText) {
  const FontDescription a{"A", 10, FontWeight::kRegular, ""};
  const FontDescription b{"A", 12, FontWeight::kRegular, ""};
  StyledText text;
  text.append("1", a);
  text.append("", b);
  text.append("2", a);
  text.append("3", b);
  text.append("4", a);
  ASSERT_EQ(text.runs().size(), 3u);
  EXPECT_EQ(text.runs()[0], (StyledRun{.text = "12", .font = a}));
  EXPECT_EQ(text.runs()[1], (StyledRun{.text = "3", .font = b}));
  EXPECT_EQ(text.string(), "1234");
}

TEST(StyledTextDeathTest, SplitFontNumberRoundsAndSplits) {
  const struct {
    double value;
    int precision;
    const char* text;
  } cases[] = {
      {12.345, 2, "12.35"},  // 1234.5 rounds away from zero
      {9.999, 2, "10.00"},
      {0.29, 2, "0.29"},  // 0.29 x 100 is 28.999999999999996
      {1.05, 2, "1.05"},  // zero-padded to exactly n digits
      {0.5, 19, "0.5000000000000000000"},
      {5.0, -2, "5"},  // a negative precision counts as 0
      // Negative values: the fraction keeps its sign, after the point.
      {-0.05, 2, "-0.-05"},
      // Not finite: the printf text and zero decimals.
      {kNaN, 2, "nan.00"},
  };
  // The point is "." whatever the locales say.
  const testing::ScopedLocale locale("de_DE");
  const testing::ScopedGermanCLocale cLocale;
  for (const auto& c : cases) {
    EXPECT_EQ(StyledText::attributedStringForDouble(c.value, c.precision).string(), c.text)
        << c.value << " with " << c.precision;
  }
  // The whole part in the whole font, the point and decimals in the decimal font, which falls
  // back to the bold monospaced system font of its size.
  EXPECT_EQ(StyledText::attributedStringForDouble(-12.345, 2).runs(),
            (std::vector<StyledRun>{{"-12", StyledText::wholeFont()},
                                    {".-35", StyledText::decimalFont()}}));
  EXPECT_EQ(StyledText::attributedStringForDouble(5.0, 0).runs().size(), 1u);
  EXPECT_EQ(StyledText::decimalFont().fallbackFont(),
            (FontDescription{std::string(kMonospacedSystemFontName), 80.0, FontWeight::kBold, ""}));
  EXPECT_DEATH(StyledText::attributedStringForDouble(0.95, 19), "do not fit in 64 bits");
  EXPECT_DEATH(StyledText::attributedStringForDouble(12.0, 400), "do not fit in 64 bits");
}

}  // namespace
}  // namespace qm
