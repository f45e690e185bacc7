// Number texts of QMFormatter: rounding, printf-style invariant texts, the number-formatter
// texts of the current locale, and file sizes.

#include <algorithm>
#include <cmath>
#include <limits>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NumberFormatter.hpp"
#include "qmcore/platform/RegularExpression.hpp"

namespace qm {
namespace {

// ICU accepts at most 999 fraction digits; no double needs more than a few hundred.
constexpr int kMaximumDecimalPlaces = 340;

// Decimal style with "." and no grouping, reading and writing up to every digit of a double.
const NumberFormatter& invariantParser() {
  static const NumberFormatter formatter(
      NumberFormatOptions{.maximumFractionDigits = kMaximumDecimalPlaces, .decimalSeparator = "."});
  return formatter;
}

}  // namespace

double QMFormatter::roundDouble(double x, int decimalPlaces) {
  const double scale = std::pow(10.0, decimalPlaces);
  return std::round(x * scale) / scale;
}

std::string QMFormatter::newStringForInt(int value) { return invariantFormat("%d", value); }

std::string QMFormatter::newSecondsStringForSeconds(int seconds) {
  return invariantFormat("%02d", seconds);
}

std::string QMFormatter::newStringForFloatPrecision1(double value) {
  return invariantFormat("%.1f", value);
}

std::string QMFormatter::newStringForFloatPrecision2(double value) {
  return invariantFormat("%.2f", value);
}

std::string QMFormatter::newStringForFloatPrecision3(double value) {
  return invariantFormat("%.3f", value);
}

std::string QMFormatter::newStringForFloatPrecision2WithSign(double value) {
  return invariantFormat("%+.2f", value);
}

std::string QMFormatter::invariantStringForDouble(double value) {
  return invariantFormat("%f", value);
}

std::string QMFormatter::autoPrecisionFormatForValue(double value) {
  return value < 10000.0 ? "%.2f" : "%.0f";
}

std::string QMFormatter::stringFromDouble(double value, int decimalPlaces) {
  return NumberFormatter::withDecimals(std::clamp(decimalPlaces, 0, kMaximumDecimalPlaces))
      .format(value);
}

std::string QMFormatter::p2StringFromDouble(double value) { return stringFromDouble(value, 2); }

std::string QMFormatter::p3StringFromDouble(double value) { return stringFromDouble(value, 3); }

std::string QMFormatter::stringFromInt(int value) {
  static const NumberFormatter plain(NumberFormatOptions{});
  return plain.format(std::int64_t{value});
}

std::int64_t QMFormatter::integerFromString(std::string_view text) {
  static const NumberFormatter local(
      NumberFormatOptions{.maximumFractionDigits = kMaximumDecimalPlaces, .usesGrouping = true});
  return local.parseInteger(text).value_or(0);
}

double QMFormatter::doubleFromInvariantString(std::string_view text) {
  return invariantParser().parse(text).value_or(0.0);
}

bool QMFormatter::parseNumericString(std::string_view text,
                                     const std::function<void(double)>& updateBlock) {
  if (text.empty()) return false;
  // Digits, at most one decimal separator, digits: no sign, exponent, blank or grouping.
  static const std::optional<RegularExpression> kNumeric =
      RegularExpression::create("^\\d*\\.?\\d*$");
  if (!kNumeric || !kNumeric->matchesWholeText(text)) return false;
  const std::optional<double> number = invariantParser().parse(text);
  if (!number) return false;
  if (updateBlock) updateBlock(*number);
  return true;
}

std::string QMFormatter::localizationBasedCurrencySymbol() {
  return NumberFormatter::currencySymbol();
}

std::string QMFormatter::localizationBasedCurrencyCode() { return NumberFormatter::currencyCode(); }

std::string QMFormatter::stringFromFileSize(std::int64_t bytes) {
  const double size = static_cast<double>(bytes);
  if (const double gigabytes = size / 1073741824.0; gigabytes >= 1) {
    return invariantFormat("%.2f GB", gigabytes);
  }
  if (const double megabytes = size / 1048576.0; megabytes >= 1) {
    return invariantFormat("%.1f MB", megabytes);
  }
  if (const double kilobytes = size / 1024.0; kilobytes >= 1) {
    return invariantFormat("%.0f KB", kilobytes);
  }
  return invariantFormat("%.0f bytes", size);
}

}  // namespace qm
