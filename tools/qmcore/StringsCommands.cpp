// qmcore strings: the library's texts in the current locale, or the keys its language's table
// lacks, for translators.

#include <memory>
#include <string>

#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/StringCatalog.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

void printTexts(const std::string& locale, const ToolContext& context) {
  for (const std::string_view key : StringCatalog::keys()) {
    Record(Record::Layout::kOneLine)
        .field("key", std::string(key))
        .field("text", CoreStrings::CLSTRING(key, locale))
        .print(context);
  }
}

void printMissingKeys(const std::string& locale, const ToolContext& context) {
  for (const std::string_view key : StringCatalog::missingKeys(locale)) {
    Record(Record::Layout::kOneLine).field("key", std::string(key)).print(context);
  }
}

}  // namespace

void addStringsCommands(CLI::App& app, ToolContext& context) {
  CLI::App* strings = app.add_subcommand(
      "strings",
      "Every key of the library's string tables with its text in the locale, a tab between "
      "them; with --missing, only the keys that the table of the locale's language lacks");
  auto missing = std::make_shared<bool>(false);
  strings->add_flag("--missing", *missing,
                    "List the untranslated keys instead (a language without a table lacks all)");
  strings->callback([missing, &context] {
    const std::string locale = currentLocaleIdentifier();
    if (*missing) {
      printMissingKeys(locale, context);
    } else {
      printTexts(locale, context);
    }
  });
}

}  // namespace qm::tool
