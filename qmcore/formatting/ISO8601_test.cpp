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

bool same(double a, double b) { return a == b || (std::isnan(a) && std::isnan(b)); }

// The parser's result for a time in whole milliseconds since 1970: Julian-day seconds less the
// epoch's, so that milliseconds carry the rounding of a double near 2.1e11.
double parsedValueOf(std::int64_t unixMillis) {
  return static_cast<double>(unixMillis + 210'866'760'000'000) / 1000.0 - 210866760000.0;
}

// Parses with both overloads and insists that they agree.
double parseBoth(const std::string& text) {
  const double terminated = QMParseISO8601Date(text.c_str());
  EXPECT_TRUE(same(terminated, QMParseISO8601Date(std::string_view(text)))) << text;
  return terminated;
}

TEST(ISO8601Test, ReadsTheGrammar) {
  const struct {
    const char* text;
    double expected;
  } cases[] = {
      // Plain shapes in years 1-9999, zones and rounded fractions are left to the random test
      // below; these are the edges.
      // Separators: any run of "T" and blanks, or none; bare dates with trailing ones.
      {"2000-01-01TT \t12:00", 946728000.0},
      {"2000-01-0112:00", 946728000.0},
      {"2000-01-01 \t T ", 946684800.0},
      // Zones: lower case, blanks around.
      {"2021-06-15T13:45:30z", 1623764730.0},
      {"2021-06-15T13:45:30 +0530 ", 1623744930.0},
      // An empty fraction; rounding into the next minute.
      {"2000-01-01T00:00:00.Z", 946684800.0},
      {"2000-01-01T00:00:59.9995Z", 946684860.0},
      // Years before 1: Meeus' truncating divisions can be a day off the proleptic Gregorian
      // calendar (-0100-03-01).
      {"-0000-01-01", -62167219200.0},
      {"-4713-11-24T12:00Z", -210866760000.0},  // Julian day 0
      {"-0100-03-01", -65317708800.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(parseBoth(c.text), parsedValueOf(std::llround(c.expected * 1000))) << c.text;
  }
  // Not the nearest double to the exact time: the library's own arithmetic.
  EXPECT_EQ(QMParseISO8601Date("2000-01-01T00:00:00.001Z"), 211813444800.001 - 210866760000.0);
  EXPECT_NE(QMParseISO8601Date("2000-01-01T00:00:00.001Z"), 946684800.001);
}

TEST(ISO8601Test, RejectsWhatTheGrammarDoesNotAllow) {
  // Among them: a zone needs a time ("2000-01-01Z"), and a fraction needs seconds.
  // clang-format off
  const char* const cases[] = {
      "", "2000-01", "2000-01-1", "20000-01-01", "+2000-01-01", " 2000-01-01", "2000/01/01",
      "2000-00-01", "2000-13-01", "2000-01-00", "2000-01-32", "2000-01-01x", "2000-01-01Z",
      "2000-01-01T10", "2000-01-01T1:00", "2000-01-01T10:61", "2000-01-01T25:00",
      "2000-01-01T10:00:60", "2000-01-01T10:00.5", "2000-01-01T10:00:00,5", "2000-01-01T10:00:00ZZ",
      "2000-01-01T10:00:00 UTC", "2000-01-01T10:00:00+01", "2000-01-01T10:00:00+01:0",
      "2000-01-01T10:00:00+15:00", "2000-01-01T10:00:00+01:60", "2000-01-01T10:00:00-01:00:00"};
  // clang-format on
  for (const char* text : cases) EXPECT_TRUE(std::isnan(parseBoth(text))) << "'" << text << "'";
}

TEST(ISO8601Test, NullPointerAndZeroBytes) {
  EXPECT_TRUE(std::isnan(QMParseISO8601Date(static_cast<const char*>(nullptr))));
  // The terminated form stops at the first zero byte; the sized form reads the whole view.
  const char text[] = "2000-01-01\0T10:00";
  EXPECT_EQ(QMParseISO8601Date(text), 946684800.0);
  EXPECT_TRUE(std::isnan(QMParseISO8601Date(std::string_view(text, sizeof text - 1))));
}

// Random timestamps of every shape the grammar allows, checked against the standard library's
// calendar (years 1-9999, where Meeus' algorithm is the proleptic Gregorian calendar).
TEST(ISO8601Test, AgreesWithTheStandardCalendarOnRandomTimestamps) {
  using namespace std::chrono;
  std::mt19937_64 random(20240229);
  auto pick = [&](int low, int high) {
    return std::uniform_int_distribution<int>(low, high)(random);
  };
  for (int i = 0; i < 200000; ++i) {
    const int y = pick(1, 9999), mo = pick(1, 12), d = pick(1, 31), h = pick(0, 24),
              mi = pick(0, 59), s = pick(0, 59), zone = pick(0, 3);
    // 0: a bare date; 1: with hours and minutes; 2: and seconds; 3: and a fraction.
    const int shape = pick(0, 3);
    std::string text = invariantFormat("%04d-%02d-%02d", y, mo, d);
    std::int64_t expected =
        duration_cast<milliseconds>((sys_days(year(y) / mo / 1) + days(d - 1)).time_since_epoch())
            .count();
    if (shape >= 1) {
      text += invariantFormat("%c%02d:%02d", pick(0, 1) ? 'T' : ' ', h, mi);
      expected += (h * 60 + mi) * 60'000LL;
    }
    if (shape >= 2) {
      text += invariantFormat(":%02d", s);
      expected += s * 1000LL;
    }
    if (shape == 3) {
      // Up to 12 digits, rounded here with exact integers, half up.
      std::int64_t value = 0, scale = 1;
      text += '.';
      for (int n = pick(0, 12); n > 0; --n, scale *= 10) {
        const int digit = pick(0, 9);
        text += static_cast<char>('0' + digit);
        value = value * 10 + digit;
      }
      expected += (2 * value * 1000 + scale) / (2 * scale);
    }
    if (shape >= 1 && zone == 1) {
      text += "Z";
    } else if (shape >= 1 && zone > 1) {
      const int sign = pick(0, 1) ? 1 : -1, zh = pick(0, 14), zm = pick(0, 59);
      text += invariantFormat("%c%02d%s%02d", sign > 0 ? '+' : '-', zh, pick(0, 1) ? ":" : "", zm);
      expected -= sign * (zh * 60 + zm) * 60'000LL;
    }
    ASSERT_EQ(parseBoth(text), parsedValueOf(expected)) << text;
  }
}

// Every prefix of valid timestamps, each in a heap buffer of exactly its size: the parser must
// neither crash nor read past the end (AddressSanitizer watches in the debug build), and its two
// forms must agree. Random bytes are the ISO 8601 fuzz target's.
TEST(ISO8601Test, SurvivesTruncatedTimestamps) {
  for (const std::string text : {"2000-01-01T00:00:00.0005Z", "-0001-12-31 24:00:00.99999 -14:00",
                                 "2021-06-15T13:45:30+0530", "2000-01-01 \t"}) {
    for (std::size_t n = 0; n <= text.size(); ++n) {
      const auto sized = std::make_unique<char[]>(n);
      std::memcpy(sized.get(), text.data(), n);
      const double b = QMParseISO8601Date(std::string_view(sized.get(), n));
      EXPECT_TRUE(std::isnan(b) || std::abs(b) < 4e11) << text.substr(0, n);
      const auto terminated = std::make_unique<char[]>(n + 1);
      std::memcpy(terminated.get(), text.c_str(), n);
      terminated[n] = '\0';
      EXPECT_TRUE(same(QMParseISO8601Date(terminated.get()), b)) << text.substr(0, n);
    }
  }
}

}  // namespace
}  // namespace qm
