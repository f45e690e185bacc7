#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <limits>
#include <optional>
#include <string>

#include "qmcore/geo/CLPlacemark.hpp"
#include "qmcore/geo/MKPlacemark.hpp"
#include "qmcore/geo/QMPlacemarkHistoryItem.hpp"

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

TEST(PlacemarkTest, AddressLines) {
  const struct {
    const char* what;
    QMRawAddressPlacemark place;
    Text line1;
    Text line2WithLine3;
    Text line2WithCountry;
  } cases[] = {
      {"empty lines are dropped", rawPlace("\nA\n\nB\nC", {}, "DE"), "A", "B, C", "B, DE"},
      {"no country code: line 2 alone", rawPlace("A\nB\nC"), "A", "B, C", "B"},
      {"two lines", rawPlace("A\nB", {}, "DE"), "A", "B", "B"},
      {"one line: line 2 is empty, not absent", rawPlace("A\n", {}, "DE"), "A", "", ""},
      {"only line feeds: no line 1", rawPlace("\n\n"), std::nullopt, "", ""},
      {"no address at all", rawPlace(std::nullopt), std::nullopt, std::nullopt, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(c.place.line1Address(), c.line1) << c.what;
    EXPECT_EQ(c.place.line2Address(true), c.line2WithLine3) << c.what;
    EXPECT_EQ(c.place.line2Address(false), c.line2WithCountry) << c.what;
  }
}

TEST(PlacemarkTest, AddressWithNameDoesNotRepeatALeadingName) {
  const char* kCafe = "Cafe Central, Main St\nSpringfield IL 62701\nUnited States";
  const struct {
    const char* what;
    QMRawAddressPlacemark place;
    const char* expected;
  } cases[] = {
      {"name leads line 1", rawPlace(kCafe, "Cafe"),
       "Cafe Central, Main St, Springfield IL 62701, United States"},
      {"name elsewhere", rawPlace(kCafe, "Bistro"),
       "Bistro, Cafe Central, Main St, Springfield IL 62701, United States"},
      {"whole characters: an accented e is not an e", rawPlace("Cafe\u0301 Central\nX", "Cafe"),
       "Cafe, Cafe\u0301 Central, X"},
      {"canonically equal spellings match", rawPlace("Caf\u00e9 Central\nX", "Cafe\u0301"),
       "Caf\u00e9 Central, X"},
      {"empty name", rawPlace("A\nB", ""), "A, B"},
      {"name only", rawPlace(std::nullopt, "Cafe"), "Cafe"},
      {"one line", rawPlace("A", "N"), "N, A"},
  };
  for (const auto& c : cases) EXPECT_EQ(c.place.addressWithName(), c.expected) << c.what;
}

MKPlacemark springfield(const char* code) {
  MKPlacemark place({39.8, -89.6});
  place.name = "Cafe";
  place.thoroughfare = "Main St";
  place.subThoroughfare = "12";
  place.locality = "Springfield";
  place.administrativeArea = "IL";
  place.postalCode = "62701";
  place.ISOcountryCode = code;
  place.country = "Somewhere";
  return place;
}

TEST(PlacemarkTest, StreetAddressPutsTheNumberAfterTheStreet) {
  MKPlacemark place = springfield("US");
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

TEST(PlacemarkTest, FormattedAddressFollowsTheCountry) {
  EXPECT_EQ(springfield("US").formattedAddress(), "12 Main St\nSpringfield IL 62701\nSomewhere");
  EXPECT_EQ(springfield("DE").formattedAddress(), "Main St 12\n62701 Springfield\nSomewhere");
  EXPECT_EQ(springfield("US").line2Address(false), "Springfield IL 62701, US");
  MKPlacemark named({0, 0});
  named.name = "Only a name";
  EXPECT_EQ(named.postalAddress(), std::nullopt);
  EXPECT_EQ(named.formattedAddress(), std::nullopt);
}

TEST(PlacemarkTest, TitledAndRawPlacesFallBackToThePostalAddress) {
  const struct {
    Text title, subtitle;
    Text expected;
  } cases[] = {
      {"T", "S", "T, S"},
      {"T", std::nullopt, "T"},
      {"", "S", "S"},
      {"", "", "12 Main St\nSpringfield IL 62701\nSomewhere"},
      {std::nullopt, std::nullopt, "12 Main St\nSpringfield IL 62701\nSomewhere"},
  };
  for (const auto& c : cases) {
    QMTitledAddressPlacemark place({0, 0}, c.title, c.subtitle);
    static_cast<CLPlacemark&>(place) = springfield("US");
    EXPECT_EQ(place.formattedAddress(), c.expected);
    EXPECT_EQ(place.addressTitle(), c.title);
    EXPECT_EQ(place.addressSubtitle(), c.subtitle);
  }
  EXPECT_EQ(QMTitledAddressPlacemark({0, 0}, "", "").formattedAddress(), std::nullopt);

  QMRawAddressPlacemark raw({0, 0}, "");
  static_cast<CLPlacemark&>(raw) = springfield("DE");
  EXPECT_EQ(raw.line1Address(), "Main St 12");
  raw.rawAddress = "typed\ntext";
  // The texts of the base follow the replaced address.
  EXPECT_EQ(raw.line1Address(), "typed");
  EXPECT_EQ(raw.addressWithName(), "Cafe, typed, text");
}

TEST(QMPlacemarkHistoryItemTest, EncodesPresentFieldsOnly) {
  const struct {
    QMPlacemarkHistoryItem item;
    const char* expected;
  } cases[] = {
      {{"Home", "Garden", {47.5, -8.25}},
       R"({"coordinate":{"latitude":47.5,"longitude":-8.25},"subtitle":"Garden","title":"Home"})"},
      {{"", std::nullopt, {1, 2}}, R"({"coordinate":{"latitude":1.0,"longitude":2.0},"title":""})"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(json(c.item).dump(), c.expected);
    EXPECT_EQ(json::parse(c.expected).get<QMPlacemarkHistoryItem>(), c.item) << c.expected;
  }
  // In an order-keeping document the coordinate's fields come latitude first.
  EXPECT_EQ(nlohmann::ordered_json(CLLocationCoordinate2D{3, 4}).dump(),
            R"({"latitude":3.0,"longitude":4.0})");
  const auto item = json::parse(R"({"coordinate":{"longitude":2,"latitude":1},"title":null})")
                        .get<QMPlacemarkHistoryItem>();
  EXPECT_EQ(item, (QMPlacemarkHistoryItem{std::nullopt, std::nullopt, {1, 2}}));
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
  const QMPlacemarkHistoryItem item{"x", {}, {std::numeric_limits<double>::quiet_NaN(), 1}};
  const std::string text = json(item).dump();
  EXPECT_EQ(text, R"({"coordinate":{"latitude":null,"longitude":1.0},"title":"x"})");
  EXPECT_THROW(json::parse(text).get<QMPlacemarkHistoryItem>(), json::exception);
}

}  // namespace
}  // namespace qm
