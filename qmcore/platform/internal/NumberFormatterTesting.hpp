// What tests and benchmarks of NumberFormatter need to see behind its texts: whether a style is
// written by the fast path in the current locale, ICU's own text to compare it with, and the
// cost the formatter cache saves.

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

// `formatter`'s text for `value` from an ICU formatter built for this call alone and then
// dropped: the cost that the cache saves.
std::string formatWithoutCache(const NumberFormatter& formatter, double value);

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_NUMBERFORMATTERTESTING_HPP_
