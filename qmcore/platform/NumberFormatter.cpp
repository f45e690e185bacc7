#include "qmcore/platform/NumberFormatter.hpp"

#include <unicode/decimfmt.h>
#include <unicode/numberformatter.h>
#include <unicode/numsys.h>
#include <unicode/parsepos.h>
#include <unicode/ucurr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <type_traits>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/DecimalText.hpp"
#include "qmcore/platform/internal/IcuString.hpp"
#include "qmcore/platform/internal/NumberFormatterTesting.hpp"

namespace qm {
namespace {

using icu::number::LocalizedNumberFormatter;

std::string cacheKey(const NumberFormatOptions& o, const std::string& locale) {
  std::string key = locale;
  key += '|' + std::to_string(o.minimumFractionDigits) + ',' +
         std::to_string(o.maximumFractionDigits) + ',' + std::to_string(o.minimumIntegerDigits) +
         (o.usesGrouping ? ",g" : ",-");
  if (o.decimalSeparator) key += "|" + *o.decimalSeparator;
  return key;
}

// The locale's symbols with the forced decimal separator, if any. When the forced separator
// is the locale's grouping separator (de_DE and "."), grouping gets a space so that parsing
// cannot mistake one for the other.
icu::DecimalFormatSymbols symbolsFor(const NumberFormatOptions& o, const icu::Locale& locale,
                                     UErrorCode& status) {
  icu::DecimalFormatSymbols symbols(locale, status);
  if (o.decimalSeparator) {
    const icu::UnicodeString separator = internal::fromUtf8(*o.decimalSeparator);
    if (symbols.getSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol) == separator) {
      symbols.setSymbol(icu::DecimalFormatSymbols::kGroupingSeparatorSymbol, u"\u00a0");
    }
    symbols.setSymbol(icu::DecimalFormatSymbols::kDecimalSeparatorSymbol, separator);
    symbols.setSymbol(icu::DecimalFormatSymbols::kMonetarySeparatorSymbol, separator);
  }
  return symbols;
}

LocalizedNumberFormatter makeFormatter(const NumberFormatOptions& o, const icu::Locale& locale) {
  auto unlocalized =
      icu::number::NumberFormatter::with()
          .precision(icu::number::Precision::minMaxFraction(o.minimumFractionDigits,
                                                            o.maximumFractionDigits))
          .grouping(o.usesGrouping ? UNUM_GROUPING_AUTO : UNUM_GROUPING_OFF)
          .integerWidth(icu::number::IntegerWidth::zeroFillTo(o.minimumIntegerDigits))
          .roundingMode(UNUM_ROUND_HALFEVEN);
  if (o.decimalSeparator) {
    UErrorCode status = U_ZERO_ERROR;
    icu::DecimalFormatSymbols symbols = symbolsFor(o, locale, status);
    if (U_SUCCESS(status)) unlocalized = unlocalized.symbols(symbols);
  }
  return unlocalized.locale(locale);
}

template <typename Number>
std::string formatWithIcu(const LocalizedNumberFormatter& formatter, Number value) {
  UErrorCode status = U_ZERO_ERROR;
  const icu::number::FormattedNumber formatted = [&] {
    if constexpr (std::is_floating_point_v<Number>) {
      return formatter.formatDouble(value, status);
    } else {
      return formatter.formatInt(value, status);
    }
  }();
  if (U_FAILURE(status)) return {};
  std::string result;
  formatted.toTempString(status).toUTF8String(result);
  return U_SUCCESS(status) ? result : std::string();
}

// Doubles up to this size take the fast path: far beyond any measured value, and well inside
// the range where ICU works from the shortest decimal.
constexpr double kFastPathLimit = 1e15;

// Numbers on which the fast path must write ICU's text before it is trusted for a style.
constexpr double kProbeDoubles[] = {
    // Signs and negative zero.
    0.0, -0.0, 1.0, -1.0,
    // Ties of the shortest decimal (1.015 is a tie there, not in binary), carries.
    0.5, 1.5, 2.5, -2.5, 0.125, -0.375, 1.005, 1.015, 2.675, 9.995, 99.5, 999.9999,
    // Groups of every size up to 15 digits, long fractions.
    1234.5, -1234.5, 12345.678, 123456.789, 1234567.891, -98765432.125, 123456789012.5,
    999999999999999.0, 0.1, 0.3, 314.159265358979,
    // Numbers that round to zero.
    0.000123, 1e-7, -1e-9};
constexpr std::int64_t kProbeIntegers[] = {
    0, -7, 1000, -12345, 1234567, INT64_C(9223372036854775807), INT64_MIN};

// The text of `value` in `style`, rounded as ICU rounds.
std::string formatFast(const internal::DecimalStyle& style, int maximumFractionDigits,
                       double value) {
  internal::Decimal decimal = internal::shortestDecimal(value);
  internal::roundHalfEven(decimal, maximumFractionDigits);
  return internal::formatDecimal(style, decimal);
}

// The grouping ICU applies in `locale`: the group sizes of the locale's decimal pattern, and
// the smallest number of digits before the first group that gets a separator (1 in most
// locales, 2 in Spanish or Polish), found by formatting powers of ten. False when unknown.
bool readGrouping(const icu::Locale& locale, const LocalizedNumberFormatter& icu,
                  internal::DecimalStyle& style) {
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::NumberFormat> format(
      icu::NumberFormat::createInstance(locale, status));
  const auto* decimal = dynamic_cast<const icu::DecimalFormat*>(format.get());
  if (U_FAILURE(status) || decimal == nullptr) return false;
  style.primaryGroup = std::max(decimal->getGroupingSize(), 0);
  style.secondaryGroup = decimal->getSecondaryGroupingSize() > 0
                             ? decimal->getSecondaryGroupingSize()
                             : style.primaryGroup;
  if (style.primaryGroup == 0) return true;
  std::int64_t power = 1;
  for (int i = 0; i < style.primaryGroup; ++i) power *= 10;
  for (int digits = 1; digits <= 4; ++digits, power *= 10) {
    if (formatWithIcu(icu, power).find(style.groupingSeparator) != std::string::npos) {
      style.minimumGroupingDigits = digits;
      return true;
    }
  }
  return false;
}

// The style in which the fast path writes exactly ICU's texts for `o` in `locale`, or absent
// when it cannot: unusual options, an algorithmic numbering system (Chinese numerals, Roman),
// or any probe number on which its text differs from ICU's (a pattern with text of its own,
// say). Everything absent here is formatted by ICU.
std::optional<internal::DecimalStyle> fastStyleFor(const NumberFormatOptions& o,
                                                   const icu::Locale& locale,
                                                   const LocalizedNumberFormatter& icu) {
  if (o.minimumFractionDigits > o.maximumFractionDigits || o.maximumFractionDigits > 20) {
    return std::nullopt;
  }
  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<icu::NumberingSystem> numbering(
      icu::NumberingSystem::createInstance(locale, status));
  if (U_FAILURE(status) || numbering->isAlgorithmic() || numbering->getRadix() != 10) {
    return std::nullopt;
  }
  const icu::DecimalFormatSymbols symbols = symbolsFor(o, locale, status);
  if (U_FAILURE(status)) return std::nullopt;
  using Symbol = icu::DecimalFormatSymbols::ENumberFormatSymbol;
  constexpr Symbol kDigits[] = {Symbol::kZeroDigitSymbol,  Symbol::kOneDigitSymbol,
                                Symbol::kTwoDigitSymbol,   Symbol::kThreeDigitSymbol,
                                Symbol::kFourDigitSymbol,  Symbol::kFiveDigitSymbol,
                                Symbol::kSixDigitSymbol,   Symbol::kSevenDigitSymbol,
                                Symbol::kEightDigitSymbol, Symbol::kNineDigitSymbol};
  internal::DecimalStyle style;
  for (int digit = 0; digit < 10; ++digit) {
    style.digits[digit] = internal::toUtf8(symbols.getSymbol(kDigits[digit]));
  }
  style.minusSign = internal::toUtf8(symbols.getSymbol(Symbol::kMinusSignSymbol));
  style.decimalSeparator = internal::toUtf8(symbols.getSymbol(Symbol::kDecimalSeparatorSymbol));
  style.groupingSeparator = internal::toUtf8(symbols.getSymbol(Symbol::kGroupingSeparatorSymbol));
  style.minimumIntegerDigits = o.minimumIntegerDigits;
  style.minimumFractionDigits = o.minimumFractionDigits;
  if (o.usesGrouping && !readGrouping(locale, icu, style)) return std::nullopt;
  if (!internal::isWritable(style)) return std::nullopt;

  for (const double probe : kProbeDoubles) {
    if (formatFast(style, o.maximumFractionDigits, probe) != formatWithIcu(icu, probe)) {
      return std::nullopt;
    }
  }
  for (const std::int64_t probe : kProbeIntegers) {
    if (internal::formatDecimal(style, internal::integerDecimal(probe)) !=
        formatWithIcu(icu, probe)) {
      return std::nullopt;
    }
  }
  return style;
}

// One style in one locale: ICU's formatter and, where it writes the same texts, the fast path.
// Immutable once made, so shared between threads without locks.
class Formatter {
 public:
  Formatter(const NumberFormatOptions& options, const std::string& localeId)
      : icu_(makeFormatter(options, icu::Locale(localeId.c_str()))),
        maximumFractionDigits_(options.maximumFractionDigits),
        fast_(fastStyleFor(options, icu::Locale(localeId.c_str()), icu_)) {}

