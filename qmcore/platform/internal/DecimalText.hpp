// Number texts written the way ICU's number formatter writes them, without ICU: the fast path
// of `NumberFormatter`.
//
// ICU formats a double from its shortest round-trip decimal form (1.015 is "1.015", not
// 1.01499999999999990230037...) and rounds that decimal half to even, so 1.015 with two decimals
// gives "1.02" where printf gives "1.01". These functions do the same steps on a digit string:
//
//   Decimal d = shortestDecimal(1.015);  // 0.1015 × 10^1
//   roundHalfEven(d, 2);                 // 0.102 × 10^1
//   formatDecimal(style, d);             // "1.02", or "1,02" in a German style
//
// The style (digits, signs, separators, grouping) is read from ICU once by the caller, which
// also checks that the texts agree with ICU's for the locale before it relies on them.

#ifndef QMCORE_PLATFORM_INTERNAL_DECIMALTEXT_HPP_
#define QMCORE_PLATFORM_INTERNAL_DECIMALTEXT_HPP_

#include <array>
#include <cstdint>
#include <string>

namespace qm::internal {

// A finite decimal number: ±0.d[0]d[1]…d[count-1] × 10^point. The digits (values 0 to 9) have
// no trailing zeros; zero has none at all. The sign is kept for zero too ("-0" as ICU writes it).
struct Decimal {
  bool negative = false;
  int count = 0;
  int point = 0;
  std::array<std::int8_t, 24> digits{};
};

// The shortest decimal that reads back as `value`, which must be finite.
Decimal shortestDecimal(double value);

// The exact decimal of an integer.
Decimal integerDecimal(std::int64_t value);

// Rounds to `fractionDigits` (0 or more) digits after the point, ties to the even digit.
void roundHalfEven(Decimal& decimal, int fractionDigits);

// How numbers are written in one locale and style. Text is UTF-8.
struct DecimalStyle {
  // The ten digits, all of the same length ("0".."9", or "٠".."٩" in Arabic).
  std::array<std::string, 10> digits;
  std::string minusSign = "-";
  std::string decimalSeparator = ".";
  std::string groupingSeparator = ",";
  int minimumIntegerDigits = 1;
  int minimumFractionDigits = 0;
  // Numbers are grouped when primaryGroup > 0: the group next to the decimal separator has
  // primaryGroup digits, each further one secondaryGroup (Indian: 3 then 2), and only numbers
  // with at least primaryGroup + minimumGroupingDigits integer digits are grouped (Spanish
  // writes 1234 but 12.345).
  int primaryGroup = 0;
  int secondaryGroup = 0;
  int minimumGroupingDigits = 1;
};

// Whether `formatDecimal` can write in `style`: at least one integer digit (at most 20, and
// exactly one when grouping), at most 20 fraction digits, ten digits of one length.
bool isWritable(const DecimalStyle& style);

// The text of `decimal`, which has at most as many fraction digits as the style allows: the
// minus sign, the integer digits (zero-filled to the minimum, grouped), and the fraction digits
// (zero-filled to the minimum) after the decimal separator when there are any.
std::string formatDecimal(const DecimalStyle& style, const Decimal& decimal);

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_DECIMALTEXT_HPP_
