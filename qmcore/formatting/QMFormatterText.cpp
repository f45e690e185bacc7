// Text helpers of QMFormatter: encoding, trimming, links, parameters, fonts and file sizes of
// paths.

#include <array>
#include <climits>
#include <filesystem>
#include <random>

#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/RegularExpression.hpp"
#include "qmcore/platform/UnicodeText.hpp"
#include "qmcore/strings/CoreStrings.hpp"

namespace qm {
namespace {

// Decided on bytes, without the C library's locale-dependent character classes.
bool isQueryAllowed(unsigned char c) {
  if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z')) return true;
  constexpr std::string_view kAllowedPunctuation = "-._~!$&'()*+,;=:@/?";
  return kAllowedPunctuation.find(static_cast<char>(c)) != std::string_view::npos;
}

std::string replacingAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  result.reserve(text.size());
  for (size_t start = 0;;) {
    const size_t found = text.find(from, start);
    if (found == std::string_view::npos) {
      result.append(text.substr(start));
      return result;
    }
    result.append(text.substr(start, found - start)).append(to);
    start = found + from.size();
  }
}

// What the platform's `integerValue` reads: leading blanks, an optional sign, then digits;
// 0 when no digit follows; the int range's ends beyond it.
int leadingInteger(std::string_view text) {
  size_t i = 0;
  while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n')) ++i;
  bool negative = false;
  if (i < text.size() && (text[i] == '+' || text[i] == '-')) negative = text[i++] == '-';
  long long value = 0;
  for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
    value = value * 10 + (text[i] - '0');
    if (value > static_cast<long long>(INT_MAX) + 1) break;  // clamped below either way
  }
  if (negative) value = -value;
  if (value < INT_MIN) return INT_MIN;
  if (value > INT_MAX) return INT_MAX;
  return static_cast<int>(value);
}

std::string verticalString(std::string_view text) {
  std::string result;
  for (const std::string& character : graphemeClusters(text)) result.append(character) += '\n';
  return result;
}

}  // namespace

std::string QMFormatter::urlEncode(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (isQueryAllowed(byte)) {
      result += c;
    } else {
      result += invariantFormat("%%%02X", byte);
    }
  }
  return result;
}

std::string QMFormatter::stringWithUUID() {
  thread_local std::mt19937_64 generator{std::random_device{}()};
  std::array<unsigned char, 16> bytes;
  for (size_t i = 0; i < bytes.size(); i += 8) {
    const std::uint64_t random = generator();
    for (size_t j = 0; j < 8; ++j) bytes[i + j] = static_cast<unsigned char>(random >> (8 * j));
  }
  bytes[6] = static_cast<unsigned char>((bytes[6] & 0x0F) | 0x40);  // version 4: random
  bytes[8] = static_cast<unsigned char>((bytes[8] & 0x3F) | 0x80);  // RFC 4122 variant
  std::string text;
  for (size_t i = 0; i < bytes.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    text += invariantFormat("%02X", bytes[i]);
  }
  return text;
}

std::optional<std::string> QMFormatter::stringByTrimmingSpaces(
    std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  const size_t first = text->find_first_not_of(' ');
  if (first == std::string_view::npos) return std::string();
  const size_t last = text->find_last_not_of(' ');
  return std::string(text->substr(first, last - first + 1));
}

std::string QMFormatter::stringWithBool(bool value) { return value ? "true" : "false"; }

bool QMFormatter::boolWithString(std::string_view text) { return text == "true"; }

std::optional<std::string> QMFormatter::stringByRemovingHttpLinksFromString(
    std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  static const std::optional<RegularExpression> kLink = RegularExpression::create(
      "(\\b(https?):\\/\\/[-A-Z0-9+&@#\\/%?=~_|!:,.;]*[-A-Z0-9+&@#\\/%=~_|])",
      {.caseInsensitive = true});
  if (!kLink) return std::string(*text);
  return kLink->replacingMatches(*text, "");
}

std::string QMFormatter::escapeJsonValue(std::string_view text) {
  return replacingAll(replacingAll(text, "\\", "\\\\"), "\"", "\\\"");
}

std::optional<std::string> QMFormatter::changeLinebreaksToHtmlBreaks(
    std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  return replacingAll(*text, "\n", "<br/>");
}

std::string QMFormatter::stringForAddressLine1(std::optional<std::string_view> addressLine1,
                                               std::optional<std::string_view> addressLine2,
                                               std::string_view withLinesSeparator) {
  std::string result(addressLine1.value_or(""));
  if (addressLine1 && addressLine2) result.append(withLinesSeparator);
  result.append(addressLine2.value_or(""));
  return result;
}

std::string QMFormatter::embelishWithTick(std::string_view text, bool when) {
  if (!when) return std::string(text);
  return "\u2713" + std::string(text);
}

std::string QMFormatter::text(std::string_view text,
                              std::optional<std::string_view> embelishedWithCurrencySymbol) {
  std::string result(text);
  if (embelishedWithCurrencySymbol && !embelishedWithCurrencySymbol->empty()) {
    result.append(", ").append(*embelishedWithCurrencySymbol);
  }
  return result;
}

std::string QMFormatter::textForTemperatureUnit(bool isFahrenheit) {
  return isFahrenheit ? "°F" : "°C";
}

std::optional<std::string> QMFormatter::verticalStringFor(std::optional<std::string_view> text) {
  return verticalStringFor2(text);
}

std::optional<std::string> QMFormatter::verticalStringFor2(std::optional<std::string_view> text) {
  if (!text) return std::nullopt;
  return verticalString(*text);
}

std::string QMFormatter::fontForIndex(int index) {
  switch (index) {
    case 1:
      return "DS-Digital-BoldItalic";
    case 2:
      return "Helvetica";
    default:
      return "TrebuchetMS";
  }
}

std::string QMFormatter::fontNameForIndex(int index) {
  switch (index) {
    case 1:
      return CoreStrings::CLSTRING("Digital");
    case 2:
      return CoreStrings::CLSTRING("Analog 1");
    default:
      return CoreStrings::CLSTRING("Analog 2");
  }
}

double QMFormatter::parseLimitFromString(std::optional<std::string_view> text) {
  if (!text || text->find('@') == std::string_view::npos) return -1.0;
  static const std::optional<RegularExpression> kLimit =
      RegularExpression::create("@(\\d*)", {.caseInsensitive = true});
  if (!kLimit) return -1.0;
  const std::optional<RegularExpressionMatch> match = kLimit->firstMatch(*text);
  if (!match) return -1.0;
  return doubleFromInvariantString(match->group(1).value_or(""));
}

bool QMFormatter::boolParameter(std::optional<std::string_view> key, const Parameters& parameters) {
  if (!key) return false;
  const auto it = parameters.find(*key);
  return it != parameters.end() && it->second == "yes";
}

int QMFormatter::intParameter(std::optional<std::string_view> key, const Parameters& parameters,
                              int withDefault) {
  if (!key) return withDefault;
  const auto it = parameters.find(*key);
  return it == parameters.end() ? withDefault : leadingInteger(it->second);
}

std::string QMFormatter::currencyPropertiesString() {
  return capitalizedString(CoreStrings::CLSTRING("currency")) + ": " +
         localizationBasedCurrencySymbol() + " (" + localizationBasedCurrencyCode() +
         "), Locale: " + currentLocaleIdentifier();
}

std::string QMFormatter::stringSizeForFilePath(std::string_view path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(std::filesystem::path(path), error);
  if (error) return "--";
  return stringFromFileSize(static_cast<std::int64_t>(size));
}

}  // namespace qm
