// What tests of NumberFormatter need to see behind its texts: whether a style is written by the
// fast path in the current locale, and ICU's own text to compare it with.

#ifndef QMCORE_PLATFORM_INTERNAL_NUMBERFORMATTERTESTING_HPP_
#define QMCORE_PLATFORM_INTERNAL_NUMBERFORMATTERTESTING_HPP_

#include <cstdint>
#include <string>

#include "qmcore/platform/NumberFormatter.hpp"

namespace qm::internal {

// Whether `formatter` writes its texts without ICU in its locale (or the current one).
bool writesWithoutIcu(const NumberFormatter& formatter);

// The text ICU writes for `value` in the formatter's style, whatever the fast path would write.
std::string formatWithIcu(const NumberFormatter& formatter, double value);
std::string formatWithIcu(const NumberFormatter& formatter, std::int64_t value);

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_NUMBERFORMATTERTESTING_HPP_
