#include "qmcore/platform/PostalAddressFormatter.hpp"

#include <unicode/locid.h>

#include <array>
#include <cctype>
#include <string>

#include "qmcore/platform/internal/IcuString.hpp"

namespace qm {
namespace {

// Where the house number goes relative to the street name.
enum class NumberPlace {
  kBefore,         // "12 Main St"
  kAfter,          // "Main St 12"
  kAfterComma,     // "Calle Mayor, 12"
  kAfterAdjacent,  // "中山路12号": scripts written without spaces
};

// A country's layout. In `lines`, each line holds fields in braces and the text between them;
// a field's preceding text is written only when the field is not empty and something precedes
// it on the line (or, for the line's first field, as a prefix of that field).
struct CountryLayout {
  std::string_view code;
  NumberPlace numberPlace;
  std::string_view lines;
};

constexpr std::string_view kGenericLines = "{street}\n{subLocality}\n{city} {state} {postalCode}";
constexpr std::string_view kPostcodeCityLines = "{street}\n{postalCode} {city}";

constexpr std::array kLayouts{
    CountryLayout{"AT", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"AU", NumberPlace::kBefore, "{street}\n{city} {state} {postalCode}"},
    CountryLayout{"BE", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"BR", NumberPlace::kAfterComma,
                  "{street}\n{subLocality}\n{city} - {state}\n{postalCode}"},
    CountryLayout{"CA", NumberPlace::kBefore, "{street}\n{city} {state} {postalCode}"},
    CountryLayout{"CH", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"CN", NumberPlace::kAfterAdjacent,
                  "{state}{city}{subLocality}\n{street}\n{postalCode}"},
    CountryLayout{"CZ", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"DE", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"DK", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"ES", NumberPlace::kAfterComma, "{street}\n{postalCode} {city}\n{state}"},
    CountryLayout{"FR", NumberPlace::kBefore, kPostcodeCityLines},
    CountryLayout{"GB", NumberPlace::kBefore, "{street}\n{subLocality}\n{city}\n{postalCode}"},
    CountryLayout{"IE", NumberPlace::kBefore,
                  "{street}\n{subLocality}\n{city}\n{state}\n{postalCode}"},
    CountryLayout{"IN", NumberPlace::kBefore,
                  "{street}\n{subLocality}\n{city} {postalCode}\n{state}"},
    CountryLayout{"IT", NumberPlace::kAfterComma, "{street}\n{postalCode} {city} {state}"},
    CountryLayout{"JP", NumberPlace::kAfterAdjacent,
                  "〒{postalCode}\n{state}{city}{subLocality}\n{street}"},
    CountryLayout{"KR", NumberPlace::kAfter,
                  "{state} {city} {subLocality}\n{street}\n{postalCode}"},
    CountryLayout{"MX", NumberPlace::kAfter,
                  "{street}\n{subLocality}\n{postalCode} {city}, {state}"},
    CountryLayout{"NL", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"NO", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"NZ", NumberPlace::kBefore, "{street}\n{subLocality}\n{city} {postalCode}"},
    CountryLayout{"PL", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"RU", NumberPlace::kAfterComma, "{street}\n{city}\n{state}\n{postalCode}"},
    CountryLayout{"SE", NumberPlace::kAfter, kPostcodeCityLines},
    CountryLayout{"US", NumberPlace::kBefore, "{street}\n{city} {state} {postalCode}"},
};

constexpr CountryLayout kGenericLayout{"", NumberPlace::kBefore, kGenericLines};

std::string upperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return upper;
}

const CountryLayout& layoutFor(std::string_view isoCountryCode) {
  if (isoCountryCode.size() != 2) return kGenericLayout;
  const std::string code = upperAscii(isoCountryCode);
  for (const CountryLayout& layout : kLayouts) {
    if (layout.code == code) return layout;
  }
  return kGenericLayout;
}

std::string_view fieldValue(const CNPostalAddress& address, std::string_view name) {
  if (name == "street") return address.street;
  if (name == "subLocality") return address.subLocality;
  if (name == "city") return address.city;
  if (name == "state") return address.state;
  if (name == "postalCode") return address.postalCode;
  return {};
}

std::string renderLine(std::string_view line, const CNPostalAddress& address) {
  std::string out;
  bool firstField = true;
  std::size_t position = 0;
  while (position < line.size()) {
    const std::size_t open = line.find('{', position);
    if (open == std::string_view::npos) break;
    const std::size_t close = line.find('}', open);
    const std::string_view before = line.substr(position, open - position);
    const std::string_view value = fieldValue(address, line.substr(open + 1, close - open - 1));
    if (!value.empty()) {
      if (!out.empty() || firstField) out += before;
      out += value;
    }
    firstField = false;
    position = close + 1;
  }
  return out;
}

}  // namespace

std::string CNPostalAddressFormatter::stringFromPostalAddress(
    const CNPostalAddress& address) const {
  const CountryLayout& layout = layoutFor(address.ISOCountryCode);
  std::string text;
  const auto addLine = [&text](std::string_view line) {
    if (line.empty()) return;
    if (!text.empty()) text += '\n';
    text += line;
  };
  std::size_t start = 0;
  while (start <= layout.lines.size()) {
    std::size_t end = layout.lines.find('\n', start);
    if (end == std::string_view::npos) end = layout.lines.size();
    addLine(renderLine(layout.lines.substr(start, end - start), address));
    start = end + 1;
  }
  addLine(address.country);
  return text;
}

std::string CNPostalAddressFormatter::streetLine(std::string_view street,
                                                 std::string_view houseNumber,
                                                 std::string_view isoCountryCode) {
  if (street.empty()) return std::string(houseNumber);
  if (houseNumber.empty()) return std::string(street);
  const std::string s(street);
  const std::string n(houseNumber);
  switch (layoutFor(isoCountryCode).numberPlace) {
    case NumberPlace::kBefore:
      return n + " " + s;
    case NumberPlace::kAfter:
      return s + " " + n;
    case NumberPlace::kAfterComma:
      return s + ", " + n;
    case NumberPlace::kAfterAdjacent:
      return s + n;
  }
  return s + " " + n;
}

std::string countryDisplayName(std::string_view isoCountryCode, std::string_view localeIdentifier) {
  const bool letters = isoCountryCode.size() == 2 &&
                       std::isalpha(static_cast<unsigned char>(isoCountryCode[0])) &&
                       std::isalpha(static_cast<unsigned char>(isoCountryCode[1]));
  if (!letters) return std::string(isoCountryCode);
  const icu::Locale region("", upperAscii(isoCountryCode).c_str());
  const icu::Locale display(std::string(localeIdentifier).c_str());
  icu::UnicodeString name;
  region.getDisplayCountry(display, name);
  return name.isEmpty() ? std::string(isoCountryCode) : internal::toUtf8(name);
}

}  // namespace qm