  std::string format(double value) const {
    if (fast_ && std::fabs(value) < kFastPathLimit) {  // false for NaN and infinities
      return formatFast(*fast_, maximumFractionDigits_, value);
    }
    return formatWithIcu(icu_, value);
  }
  std::string format(std::int64_t value) const {
    if (fast_) return internal::formatDecimal(*fast_, internal::integerDecimal(value));
    return formatWithIcu(icu_, value);
  }
  bool writesWithoutIcu() const { return fast_.has_value(); }
  const LocalizedNumberFormatter& icu() const { return icu_; }

 private:
  const LocalizedNumberFormatter icu_;
  const int maximumFractionDigits_;
  const std::optional<internal::DecimalStyle> fast_;
};

// Formatters by style and locale, for the whole process. Building one costs tens of
// microseconds; a built one is never changed or dropped.
class FormatterCache {
 public:
  std::shared_ptr<const Formatter> get(const NumberFormatOptions& o, const std::string& locale) {
    const std::string key = cacheKey(o, locale);
    {
      const std::shared_lock lock(mutex_);
      if (const auto it = formatters_.find(key); it != formatters_.end()) return it->second;
    }
    auto formatter = std::make_shared<const Formatter>(o, locale);
    const std::unique_lock lock(mutex_);
    return formatters_.emplace(key, std::move(formatter)).first->second;
  }

