#include "qmcore/platform/InvariantFormat.hpp"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdio>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "qmcore/testing/NonFinite.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

// Conversions with random flags, widths and precisions, and random arguments
// (ties such as 0.125 and 2.5, huge and tiny numbers, non-finite ones), written by
// invariantFormat and by the C library's snprintf in the "C" locale.
class InvariantFormatRandomTest : public ::testing::Test {
 protected:
  std::string conversion(bool withPrecision) {
    std::string s = "<%";
    if (coin()) s += '+';
    if (coin()) s += '0';
    if (coin()) s += std::to_string(pick(0, 12));
    if (withPrecision && coin()) s += "." + std::to_string(pick(0, 12));
    return s;
  }
  double number() {
    const double scale = std::pow(10.0, pick(-8, 20));
    switch (pick(0, 4)) {
      case 0:  // a tie or near-tie in binary: k / 8, k / 1000
        return (pick(0, 1) ? -1 : 1) * pick(0, 100000) / (pick(0, 1) ? 8.0 : 1000.0);
      case 1:
        return std::uniform_real_distribution<double>(-1.0, 1.0)(random_) * scale;
      case 2:
        return std::vector<double>{
            0.0, -0.0, testing::kInf, testing::kNaN, DBL_MAX, DBL_TRUE_MIN}[pick(0, 5)];
      default:
        return std::uniform_real_distribution<double>(-1000.0, 1000.0)(random_);
    }
  }
  static std::string printed(const char* format, auto... arguments) {
    char buffer[1024];
    std::snprintf(buffer, sizeof buffer, format, arguments...);
    return buffer;
  }
  int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(random_); }
  bool coin() { return pick(0, 1) == 1; }

  std::mt19937_64 random_{20240521};
};

TEST_F(InvariantFormatRandomTest, ConversionsMatchTheCLibrary) {
  const char* const words[] = {"", "m", "°", "nautical miles"};
  for (int i = 0; i < 20000; ++i) {
    const std::string f = conversion(true) + "f>";
    const double value = number();
    ASSERT_EQ(invariantFormat(f.c_str(), value), printed(f.c_str(), value)) << f << " " << value;
    const std::string d = conversion(false) + "d>";
    const int integer = coin() ? pick(-100000, 100000)
                               : std::vector<int>{0, std::numeric_limits<int>::min(),
                                                  std::numeric_limits<int>::max()}[pick(0, 2)];
    ASSERT_EQ(invariantFormat(d.c_str(), integer), printed(d.c_str(), integer)) << d;
    // Flags other than a width are undefined for texts and characters.
    const std::string width = std::to_string(pick(0, 16));
    const std::string s = "%" + width + "s|%.*s|%" + width + "c|%%|" + conversion(true) + "g>";
    const char* word = words[pick(0, 3)];
    const int precision = pick(-2, 16);
    ASSERT_EQ(invariantFormat(s.c_str(), word, precision, word, 'x', value),
              printed(s.c_str(), word, precision, word, 'x', value))
        << s << " " << word << " " << precision;
  }
}

TEST(InvariantFormatTest, LongTextsAreNotCut) {
  const std::string word(1000, 'x');
  EXPECT_EQ(invariantFormat("%s.%s", word.c_str(), word.c_str()), word + "." + word);
  EXPECT_EQ(invariantFormat("%.300f", 1.0), "1." + std::string(300, '0'));
}

TEST(InvariantFormatTest, IgnoresTheHostsCLocale) {
  const testing::ScopedGermanCLocale german;
  if (!german.active()) GTEST_SKIP() << "no de_DE.UTF-8 C locale (scripts/bootstrap.sh makes it)";
  EXPECT_EQ(invariantFormat("%.1f", 1.5), "1.5");
  EXPECT_EQ(invariantFormat("%.1f %g", 1.5, 2.5), "1.5 2.5");  // through the C library
}

}  // namespace
}  // namespace qm
