#include "qmcore/formatting/StyledText.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

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

TEST(StyledText, SplitFontNumberRoundsAndSplits) {
  const double inf = std::numeric_limits<double>::infinity();
  const struct {
    double value;
    int precision;
    const char* whole;
    const char* decimals;  // nullptr: no decimal run
  } cases[] = {
      {12.345, 2, "12", ".35"},  // 1234.5 rounds away from zero
      {9.999, 2, "10", ".00"},
      {12.5, 0, "13", nullptr},
      {0.29, 2, "0", ".29"},  // 0.29 x 100 is 28.999999999999996
      {1.05, 2, "1", ".05"},  // zero-padded to exactly n digits
      {0.5, 19, "0", ".5000000000000000000"},
      {5.0, -2, "5", nullptr},  // a negative precision counts as 0
      // Negative values: the fraction keeps its sign, after the point.
      {-12.345, 2, "-12", ".-35"},
      {-0.05, 2, "-0", ".-05"},
      // Not finite: the printf text and zero decimals.
      {std::nan(""), 2, "nan", ".00"},
      {-inf, 0, "-inf", nullptr},
  };
  // The point is "." whatever the locales say.
  const testing::ScopedLocale locale("de_DE");
  const testing::ScopedGermanCLocale cLocale;
  // Both fonts fall back to the bold monospaced system font of their size.
  EXPECT_EQ(StyledText::decimalFont().fallbackFont(),
            (FontDescription{std::string(kMonospacedSystemFontName), 80.0, FontWeight::kBold, ""}));
  for (const auto& c : cases) {
    const StyledText text = StyledText::attributedStringForDouble(c.value, c.precision);
    SCOPED_TRACE(::testing::Message() << c.value << " with " << c.precision);
    ASSERT_EQ(text.runs().size(), c.decimals ? 2u : 1u) << text.string();
    EXPECT_EQ(text.runs()[0], (StyledRun{.text = c.whole, .font = StyledText::wholeFont()}));
    if (c.decimals) {
      EXPECT_EQ(text.runs()[1], (StyledRun{.text = c.decimals, .font = StyledText::decimalFont()}));
    }
  }
}

TEST(StyledTextDeathTest, DecimalsBeyondSixtyFourBitsStopTheProgram) {
  EXPECT_DEATH(StyledText::attributedStringForDouble(0.95, 19), "do not fit in 64 bits");
  EXPECT_DEATH(StyledText::attributedStringForDouble(12.0, 400), "do not fit in 64 bits");
}

}  // namespace
}  // namespace qm
