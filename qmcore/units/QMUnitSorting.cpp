#include "qmcore/units/QMUnitSorting.hpp"

#include <cstddef>
#include <string_view>

namespace qm {
namespace {

// Names are compared by their length as the platform counts it: UTF-16 code units.
std::size_t utf16Length(std::string_view text) {
  std::size_t length = 0;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if ((byte & 0xC0) != 0x80) ++length;  // a lead byte starts a code point
    if (byte >= 0xF0) ++length;           // beyond the BMP: a surrogate pair
  }
  return length;
}

}  // namespace

bool unitPrecedes(const QMUnit& a, const QMUnit& b, UnitSortOrder order) {
  switch (order) {
    case UnitSortOrder::kAscending:
      return a.ratioToMeter() < b.ratioToMeter();
    case UnitSortOrder::kAscendingThenShorterName:
      if (a.ratioToMeter() != b.ratioToMeter()) return a.ratioToMeter() < b.ratioToMeter();
      return utf16Length(a.name()) < utf16Length(b.name());
    case UnitSortOrder::kDescending:
      return a.ratioToMeter() > b.ratioToMeter();
  }
  return false;
}

}  // namespace qm
