// The non-finite doubles that tests of numeric input give to the code.

#ifndef QMCORE_TESTING_NONFINITE_HPP_
#define QMCORE_TESTING_NONFINITE_HPP_

#include <limits>

namespace qm::testing {

inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kInf = std::numeric_limits<double>::infinity();

}  // namespace qm::testing

#endif  // QMCORE_TESTING_NONFINITE_HPP_
