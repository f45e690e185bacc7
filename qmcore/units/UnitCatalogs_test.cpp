// The built-in catalogs of every unit class: their exact factors, identifiers, defaults and
// the rules every catalog keeps.

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMTimeUnit.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"
#include "qmcore/units/UnitKinds.hpp"

namespace qm {
namespace {

// Factors the apps depend on exactly, the deliberately rounded ones above all: a "fix" to the
// exact international foot or mile would change every stored track's texts.
TEST(UnitCatalogs, FactorsAreExactlyTheCatalogs) {
  const struct {
    std::shared_ptr<const QMUnit> unit;
    double factor;
  } cases[] = {
      {QMLengthUnit::builtinUnits()[2], 0.30479999},                     // foot, rounded
      {QMDistanceUnit::builtinUnits()[0], 0.30479999},                   // foot, rounded
      {QMAltitudeUnit::builtinUnits()[0], 0.3048},                       // foot, exact
      {QMLengthUnit::builtinUnits()[1], 0.303},                          // shaku
      {QMLengthUnit::builtinUnits()[3], 0.3248406},                      // French foot
      {QMAreaUnit::builtinUnits()[1], 3.306},                            // tsubo
      {QMAreaUnit::builtinUnits()[8], 4046.8564224},                     // acre
      {QMSpeedUnit::builtinUnits()[1], 1.60934},                         // mph, rounded
      {QMSpeedUnit::builtinUnits()[2], 1.852},                           // knot
      {QMVerticalSpeedUnit::builtinUnits()[1], 1.0 / 60},                // m/min
      {QMVerticalSpeedUnit::builtinUnits()[2], 1.0 / (3.28084 * 60.0)},  // ft/min
      {QMPressureUnit::builtinUnits()[1], 33.8638815767},                // inHg
      {QMTemperatureUnit::builtinUnits()[1], 10},  // °F: converted with its offset instead
  };
  for (const auto& c : cases) EXPECT_EQ(c.unit->ratioToMeter(), c.factor) << c.unit->uuid();
}

// Rules every kind's catalog keeps, so that a new unit cannot break a screen: identifiers are
// unique, a unit switches only to a bigger unit of its own kind and at a positive value, and the
// number formatter shows the unit's decimals.
TEST(UnitCatalogs, EveryCatalogKeepsTheRules) {
  std::set<std::string_view> identifiers;
  for (const UnitKind& kind : unitKinds()) {
    const UnitList units = kind.builtinUnits({});
    ASSERT_FALSE(units.empty()) << kind.name;
    for (const auto& unit : units) {
      EXPECT_TRUE(identifiers.insert(unit->uuid()).second) << unit->uuid();
      EXPECT_FALSE(unit->name().empty()) << unit->uuid();
      EXPECT_FALSE(unit->abbreviation().empty()) << unit->uuid();
      EXPECT_EQ(unit->subject(), kind.subject) << unit->uuid();
      EXPECT_EQ(unit->formatter().options(),
                NumberFormatter::withDecimals(unit->numberOfDecimalPlaces()).options())
          << unit->uuid();
      if (const auto& bigger = unit->canSwitchToUnit()) {
        EXPECT_GT(bigger->ratioToMeter(), unit->ratioToMeter()) << unit->uuid();
        EXPECT_GT(unit->unitSwitchesAtValue(), 0) << unit->uuid();
        EXPECT_FALSE(unitsNamed(units, bigger->uuid()).empty())
            << unit->uuid() << " switches outside its kind";
      }
    }
  }
}

TEST(UnitCatalogs, VerticalSpeedScales) {
  const struct {
    std::shared_ptr<const QMVerticalSpeedUnit> unit;
    int defaultScale;
    std::vector<int> scales;
  } cases[] = {
      {QMVerticalSpeedUnit::metersPerSecondUnit(), -1, {-1, 0, 1}},
      {QMVerticalSpeedUnit::metersPerMinuteUnit(), 1, {1, 2, 3}},
      {QMVerticalSpeedUnit::feetPerMinuteUnit(), 1, {1, 2, 3}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.unit->defaultScale(), c.defaultScale) << c.unit->uuid();
    EXPECT_EQ(c.unit->scale(), c.defaultScale) << c.unit->uuid();
    EXPECT_EQ(c.unit->availableScales(), c.scales) << c.unit->uuid();
  }
  // The provider applies a stored scale on a copy of the catalog unit.
  const auto scaled = cases[2].unit->withScale(3);
  EXPECT_EQ(scaled->scale(), 3);
  EXPECT_EQ(scaled->uuid().data(), cases[2].unit->uuid().data());
  EXPECT_EQ(scaled->availableScales(), cases[2].unit->availableScales());
  EXPECT_EQ(cases[2].unit->scale(), 1) << "the original is unchanged";
}

template <typename Unit>
void expectConstants(const std::vector<std::shared_ptr<const Unit>>& units,
                     std::vector<std::string_view> constants) {
  ASSERT_EQ(units.size(), constants.size());
  for (std::size_t i = 0; i < units.size(); ++i) {
    EXPECT_TRUE(isSameConstant(units[i]->uuid(), constants[i])) << units[i]->uuid();
    EXPECT_NE(units[i], Unit::builtinUnits()[i]) << "each factory call makes a new unit";
  }
}

TEST(UnitCatalogs, IdentifiersAreTheExportedConstants) {
  expectConstants(
      QMLengthUnit::builtinUnits(),
      {QMInchUnitUuid, QMShakuUnitUuid, QMFootUnitUuid, QMFrenchFootUnitUuid, QMYardUnitUuid,
       QMMeterUnitUuid, QMKilometerUnitUuid, QMMileUnitUuid, QMNauticalMileUnitUuid});
  expectConstants(QMDistanceUnit::builtinUnits(),
                  {QMFootDistanceUnitUuid, QMMeterDistanceUnitUuid, QMKilometerDistanceUnitUuid,
                   QMMileDistanceUnitUuid, QMNauticalMileDistanceUnitUuid});
  expectConstants(QMAreaUnit::builtinUnits(),
                  {QMSquareMeterUnitUuid, QMTsuboUnitUuid, QMAreUnitUuid, QMSquareKilometerUnitUuid,
                   QMDecareUnitUuid, QMHectareUnitUuid, QMSquareFootUnitUuid, QMSquareYardUnitUuid,
                   QMAcreUnitUuid, QMSquareMileUnitUuid});
  expectConstants(QMSpeedUnit::builtinUnits(),
                  {QMKmhSpeedUnitUuid, QMMphSpeedUnitUuid, QMKnotSpeedUnitUuid});
  expectConstants(QMVerticalSpeedUnit::builtinUnits(),
                  {QMMetersPerSecondVerticalSpeedUnitUuid, QMMetersPerMinuteVerticalSpeedUnitUuid,
                   QMFeetPerMinuteVerticalSpeedUnitUuid});
  expectConstants(QMAltitudeUnit::builtinUnits(),
                  {QMFootAltitudeUnitUuid, QMMeterAltitudeUnitUuid});
  expectConstants(QMPressureUnit::builtinUnits(), {QMhPaUnitUuid, QMinHgUnitUuid});
  expectConstants(QMTemperatureUnit::builtinUnits(),
                  {UnitsUuid::QMCelsiusUnitUuid, UnitsUuid::QMFarenheitUnitUuid});
  EXPECT_TRUE(isSameConstant(QMTimeUnit::second()->uuid(), QMSecondTimeUnitUuid));
}

TEST(UnitCatalogs, DefaultsByUnitSystem) {
  using Default = std::function<std::shared_ptr<const QMUnit>(std::int64_t)>;
  const struct {
    Default unitFor;
    // Identifiers for the unit systems -1, 0, 1, 2, 3.
    std::vector<std::string_view> expected;
  } cases[] = {
      {QMLengthUnit::defaultForDistanceUnitType,
       {".length-foot", ".length-meter", ".length-foot", ".length-foot", ".length-foot"}},
      {QMAreaUnit::defaultForDistanceUnitType,
       {".area-squarefoot", ".area-squaremeter", ".area-squarefoot", ".area-squarefoot",
        ".area-squarefoot"}},
      {QMSpeedUnit::defaultForDistanceUnitType,
       {".speed-mph", ".speed-kmh", ".speed-mph", ".speed-knot", ".speed-mph"}},
      {QMVerticalSpeedUnit::defaultForDistanceUnitType,
       {".vspeed-ft/min", ".vspeed-m/s", ".vspeed-ft/min", ".vspeed-ft/min", ".vspeed-ft/min"}},
      {QMPressureUnit::defaultForDistanceUnitType,
       {".pressure-hpa", ".pressure-hpa", ".pressure-inHg", ".pressure-inHg", ".pressure-hpa"}},
      {QMTemperatureUnit::defaultForDistanceUnitType,
       {".temperature-c", ".temperature-c", ".temperature-f", ".temperature-c", ".temperature-c"}},
      // With a nautical preference of 0 (metres) and 1 (feet).
      {[](std::int64_t t) { return QMDistanceUnit::defaultForUnitType(t, 0); },
       {".distance-meter", ".distance-meter", ".distance-foot", ".distance-meter",
        ".distance-meter"}},
      {[](std::int64_t t) { return QMDistanceUnit::defaultForUnitType(t, 7); },
       {".distance-meter", ".distance-meter", ".distance-foot", ".distance-foot",
        ".distance-meter"}},
      {[](std::int64_t t) { return QMAltitudeUnit::defaultForUnitType(t, 0); },
       {".altitude-meter", ".altitude-meter", ".altitude-foot", ".altitude-meter",
        ".altitude-meter"}},
      {[](std::int64_t t) { return QMAltitudeUnit::defaultForUnitType(t, 1); },
       {".altitude-meter", ".altitude-meter", ".altitude-foot", ".altitude-foot",
        ".altitude-meter"}},
  };
  for (const auto& c : cases) {
    for (std::int64_t type = -1; type <= 3; ++type) {
      EXPECT_EQ(c.unitFor(type)->uuid(), c.expected[type + 1]) << "unit system " << type;
    }
  }
}

TEST(UnitCatalogs, SubjectNames) {
  const struct {
    std::string (*name)();
    const char* english;
    const char* german;
  } cases[] = {
      {QMLengthUnit::localizedSubjectName, "distance", "Entfernung"},
      {QMDistanceUnit::localizedSubjectName, "distance", "Entfernung"},
      {QMAreaUnit::localizedSubjectName, "area", "fläche"},
      {QMSpeedUnit::localizedSubjectName, "speed", "geschwindigkeit"},
      {QMVerticalSpeedUnit::localizedSubjectName, "vertical speed", "Vertikalgeschwindigkeit"},
      {QMAltitudeUnit::localizedSubjectName, "altitude", "höhe"},
      {QMPressureUnit::localizedSubjectName, "pressure", "luftdruck"},
      {QMTimeUnit::localizedSubjectName, "time", "zeit"},
      {QMTimeUnit::localizedDurationName, "duration", "dauer"},
      {QMTemperatureUnit::localizedSubjectName, "temperature", "temperatur"},
      {QMTimeUnit::localizedHourAbbreviation, "h", "h"},
      {QMTimeUnit::localizedMinuteAbbreviation, "m", "min"},
      {QMTimeUnit::localizedSecondAbbreviation, "s", "s"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.name(), c.english);
  const testing::ScopedLocale german("de_DE");
  for (const auto& c : cases) EXPECT_EQ(c.name(), c.german);
}

}  // namespace
}  // namespace qm
