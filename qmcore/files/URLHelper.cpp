#include "qmcore/files/URLHelper.hpp"

namespace qm {

std::optional<std::string> URLHelper::valueOf(std::string_view name,
                                              const URLComponents& components) {
  const std::optional<std::vector<URLQueryItem>> items = components.queryItems();
  if (!items.has_value()) return std::nullopt;
  for (const URLQueryItem& item : *items) {
    if (item.name == name) return item.value;
  }
  return std::nullopt;
}

}  // namespace qm
