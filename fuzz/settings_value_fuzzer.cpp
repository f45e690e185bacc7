// The decoder of stored settings values reads bytes from files that may be damaged or written
// by another version: it must never crash, and what it accepts must encode to bytes that
// decode to a value with the same encoding (a second round trip changes nothing).

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <span>
#include <vector>

#include "qmcore/platform/internal/SettingsValueCoding.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::optional<qm::SettingsValue> value =
      qm::internal::decodeSettingsValue(std::span(data, size));
  if (!value) return 0;
  const std::vector<std::uint8_t> encoded = qm::internal::encodeSettingsValue(*value);
  const std::optional<qm::SettingsValue> again = qm::internal::decodeSettingsValue(encoded);
  if (!again) {
    std::fprintf(stderr, "the encoding of a decoded value does not decode\n");
    std::abort();
  }
  if (qm::internal::kindOf(*again) != qm::internal::kindOf(*value) ||
      qm::internal::encodeSettingsValue(*again) != encoded) {
    std::fprintf(stderr, "a decoded value changes on a second round trip\n");
    std::abort();
  }
  return 0;
}
