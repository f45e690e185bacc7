#include <gtest/gtest.h>

#include <cmath>
#include <set>
#include <string>
#include <vector>

#include "qmcore/strings/StringCatalog.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/QMUnitConversions.hpp"
#include "qmcore/units/QMUnitSorting.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"
#include "qmcore/units/UnitKinds.hpp"
#include "qmcore/units/UnitSystems.hpp"

namespace qm {
namespace {

// Units made here: with the same factor to exercise the tie rules, or with an identifier that is
// no constant of the registry.
class NamedUnit : public QMUnit {
 public:
  NamedUnit(std::string_view uuid, std::string_view name, double factor) {
    define({.uuid = uuid, .name = name, .abbreviation = name, .ratioToMeter = factor});
  }
};

// Rules every kind's catalog keeps, so that a new unit cannot break a screen or a stored
// choice: identifiers are unique constants that find their unit again, the list keeps its kind's
// order, a unit switches (by default only if it can) to a bigger unit of its own kind at a
// positive value, and the formatter shows the unit's decimals.
TEST(UnitCatalogs, EveryCatalogKeepsTheRules) {
  std::set<std::string_view> identifiers;
  std::set<QMMeasurementSubject> subjects;
  for (const UnitKind& kind : unitKinds()) {
    EXPECT_TRUE(subjects.insert(kind.subject).second) << kind.name;
    EXPECT_EQ(unitKindNamed(kind.name), &kind);
    EXPECT_EQ(unitKindForSubject(kind.subject), &kind);
    const UnitList units = kind.builtinUnits({});
    ASSERT_FALSE(units.empty()) << kind.name;
    const UnitList again = kind.builtinUnits({});
    const UnitList sorted = sortedBuiltinUnits(kind);
    for (size_t i = 1; i < sorted.size(); ++i) {
      EXPECT_FALSE(unitPrecedes(*sorted[i], *sorted[i - 1], kind.sortOrder)) << sorted[i]->uuid();
    }
    for (size_t i = 0; i < units.size(); ++i) {
      const QMUnit& unit = *units[i];
      EXPECT_TRUE(identifiers.insert(unit.uuid()).second) << unit.uuid();
      EXPECT_NE(units[i], again[i]) << "each factory call makes a new unit";
      EXPECT_TRUE(isSameConstant(unit.uuid(), again[i]->uuid())) << unit.uuid();
      const UnitList found = unitsNamed(units, unit.uuid());
      EXPECT_TRUE(found.size() == 1 && found[0] == units[i]) << unit.uuid();
      EXPECT_EQ(unit.subject(), kind.subject) << unit.uuid();
      EXPECT_EQ(unit.formatter().options(),
                NumberFormatter::withDecimals(unit.numberOfDecimalPlaces()).options())
          << unit.uuid();
      EXPECT_TRUE(unit.canSwitchToUnit() || !unit.switchToBiggerUnitByDefault()) << unit.uuid();
      if (const auto& bigger = unit.canSwitchToUnit()) {
        EXPECT_GT(bigger->ratioToMeter(), unit.ratioToMeter()) << unit.uuid();
        EXPECT_GT(unit.unitSwitchesAtValue(), 0) << unit.uuid();
        EXPECT_EQ(unitsNamed(units, bigger->uuid()).size(), 1u) << unit.uuid() << " switches out";
      }
    }
  }
  EXPECT_EQ(unitKindNamed("heading"), nullptr);
  EXPECT_TRUE(isSameConstant(QMLengthUnit::footUnit()->uuid(), QMFootUnitUuid));
  EXPECT_TRUE(isSameConstant(QMTimeUnit::second()->uuid(), QMSecondTimeUnitUuid));
}

// The deliberately rounded factors above all: a "fix" to the exact international foot or mile
// would change every stored track's texts. One row per kind of factor.
TEST(UnitCatalogs, FactorsAreExactlyTheCatalogs) {
  const struct {
    std::shared_ptr<const QMUnit> unit;
    double factor;
  } cases[] = {
      {QMLengthUnit::footUnit(), 0.30479999},                              // rounded
      {QMDistanceUnit::footUnit(), 0.30479999},                            // rounded
      {QMAltitudeUnit::footUnit(), 0.3048},                                // exact
      {QMAreaUnit::tsuboUnit(), 3.306},                                    // rounded
      {QMSpeedUnit::mphUnit(), 1.60934},                                   // rounded
      {QMVerticalSpeedUnit::metersPerMinuteUnit(), 1.0 / 60},              // a division
      {QMVerticalSpeedUnit::feetPerMinuteUnit(), 1.0 / (3.28084 * 60.0)},  // rounded feet
      {QMPressureUnit::inHgUnit(), 33.8638815767},                         // rounded
      {QMTemperatureUnit::farenheitUnit(), 10},  // °F: converted with its offset instead
  };
  for (const auto& c : cases) EXPECT_EQ(c.unit->ratioToMeter(), c.factor) << c.unit->uuid();
}

TEST(QMUnitConversions, UnitValuesGoThroughTheFactorsInOrder) {
  const auto foot = QMLengthUnit::footUnit();
  const auto meter = QMLengthUnit::meterUnit();
  const auto inch = QMLengthUnit::inchUnit();
  EXPECT_EQ(QMConvertUnitValue(*foot, *meter, 1.0), 0.30479999);
  EXPECT_EQ(QMConvertUnitValue(*inch, *foot, 3.0), 0.0254 * 3.0 / 0.30479999);  // multiplied first
  EXPECT_EQ(QMConvertToMetricValue(*QMLengthUnit::mileUnit(), 2.0), 3218.688);
  EXPECT_EQ(QMConvertMetricValue(*inch, 1.0), 1.0 / 0.0254);

  const QMUnit zero;
  EXPECT_TRUE(std::isinf(QMConvertUnitValue(*meter, zero, 1.0)));
  EXPECT_TRUE(std::isnan(QMConvertMetricValue(zero, 0.0)));

  // Units named by identifier or abbreviation (not by name) within a kind.
  const UnitList lengths = unitKindNamed("length")->builtinUnits({});
  EXPECT_TRUE(unitsNamed(lengths, "Foot").empty());
  ASSERT_EQ(unitsNamed(lengths, "ft").size(), 1u);
  EXPECT_EQ(convertBetweenUnits(1.0, *unitsNamed(lengths, "ft")[0],
                                *unitsNamed(lengths, ".length-meter")[0]),
            0.30479999);
}

// Only Celsius to Fahrenheit is rounded, half away from zero.
TEST(QMUnitConversions, TemperaturesByTheTextOfTheirIdentifiers) {
  const auto c = QMTemperatureUnit::celsiusUnit();
  const auto f = QMTemperatureUnit::farenheitUnit();
  const struct {
    double value;
    const QMUnit& from;
    const QMUnit& to;
    double expected;
  } cases[] = {
      {36.6, *c, *f, 98.0},   // 97.88
      {-22.5, *c, *f, -9.0},  // -8.5: away from zero, not up
      {98.0, *f, *c, (98.0 - 32.0) * 5.0 / 9.0},
  };
  for (const auto& t : cases) {
    EXPECT_EQ(QMTemperatureUnit::convertTemperature(t.value, t.from, t.to), t.expected)
        << t.value << " " << t.from.uuid() << " -> " << t.to.uuid();
  }
  EXPECT_EQ(convertBetweenUnits(36.6, *c, *f), 98.0) << "by kind: the offset, then rounded";

  // A unit whose identifier is not the registry's constant but has its text counts as Celsius.
  const std::string text = ".temperature-c";
  const NamedUnit copy(text, "°C", 10);
  EXPECT_FALSE(isSameConstant(copy.uuid(), UnitsUuid::QMCelsiusUnitUuid));
  EXPECT_EQ(QMTemperatureUnit::convertTemperature(36.6, copy, *f), 98.0);
  EXPECT_EQ(QMTemperatureUnit::convertTemperature(36.6, copy, *c), 36.6);
}

// The unit systems' big units per kilometre and speed divisors are rounded literals, not the
// catalogs' factors.
TEST(QMUnitConversions, KiloValuesAndSpeedsUseTheRoundedLiterals) {
  const struct {
    std::int64_t from;
    std::int64_t to;
    double expected;
  } cases[] = {
      {3, 3, 10.0},  // the same type wins before validity
      {1, 0, 10.0 / 0.62137},
      {1, 2, (10.0 * 0.5399568) / 0.62137},
      {3, 0, 0.0},  // no big units per kilometre
      {-1, 1, 0.0},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMConvertKiloValue(c.from, c.to, 10.0), c.expected) << c.from << "->" << c.to;
  }

  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(0, 36.0), 10.0);
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(1, 10.0), 10.0 * 1000.0 / 2236.932);
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(3, 10.0), -1.0);  // no divisor
  EXPECT_EQ(QMCalculateMetricSpeedForKilometric(5, 36.0), -1.0);
}

