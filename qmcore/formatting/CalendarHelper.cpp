#include "qmcore/formatting/CalendarHelper.hpp"

#include "qmcore/platform/Calendar.hpp"
#include "qmcore/platform/Error.hpp"

namespace qm {

std::optional<std::string> CalendarHelper::getGregorianMonthName(std::int64_t index) {
  if (index < 0) fatalError("Negative month index " + std::to_string(index));
  const std::vector<std::string> names = Calendar::gregorian().standaloneMonthSymbols();
  if (static_cast<std::uint64_t>(index) >= names.size()) return std::nullopt;
  return names[static_cast<size_t>(index)];
}

}  // namespace qm
