// The compiled-in string tables behind CoreStrings (internal to the library).

#ifndef QMCORE_STRINGS_STRINGTABLES_HPP_
#define QMCORE_STRINGS_STRINGTABLES_HPP_

#include <span>
#include <string_view>

namespace qm::internal {

struct StringEntry {
  std::string_view key;
  std::string_view text;
};

// The languages that have a table, English (the language of the keys) first.
std::span<const std::string_view> tableLanguages();

// The entries of the table for a language ("en", "fr"); empty for a language without a table.
std::span<const StringEntry> stringTable(std::string_view language);

}  // namespace qm::internal

#endif  // QMCORE_STRINGS_STRINGTABLES_HPP_
