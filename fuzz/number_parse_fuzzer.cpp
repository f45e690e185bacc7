// Number texts typed by users or read from files, in several locales and styles. Parsing must
// never crash; `parseInteger` must accept exactly the texts `parse` accepts, NaN excepted, and
// give their number truncated toward zero (clamped to the 64-bit range); and a text that
// `QMFormatter::parseNumericString` passes must read as the double that `std::from_chars`
// reads from it, when it is ASCII.

#include <fuzzer/FuzzedDataProvider.h>

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NumberFormatter.hpp"

namespace {

// Locales with a decimal comma, an apostrophe for grouping, Arabic-Indic digits and Indian
// grouping, besides the usual ones.
constexpr const char* kLocales[] = {"en_US", "de_DE", "fr_FR",      "de_CH",
                                    "ar_EG", "hi_IN", "en_US_POSIX"};
constexpr const char* kSeparators[] = {".", ",", "\u066b"};  // the last is Arabic's

[[noreturn]] void fail(const char* what, std::string_view text) {
  std::fprintf(stderr, "%s: \"%.*s\"\n", what, static_cast<int>(text.size()), text.data());
  std::abort();
}

// Whether `integer` is `value` truncated toward zero, or the nearest end of the 64-bit range.
// Beyond 2^53 the double is not exact while the integer may keep every digit of the text, so
// they only need to be as close as the double's precision.
bool integerAgrees(double value, std::int64_t integer) {
  constexpr double kTwoTo63 = 9223372036854775808.0;
  constexpr double kTwoTo53 = 9007199254740992.0;
  if (value >= kTwoTo63) return integer == std::numeric_limits<std::int64_t>::max();
  if (value < -kTwoTo63) return integer == std::numeric_limits<std::int64_t>::min();
  if (std::fabs(value) <= kTwoTo53) return integer == static_cast<std::int64_t>(value);
  return std::fabs(static_cast<double>(integer) - value) <= std::fabs(value) * 1e-15;
}

bool isAscii(std::string_view text) {
  for (const char c : text) {
    if (static_cast<unsigned char>(c) >= 0x80) return false;
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzedDataProvider provider(data, size);
  qm::NumberFormatOptions options;
  options.maximumFractionDigits = provider.ConsumeIntegralInRange(0, 6);
  options.usesGrouping = provider.ConsumeBool();
  const std::size_t separator = provider.ConsumeIntegralInRange<std::size_t>(0, 3);
  if (separator < 3) options.decimalSeparator = kSeparators[separator];
  options.locale = provider.PickValueInArray(kLocales);
  const std::string text = provider.ConsumeRemainingBytesAsString();

  const qm::NumberFormatter formatter(options);
  const std::optional<double> number = formatter.parse(text);
  const std::optional<std::int64_t> integer = formatter.parseInteger(text);
  if (number && std::isnan(*number)) {
    if (integer) fail("parseInteger gave an integer for NaN", text);
  } else if (number.has_value() != integer.has_value()) {
    fail("parse and parseInteger disagree on whether this is a number", text);
  } else if (number && !integerAgrees(*number, *integer)) {
    fail("parseInteger is not the truncated number", text);
  }

  // QMFormatter's helpers read in the current locale.
  qm::setCurrentLocaleIdentifier(options.locale);
  (void)qm::QMFormatter::integerFromString(text);
  const double invariant = qm::QMFormatter::doubleFromInvariantString(text);
  std::optional<double> numeric;
  const bool accepted =
      qm::QMFormatter::parseNumericString(text, [&numeric](double value) { numeric = value; });
  if (accepted != numeric.has_value()) fail("parseNumericString's answer and call differ", text);
  if (!accepted) return 0;
  if (*numeric != invariant) fail("parseNumericString and doubleFromInvariantString differ", text);
  if (!isAscii(text)) return 0;
  double expected = 0.0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), expected, std::chars_format::fixed);
  if (error == std::errc::result_out_of_range) return 0;
  if (error != std::errc() || end != text.data() + text.size()) {
    fail("parseNumericString passed a text that is not a decimal number", text);
  }
  if (*numeric != expected) fail("parseNumericString read another number", text);
  return 0;
}
