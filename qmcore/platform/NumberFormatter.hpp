// Locale-aware number texts, the stand-in for the phone platform's `NSNumberFormatter`.
//
// A `NumberFormatter` is a small immutable value describing a style. The texts are ICU's: its
// formatter is built once per style and locale and cached process-wide, so making a
// `NumberFormatter` is cheap. Where the locale writes numbers digit for digit (nearly all do,
// in Latin, Arabic-Indic, Devanagari or other digits, grouped by threes or the Indian way),
// `format` writes ICU's text itself from the locale's symbols, in about the time of snprintf;
// elsewhere (algorithmic numbering systems, numbers from 1e15 on, NaN and infinities) ICU
// writes it, in about a microsecond. Rounding is ICU's default, half to even, applied to the
// shortest decimal form of the double (as the platform does): 0.125 with two decimals gives
// "0.12", 2.675 gives "2.68".
//
//   qm::NumberFormatter f(qm::NumberFormatOptions{.minimumFractionDigits = 2,
//                                                 .maximumFractionDigits = 2,
//                                                 .decimalSeparator = "."});
//   f.format(1234.5);  // "1234.50" in every locale
//
// Thread-safe: formatters may be shared and used from any thread.

#ifndef QMCORE_PLATFORM_NUMBERFORMATTER_HPP_
#define QMCORE_PLATFORM_NUMBERFORMATTER_HPP_

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qm {

struct NumberFormatOptions {
  // Digits after the decimal separator, at least and at most.
  int minimumFractionDigits = 0;
  int maximumFractionDigits = 0;
  // Digits before the separator, at least (zero-padded).
  int minimumIntegerDigits = 1;
  // Whether thousands are grouped with the locale's grouping separator.
  bool usesGrouping = false;
  // Replaces the locale's decimal separator when set (the library forces "." for
  // texts that must look the same in every locale).
  std::optional<std::string> decimalSeparator{};
  // The locale; empty means the current locale at the time of each call.
  std::string locale{};

  bool operator==(const NumberFormatOptions&) const = default;
};

class NumberFormatter {
 public:
  // The formatter of the library's units: `decimals` fraction digits, decimal separator ".",
  // no grouping, current locale.
  static NumberFormatter withDecimals(int decimals);

  explicit NumberFormatter(NumberFormatOptions options) : options_(std::move(options)) {}

  const NumberFormatOptions& options() const { return options_; }

  std::string format(double value) const;
  std::string format(std::int64_t value) const;

  // Parses a whole text in the formatter's locale and style (the locale's own separators,
  // or the forced decimal separator). Absent when the text is not a number.
  std::optional<double> parse(std::string_view text) const;

  // Parses like `parse` and drops any fraction (toward zero). Values beyond the 64-bit range
  // give its nearest end. Absent when the text is not a number, or is the locale's NaN.
  std::optional<std::int64_t> parseInteger(std::string_view text) const;

  // The currency symbol ("€", "$") and ISO 4217 code ("EUR", "USD") of a locale (of its
  // region); `locale` empty means the current locale. A locale without a region gives ICU's
  // placeholders "¤" and "XXX".
  static std::string currencySymbol(std::string_view locale = {});
  static std::string currencyCode(std::string_view locale = {});

 private:
  NumberFormatOptions options_;
};

}  // namespace qm

#endif  // QMCORE_PLATFORM_NUMBERFORMATTER_HPP_
