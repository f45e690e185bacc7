#include "qmcore/strings/StringTables.hpp"

namespace qm::internal {
namespace {

// One fragment per subsystem, so that each keeps its texts beside the others of its language.
constexpr StringEntry kEnglish[] = {
#include "qmcore/strings/tables/en/files.inc"
#include "qmcore/strings/tables/en/formatting.inc"
#include "qmcore/strings/tables/en/geo.inc"
#include "qmcore/strings/tables/en/persistence.inc"
#include "qmcore/strings/tables/en/provider.inc"
#include "qmcore/strings/tables/en/units.inc"
};

constexpr StringEntry kGerman[] = {
#include "qmcore/strings/tables/de/files.inc"
#include "qmcore/strings/tables/de/formatting.inc"
#include "qmcore/strings/tables/de/geo.inc"
#include "qmcore/strings/tables/de/persistence.inc"
#include "qmcore/strings/tables/de/provider.inc"
#include "qmcore/strings/tables/de/units.inc"
};

constexpr StringEntry kFrench[] = {
#include "qmcore/strings/tables/fr/files.inc"
#include "qmcore/strings/tables/fr/formatting.inc"
#include "qmcore/strings/tables/fr/geo.inc"
#include "qmcore/strings/tables/fr/persistence.inc"
#include "qmcore/strings/tables/fr/provider.inc"
#include "qmcore/strings/tables/fr/units.inc"
};

constexpr StringEntry kSpanish[] = {
#include "qmcore/strings/tables/es/files.inc"
#include "qmcore/strings/tables/es/formatting.inc"
#include "qmcore/strings/tables/es/geo.inc"
#include "qmcore/strings/tables/es/persistence.inc"
#include "qmcore/strings/tables/es/provider.inc"
#include "qmcore/strings/tables/es/units.inc"
};

constexpr StringEntry kJapanese[] = {
#include "qmcore/strings/tables/ja/files.inc"
#include "qmcore/strings/tables/ja/formatting.inc"
#include "qmcore/strings/tables/ja/geo.inc"
#include "qmcore/strings/tables/ja/persistence.inc"
#include "qmcore/strings/tables/ja/provider.inc"
#include "qmcore/strings/tables/ja/units.inc"
};

constexpr std::string_view kLanguages[] = {"en", "de", "fr", "es", "ja"};

}  // namespace

std::span<const std::string_view> tableLanguages() { return kLanguages; }

std::span<const StringEntry> stringTable(std::string_view language) {
  if (language == "en") return kEnglish;
  if (language == "de") return kGerman;
  if (language == "fr") return kFrench;
  if (language == "es") return kSpanish;
  if (language == "ja") return kJapanese;
  return {};
}

}  // namespace qm::internal
