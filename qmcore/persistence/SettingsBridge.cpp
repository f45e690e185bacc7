#include "qmcore/persistence/SettingsBridge.hpp"

namespace qm::internal {

std::optional<double> storedNumber(const SettingsValue& object) {
  if (const bool* b = object.get<bool>()) return *b ? 1.0 : 0.0;
  if (const std::int64_t* i = object.get<std::int64_t>()) {
    // Only an integer that the double holds exactly, checked in integers: beyond 2^53 the
    // widening rounds. 2^63, the rounding of the largest integers, is outside the 64-bit range
    // and is not converted back.
    const auto widened = static_cast<double>(*i);
    if (widened >= 9223372036854775808.0 || static_cast<std::int64_t>(widened) != *i) {
      return std::nullopt;
    }
    return widened;
  }
  if (const double* d = object.get<double>()) return *d;
  return std::nullopt;
}

std::optional<std::int64_t> exactInteger(const SettingsValue& object) {
  if (const bool* b = object.get<bool>()) return *b ? 1 : 0;
  if (const std::int64_t* i = object.get<std::int64_t>()) return *i;
  if (const double* d = object.get<double>()) {
    // Whole numbers inside the 64-bit range (2^63 itself is outside).
    if (*d >= -9223372036854775808.0 && *d < 9223372036854775808.0 && *d == std::trunc(*d)) {
      return static_cast<std::int64_t>(*d);
    }
  }
  return std::nullopt;
}

}  // namespace qm::internal
