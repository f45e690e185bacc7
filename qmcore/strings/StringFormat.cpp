#include "qmcore/strings/StringFormat.hpp"

namespace qm {

std::string formatLocalized(std::string_view format,
                            std::initializer_list<std::string_view> arguments) {
  const auto argument = [&](size_t index) {
    return index < arguments.size() ? *(arguments.begin() + index) : std::string_view();
  };
  std::string result;
  result.reserve(format.size() + 16 * arguments.size());
  size_t next = 0;  // the argument of the next unnumbered placeholder
  for (size_t i = 0; i < format.size(); ++i) {
    const std::string_view rest = format.substr(i);
    if (rest.starts_with("%@")) {
      result += argument(next++);
      ++i;
    } else if (rest.starts_with("%%")) {
      result += '%';
      ++i;
    } else if (rest.size() >= 4 && rest[0] == '%' && rest[1] >= '1' && rest[1] <= '9' &&
               rest.substr(2, 2) == "$@") {
      result += argument(static_cast<size_t>(rest[1] - '1'));
      i += 3;
    } else {
      result += format[i];
    }
  }
  return result;
}

}  // namespace qm
