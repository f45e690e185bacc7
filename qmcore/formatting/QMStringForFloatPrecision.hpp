// Fixed-precision number texts of the value texts: printf's "%.0f", "%.2f" and "%.3f" in the
// POSIX locale, so always "." as decimal separator and never grouping, whatever locale the C
// library or the user has.
//
//   qm::QMStringForFloatPrecision0(999.5);   // "1000" (printf rounds the exact binary value)
//   qm::QMStringForFloatPrecision2(1.005);   // "1.00" (1.005 is 1.00499999...)
//   qm::QMStringForFloatPrecision3(-0.0004); // "-0.000"
//
// Non-finite values give printf's "inf", "-inf" and "nan". Thread-safe.

#ifndef QMCORE_FORMATTING_QMSTRINGFORFLOATPRECISION_HPP_
#define QMCORE_FORMATTING_QMSTRINGFORFLOATPRECISION_HPP_

#include <string>

namespace qm {

std::string QMStringForFloatPrecision0(double value);  // "%.0f"
std::string QMStringForFloatPrecision2(double value);  // "%.2f"
std::string QMStringForFloatPrecision3(double value);  // "%.3f"

}  // namespace qm

#endif  // QMCORE_FORMATTING_QMSTRINGFORFLOATPRECISION_HPP_
