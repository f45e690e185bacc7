// Postal addresses and their mailing-address text, laid out the way each country's post
// expects: the lines, their order, and where the postcode and the house number go.
//
//   qm::CNPostalAddress address;
//   address.street = qm::CNPostalAddressFormatter::streetLine("Main St", "12", "US");  // "12 Main
//   St" address.city = "Springfield"; address.state = "IL"; address.postalCode = "62701";
//   address.ISOCountryCode = "US";
//   qm::CNPostalAddressFormatter().stringFromPostalAddress(address);
//   // "12 Main St\nSpringfield IL 62701"
//
// Countries with a layout of their own: US, CA, GB, IE, DE, AT, CH, FR, IT, ES, NL, BE, SE, NO,
// DK, PL, CZ, JP, CN, KR, AU, NZ, BR, MX, RU, IN; every other code (or none) gets a generic
// layout. Lines with nothing on them are left out, so the text never has an empty line.
// Thread-safe: the formatter holds only its style.

#ifndef QMCORE_PLATFORM_POSTALADDRESSFORMATTER_HPP_
#define QMCORE_PLATFORM_POSTALADDRESSFORMATTER_HPP_

#include <string>
#include <string_view>

namespace qm {

// An address as the post reads it; an empty field is an absent one.
struct CNPostalAddress {
  std::string street = {};       // street name with house number, as one line
  std::string subLocality = {};  // district or neighbourhood
  std::string city = {};
  std::string state = {};  // state, province, region or county
  std::string postalCode = {};
  std::string country = {};         // the country's name, written as the last line when present
  std::string ISOCountryCode = {};  // ISO 3166-1 alpha-2, either case; chooses the layout
};

enum class CNPostalAddressFormatterStyle {
  kMailingAddress = 0,  // the lines of a letter's address label
};

class CNPostalAddressFormatter {
 public:
  explicit CNPostalAddressFormatter(
      CNPostalAddressFormatterStyle style = CNPostalAddressFormatterStyle::kMailingAddress)
      : style_(style) {}

  CNPostalAddressFormatterStyle style() const { return style_; }

  // The address's lines, separated by a line feed, without a trailing one. "" when every
  // field is empty.
  std::string stringFromPostalAddress(const CNPostalAddress& address) const;

  // A street line of a street name and a house number in the country's order: "12 Main St"
  // (US, GB, FR, ...), "Main St 12" (DE, NL, ...), "Calle Mayor, 12" (ES, BR, RU). Either part
  // may be empty; then the other comes back alone.
  static std::string streetLine(std::string_view street, std::string_view houseNumber,
                                std::string_view isoCountryCode);

 private:
  CNPostalAddressFormatterStyle style_;
};

// The name of the country with ISO 3166-1 alpha-2 code `isoCountryCode` in the language of
// `localeIdentifier`: ("DE", "en_US") gives "Germany", ("DE", "de_DE") "Deutschland". A code
// that names no country comes back as it is.
std::string countryDisplayName(std::string_view isoCountryCode, std::string_view localeIdentifier);

}  // namespace qm

#endif  // QMCORE_PLATFORM_POSTALADDRESSFORMATTER_HPP_
