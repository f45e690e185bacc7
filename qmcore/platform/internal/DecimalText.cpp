#include "qmcore/platform/internal/DecimalText.hpp"

#include <algorithm>
#include <charconv>
#include <cstring>

namespace qm::internal {
namespace {

constexpr int kMaximumIntegerDigits = 20;
constexpr int kMaximumFractionDigits = 20;

void dropTrailingZeros(Decimal& decimal) {
  while (decimal.count > 0 && decimal.digits[decimal.count - 1] == 0) --decimal.count;
  if (decimal.count == 0) decimal.point = 0;
}

// The digit of `decimal` at 10^(point - 1 - index): 0 outside the stored digits.
int digitAt(const Decimal& decimal, int index) {
  return index >= 0 && index < decimal.count ? decimal.digits[index] : 0;
}

}  // namespace

Decimal shortestDecimal(double value) {
  // "-1.2345e+03": the shortest digits in scientific form, so their count stays small.
  char text[32];
  const char* const end =
      std::to_chars(text, text + sizeof text, value, std::chars_format::scientific).ptr;
  Decimal decimal;
  const char* p = text;
  if (*p == '-') {
    decimal.negative = true;
    ++p;
  }
  for (; p != end && *p != 'e'; ++p) {
    if (*p != '.') decimal.digits[decimal.count++] = static_cast<std::int8_t>(*p - '0');
  }
  int exponent = 0;
  if (p != end) {
    ++p;  // 'e'
    if (*p == '+') ++p;
    std::from_chars(p, end, exponent);
  }
  decimal.point = exponent + 1;
  dropTrailingZeros(decimal);
  return decimal;
}

Decimal integerDecimal(std::int64_t value) {
  char text[24];
  const char* const end = std::to_chars(text, text + sizeof text, value).ptr;
  Decimal decimal;
  const char* p = text;
  if (*p == '-') {
    decimal.negative = true;
    ++p;
  }
  decimal.point = static_cast<int>(end - p);
  for (; p != end; ++p) decimal.digits[decimal.count++] = static_cast<std::int8_t>(*p - '0');
  dropTrailingZeros(decimal);
  return decimal;
}

void roundHalfEven(Decimal& decimal, int fractionDigits) {
  const int keep = decimal.point + fractionDigits;  // digits that stay
  if (keep >= decimal.count) return;
  if (keep < 0) {  // below half a unit of the last place kept
    decimal.count = 0;
    decimal.point = 0;
    return;
  }
  const int first = decimal.digits[keep];  // the first digit dropped
  bool up = first > 5;
  if (first == 5) {
    // More digits after the 5 (none is a trailing zero): above the half. Else a tie, to even;
    // with no digit kept the kept part is 0, even.
    up = keep + 1 < decimal.count || (keep > 0 && decimal.digits[keep - 1] % 2 == 1);
  }
  decimal.count = keep;
  if (up) {
    int i = keep - 1;
    while (i >= 0 && decimal.digits[i] == 9) --i;
    if (i < 0) {  // 0.999 -> 1.000: one digit, one place up
      decimal.digits[0] = 1;
      decimal.count = 1;
      ++decimal.point;
    } else {
      ++decimal.digits[i];
      decimal.count = i + 1;
    }
  }
  dropTrailingZeros(decimal);
}

bool isWritable(const DecimalStyle& style) {
  if (style.minimumIntegerDigits < 1 || style.minimumIntegerDigits > kMaximumIntegerDigits) {
    return false;
  }
  if (style.minimumFractionDigits < 0 || style.minimumFractionDigits > kMaximumFractionDigits) {
    return false;
  }
  if (style.primaryGroup < 0 ||
      (style.primaryGroup > 0 && (style.secondaryGroup < 1 || style.minimumGroupingDigits < 1 ||
                                  style.minimumIntegerDigits != 1))) {
    return false;
  }
  const size_t length = style.digits[0].size();
  return length > 0 && std::all_of(style.digits.begin(), style.digits.end(),
                                   [length](const std::string& d) { return d.size() == length; });
}

std::string formatDecimal(const DecimalStyle& style, const Decimal& decimal) {
  const int integerDigits = std::max(decimal.point, style.minimumIntegerDigits);
  const int fractionDigits = std::max(decimal.count - decimal.point, style.minimumFractionDigits);
  // A separator follows the integer digit at 10^i when i is primaryGroup, or more by a whole
  // number of secondary groups.
  const bool grouped =
      style.primaryGroup > 0 && integerDigits - style.primaryGroup >= style.minimumGroupingDigits;
  const int separators =
      grouped ? (integerDigits - 1 - style.primaryGroup) / style.secondaryGroup + 1 : 0;

  const size_t digitLength = style.digits[0].size();
  size_t length = static_cast<size_t>(integerDigits + fractionDigits) * digitLength +
                  static_cast<size_t>(separators) * style.groupingSeparator.size();
  if (decimal.negative) length += style.minusSign.size();
  if (fractionDigits > 0) length += style.decimalSeparator.size();

  std::string text(length, '\0');
  char* out = text.data();
  const auto put = [&out](const std::string& piece) {
    std::memcpy(out, piece.data(), piece.size());
    out += piece.size();
  };
  const auto putDigit = [&](int digit) {
    if (digitLength == 1) {
      *out++ = style.digits[digit][0];
    } else {
      put(style.digits[digit]);
    }
  };
  if (decimal.negative) put(style.minusSign);
  for (int i = integerDigits - 1; i >= 0; --i) {
    putDigit(digitAt(decimal, decimal.point - 1 - i));
    if (grouped && i >= style.primaryGroup &&
        (i - style.primaryGroup) % style.secondaryGroup == 0) {
      put(style.groupingSeparator);
    }
  }
  if (fractionDigits > 0) {
    put(style.decimalSeparator);
    for (int j = 0; j < fractionDigits; ++j) putDigit(digitAt(decimal, decimal.point + j));
  }
  return text;
}

}  // namespace qm::internal
