#include "qmcore/formatting/QMStringForFloatPrecision.hpp"

#include "qmcore/platform/InvariantFormat.hpp"

namespace qm {

std::string QMStringForFloatPrecision0(double value) { return invariantFormat("%.0f", value); }

std::string QMStringForFloatPrecision2(double value) { return invariantFormat("%.2f", value); }

std::string QMStringForFloatPrecision3(double value) { return invariantFormat("%.3f", value); }

}  // namespace qm
