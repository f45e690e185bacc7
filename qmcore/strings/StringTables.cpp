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

}  // namespace

std::span<const StringEntry> stringTable(std::string_view language) {
  if (language == "en") return kEnglish;
  if (language == "de") return kGerman;
  return {};
}

}  // namespace qm::internal
