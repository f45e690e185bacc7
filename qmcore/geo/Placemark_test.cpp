#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <optional>
#include <string>

#include "qmcore/geo/CLPlacemark.hpp"
#include "qmcore/geo/MKPlacemark.hpp"
#include "qmcore/geo/QMPlacemarkHistoryItem.hpp"
#include "qmcore/testing/NonFinite.hpp"

namespace qm {
namespace {

using nlohmann::json;
using Text = std::optional<std::string>;

QMRawAddressPlacemark rawPlace(Text raw, Text name = std::nullopt, Text code = std::nullopt) {
  QMRawAddressPlacemark place({1, 2}, std::move(raw));
  place.name = std::move(name);
  place.ISOcountryCode = std::move(code);
  return place;
}

TEST(PlacemarkTest, AddressLinesAndTheNameInFrontUnlessLine1BeginsWithIt) {
  const struct {
    const char* what;
    QMRawAddressPlacemark place;
    Text line1, line2WithLine3, line2WithCountry;
    const char* withName;
  } cases[] = {
      {"empty lines are dropped", rawPlace("\nA\n\nB\nC", "N", "DE"), "A", "B, C", "B, DE",
       "N, A, B, C"},
      {"no country code: line 2 alone", rawPlace("A\nB\nC", "A"), "A", "B, C", "B", "A, B, C"},
      {"two lines", rawPlace("A\nB", "", "DE"), "A", "B", "B", "A, B"},
      {"one line: line 2 is empty, not absent", rawPlace("A\n", "N", "DE"), "A", "", "", "N, A"},
      {"only line feeds: no line 1", rawPlace("\n\n", "N"), std::nullopt, "", "", "N"},
      {"no address at all", rawPlace(std::nullopt), std::nullopt, std::nullopt, std::nullopt, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    EXPECT_EQ(c.place.line1Address(), c.line1);
    EXPECT_EQ(c.place.line2Address(true), c.line2WithLine3);
    EXPECT_EQ(c.place.line2Address(false), c.line2WithCountry);
    EXPECT_EQ(c.place.addressWithName(), c.withName);
  }
}

MKPlacemark springfield() {
  MKPlacemark place({39.8, -89.6});
  place.name = "Cafe";
  place.thoroughfare = "Main St";
  place.subThoroughfare = "12";
  place.locality = "Springfield";
  place.administrativeArea = "IL";
  place.postalCode = "62701";
  place.ISOcountryCode = "US";
  place.country = "Somewhere";
  return place;
}
constexpr const char* kSpringfield = "12 Main St\nSpringfield IL 62701\nSomewhere";

TEST(PlacemarkTest, StreetAddressPutsTheNumberAfterTheStreet) {
  MKPlacemark place = springfield();
  EXPECT_EQ(place.streetAddress(), "Main St 12, Springfield, IL, 62701, US");
  EXPECT_EQ(place.addressSubtitle(), place.streetAddress());
  EXPECT_EQ(place.addressTitle(), "Cafe");
  place.thoroughfare.reset();
  place.administrativeArea.reset();
  EXPECT_EQ(place.streetAddress(), " 12, Springfield, 62701, US");  // the space stays
  place.subThoroughfare.reset();
  EXPECT_EQ(place.streetAddress(), "Springfield, 62701, US");
  EXPECT_EQ(MKPlacemark({0, 0}).streetAddress(), "");
}

TEST(PlacemarkTest, TitledAndRawPlacesFallBackToThePostalAddress) {
  const struct {
    Text title, subtitle;
    Text expected;
  } cases[] = {
      {"T", "S", "T, S"},
      {"T", std::nullopt, "T"},
      {"", "S", "S"},
      {std::nullopt, "", kSpringfield},
  };
  for (const auto& c : cases) {
    QMTitledAddressPlacemark place({0, 0}, c.title, c.subtitle);
    static_cast<CLPlacemark&>(place) = springfield();
    EXPECT_EQ(place.formattedAddress(), c.expected);
    EXPECT_EQ(place.addressTitle(), c.title);
    EXPECT_EQ(place.addressSubtitle(), c.subtitle);
  }
  EXPECT_EQ(QMTitledAddressPlacemark({0, 0}, "", "").formattedAddress(), std::nullopt);

  QMRawAddressPlacemark raw({0, 0}, "");
  static_cast<CLPlacemark&>(raw) = springfield();
  EXPECT_EQ(raw.line1Address(), "12 Main St");
  raw.rawAddress = "typed\ntext";
  // The texts of the base follow the replaced address.
  EXPECT_EQ(raw.line1Address(), "typed");
  EXPECT_EQ(raw.addressWithName(), "Cafe, typed, text");
}

TEST(QMPlacemarkHistoryItemTest, EncodesAndDecodesTheFieldsThatArePresent) {
  const QMPlacemarkHistoryItem item{"Home", "Garden", {47.5, -8.25}};
  const char* text =
      R"({"coordinate":{"latitude":47.5,"longitude":-8.25},"subtitle":"Garden","title":"Home"})";
  EXPECT_EQ(json(item).dump(), text);
  EXPECT_EQ(json::parse(text).get<QMPlacemarkHistoryItem>(), item);
  // In an order-keeping document the coordinate's fields come latitude first.
  EXPECT_EQ(nlohmann::ordered_json(CLLocationCoordinate2D{3, 4}).dump(),
            R"({"latitude":3.0,"longitude":4.0})");
  EXPECT_EQ(json::parse(R"({"coordinate":{"longitude":2,"latitude":1},"title":null})")
                .get<QMPlacemarkHistoryItem>(),
            (QMPlacemarkHistoryItem{std::nullopt, std::nullopt, {1, 2}}));
}

TEST(QMPlacemarkHistoryItemTest, MissingOrMalformedFieldsAreDecodingErrors) {
  const char* cases[] = {
      R"({"title":"Home"})",
      R"({"coordinate":null})",
      R"({"coordinate":[1,2]})",
      R"({"coordinate":{"latitude":1}})",
      R"({"coordinate":{"latitude":"1","longitude":2}})",
      R"({"coordinate":{"latitude":1,"longitude":null}})",
      R"({"title":5,"coordinate":{"latitude":1,"longitude":2}})",
      R"([])",
  };
  for (const char* text : cases) {
    QMPlacemarkHistoryItem item{"kept", "kept", {9, 9}};
    EXPECT_THROW(json::parse(text).get_to(item), json::exception) << text;
    EXPECT_EQ(item.title, "kept") << "a failed decoding changed the item: " << text;
  }
}

TEST(QMPlacemarkHistoryItemTest, NonFiniteCoordinatesDoNotComeBack) {
  const QMPlacemarkHistoryItem item{"x", {}, {testing::kNaN, 1}};
  const std::string text = json(item).dump();
  EXPECT_EQ(text, R"({"coordinate":{"latitude":null,"longitude":1.0},"title":"x"})");
  EXPECT_THROW(json::parse(text).get<QMPlacemarkHistoryItem>(), json::exception);
}

}  // namespace
}  // namespace qm
