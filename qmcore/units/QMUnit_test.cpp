#include "qmcore/units/QMUnit.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

#include "qmcore/testing/ScopedLocale.hpp"
#include "qmcore/units/QMAltitudeUnit.hpp"
#include "qmcore/units/QMAreaUnit.hpp"
#include "qmcore/units/QMDistanceUnit.hpp"
#include "qmcore/units/QMLengthUnit.hpp"
#include "qmcore/units/QMPressureUnit.hpp"
#include "qmcore/units/QMSpeedUnit.hpp"
#include "qmcore/units/QMTemperatureUnit.hpp"
#include "qmcore/units/QMUnitTypes.hpp"

namespace qm {
namespace {

using nlohmann::json;

TEST(QMUnit, PlainUnitIsEmpty) {
  const QMUnit plain;
  EXPECT_EQ(plain.debugDescription(), "(null) ((null)), (null) m*0.000000");  // null views
  EXPECT_EQ(plain.unitType(), DistanceUnitType::kMetric);
  EXPECT_EQ(plain.subject(), QMMeasurementSubject::kSpeed);
  EXPECT_EQ(plain.automaticSwitchDescriptionForValue(5), std::nullopt);
  // Identified by nothing: described as nautical, converted from as Fahrenheit.
  EXPECT_EQ(QMSpeedUnit(2).uiDescription().rfind("Nautical. ", 0), 0u);
  EXPECT_EQ(QMTemperatureUnit().uiDescription(), "0 = -18°C");
}

TEST(QMUnit, TextsOfEachKind) {
  const struct {
    std::shared_ptr<const QMUnit> unit;
    double value;
    const char* text;
    const char* description;
  } cases[] = {
      {QMLengthUnit::footUnit(), -12.0, "-12 ft", "1 ft = 0.304800 m"},
      {QMDistanceUnit::meterUnit(), 999.6, "1000 m", "1 m = 3.280840 ft"},
      {QMAltitudeUnit::meterUnit(), 1234.5, "1234 m", "1 m = 3.280840 ft"},
      {QMAreaUnit::hectareUnit(), 1234.5, "1234.500ha", "1 ha = 10000.000000 m²"},
      {QMPressureUnit::inHgUnit(), 29.92, "29.920 inHg", "1 inHg = 33.86 hPa"},
      {QMSpeedUnit::kmhUnit(), 1.0, "1.00 km/h", "Metric. 1.00 km/h = 0.62 mph or 0.54 kts"},
      {QMSpeedUnit::mphUnit(), 1.0, "1.00 mph", "Imperial. 1.00 mph = 1.61 km/h or 0.87 kts"},
      {QMSpeedUnit::knotUnit(), 1.0, "1.00 kts", "Nautical. 1.00 kts = 1.85 km/h or 1.15 mph"},
      {QMTemperatureUnit::celsiusUnit(), 21.5, "22 °C", "0°C = 32°F"},
      {QMTemperatureUnit::farenheitUnit(), 0.0, "0 °F", "0°F = -18°C"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.unit->stringForValue(c.value), c.text);
    EXPECT_EQ(c.unit->uiDescription(), c.description);
  }
  EXPECT_EQ(QMLengthUnit::meterUnit()->stringForIntegerValue(12345), "12345 m");
  EXPECT_EQ(QMAreaUnit::squareFootUnit()->stringForIntegerValue(-3), "-3ft²");
  EXPECT_EQ(QMSpeedUnit::knotUnit()->localizedName(), "KNOTS");

  // Abbreviations and descriptions in the locale's words, the "or" too.
  const testing::ScopedLocale german("de_DE");
  EXPECT_EQ(QMSpeedUnit::knotUnit()->uiDescription(),
            "Nautisch. 1.00 kn = 1.85 km/h oder 1.15 mph");
}

TEST(QMUnit, SubjectNamesByIdentifierConstantNotByTextOrByEnumeration) {
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
  // A prefix of a constant starts at its address but is not the constant.
  EXPECT_EQ(QMUnit::localizedSubjectNameForSubjectUuid(QMTimeSubjectUuid.substr(0, 3)), "---");

  // By enumeration, fewer subjects are known.
  const struct {
    int subject;
    const char* text;
  } subjects[] = {
      {0, "speed"},    {2, "distance"}, {6, "time"},
      {10, "heading"}, {3, "---"},  // altitude, unlike by identifier
      {-1, "---"},
  };
  for (const auto& s : subjects) {
    EXPECT_EQ(QMUnit::localizedSubjectNameForSubject(static_cast<QMMeasurementSubject>(s.subject)),
              s.text)
        << s.subject;
  }
}

TEST(QMUnit, TypesRoundTripThroughJson) {
  EXPECT_EQ(json(QMMeasurementSubject::kDistance), json::parse(R"({"subject": 2})"));
  EXPECT_EQ(json(QMDistanceUnitType{.isKilometric = true, .unitType = DistanceUnitType::kNautical}),
            json::parse(R"({"isKilometric": true, "unitType": 2})"));
  for (std::int64_t raw = 0; raw <= 10; ++raw) {
    if (raw == 4) continue;  // no subject
    const auto subject = static_cast<QMMeasurementSubject>(raw);
    EXPECT_EQ(json::parse(json(subject).dump()).get<QMMeasurementSubject>(), subject);
  }
  const QMDistanceUnitType last{.isKilometric = false, .unitType = DistanceUnitType(3)};
  EXPECT_EQ(json::parse(json(last).dump()).get<QMDistanceUnitType>(), last);
  EXPECT_EQ(json(last.unitType).get<DistanceUnitType>(), last.unitType);
}

template <typename T>
std::string decodingError(const char* text) {
  try {
    json::parse(text).get<T>();
  } catch (const json::exception& e) {
    return e.what();
  }
  return "no error";
}

TEST(QMUnit, BadJsonGivesReadableErrors) {
  const struct {
    std::string error;
    const char* expected;
  } cases[] = {
      {decodingError<QMMeasurementSubject>(R"({"subject": 4})"), "4 is not a measurement"},
      {decodingError<QMMeasurementSubject>(R"({"subject": 11})"), "11 is not a measurement"},
      {decodingError<QMMeasurementSubject>(R"({"subject": 2.5})"), "must be an integer"},
      {decodingError<DistanceUnitType>(R"({"unitType": 18446744073709551615})"), "too large"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": 1, "unitType": 0})"),
       "must be a boolean"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true, "unitType": -1})"),
       "-1 is not a distance unit type"},
      // The unit type also reads in its nested form.
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true, "unitType": {"unitType": 4}})"),
       "4 is not a distance unit type"},
  };
  for (const auto& c : cases) {
    EXPECT_NE(c.error.find(c.expected), std::string::npos)
        << "error: " << c.error << "\nexpected to contain: " << c.expected;
  }
}

// Kilometric in bit 0, the type from bit 8; a type beyond 3 reads as metric.
TEST(QMUnit, PackedDistanceUnitTypes) {
  const struct {
    std::int64_t packed;
    bool isKilometric;
    std::int64_t unitType;
    bool roundTrips;
  } cases[] = {
      {0x000, false, 0, true},  {0x001, true, 0, true},  {0x201, true, 2, true},
      {0x301, true, 3, true},   {0x401, true, 0, false}, {-1, true, 0, false},
      {0x002, false, 0, false}, {0x1FF, true, 1, false},
  };
  for (const auto& c : cases) {
    const QMDistanceUnitType decoded = QMDistanceUnit::decodeDistanceUnitFromInteger(c.packed);
    EXPECT_EQ(decoded.isKilometric, c.isKilometric) << c.packed;
    EXPECT_EQ(static_cast<std::int64_t>(decoded.unitType), c.unitType) << c.packed;
    EXPECT_EQ(QMDistanceUnit::encodeDistanceUnit(decoded) == c.packed, c.roundTrips) << c.packed;
  }
}

}  // namespace
}  // namespace qm
