// What the library's string tables hold: for translators' tools, and for the checks that keep
// every table complete.
//
// The English table is the list of keys: every key the library looks up has its English text
// there. Every other language's table should have the same keys, each with a text that keeps
// the placeholders of the English one (a translation may reorder numbered ones).
//
//   qm::StringCatalog::tableLanguage("fr_CA");         // "fr"
//   qm::StringCatalog::tableLanguage("it_IT");         // "en": Italian has no table
//   qm::StringCatalog::missingKeys("ja_JP");           // the English keys Japanese lacks
//   qm::StringCatalog::placeholders("%2$@ o %1$@");    // {"%1$@", "%2$@"}
//
// Thread-safe.

#ifndef QMCORE_STRINGS_STRINGCATALOG_HPP_
#define QMCORE_STRINGS_STRINGCATALOG_HPP_

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace qm {

class StringCatalog {
 public:
  // The languages that have a table, English first: "en", "de", "fr", "es", "ja".
  static std::vector<std::string_view> languages();

  // The keys of the English table, in the order of the table.
  static std::vector<std::string_view> keys();

  // The language whose table serves a locale: the locale's language when it has a table
  // ("de" for "de_AT"), else English, the language of the keys.
  static std::string_view tableLanguage(std::string_view localeIdentifier);

  // The text of `key` in the table of `language` ("fr"); none when that table lacks the key or
  // the language has no table.
  static std::optional<std::string_view> text(std::string_view key, std::string_view language);

  // The English keys that the table of the locale's own language lacks, in the order of the
  // English table. A language without a table lacks every key, even though its texts then
  // come from the English table.
  static std::vector<std::string_view> missingKeys(std::string_view localeIdentifier);

  // The placeholders of a format text, each written with its argument number ("%1$@", "%2$d")
  // and sorted, so that two texts that take the same arguments give the same list: "%@ or %@"
  // and "%2$@ o %1$@" both give {"%1$@", "%2$@"}. "%%" is no placeholder, nor is a "%" that
  // no conversion follows.
  static std::vector<std::string> placeholders(std::string_view format);
};

}  // namespace qm

#endif  // QMCORE_STRINGS_STRINGCATALOG_HPP_
