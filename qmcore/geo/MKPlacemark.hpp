// Places on a map: a geocoded place with a coordinate, the title and subtitle its pin shows,
// and two kinds of place that carry texts of their own instead of a geocoded address.
//
//   qm::QMTitledAddressPlacemark pin({48.8584, 2.2945}, "Eiffel Tower", "Paris");
//   pin.addressTitle();      // "Eiffel Tower"
//   pin.formattedAddress();  // "Eiffel Tower, Paris"
//
//   qm::QMRawAddressPlacemark typed({0, 0}, "somewhere near the old mill");
//   typed.formattedAddress();  // "somewhere near the old mill"
//
// The two text-carrying places are made only from a coordinate and their texts: there is no
// constructor from a coordinate alone, from an address or from another place, so such misuse
// does not compile. Value types, copyable as their own type.

#ifndef QMCORE_GEO_MKPLACEMARK_HPP_
#define QMCORE_GEO_MKPLACEMARK_HPP_

#include <optional>
#include <string>
#include <utility>

#include "qmcore/geo/CLPlacemark.hpp"
#include "qmcore/geo/MapTypes.hpp"

namespace qm {

// Anything that can name itself in a title and a subtitle line (a pin's callout).
class QMTitledAddressHolder {
 public:
  virtual ~QMTitledAddressHolder() = default;
  virtual std::optional<std::string> addressTitle() const = 0;
  virtual std::optional<std::string> addressSubtitle() const = 0;

 protected:
  QMTitledAddressHolder() = default;
  QMTitledAddressHolder(const QMTitledAddressHolder&) = default;
  QMTitledAddressHolder& operator=(const QMTitledAddressHolder&) = default;
};

struct MKPlacemark : CLPlacemark, QMTitledAddressHolder {
  explicit MKPlacemark(CLLocationCoordinate2D coordinate) : coordinate(coordinate) {}

  CLLocationCoordinate2D coordinate;

  // The place's name.
  std::optional<std::string> addressTitle() const override { return name; }
  // `streetAddress()`.
  std::optional<std::string> addressSubtitle() const override { return streetAddress(); }
};

// A place named by a title and a subtitle of the caller's, both changeable later.
struct QMTitledAddressPlacemark final : MKPlacemark {
  QMTitledAddressPlacemark(CLLocationCoordinate2D coordinate, std::optional<std::string> title,
                           std::optional<std::string> subtitle)
      : MKPlacemark(coordinate), title1(std::move(title)), subtitle1(std::move(subtitle)) {}

  std::optional<std::string> title1;
  std::optional<std::string> subtitle1;

  std::optional<std::string> addressTitle() const override { return title1; }
  std::optional<std::string> addressSubtitle() const override { return subtitle1; }

  // The non-empty title and subtitle joined by ", "; when both are absent or empty, the postal
  // address as for any place.
  std::optional<std::string> formattedAddress() const override;
};

// A place described by an address text the user typed or pasted.
struct QMRawAddressPlacemark final : MKPlacemark {
  QMRawAddressPlacemark(CLLocationCoordinate2D coordinate, std::optional<std::string> rawAddress)
      : MKPlacemark(coordinate), rawAddress(std::move(rawAddress)) {}

  std::optional<std::string> rawAddress;

  // `rawAddress` when present and not empty, else the postal address as for any place.
  std::optional<std::string> formattedAddress() const override;
};

}  // namespace qm

#endif  // QMCORE_GEO_MKPLACEMARK_HPP_
