#include "qmcore/formatting/ISO8601.hpp"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <string>

#include "qmcore/platform/InvariantFormat.hpp"

namespace qm {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// Parses with both overloads and insists that they agree.
double parseBoth(const std::string& text) {
  const double terminated = QMParseISO8601Date(text.c_str());
  const double sized = QMParseISO8601Date(std::string_view(text));
  EXPECT_TRUE(terminated == sized || (std::isnan(terminated) && std::isnan(sized))) << text;
  return terminated;
}

TEST(ISO8601Test, ReadsTheGrammar) {
  const struct {
    const char* text;
    double expected;
  } cases[] = {
      {"1970-01-01T00:00:00Z", 0.0},
      {"1970-01-01", 0.0},
      {"2000-01-01T00:00:00+01:00", 946681200.0},
      {"2000-01-01 12:00", 946728000.0},
      {"1969-12-31T23:59:59Z", -1.0},
      // Separators between date and time: any run of "T" and blanks, or none at all.
      {"2000-01-01TT 12:00", 946728000.0},
      {"2000-01-01\t\n12:00", 946728000.0},
      {"2000-01-0112:00", 946728000.0},
      // Bare dates, also with trailing separators.
      {"2000-01-01T", 946684800.0},
      {"2000-01-01 \t T ", 946684800.0},
      // Zones: letter, with and without colon, blanks around, negative, the extremes.
      {"2021-06-15T13:45:30z", 1623764730.0},
      {"2021-06-15T13:45:30+0530", 1623744930.0},
      {"2021-06-15T13:45:30 +05:30 ", 1623744930.0},
      {"2021-06-15T13:45:30-03:00", 1623775530.0},
      {"2021-06-15T13:45:30-00:00", 1623764730.0},
      {"2021-06-15T13:45:30+14:59", 1623764730.0 - 899 * 60},
      {"2021-06-15T13:45:30-1400", 1623764730.0 + 840 * 60},
      {"2021-06-15 13:45 Z", 1623764700.0},
      // Hours 24 and rolled-over days.
      {"2000-01-01T24:00:00Z", 946771200.0},
      {"2000-01-01T24:30", 946773000.0},
      {"2021-02-31", 1614729600.0},  // 2021-03-03
      {"2024-02-31", 1709337600.0},  // 2024-03-02: leap year
      {"2000-02-29", 951782400.0},
      {"1900-02-29", -2203891200.0},  // 1900-03-01: no leap year
      {"2100-03-01", 4107542400.0},
      // The range of years.
      {"0001-01-01", -62135596800.0},
      {"9999-12-31T23:59:59Z", 253402300799.0},
      {"0000-01-01", -62167219200.0},
      {"-0000-01-01", -62167219200.0},
      {"-0001-01-01", -62198755200.0},
      {"-4713-11-24T12:00Z", -210866760000.0},  // Julian day 0
      {"-9999-01-01", -377705116800.0},
      // Meeus' divisions truncate toward zero; for such years this is one day off the
      // proleptic Gregorian calendar.
      {"-0100-03-01", -65317708800.0},
      {"-2000-02-29", -125276025600.0},
  };
  for (const auto& c : cases) EXPECT_EQ(parseBoth(c.text), c.expected) << c.text;
}

TEST(ISO8601Test, RoundsFractionsHalfAwayFromZeroToMilliseconds) {
  const struct {
    const char* fraction;
    double expected;
  } cases[] = {
      {"", 946684800.0},
      {"0", 946684800.0},
      {"5", 946684800.5},
      {"12", 946684800.12},
      {"123", 946684800.123},
      {"0005", 946684800.001},
      {"0004999999999", 946684800.0},
      {"1234", 946684800.123},
      {"1235", 946684800.124},
      {"9995", 946684801.0},
      {"99949", 946684800.999},
      {"000000000000000000000000000000000000001", 946684800.0},
  };
  for (const auto& c : cases) {
    const std::string text = std::string("2000-01-01T00:00:00.") + c.fraction + "Z";
    EXPECT_EQ(parseBoth(text), c.expected) << text;
  }
  // Rounding can carry into the next minute.
  EXPECT_EQ(parseBoth("2000-01-01T00:00:59.9995Z"), 946684860.0);
}

TEST(ISO8601Test, RejectsWhatTheGrammarDoesNotAllow) {
  const char* const cases[] = {
      "",
      "2000",
      "2000-01",
      "2000-01-1",
      "200-01-01",
      "20000-01-01",
      "+2000-01-01",
      "--2000-01-01",
      " 2000-01-01",
      "2000/01/01",
      "2000-1-01",
      "2000-00-01",
      "2000-13-01",
      "2000-01-00",
      "2000-01-32",
      "2000-01-01x",
      "2000-01-01Z",  // a zone needs a time
      "2000-01-01+01:00",
      "2000-01-01T1",
      "2000-01-01T10",
      "2000-01-01T10Z",
      "2000-01-01T10:0",
      "2000-01-01T1:00",
      "2000-01-01T10:61",
      "2000-01-01T10:60",
      "2000-01-01T25:00",
      "2000-01-01T10:00:60",
      "2000-01-01T10:00:5",
      "2000-01-01T10:00:",
      "2000-01-01T10:00.5",
      "2000-01-01T10:00:00,5",
      "2000-01-01T10:00:00.5.5",
      "2000-01-01T10:00:00ZZ",
      "2000-01-01T10:00:00Z x",
      "2000-01-01T10:00:00 UTC",
      "2000-01-01T10:00:00+",
      "2000-01-01T10:00:00+1",
      "2000-01-01T10:00:00+01",
      "2000-01-01T10:00:00+01:",
      "2000-01-01T10:00:00+01:0",
      "2000-01-01T10:00:00+15:00",
      "2000-01-01T10:00:00+01:60",
      "2000-01-01T10:00:00+01::00",
      "2000-01-01T10:00:00+01 00",
      "2000-01-01T10:00:00-01:00:00",
  };
  for (const char* text : cases) EXPECT_TRUE(std::isnan(parseBoth(text))) << "'" << text << "'";
}

TEST(ISO8601Test, NullPointerAndEmbeddedZeroBytes) {
  EXPECT_TRUE(std::isnan(QMParseISO8601Date(static_cast<const char*>(nullptr))));
  EXPECT_TRUE(std::isnan(QMParseISO8601Date(std::string_view())));
  // The terminated form stops at the first zero byte; the sized form reads the whole view.
  const char text[] = "2000-01-01\0T10:00";
  EXPECT_EQ(QMParseISO8601Date(text), 946684800.0);
  EXPECT_TRUE(std::isnan(QMParseISO8601Date(std::string_view(text, sizeof text - 1))));
  EXPECT_EQ(QMParseISO8601Date(std::string_view(text, 10)), 946684800.0);
}

// Random timestamps of every shape the grammar allows, checked against the standard
// library's calendar (years 1-9999, where Meeus' algorithm is the proleptic Gregorian one).
TEST(ISO8601Test, AgreesWithTheStandardCalendarOnRandomTimestamps) {
  using namespace std::chrono;
  std::mt19937_64 random(20240229);
  auto pick = [&](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  for (int i = 0; i < 200000; ++i) {
    const int year = pick(1, 9999);
    const int month = pick(1, 12);
    const int day = pick(1, 31);
    std::string text = invariantFormat("%04d-%02d-%02d", year, month, day);
    const sys_days first = sys_days(std::chrono::year(year) / month / 1);
    std::int64_t expectedMillis =
        duration_cast<milliseconds>((first + days(day - 1)).time_since_epoch()).count();
    if (pick(0, 9) != 0) {
      const int hour = pick(0, 24);
      const int minute = pick(0, 59);
      text += pick(0, 1) ? "T" : " ";
      text += invariantFormat("%02d:%02d", hour, minute);
      expectedMillis += (hour * 60 + minute) * 60'000LL;
      if (pick(0, 3) != 0) {
        const int second = pick(0, 59);
        text += invariantFormat(":%02d", second);
        expectedMillis += second * 1000LL;
        if (pick(0, 1)) {
          // Up to 12 digits: rounded exactly with integers, half up.
          const int digits = pick(0, 12);
          std::int64_t value = 0;
          std::int64_t scale = 1;
          text += '.';
          for (int d = 0; d < digits; ++d) {
            const int digit = pick(0, 9);
            text += static_cast<char>('0' + digit);
            value = value * 10 + digit;
            scale *= 10;
          }
          expectedMillis += (2 * value * 1000 + scale) / (2 * scale);
        }
      }
      switch (pick(0, 3)) {
        case 0:
          break;
        case 1:
          text += "Z";
          break;
        default: {
          const int sign = pick(0, 1) ? 1 : -1;
          const int zoneHours = pick(0, 14);
          const int zoneMinutes = pick(0, 59);
          text += invariantFormat("%c%02d%s%02d", sign > 0 ? '+' : '-', zoneHours,
                                  pick(0, 1) ? ":" : "", zoneMinutes);
          expectedMillis -= sign * (zoneHours * 60 + zoneMinutes) * 60'000LL;
        }
      }
    }
    ASSERT_EQ(parseBoth(text), static_cast<double>(expectedMillis) / 1000.0) << text;
  }
}

// Every prefix of valid timestamps, each in a heap buffer of exactly its size, and random
// bytes: the parser must neither crash nor read past the end (AddressSanitizer watches in the
// debug build), and its two forms must agree.
TEST(ISO8601Test, SurvivesTruncatedAndRandomBytes) {
  const char* const valid[] = {
      "2000-01-01T00:00:00.0005Z",
      "-0001-12-31 24:00:00.999999 -14:00",
      "2021-06-15T13:45:30+0530",
      "2000-01-01 \t",
  };
  for (const char* text : valid) {
    const std::size_t length = std::strlen(text);
    for (std::size_t n = 0; n <= length; ++n) {
      const auto terminated = std::make_unique<char[]>(n + 1);
      std::memcpy(terminated.get(), text, n);
      terminated[n] = '\0';
      const auto sized = std::make_unique<char[]>(n);
      std::memcpy(sized.get(), text, n);
      const double a = QMParseISO8601Date(terminated.get());
      const double b = QMParseISO8601Date(std::string_view(sized.get(), n));
      EXPECT_TRUE(a == b || (std::isnan(a) && std::isnan(b))) << std::string(text, n);
    }
  }

  std::mt19937 random(7);
  // Mostly the grammar's own characters, so that deep paths are reached.
  const std::string alphabet = "0123456789-:.+TZz \t";
  for (int i = 0; i < 100000; ++i) {
    const std::size_t n = random() % 40;
    std::string bytes;
    for (std::size_t k = 0; k < n; ++k) {
      bytes += random() % 4 == 0 ? static_cast<char>(random() % 256)
                                 : alphabet[random() % alphabet.size()];
    }
    const auto sized = std::make_unique<char[]>(n);
    std::memcpy(sized.get(), bytes.data(), n);
    const double b = QMParseISO8601Date(std::string_view(sized.get(), n));
    EXPECT_TRUE(std::isnan(b) || std::abs(b) < 4e11) << bytes;
    if (bytes.find('\0') == std::string::npos) {
      const auto terminated = std::make_unique<char[]>(n + 1);
      std::memcpy(terminated.get(), bytes.c_str(), n + 1);
      const double a = QMParseISO8601Date(terminated.get());
      EXPECT_TRUE(a == b || (std::isnan(a) && std::isnan(b))) << bytes;
    }
  }
}

}  // namespace
}  // namespace qm
