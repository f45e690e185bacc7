#include "qmcore/geo/QMPlacemarkHistoryItem.hpp"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <string>

namespace qm {
namespace {

using nlohmann::json;

TEST(QMPlacemarkHistoryItemTest, EncodesPresentFieldsOnly) {
  const struct {
    QMPlacemarkHistoryItem item;
    const char* expected;
  } cases[] = {
      {{"Home", "Garden", {47.5, -8.25}},
       R"({"coordinate":{"latitude":47.5,"longitude":-8.25},"subtitle":"Garden","title":"Home"})"},
      {{std::nullopt, "Garden", {0, 0}},
       R"({"coordinate":{"latitude":0.0,"longitude":0.0},"subtitle":"Garden"})"},
      {{"", std::nullopt, {1, 2}}, R"({"coordinate":{"latitude":1.0,"longitude":2.0},"title":""})"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(json(c.item).dump(), c.expected);
    EXPECT_EQ(json::parse(c.expected).get<QMPlacemarkHistoryItem>(), c.item) << c.expected;
  }
  // In an order-keeping document the coordinate's fields come latitude first.
  EXPECT_EQ(nlohmann::ordered_json(CLLocationCoordinate2D{3, 4}).dump(),
            R"({"latitude":3.0,"longitude":4.0})");
}

TEST(QMPlacemarkHistoryItemTest, DecodesAbsentAndNullTextsAsAbsent) {
  const auto item = json::parse(R"({"coordinate":{"longitude":2,"latitude":1},"title":null})")
                        .get<QMPlacemarkHistoryItem>();
  EXPECT_EQ(item.title, std::nullopt);
  EXPECT_EQ(item.subtitle, std::nullopt);
  EXPECT_EQ(item.coordinate, (CLLocationCoordinate2D{1, 2}));
}

TEST(QMPlacemarkHistoryItemTest, MissingOrMalformedFieldsAreDecodingErrors) {
  const char* cases[] = {
      R"({"title":"Home"})",
      R"({"coordinate":null})",
      R"({"coordinate":[1,2]})",
      R"({"coordinate":{"latitude":1}})",
      R"({"coordinate":{"longitude":1}})",
      R"({"coordinate":{"latitude":"1","longitude":2}})",
      R"({"coordinate":{"latitude":1,"longitude":true}})",
      R"({"coordinate":{"latitude":1,"longitude":null}})",
      R"({"title":5,"coordinate":{"latitude":1,"longitude":2}})",
      R"({"subtitle":[],"coordinate":{"latitude":1,"longitude":2}})",
      R"([])",
      R"("text")",
  };
  for (const char* text : cases) {
    QMPlacemarkHistoryItem item{"kept", "kept", {9, 9}};
    EXPECT_THROW(json::parse(text).get_to(item), json::exception) << text;
    EXPECT_EQ(item.title, "kept") << "a failed decoding changed the item: " << text;
  }
}

TEST(QMPlacemarkHistoryItemTest, NonFiniteCoordinatesDoNotComeBack) {
  const QMPlacemarkHistoryItem item{"x", {}, {std::numeric_limits<double>::quiet_NaN(), 1}};
  const std::string text = json(item).dump();
  EXPECT_EQ(text, R"({"coordinate":{"latitude":null,"longitude":1.0},"title":"x"})");
  EXPECT_THROW(json::parse(text).get<QMPlacemarkHistoryItem>(), json::exception);
}

}  // namespace
}  // namespace qm
