#include "qmcore/geo/MKPlacemark.hpp"

namespace qm {

std::optional<std::string> QMTitledAddressPlacemark::formattedAddress() const {
  std::string text;
  if (title1 && !title1->empty()) text += *title1;
  if (subtitle1 && !subtitle1->empty()) {
    if (!text.empty()) text += ", ";
    text += *subtitle1;
  }
  if (text.empty()) return MKPlacemark::formattedAddress();
  return text;
}

std::optional<std::string> QMRawAddressPlacemark::formattedAddress() const {
  if (rawAddress && !rawAddress->empty()) return rawAddress;
  return MKPlacemark::formattedAddress();
}

}  // namespace qm
