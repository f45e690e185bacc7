#include "qmcore/units/UnitsUuid.hpp"

namespace qm {

const std::string_view UnitsUuid::QMCelsiusUnitUuid = ".temperature-c";
const std::string_view UnitsUuid::QMFarenheitUnitUuid = ".temperature-f";

}  // namespace qm
