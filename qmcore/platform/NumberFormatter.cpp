#include "qmcore/platform/NumberFormatter.hpp"

#include <unicode/decimfmt.h>
#include <unicode/numberformatter.h>
#include <unicode/parsepos.h>
#include <unicode/ucurr.h>

#include <cmath>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <type_traits>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/internal/IcuString.hpp"

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

std::shared_ptr<const LocalizedNumberFormatter> makeFormatter(const NumberFormatOptions& o,
                                                              const std::string& localeId) {
  const icu::Locale locale(localeId.c_str());
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
  return std::make_shared<const LocalizedNumberFormatter>(unlocalized.locale(locale));
}

// ICU formatters by style and locale. Building one costs tens of microseconds; using a
// built one is const and thread-safe.
class FormatterCache {
 public:
  std::shared_ptr<const LocalizedNumberFormatter> get(const NumberFormatOptions& o) {
    const std::string locale = o.locale.empty() ? currentLocaleIdentifier() : o.locale;
    const std::string key = cacheKey(o, locale);
    {
      const std::shared_lock lock(mutex_);
      if (const auto it = formatters_.find(key); it != formatters_.end()) return it->second;
    }
    auto formatter = makeFormatter(o, locale);
    const std::unique_lock lock(mutex_);
    return formatters_.emplace(key, std::move(formatter)).first->second;
  }

 private:
  std::shared_mutex mutex_;
  std::map<std::string, std::shared_ptr<const LocalizedNumberFormatter>, std::less<>> formatters_;
};

FormatterCache& formatterCache() {
  static FormatterCache cache;
  return cache;
}

template <typename Number>
std::string formatWith(const NumberFormatOptions& options, Number value) {
  const auto formatter = formatterCache().get(options);
  UErrorCode status = U_ZERO_ERROR;
  const icu::number::FormattedNumber formatted = [&] {
    if constexpr (std::is_floating_point_v<Number>) {
      return formatter->formatDouble(value, status);
    } else {
      return formatter->formatInt(value, status);
    }
  }();
  if (U_FAILURE(status)) return {};
  std::string result;
  formatted.toTempString(status).toUTF8String(result);
  return U_SUCCESS(status) ? result : std::string();
}

}  // namespace

NumberFormatter NumberFormatter::withDecimals(int decimals) {
  return NumberFormatter(NumberFormatOptions{.minimumFractionDigits = decimals,
                                             .maximumFractionDigits = decimals,
                                             .decimalSeparator = "."});
}

std::string NumberFormatter::format(double value) const { return formatWith(options_, value); }

std::string NumberFormatter::format(std::int64_t value) const {
  return formatWith(options_, value);
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
  const std::optional<icu::Formattable> number = parseWith(options_, text);
  if (!number) return std::nullopt;
  UErrorCode status = U_ZERO_ERROR;
  // NaN has neither an integer part nor a nearest end of the range (ICU would convert it to
  // an integer with undefined behaviour).
  if (std::isnan(number->getDouble(status))) return std::nullopt;
  // Truncates fractions; out of range it reports an error and returns the nearest end.
  const std::int64_t value = number->getInt64(status);
  if (status != U_ZERO_ERROR && status != U_INVALID_FORMAT_ERROR) return std::nullopt;
  return value;
}

std::string NumberFormatter::formatWithoutCache(double value) const {
  const std::string locale = options_.locale.empty() ? currentLocaleIdentifier() : options_.locale;
  const auto formatter = makeFormatter(options_, locale);
  UErrorCode status = U_ZERO_ERROR;
  const icu::number::FormattedNumber formatted = formatter->formatDouble(value, status);
  std::string result;
  formatted.toTempString(status).toUTF8String(result);
  return U_SUCCESS(status) ? result : std::string();
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

}  // namespace qm
