// Geocoded places and the short address texts screens show for them: the postal address
// laid out for the place's country, its first and second line, the address with the place's
// name, and a one-line street address.
//
//   qm::CLPlacemark place;
//   place.name = "Cafe";
//   place.thoroughfare = "Main St";
//   place.subThoroughfare = "12";
//   place.locality = "Springfield";
//   place.ISOcountryCode = "US";
//   place.formattedAddress();  // "12 Main St\nSpringfield"
//   place.streetAddress();     // "Main St 12, Springfield, US" (number after street, always)
//   place.addressWithName();   // "Cafe, 12 Main St, Springfield"
//
// Places are value types; absent fields are `std::nullopt` and are skipped silently. A subclass
// may replace `formattedAddress`, and every other text follows it. Thread-safe for concurrent
// reads of one place.

#ifndef QMCORE_GEO_CLPLACEMARK_HPP_
#define QMCORE_GEO_CLPLACEMARK_HPP_

#include <optional>
#include <string>

#include "qmcore/platform/PostalAddressFormatter.hpp"

namespace qm {

struct CLPlacemark {
  CLPlacemark() = default;
  CLPlacemark(const CLPlacemark&) = default;
  CLPlacemark& operator=(const CLPlacemark&) = default;
  CLPlacemark(CLPlacemark&&) = default;
  CLPlacemark& operator=(CLPlacemark&&) = default;
  virtual ~CLPlacemark() = default;

  std::optional<std::string> name;                   // "Cafe Central", "Eiffel Tower"
  std::optional<std::string> thoroughfare;           // street name
  std::optional<std::string> subThoroughfare;        // house number
  std::optional<std::string> locality;               // city
  std::optional<std::string> subLocality;            // district
  std::optional<std::string> administrativeArea;     // state or province
  std::optional<std::string> subAdministrativeArea;  // county
  std::optional<std::string> postalCode;
  std::optional<std::string> ISOcountryCode;  // "US"
  std::optional<std::string> country;         // "United States"

  // The place's postal address: the street line (name and number in the country's order), the
  // sub-locality, the locality as city, the administrative area as state, the postcode, the
  // country and its code. None when the place has none of these fields.
  std::optional<CNPostalAddress> postalAddress() const;

  // The postal address as a mailing address (`CNPostalAddressFormatter`), lines separated by a
  // line feed; none without a postal address.
  virtual std::optional<std::string> formattedAddress() const;

  // The first non-empty line of `formattedAddress`; none when there is none.
  std::optional<std::string> line1Address() const;

  // Line 2 of the non-empty lines of `formattedAddress`; with three or more lines, followed by
  // ", " and line 3 when `appendLine3` is true, or by ", " and `ISOcountryCode` (when present)
  // when it is false. "" (not none) for a one-line address; none without a formatted address.
  std::optional<std::string> line2Address(bool appendLine3) const;

  // The name (unless line 1 already begins with it, character by character), line 1 and
  // `line2Address(true)`, joined by ", " and skipping empty pieces. Possibly "".
  std::string addressWithName() const;

  // Street name, then " " and house number (even with no street name before it), then the
  // locality, administrative area, postcode and country code joined by ", ". Always present,
  // possibly "".
  std::optional<std::string> streetAddress() const;
};

}  // namespace qm

#endif  // QMCORE_GEO_CLPLACEMARK_HPP_
