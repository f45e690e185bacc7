#include "qmcore/units/QMUnitSorting.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMVerticalSpeedUnit.hpp"

namespace qm {
namespace {

// The identifiers after sorting `units` forwards and backwards, which must agree.
template <typename Unit>
std::string sortedUuids(std::vector<std::shared_ptr<const Unit>> units, UnitSortOrder order) {
  std::string forwards, backwards;
  for (const auto& unit : sortedUnits(units, order)) forwards += std::string(unit->uuid()) + " ";
  std::reverse(units.begin(), units.end());
  for (const auto& unit : sortedUnits(units, order)) backwards += std::string(unit->uuid()) + " ";
  EXPECT_EQ(forwards, backwards);
  return forwards;
}

TEST(QMUnitSorting, CatalogOrders) {
  using enum UnitSortOrder;
  EXPECT_EQ(sortedUuids(QMLengthUnit::builtinUnits(), kAscendingThenShorterName),
            ".length-inch .length-shaku .length-foot .length-frenchfoot .length-yard "
            ".length-meter .length-kilometer .length-mile .length-nauticalmile ");
  EXPECT_EQ(sortedUuids(QMAreaUnit::builtinUnits(), kAscendingThenShorterName),
            ".area-squarefoot .area-squareyard .area-squaremeter .area-tsubo .area-are "
            ".area-decare .area-acre .area-hectare .area-squarekilometer .area-squaremile ");
  EXPECT_EQ(sortedUuids(QMDistanceUnit::builtinUnits(), kDescending),
            ".distance-nauticalmile .distance-mile .distance-kilometer .distance-meter "
            ".distance-foot ");
  EXPECT_EQ(sortedUuids(QMAltitudeUnit::builtinUnits(), kDescending),
            ".altitude-meter .altitude-foot ");
  EXPECT_EQ(sortedUuids(QMSpeedUnit::builtinUnits(), kAscending),
            ".speed-kmh .speed-mph .speed-knot ");
  EXPECT_EQ(sortedUuids(QMVerticalSpeedUnit::builtinUnits(), kAscending),
            ".vspeed-ft/min .vspeed-m/min .vspeed-m/s ");
  EXPECT_EQ(sortedUuids(QMTemperatureUnit::builtinUnits(), kAscending),
            ".temperature-c .temperature-f ");
}

// Units that differ only in name, to exercise the tie rules.
class NamedUnit : public QMUnit {
 public:
  NamedUnit(std::string_view uuid, std::string_view name, double factor) {
    define({.uuid = uuid, .name = name, .abbreviation = name, .ratioToMeter = factor});
  }
};

TEST(QMUnitSorting, EqualFactorsByNameLengthInUtf16OrStable) {
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

}  // namespace
}  // namespace qm
