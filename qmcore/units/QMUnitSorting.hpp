// The orders in which unit catalogs are listed to users, shared by the units provider's
// catalog lists and the qmcore tool.
//
//   kAscending                 by factor, smallest first; equal factors keep their order
//                              (speed, vertical speed, pressure, temperature)
//   kAscendingThenShorterName  by factor, smallest first; equal factors by ascending length of
//                              the name in UTF-16 code units, then in their order (length, area)
//   kDescending                by factor, biggest first; equal factors keep their order
//                              (distance, altitude)
//
// The sort is stable, so the result never depends on anything but the input order.
//
//   auto units = qm::sortedUnits(qm::QMLengthUnit::builtinUnits(),
//                                qm::UnitSortOrder::kAscendingThenShorterName);
//   // inch, shaku, foot, French foot, yard, metre, kilometre, mile, nautical mile

#ifndef QMCORE_UNITS_QMUNITSORTING_HPP_
#define QMCORE_UNITS_QMUNITSORTING_HPP_

#include <algorithm>
#include <memory>
#include <vector>

#include "qmcore/units/QMUnit.hpp"

namespace qm {

enum class UnitSortOrder { kAscending, kAscendingThenShorterName, kDescending };

// Whether `a` goes before `b` in `order` (a strict weak order).
bool unitPrecedes(const QMUnit& a, const QMUnit& b, UnitSortOrder order);

// `units` sorted stably in `order`. Null entries are not allowed.
template <typename Unit>
std::vector<std::shared_ptr<const Unit>> sortedUnits(std::vector<std::shared_ptr<const Unit>> units,
                                                     UnitSortOrder order) {
  std::stable_sort(
      units.begin(), units.end(),
      [order](const std::shared_ptr<const Unit>& a, const std::shared_ptr<const Unit>& b) {
        return unitPrecedes(*a, *b, order);
      });
  return units;
}

}  // namespace qm

#endif  // QMCORE_UNITS_QMUNITSORTING_HPP_
