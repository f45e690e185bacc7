#include "qmcore/geo/CLPlacemark.hpp"

#include <string_view>
#include <vector>

#include "qmcore/platform/CharacterPrefix.hpp"

namespace qm {
namespace {

// Appends `piece`, after ", " when the text already has something.
void appendWithComma(std::string& text, std::string_view piece) {
  if (!text.empty()) text += ", ";
  text += piece;
}

// The non-empty lines of a text: consecutive line feeds count as one separator.
std::vector<std::string_view> nonEmptyLines(std::string_view text) {
  std::vector<std::string_view> lines;
  std::size_t start = 0;
  while (start <= text.size()) {
    std::size_t end = text.find('\n', start);
    if (end == std::string_view::npos) end = text.size();
    if (end > start) lines.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  return lines;
}

std::string valueOr(const std::optional<std::string>& field) { return field.value_or(""); }

}  // namespace

std::optional<CNPostalAddress> CLPlacemark::postalAddress() const {
  if (!thoroughfare && !subThoroughfare && !locality && !subLocality && !administrativeArea &&
      !postalCode && !ISOcountryCode && !country) {
    return std::nullopt;
  }
  CNPostalAddress address;
  address.street = CNPostalAddressFormatter::streetLine(
      valueOr(thoroughfare), valueOr(subThoroughfare), valueOr(ISOcountryCode));
  address.subLocality = valueOr(subLocality);
  address.city = valueOr(locality);
  address.state = valueOr(administrativeArea);
  address.postalCode = valueOr(postalCode);
  address.country = valueOr(country);
  address.ISOCountryCode = valueOr(ISOcountryCode);
  return address;
}

std::optional<std::string> CLPlacemark::formattedAddress() const {
  const std::optional<CNPostalAddress> address = postalAddress();
  if (!address) return std::nullopt;
  return CNPostalAddressFormatter(CNPostalAddressFormatterStyle::kMailingAddress)
      .stringFromPostalAddress(*address);
}

std::optional<std::string> CLPlacemark::line1Address() const {
  const std::optional<std::string> address = formattedAddress();
  if (!address) return std::nullopt;
  const std::vector<std::string_view> lines = nonEmptyLines(*address);
  if (lines.empty()) return std::nullopt;
  return std::string(lines.front());
}

std::optional<std::string> CLPlacemark::line2Address(bool appendLine3) const {
  const std::optional<std::string> address = formattedAddress();
  if (!address) return std::nullopt;
  const std::vector<std::string_view> lines = nonEmptyLines(*address);
  std::string text;
  if (lines.size() < 2) return text;
  text += lines[1];
  if (lines.size() == 2) return text;
  if (appendLine3) {
    text += ", ";
    text += lines[2];
  } else if (ISOcountryCode) {
    text += ", " + *ISOcountryCode;
  }
  return text;
}

std::string CLPlacemark::addressWithName() const {
  std::string text;
  const std::optional<std::string> line1 = line1Address();
  if (name && !name->empty() && !(line1 && hasCharacterPrefix(*line1, *name))) text += *name;
  if (line1 && !line1->empty()) appendWithComma(text, *line1);
  const std::optional<std::string> line2 = line2Address(true);
  if (line2 && !line2->empty()) appendWithComma(text, *line2);
  return text;
}

std::optional<std::string> CLPlacemark::streetAddress() const {
  std::string text;
  if (thoroughfare) text += *thoroughfare;
  // The number follows the street, after one space even when there is no street.
  if (subThoroughfare) text += " " + *subThoroughfare;
  for (const auto* field : {&locality, &administrativeArea, &postalCode, &ISOcountryCode}) {
    if (*field) appendWithComma(text, **field);
  }
  return text;
}

}  // namespace qm
