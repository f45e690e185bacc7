// The registry that publishes the temperature unit identifiers. The identifiers of the other
// catalogs are plain constants beside their classes (QMLengthUnit.hpp, ...).

#ifndef QMCORE_UNITS_UNITSUUID_HPP_
#define QMCORE_UNITS_UNITSUUID_HPP_

#include <string_view>

namespace qm {

struct UnitsUuid {
  static const std::string_view QMCelsiusUnitUuid;    // ".temperature-c"
  static const std::string_view QMFarenheitUnitUuid;  // ".temperature-f"
};

}  // namespace qm

#endif  // QMCORE_UNITS_UNITSUUID_HPP_
