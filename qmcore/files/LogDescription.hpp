// How the log facade shows a value of any type: the stand-in for the language's default
// description of a value.
//
//   qm::logDescription(std::string("ready"));   // "ready"
//   qm::logDescription(2.5);                     // "2.5" (shortest text that reads back)
//   qm::logDescription(true);                    // "true"
//   qm::logDescription(std::optional<int>());    // "nil"
//
// Texts are shown as they are; numbers in invariant form ("." as decimal separator, no
// grouping); an optional as its value or "nil"; an error as its description; any other type
// that can be written to a std::ostream as what it writes, and anything else as "<value>".

#ifndef QMCORE_FILES_LOGDESCRIPTION_HPP_
#define QMCORE_FILES_LOGDESCRIPTION_HPP_

#include <charconv>
#include <concepts>
#include <optional>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

#include "qmcore/platform/Error.hpp"

namespace qm {

namespace internal {

template <typename T>
struct IsOptional : std::false_type {};
template <typename T>
struct IsOptional<std::optional<T>> : std::true_type {};

template <typename T>
concept Streamable = requires(std::ostream& out, const T& value) {
  out << value;
};

}  // namespace internal

template <typename T>
std::string logDescription(const T& value) {
  if constexpr (std::is_same_v<T, bool>) {
    return value ? "true" : "false";
  } else if constexpr (std::is_pointer_v<T> && std::is_convertible_v<T, const char*>) {
    return value == nullptr ? "nil" : std::string(value);
  } else if constexpr (std::is_convertible_v<const T&, std::string_view>) {
    return std::string(std::string_view(value));
  } else if constexpr (std::is_same_v<T, char>) {
    return std::string(1, value);
  } else if constexpr (std::is_arithmetic_v<T>) {
    char buffer[64];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    return std::string(buffer, result.ptr);
  } else if constexpr (internal::IsOptional<T>::value) {
    return value.has_value() ? logDescription(*value) : std::string("nil");
  } else if constexpr (std::is_same_v<T, Error>) {
    return value.localizedDescription();
  } else if constexpr (internal::Streamable<T>) {
    std::ostringstream out;
    out << value;
    return out.str();
  } else {
    return "<value>";
  }
}

}  // namespace qm

#endif  // QMCORE_FILES_LOGDESCRIPTION_HPP_
