#include "qmcore/units/QMUnit.hpp"

#include <gtest/gtest.h>

#include <string>

#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/UnitTestSupport.hpp"

namespace qm {
namespace {

TEST(QMUnit, PlainUnitIsEmpty) {
  const QMUnit plain;
  EXPECT_EQ(plain.uuid().data(), nullptr);
  EXPECT_EQ(plain.name().data(), nullptr);
  EXPECT_EQ(plain.abbreviation().data(), nullptr);
  EXPECT_EQ(testing::summary(plain), "|||0|0|0|0||");
  EXPECT_EQ(plain.debugDescription(), "(null) ((null)), (null) m*0.000000");
  EXPECT_EQ(plain.automaticSwitchDescriptionForValue(5), std::nullopt);
  EXPECT_EQ(QMUnit(3).formatter().format(2.0), "2.000");
  // Identified by nothing: described as nautical, converted from as Fahrenheit.
  EXPECT_EQ(QMSpeedUnit(2).uiDescription().rfind("Nautical. ", 0), 0u);
  EXPECT_EQ(QMTemperatureUnit().uiDescription(), "0 = -18°C");
}

TEST(QMUnit, TextsInEnglishAndGerman) {
  const struct {
    std::shared_ptr<const QMUnit> unit;
    double value;
    const char* text;
    const char* description;
    const char* germanText;
    const char* germanDescription;
  } cases[] = {
      {QMLengthUnit::footUnit(), 12.0, "12 ft", "1 ft = 0.304800 m", "12 ft", "1 ft = 0.304800 m"},
      {QMLengthUnit::meterUnit(), 12345.6, "12345.6 m", "1 m = 1.000000 m", "12345.6 m",
       "1 m = 1.000000 m"},
      {QMLengthUnit::nauticalMileUnit(), 1.5, "1.50 nm", "1 nm = 1852.000000 m", "1.50 sm",
       "1 sm = 1852.000000 m"},
      {QMDistanceUnit::meterUnit(), 999.6, "1000 m", "1 m = 3.280840 ft", "1000 m",
       "1 m = 3.280840 ft"},
      {QMDistanceUnit::mileUnit(), 2.0, "2.00 mi", "1 mi = 1609.344000 m", "2.00 mi",
       "1 mi = 1609.344000 m"},
      {QMAltitudeUnit::meterUnit(), 1234.5, "1234 m", "1 m = 3.280840 ft", "1234 m",
       "1 m = 3.280840 ft"},
      {QMAltitudeUnit::footUnit(), -3.0, "-3 ft", "1 ft = 0.304800 m", "-3 ft",
       "1 ft = 0.304800 m"},
      {QMAreaUnit::squareMeterUnit(), 12.5, "12.5m²", "1 m² = 1.000000 m²", "12.5m²",
       "1 m² = 1.000000 m²"},
      {QMAreaUnit::hectareUnit(), 1234.5, "1234.500ha", "1 ha = 10000.000000 m²", "1234.500ha",
       "1 ha = 10000.000000 m²"},
      {QMPressureUnit::inHgUnit(), 29.92, "29.920 inHg", "1 inHg = 33.86 hPa", "29.920 inHg",
       "1 inHg = 33.86 hPa"},
      {QMSpeedUnit::kmhUnit(), 1.0, "1.00 km/h", "Metric. 1.00 km/h = 0.62 mph or 0.54 kts",
       "1.00 km/h", "Metrisch. 1.00 km/h = 0.62 mph oder 0.54 kn"},
      {QMSpeedUnit::mphUnit(), 1.0, "1.00 mph", "Imperial. 1.00 mph = 1.61 km/h or 0.87 kts",
       "1.00 mph", "Imperial. 1.00 mph = 1.61 km/h oder 0.87 kn"},
      {QMSpeedUnit::knotUnit(), 1.0, "1.00 kts", "Nautical. 1.00 kts = 1.85 km/h or 1.15 mph",
       "1.00 kn", "Nautisch. 1.00 kn = 1.85 km/h oder 1.15 mph"},
      {QMTemperatureUnit::celsiusUnit(), 21.5, "22 °C", "0°C = 32°F", "22 °C", "0°C = 32°F"},
      {QMTemperatureUnit::farenheitUnit(), 0.0, "0 °F", "0°F = -18°C", "0 °F", "0°F = -18°C"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.unit->stringForValue(c.value), c.text);
    EXPECT_EQ(c.unit->uiDescription(), c.description);
  }
  EXPECT_EQ(QMLengthUnit::meterUnit()->stringForIntegerValue(12345), "12345 m");
  EXPECT_EQ(QMAreaUnit::squareFootUnit()->stringForIntegerValue(-3), "-3ft²");
  EXPECT_EQ(QMLengthUnit::footUnit()->debugDescription(), "Foot (.length-foot), ft m*0.304800");
  EXPECT_EQ(QMSpeedUnit::knotUnit()->localizedName(), "KNOTS");
  EXPECT_EQ(QMSpeedUnit::knotUnit()->name(), "knots");

  const testing::ScopedLocale german("de_DE");
  for (const auto& c : cases) {
    EXPECT_EQ(c.unit->stringForValue(c.value), c.germanText);
    EXPECT_EQ(c.unit->uiDescription(), c.germanDescription);
  }
  EXPECT_EQ(QMSpeedUnit::knotUnit()->localizedName(), "KNOTEN");
  EXPECT_EQ(QMLengthUnit::inchUnit()->localizedName(), "Zoll");
}

TEST(QMUnit, SubjectNamesByIdentifierConstantNotByText) {
  const struct {
    const std::string_view* constant;
    const char* english;
  } cases[] = {
      {&QMTimeSubjectUuid, "time"},
      {&QMDistanceSubjectUuid, "distance"},
      {&QMSpeedSubjectUuid, "speed"},
      {&QMAltitudeSubjectUuid, "altitude"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid(*c.constant), c.english);
    const std::string copy(*c.constant);
    EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid(copy), "---") << copy;
  }
  EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid("5_Other"), "---");
  EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid({}), "---");
  // A prefix of a constant starts at its address but is not the constant.
  EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid(QMTimeSubjectUuid.substr(0, 3)), "---");
  const std::string copy(QMFootUnitUuid);
  EXPECT_FALSE(isSameConstant(copy, QMFootUnitUuid));
  EXPECT_TRUE(isSameConstant(QMLengthUnit::footUnit()->uuid(), QMFootUnitUuid));
}

TEST(QMUnit, SubjectNamesByEnumerationKnowFewerSubjects) {
  const struct {
    int subject;
    const char* text;
  } cases[] = {
      {0, "speed"}, {1, "---"}, {2, "distance"}, {3, "---"}, {4, "---"},      {5, "---"},
      {6, "time"},  {7, "---"}, {8, "---"},      {9, "---"}, {10, "heading"}, {-1, "---"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMUnit::localizedSubjectNameForSubject(static_cast<QMMeasurementSubject>(c.subject)),
              c.text)
        << c.subject;
  }
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(QMUnit::localizedSubjectNameForSubject(QMMeasurementSubject::kHeading), "Richtung");
  EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid(QMAltitudeSubjectUuid), "höhe");
}

}  // namespace
}  // namespace qm