// Distances switch at the host's values; the provider applies a stored vertical speed scale on
// a copy of the catalog unit.
TEST(UnitCatalogs, UnitsKeepTheSwitchValuesAndScalesTheyAreMadeWith) {
  const DistanceSwitchValues host{.feet = 3000, .meters = 1500};
  EXPECT_EQ(QMDistanceUnit::meterUnit(host)->unitSwitchesAtValue(), 1500);
  EXPECT_EQ(QMDistanceUnit::defaultForUnitType(2, 1, host)->unitSwitchesAtValue(), 3000);
  const auto feetPerMinute = QMVerticalSpeedUnit::feetPerMinuteUnit();
  const auto scaled = feetPerMinute->withScale(3);
  EXPECT_EQ(scaled->scale(), 3);
  EXPECT_EQ(scaled->uuid().data(), feetPerMinute->uuid().data());
  EXPECT_EQ(scaled->availableScales(), (std::vector<int>{1, 2, 3}));
  EXPECT_EQ(feetPerMinute->scale(), 1) << "the original is unchanged";
  EXPECT_EQ(QMVerticalSpeedUnit::metersPerSecondUnit()->scale(), -1);
}

TEST(UnitCatalogs, EqualFactorsByNameLengthInUtf16OrStable) {
  const std::vector<std::shared_ptr<const QMUnit>> units = {
      std::make_shared<NamedUnit>("a", "Longer", 2.0),
      std::make_shared<NamedUnit>("b", "尺尺尺尺尺", 2.0),  // 5 code units, 15 bytes
      std::make_shared<NamedUnit>("c", "Big", 3.0),
      std::make_shared<NamedUnit>("d", "Mid", 2.0),
      std::make_shared<NamedUnit>("e", "\U0001F600\U0001F600\U0001F600", 2.0),  // 6 code units
  };
  const struct {
    UnitSortOrder order;
    const char* expected;
  } cases[] = {
      {UnitSortOrder::kAscendingThenShorterName, "dbaec"},
      {UnitSortOrder::kAscending, "abdec"},
      {UnitSortOrder::kDescending, "cabde"},
  };
  for (const auto& c : cases) {
    std::string order;
    for (const auto& unit : sortedUnits(units, c.order)) order += unit->uuid();
    EXPECT_EQ(order, c.expected);
  }
}