 private:
  std::shared_mutex mutex_;
  std::map<std::string, std::shared_ptr<const Formatter>, std::less<>> formatters_;
};

FormatterCache& formatterCache() {
  static FormatterCache cache;
  return cache;
}

// The formatter of `options` in their locale (or the current one). Value texts are made many
// times a second with a handful of styles, so each thread remembers the few it used last and
// takes no lock for them; the reference is valid until this thread's next call.
const Formatter& formatterFor(const NumberFormatOptions& options) {
  struct Recent {
    NumberFormatOptions options;
    std::string locale;
    std::shared_ptr<const Formatter> formatter;
  };
  thread_local std::array<Recent, 4> recent;
  thread_local size_t next = 0;
  std::string current;
  const std::string& locale =
      options.locale.empty() ? (current = currentLocaleIdentifier()) : options.locale;
  for (const Recent& r : recent) {
    if (r.formatter && r.options == options && r.locale == locale) return *r.formatter;
  }
  Recent& slot = recent[next];
  next = (next + 1) % recent.size();
  slot.formatter = formatterCache().get(options, locale);
  slot.options = options;
  slot.locale = locale;
  return *slot.formatter;
}

}  // namespace

NumberFormatter NumberFormatter::withDecimals(int decimals) {
  return NumberFormatter(NumberFormatOptions{.minimumFractionDigits = decimals,
                                             .maximumFractionDigits = decimals,
                                             .decimalSeparator = "."});
}

