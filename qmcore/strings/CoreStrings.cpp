#include "qmcore/strings/CoreStrings.hpp"

#include <unordered_map>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/StringTables.hpp"

namespace qm {
namespace {

using Index = std::unordered_map<std::string_view, std::string_view>;

Index makeIndex(std::string_view language) {
  Index index;
  for (const internal::StringEntry& entry : internal::stringTable(language)) {
    index.emplace(entry.key, entry.text);
  }
  return index;
}

const Index* indexFor(std::string_view language) {
  static const Index english = makeIndex("en");
  static const Index german = makeIndex("de");
  if (language == "en") return &english;
  if (language == "de") return &german;
  return nullptr;
}

}  // namespace

std::string CoreStrings::CLSTRING(std::string_view key) {
  return CLSTRING(key, currentLocaleIdentifier());
}

std::string CoreStrings::CLSTRING(std::string_view key, std::string_view localeIdentifier) {
  for (const Index* index : {indexFor(languageOfLocale(localeIdentifier)), indexFor("en")}) {
    if (index == nullptr) continue;
    if (const auto it = index->find(key); it != index->end()) return std::string(it->second);
  }
  return std::string(key);
}

}  // namespace qm