// Unit systems 0 metric, 1 imperial, 2 nautical (small units by the nautical preference) and 3;
// any other code has defaults of its own.
TEST(UnitCatalogs, DefaultsByUnitSystem) {
  const struct {
    std::shared_ptr<const QMUnit> unit;
    std::string_view expected;
  } cases[] = {
      {QMLengthUnit::defaultForDistanceUnitType(0), ".length-meter"},
      {QMAreaUnit::defaultForDistanceUnitType(2), ".area-squarefoot"},
      {QMSpeedUnit::defaultForDistanceUnitType(2), ".speed-knot"},
      {QMVerticalSpeedUnit::defaultForDistanceUnitType(0), ".vspeed-m/s"},
      {QMPressureUnit::defaultForDistanceUnitType(2), ".pressure-inHg"},
      {QMTemperatureUnit::defaultForDistanceUnitType(1), ".temperature-f"},
      {QMTemperatureUnit::defaultForDistanceUnitType(4), ".temperature-c"},
      {QMDistanceUnit::defaultForUnitType(2, 0), ".distance-meter"},
      {QMDistanceUnit::defaultForUnitType(2, 7), ".distance-foot"},
      {QMAltitudeUnit::defaultForUnitType(2, 1), ".altitude-foot"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.unit->uuid(), c.expected);
  EXPECT_EQ(unitSystem(-1), nullptr);
  EXPECT_EQ(unitSystem(4), nullptr);
  for (std::int64_t code = 0; code <= 3; ++code) EXPECT_EQ(unitSystem(code)->code, code);
  EXPECT_TRUE(isNauticalSystem(2));
  EXPECT_FALSE(isNauticalSystem(3));
}

TEST(UnitCatalogs, SubjectNames) {
  const struct {
    std::string (*name)();
    const char* english;
  } cases[] = {
      {QMLengthUnit::localizedSubjectName, "distance"},
      {QMAreaUnit::localizedSubjectName, "area"},  // lower-cased from the table's "Area"
      {QMVerticalSpeedUnit::localizedSubjectName, "vertical speed"},
      {QMPressureUnit::localizedSubjectName, "pressure"},
      {QMTemperatureUnit::localizedSubjectName, "temperature"},
      {QMTimeUnit::localizedDurationName, "duration"},
      {QMTimeUnit::localizedHourAbbreviation, "h"},
      {QMTimeUnit::localizedMinuteAbbreviation, "m"},
      {QMTimeUnit::localizedSecondAbbreviation, "s"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.name(), c.english);
}

// The keys that the catalogs and unit systems hold as data, rather than as literals of a
// lookup, have an English text; the string tests hold every table to the English keys.
TEST(UnitCatalogs, EveryKeyOfTheUnitsHasATextInEveryTable) {
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
  EXPECT_GT(keys.size(), 60u);  // every kind contributed
  for (const std::string& key : keys)
    EXPECT_TRUE(StringCatalog::text(key, "en").has_value()) << key;
}

}  // namespace
}  // namespace qm