std::string NumberFormatter::format(double value) const {
  return formatterFor(options_).format(value);
}

std::string NumberFormatter::format(std::int64_t value) const {
  return formatterFor(options_).format(value);
}

namespace {

// The whole text read as a number in the style of `options`; absent when it is not one.
std::optional<icu::Formattable> parseWith(const NumberFormatOptions& options,
                                          std::string_view text) {
  if (text.empty()) return std::nullopt;
  const std::string localeId = options.locale.empty() ? currentLocaleIdentifier() : options.locale;
  const icu::Locale locale(localeId.c_str());
  UErrorCode status = U_ZERO_ERROR;
  std::unique_ptr<icu::NumberFormat> format(icu::NumberFormat::createInstance(locale, status));
  auto* decimal = dynamic_cast<icu::DecimalFormat*>(format.get());
  if (U_FAILURE(status) || decimal == nullptr) return std::nullopt;
  decimal->setDecimalFormatSymbols(symbolsFor(options, locale, status));
  decimal->setGroupingUsed(options.usesGrouping);
  const icu::UnicodeString source = internal::fromUtf8(text);
  icu::Formattable result;
  icu::ParsePosition position(0);
  decimal->parse(source, result, position);
  if (position.getErrorIndex() >= 0 || position.getIndex() != source.length()) {
    return std::nullopt;
  }
  return result;
}

std::string currencySymbolOf(std::string_view locale,
                             icu::DecimalFormatSymbols::ENumberFormatSymbol symbol) {
  const std::string localeId = locale.empty() ? currentLocaleIdentifier() : std::string(locale);
  UErrorCode status = U_ZERO_ERROR;
  const icu::DecimalFormatSymbols symbols(icu::Locale(localeId.c_str()), status);
  if (U_FAILURE(status)) return {};
  return internal::toUtf8(symbols.getSymbol(symbol));
}

// The integer part of a decimal text as ICU writes one ("9E+18", "-9.2E+18", "12.5"), clamped
// to the 64-bit range; absent for any other text ("Infinity").
std::optional<std::int64_t> integerPartOfDecimalText(std::string_view text) {
  const bool negative = text.starts_with('-');
  if (negative) text.remove_prefix(1);
  long exponent = 0;
  if (const std::size_t e = text.find_first_of("Ee"); e != std::string_view::npos) {
    std::string_view digits = text.substr(e + 1);
    const bool negativeExponent = digits.starts_with('-');
    if (negativeExponent || digits.starts_with('+')) digits.remove_prefix(1);
    if (digits.empty() || digits.size() > 9) return std::nullopt;
    for (const char c : digits) {
      if (c < '0' || c > '9') return std::nullopt;
      exponent = exponent * 10 + (c - '0');
    }
    if (negativeExponent) exponent = -exponent;
    text = text.substr(0, e);
  }
  const std::size_t point = text.find('.');
  std::string digits(text.substr(0, point));
  if (point != std::string_view::npos) digits += text.substr(point + 1);
  long integerDigits = static_cast<long>(point == std::string_view::npos ? text.size() : point);
  integerDigits += exponent;
  if (digits.empty() || digits.find_first_not_of("0123456789") != std::string::npos) {
    return std::nullopt;
  }
  const std::size_t leadingZeros = digits.find_first_not_of('0');
  if (leadingZeros == std::string::npos) return 0;
  digits.erase(0, leadingZeros);
  integerDigits -= static_cast<long>(leadingZeros);
  if (integerDigits <= 0) return 0;
  // The largest magnitude of each sign: 2^63 - 1, or 2^63 for negative numbers.
  const std::uint64_t limit = negative ? std::uint64_t{1} << 63 : (std::uint64_t{1} << 63) - 1;
  std::uint64_t magnitude = 0;
  for (long i = 0; i < integerDigits; ++i) {
    const unsigned digit = i < static_cast<long>(digits.size()) ? digits[i] - '0' : 0;
    if (magnitude > (limit - digit) / 10) {
      magnitude = limit;
      break;
    }
    magnitude = magnitude * 10 + digit;
  }
  return negative ? static_cast<std::int64_t>(0 - magnitude) : static_cast<std::int64_t>(magnitude);
}

}  // namespace

