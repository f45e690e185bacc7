// The keys that the unit catalogs and unit systems hold as data, rather than as literals of a
// lookup, have a text in every table.

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "qmcore/strings/StringCatalog.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/UnitKinds.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

std::set<std::string> keysHeldByTheUnits() {
  std::set<std::string> keys = {std::string(QMHourTimeUnitAbbreviation),
                                std::string(QMMinuteTimeUnitLocalizationKey),
                                std::string(QMSecondTimeUnitAbbreviation)};
  for (const UnitKind& kind : unitKinds()) {
    for (const auto& unit : kind.builtinUnits({})) {
      keys.emplace(unit->name());
      keys.emplace(unit->abbreviation());
    }
  }
  for (std::int64_t code = 0; unitSystem(code) != nullptr; ++code) {
    const UnitSystem& system = *unitSystem(code);
    for (const std::string_view key :
         {system.nameKey, system.bigUnitPluralKey, system.bigUnitDistanceLeftKey,
          system.speedSpeechKey, system.paceUnitKey, system.smallUnitLongKey,
          system.smallUnitDistanceLeftKey}) {
      if (!key.empty()) keys.emplace(key);  // empty: the system has no such text
    }
    if (system.speedLabelIsLocalized) keys.emplace(system.speedLabel);
  }
  return keys;
}

TEST(UnitStringKeysTest, EveryKeyOfTheUnitsHasATextInEveryTable) {
  const std::set<std::string> keys = keysHeldByTheUnits();
  EXPECT_GT(keys.size(), 60u);  // every kind contributed
  for (const std::string_view language : StringCatalog::languages()) {
    for (const std::string& key : keys) {
      EXPECT_TRUE(StringCatalog::text(key, language).has_value())
          << "the " << language << " table lacks the unit key \"" << key << "\"";
    }
  }
}

}  // namespace
}  // namespace qm
