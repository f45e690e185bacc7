// The built-in catalogs of every unit class, row by row.

#include <gtest/gtest.h>

#include <functional>

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
#include "qmcore/units/UnitTestSupport.hpp"

namespace qm {
namespace {

using Rows = std::vector<std::string>;
using testing::summaries;

TEST(UnitCatalogs, LengthDistanceAndArea) {
  EXPECT_EQ(summaries(QMLengthUnit::builtinUnits()),
            (Rows{".length-inch|Inch|in|0.0254|0|0|5|.length-foot@20||1281",
                  ".length-shaku|Shaku (尺)|尺|0.303|0|0|5|||1282",
                  ".length-foot|Foot|ft|0.30479999|0|0|5|.length-mile@1000||1282",
                  ".length-frenchfoot|French Foot|fft|0.3248406|0|0|5|||1282",
                  ".length-yard|Yard|yd|0.9144|0|0|5|.length-mile@1000||1283",
                  ".length-meter|Meter|m|1|1|0|5|.length-kilometer@1000||11",
                  ".length-kilometer|Kilometer|km|1000|3|0|5|||14",
                  ".length-mile|Mile|mi|1609.344|3|0|5|||1284",
                  ".length-nauticalmile|Nautical mile|nm|1852|2|0|5|||1284"}));
  // Without an environment delegate.
  EXPECT_EQ(summaries(QMDistanceUnit::builtinUnits()),
            (Rows{".distance-foot|Feet|ft|0.30479999|0|1|2|.distance-mile@2000|DB|1282",
                  ".distance-meter|Meters|m|1|0|0|2|.distance-kilometer@1000|DB|11",
                  ".distance-kilometer|Kilometers|km|1000|2|0|2|||14",
                  ".distance-mile|miles|mi|1609.344|2|1|2|||1284",
                  ".distance-nauticalmile|Nautical miles|nm|1852|2|2|2|||1284"}));
  EXPECT_EQ(summaries(QMAreaUnit::builtinUnits()),
            (Rows{".area-squaremeter|Square Meter|m²|1|1|0|7|.area-squarekilometer@100000|",
                  ".area-tsubo|Tsubo (坪)|坪|3.306|1|0|7||", ".area-are|Are|a|100|2|0|7||",
                  ".area-squarekilometer|Square kilometer|km²|1000000|3|0|7||",
                  ".area-decare|Decare|daa|1000|3|0|7||", ".area-hectare|Hectare|ha|10000|3|0|7||",
                  ".area-squarefoot|Square foot|ft²|0.09290304|0|0|7|.area-squaremile@100000|",
                  ".area-squareyard|Square yard|yd²|0.83612736|0|0|7|.area-squaremile@100000|",
                  ".area-acre|Acre|ac|4046.8564224|3|0|7||",
                  ".area-squaremile|Square mile|mi²|2589988.110336|4|0|7||"}));
}

TEST(UnitCatalogs, SpeedAltitudePressureTimeAndTemperature) {
  EXPECT_EQ(summaries(QMSpeedUnit::builtinUnits()),
            (Rows{".speed-kmh|km/h|km/h|1|2|0|0||", ".speed-mph|mph|mph|1.60934|2|1|0||",
                  ".speed-knot|knots|kts|1.852|2|2|0||"}));
  EXPECT_EQ(summaries(QMVerticalSpeedUnit::builtinUnits()),
            (Rows{".vspeed-m/s|meters/second|m/s|1|1|0|1||",
                  ".vspeed-m/min|meters/minute|m/min|0.016666666666666666|0|0|1||",
                  ".vspeed-ft/min|feet/minute|ft/min|0.005079999837440005|0|1|1||"}));
  EXPECT_EQ(QMVerticalSpeedUnit::feetPerMinuteUnit()->ratioToMeter(), 1.0 / (3.28084 * 60.0));
  EXPECT_EQ(summaries(QMAltitudeUnit::builtinUnits()),
            (Rows{".altitude-foot|Feet|ft|0.3048|0|1|3|||1282",
                  ".altitude-meter|Meters|m|1|0|0|3|||11"}));
  EXPECT_EQ(
      summaries(QMPressureUnit::builtinUnits()),
      (Rows{".pressure-hpa|hPa|hPa|1|2|0|8||", ".pressure-inHg|inHg|inHg|33.8638815767|3|1|8||"}));
  EXPECT_EQ(testing::summary(*QMTimeUnit::second()), ".time-second|second|s|1|0|0|6||");
  EXPECT_EQ(summaries(QMTemperatureUnit::builtinUnits()),
            (Rows{".temperature-c|°C|°C|1|0|0|9||", ".temperature-f|°F|°F|10|0|1|9||"}));
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