std::optional<double> NumberFormatter::parse(std::string_view text) const {
  const std::optional<icu::Formattable> number = parseWith(options_, text);
  if (!number) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  const double value = number->getDouble(status);
  if (U_FAILURE(status)) return std::nullopt;
  return value;
}

std::optional<std::int64_t> NumberFormatter::parseInteger(std::string_view text) const {
  std::optional<icu::Formattable> number = parseWith(options_, text);
  if (!number) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  // NaN has neither an integer part nor a nearest end of the range (ICU would convert it to
  // an integer with undefined behaviour).
  if (std::isnan(number->getDouble(status))) return std::nullopt;
  // Truncates fractions; out of range it reports an error and returns the nearest end.
  std::int64_t value = number->getInt64(status);
  if (status == U_INVALID_FORMAT_ERROR) {
    // ICU's range check compares only the digits it keeps, so it also calls numbers of 19
    // digits that start with those of 2^63 and end in zeros (9000000000000000000) out of
    // range: the number's decimal text decides.
    status = U_ZERO_ERROR;
    const icu::StringPiece decimal = number->getDecimalNumber(status);
    if (U_SUCCESS(status)) {
      value = integerPartOfDecimalText({decimal.data(), static_cast<std::size_t>(decimal.size())})
                  .value_or(value);
    }
    status = U_ZERO_ERROR;
  }
  if (U_FAILURE(status)) return std::nullopt;
  return value;
}

std::string NumberFormatter::currencySymbol(std::string_view locale) {
  return currencySymbolOf(locale, icu::DecimalFormatSymbols::kCurrencySymbol);
}

std::string NumberFormatter::currencyCode(std::string_view locale) {
  const std::string localeId = locale.empty() ? currentLocaleIdentifier() : std::string(locale);
  UChar code[4] = {};
  UErrorCode status = U_ZERO_ERROR;
  const int32_t length = ucurr_forLocale(localeId.c_str(), code, 4, &status);
  // No region, no currency: ISO 4217's code for "no currency".
  if (U_FAILURE(status) || length != 3) return "XXX";
  return internal::toUtf8(icu::UnicodeString(code, length));
}

namespace internal {

bool writesWithoutIcu(const NumberFormatter& formatter) {
  return formatterFor(formatter.options()).writesWithoutIcu();
}

std::string formatWithIcu(const NumberFormatter& formatter, double value) {
  return qm::formatWithIcu(formatterFor(formatter.options()).icu(), value);
}

std::string formatWithIcu(const NumberFormatter& formatter, std::int64_t value) {
  return qm::formatWithIcu(formatterFor(formatter.options()).icu(), value);
}

std::string formatWithoutCache(const NumberFormatter& formatter, double value) {
  const NumberFormatOptions& options = formatter.options();
  const std::string locale = options.locale.empty() ? currentLocaleIdentifier() : options.locale;
  return qm::formatWithIcu(makeFormatter(options, icu::Locale(locale.c_str())), value);
}

}  // namespace internal
}  // namespace qm
