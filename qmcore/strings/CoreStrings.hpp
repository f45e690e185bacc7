// The library's own string tables and their lookup.
//
// Every localised text of the library goes through `CoreStrings::CLSTRING`: the argument is a
// key, usually the English text itself ("Meters", "Always keep as %@") or an identifier
// ("m_minute", "TrueNorthFirstLetter"); the result is the text of the current locale's
// language. The tables are compiled into the library: English, German, French, Spanish and
// Japanese. As on the phone platform, a regional locale uses its language's table (fr_CA the
// French one), a language without a table uses the English one, and a key that the chosen
// table lacks comes back unchanged: an untranslated text reads as its key, never as another
// language's text. StringCatalog.hpp tells which keys a table lacks.
//
//   qm::setCurrentLocaleIdentifier("de_AT");
//   qm::CoreStrings::CLSTRING("Meters");    // "Meter"
//   qm::CoreStrings::CLSTRING("no such");   // "no such"
//
// Thread-safe.

#ifndef QMCORE_STRINGS_CORESTRINGS_HPP_
#define QMCORE_STRINGS_CORESTRINGS_HPP_

#include <string>
#include <string_view>

namespace qm {

class CoreStrings {
 public:
  // The text for `key` in the current locale; the key itself when no table has it.
  static std::string CLSTRING(std::string_view key);

  // The same for an explicit locale identifier ("de_DE"), whatever the current locale is.
  static std::string CLSTRING(std::string_view key, std::string_view localeIdentifier);

  // Key of the date-and-time pattern of day, month, year, hour and minute.
  static constexpr std::string_view defaultDayMonthYearHourMinuteFormat = "ddMMMyy HH:mm";
};

}  // namespace qm

#endif  // QMCORE_STRINGS_CORESTRINGS_HPP_
