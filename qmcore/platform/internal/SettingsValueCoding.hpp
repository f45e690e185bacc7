// How settings values are kept in a database row: a kind code, and for arrays and
// dictionaries a self-describing binary encoding (CBOR in which every value is a pair of its
// kind code and its payload, so that nested values keep their kinds exactly: a bool stays a
// bool, 1.0 stays a double, a date stays a date).
//
// Kind codes are stored in files: never renumber them, only add new ones.

#ifndef QMCORE_PLATFORM_INTERNAL_SETTINGSVALUECODING_HPP_
#define QMCORE_PLATFORM_INTERNAL_SETTINGSVALUECODING_HPP_

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "qmcore/platform/SettingsStore.hpp"

namespace qm::internal {

enum class SettingsKind : std::int64_t {
  kBool = 0,
  kInteger = 1,
  kDouble = 2,
  kString = 3,
  kBytes = 4,
  kDate = 5,
  kArray = 6,
  kDictionary = 7,
};

SettingsKind kindOf(const SettingsValue& value);

// The encoding of `value` (of any kind) in the self-describing form.
std::vector<std::uint8_t> encodeSettingsValue(const SettingsValue& value);

// The deepest nesting of CBOR containers that `decodeSettingsValue` reads. Each array or
// dictionary level of a value takes two (its kind pair and its payload) and the innermost
// value one, so values nested up to 255 arrays or dictionaries deep read back.
inline constexpr std::size_t kMaxEncodedNesting = 512;

// The value encoded in `bytes`, or absent when they are not a well-formed encoding (damaged,
// written by a later version with kinds this one does not know, or nested deeper than
// `kMaxEncodedNesting`). Never throws, whatever the bytes: the file may hold anything.
std::optional<SettingsValue> decodeSettingsValue(std::span<const std::uint8_t> bytes);

}  // namespace qm::internal

#endif  // QMCORE_PLATFORM_INTERNAL_SETTINGSVALUECODING_HPP_
