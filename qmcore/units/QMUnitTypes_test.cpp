#include "qmcore/units/QMUnitTypes.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <string>

namespace qm {
namespace {

using nlohmann::json;

TEST(QMUnitTypes, JsonRoundTrips) {
  EXPECT_EQ(json(QMMeasurementSubject::kDistance), json::parse(R"({"subject": 2})"));
  EXPECT_EQ(json(DistanceUnitType::kNautical), json::parse(R"({"unitType": 2})"));
  EXPECT_EQ(json(QMDistanceUnitType{.isKilometric = true, .unitType = DistanceUnitType::kNautical}),
            json::parse(R"({"isKilometric": true, "unitType": 2})"));

  for (const auto subject : {QMMeasurementSubject::kSpeed, QMMeasurementSubject::kVerticalSpeed,
                             QMMeasurementSubject::kDistance, QMMeasurementSubject::kAltitude,
                             QMMeasurementSubject::kLength, QMMeasurementSubject::kTime,
                             QMMeasurementSubject::kArea, QMMeasurementSubject::kPressure,
                             QMMeasurementSubject::kTemperature, QMMeasurementSubject::kHeading}) {
    EXPECT_EQ(json::parse(json(subject).dump()).get<QMMeasurementSubject>(), subject);
  }
  for (const std::int64_t raw : {0, 1, 2, 3}) {
    for (const bool big : {false, true}) {
      const QMDistanceUnitType value{.isKilometric = big,
                                     .unitType = static_cast<DistanceUnitType>(raw)};
      EXPECT_EQ(json::parse(json(value).dump()).get<QMDistanceUnitType>(), value) << raw;
      EXPECT_EQ(json(value.unitType).get<DistanceUnitType>(), value.unitType) << raw;
    }
  }
}

TEST(QMUnitTypes, DistanceUnitTypeReadsBothForms) {
  const struct {
    const char* text;
    bool isKilometric;
    DistanceUnitType unitType;
  } cases[] = {
      {R"({"isKilometric": true, "unitType": 2})", true, DistanceUnitType::kNautical},
      {R"({"isKilometric": true, "unitType": {"unitType": 2}})", true, DistanceUnitType::kNautical},
      {R"({"unitType": {"unitType": 1}, "isKilometric": false})", false,
       DistanceUnitType::kImperial},
      {R"({"isKilometric": false, "unitType": 0, "extra": "ignored"})", false,
       DistanceUnitType::kMetric},
  };
  for (const auto& c : cases) {
    const auto value = json::parse(c.text).get<QMDistanceUnitType>();
    EXPECT_EQ(value.isKilometric, c.isKilometric) << c.text;
    EXPECT_EQ(value.unitType, c.unitType) << c.text;
  }
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

TEST(QMUnitTypes, BadJsonGivesReadableErrors) {
  const struct {
    std::string error;
    const char* expected;
  } cases[] = {
      {decodingError<QMMeasurementSubject>(R"({"subject": 4})"), "4 is not a measurement"},
      {decodingError<QMMeasurementSubject>(R"({"subject": 11})"), "11 is not a measurement"},
      {decodingError<QMMeasurementSubject>(R"({"subject": -1})"), "-1 is not a measurement"},
      {decodingError<QMMeasurementSubject>(R"({"subject": "2"})"), "must be an integer"},
      {decodingError<QMMeasurementSubject>(R"({"subject": 2.5})"), "must be an integer"},
      {decodingError<QMMeasurementSubject>(R"({"subject": true})"), "must be an integer"},
      {decodingError<QMMeasurementSubject>(R"({"kind": 2})"), "'subject' not found"},
      {decodingError<QMMeasurementSubject>("2"), "cannot use at()"},
      {decodingError<DistanceUnitType>(R"({"unitType": 4})"), "4 is not a distance unit type"},
      {decodingError<DistanceUnitType>(R"({"unitType": 18446744073709551615})"), "too large"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": 1, "unitType": 0})"),
       "must be a boolean"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true})"), "'unitType' not found"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true, "unitType": -1})"),
       "-1 is not a distance unit type"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true, "unitType": {"unitType": 7}})"),
       "7 is not a distance unit type"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true, "unitType": {}})"),
       "'unitType' not found"},
      {decodingError<QMDistanceUnitType>(R"({"isKilometric": true, "unitType": [2]})"),
       "must be an integer"},
  };
  for (const auto& c : cases) {
    EXPECT_NE(c.error.find(c.expected), std::string::npos)
        << "error: " << c.error << "\nexpected to contain: " << c.expected;
  }
}

}  // namespace
}  // namespace qm
