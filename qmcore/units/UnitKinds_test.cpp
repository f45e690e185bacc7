#include "qmcore/units/UnitKinds.hpp"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

TEST(UnitKinds, EachKindHoldsOnlyUnitsOfItsSubjectWithDistinctIdentifiers) {
  std::set<QMMeasurementSubject> subjects;
  for (const UnitKind& kind : unitKinds()) {
    EXPECT_TRUE(subjects.insert(kind.subject).second) << kind.name;
    EXPECT_EQ(unitKindNamed(kind.name), &kind);
    EXPECT_EQ(unitKindForSubject(kind.subject), &kind);
    std::set<std::string> uuids;
    const UnitList units = sortedBuiltinUnits(kind);
    ASSERT_FALSE(units.empty()) << kind.name;
    for (size_t i = 0; i < units.size(); ++i) {
      EXPECT_EQ(units[i]->subject(), kind.subject) << units[i]->uuid();
      EXPECT_TRUE(uuids.insert(std::string(units[i]->uuid())).second) << units[i]->uuid();
      if (i > 0) {
        EXPECT_FALSE(unitPrecedes(*units[i], *units[i - 1], kind.sortOrder));
      }
    }
  }
  EXPECT_EQ(unitKindNamed("heading"), nullptr);
}

TEST(UnitKinds, LookupByIdentifierOrAbbreviationAndConversion) {
  const UnitList lengths = unitKindNamed("length")->builtinUnits({});
  EXPECT_EQ(unitsNamed(lengths, ".length-foot").size(), 1u);
  EXPECT_EQ(unitsNamed(lengths, "ft").size(), 1u);
  EXPECT_TRUE(unitsNamed(lengths, "Foot").empty()) << "names are not abbreviations";
  EXPECT_EQ(unitsNamed(unitKindNamed("altitude")->builtinUnits({}), "m").size(), 1u);

  const auto celsius = QMTemperatureUnit::celsiusUnit();
  const auto fahrenheit = QMTemperatureUnit::farenheitUnit();
  EXPECT_EQ(convertBetweenUnits(36.6, *celsius, *fahrenheit), 98.0) << "offset, then rounded";
  EXPECT_EQ(convertBetweenUnits(1.0, *unitsNamed(lengths, "ft")[0], *unitsNamed(lengths, "m")[0]),
            0.30479999);
}

TEST(UnitSystems, RowsAreIndexedByTheirCodes) {
  for (std::int64_t code = -1; code <= 4; ++code) {
    const UnitSystem* system = unitSystem(code);
    if (code < 0 || code > 3) {
      EXPECT_EQ(system, nullptr) << code;
      continue;
    }
    ASSERT_NE(system, nullptr) << code;
    EXPECT_EQ(system->code, code);
    // Only metres and feet are small distance unit types.
    EXPECT_EQ(system->isSmallDistanceUnitType, code <= 1) << code;
  }
  EXPECT_TRUE(isNauticalSystem(2));
  EXPECT_FALSE(isNauticalSystem(3));
}

}  // namespace
}  // namespace qm
