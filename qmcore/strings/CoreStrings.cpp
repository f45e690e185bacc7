#include "qmcore/strings/CoreStrings.hpp"

#include <unordered_map>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/StringCatalog.hpp"
#include "qmcore/strings/StringTables.hpp"

namespace qm {
namespace {

using Index = std::unordered_map<std::string_view, std::string_view>;
using Indexes = std::unordered_map<std::string_view, Index>;

Indexes makeIndexes() {
  Indexes indexes;
  for (const std::string_view language : internal::tableLanguages()) {
    Index& index = indexes[language];
    for (const internal::StringEntry& entry : internal::stringTable(language)) {
      index.emplace(entry.key, entry.text);
    }
  }
  return indexes;
}

}  // namespace

std::string CoreStrings::CLSTRING(std::string_view key) {
  return CLSTRING(key, currentLocaleIdentifier());
}

std::string CoreStrings::CLSTRING(std::string_view key, std::string_view localeIdentifier) {
  // Built once and never changed, so that concurrent lookups need no lock.
  static const Indexes indexes = makeIndexes();
  const Index& index = indexes.at(StringCatalog::tableLanguage(localeIdentifier));
  if (const auto it = index.find(key); it != index.end()) return std::string(it->second);
  return std::string(key);
}

}  // namespace qm
