#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "qmcore/geo/CLPlacemark.hpp"
#include "qmcore/geo/MKPlacemark.hpp"

namespace qm {
namespace {

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
      {"empty lines are dropped", rawPlace("A\n\nB\nC", {}, "DE"), "A", "B, C", "B, DE"},
      {"no country code: line 2 alone", rawPlace("A\n\nB\nC"), "A", "B, C", "B"},
      {"lines after the third are never used", rawPlace("A\nB\nC\nD", {}, "FR"), "A", "B, C",
       "B, FR"},
      {"two lines", rawPlace("A\nB", {}, "DE"), "A", "B", "B"},
      {"one line: line 2 is empty, not absent", rawPlace("A\n", {}, "DE"), "A", "", ""},
      {"leading line feeds", rawPlace("\n\nA\nB"), "A", "B", "B"},
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
      {"nothing", rawPlace(std::nullopt), ""},
  };
  for (const auto& c : cases) EXPECT_EQ(c.place.addressWithName(), c.expected) << c.what;
}

TEST(PlacemarkTest, StreetAddressPutsTheNumberAfterTheStreet) {
  const struct {
    const char* what;
    Text street, number, locality, area, postcode, code;
    const char* expected;
  } cases[] = {
      {"number only starts with a space", {}, "12", "Springfield", {}, {}, {}, " 12, Springfield"},
      {"street then number", "Main St", "12", {}, {}, {}, "US", "Main St 12, US"},
      {"everything", "Main St", "12", "Springfield", "IL", "62701", "US",
       "Main St 12, Springfield, IL, 62701, US"},
      {"no street line", {}, {}, "Springfield", "IL", {}, {}, "Springfield, IL"},
      {"nothing", {}, {}, {}, {}, {}, {}, ""},
  };
  for (const auto& c : cases) {
    MKPlacemark place({0, 0});
    place.thoroughfare = c.street;
    place.subThoroughfare = c.number;
    place.locality = c.locality;
    place.administrativeArea = c.area;
    place.postalCode = c.postcode;
    place.ISOcountryCode = c.code;
    place.name = "Ignored";
    EXPECT_EQ(place.streetAddress(), c.expected) << c.what;
    EXPECT_EQ(place.addressSubtitle(), c.expected) << c.what;
    EXPECT_EQ(place.addressTitle(), "Ignored");
  }
}

MKPlacemark springfield(const char* code) {
  MKPlacemark place({39.8, -89.6});
  place.thoroughfare = "Main St";
  place.subThoroughfare = "12";
  place.locality = "Springfield";
  place.administrativeArea = "IL";
  place.postalCode = "62701";
  place.ISOcountryCode = code;
  place.country = "Somewhere";
  return place;
}

TEST(PlacemarkTest, FormattedAddressFollowsTheCountry) {
  EXPECT_EQ(springfield("US").formattedAddress(), "12 Main St\nSpringfield IL 62701\nSomewhere");
  EXPECT_EQ(springfield("DE").formattedAddress(), "Main St 12\n62701 Springfield\nSomewhere");
  EXPECT_EQ(springfield("US").line2Address(false), "Springfield IL 62701, US");
  EXPECT_EQ(MKPlacemark({0, 0}).formattedAddress(), std::nullopt);
  MKPlacemark named({0, 0});
  named.name = "Only a name";
  EXPECT_EQ(named.postalAddress(), std::nullopt);
  EXPECT_EQ(named.formattedAddress(), std::nullopt);
}

TEST(PlacemarkTest, TitledPlaceFallsBackToThePostalAddress) {
  const struct {
    Text title, subtitle;
    Text expected;
  } cases[] = {
      {"T", "S", "T, S"},
      {"T", std::nullopt, "T"},
      {"", "S", "S"},
      {std::nullopt, "S", "S"},
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
}

TEST(PlacemarkTest, RawPlaceFallsBackToThePostalAddress) {
  QMRawAddressPlacemark place({0, 0}, "");
  static_cast<CLPlacemark&>(place) = springfield("DE");
  EXPECT_EQ(place.line1Address(), "Main St 12");
  place.rawAddress = "typed\ntext";
  EXPECT_EQ(place.line1Address(), "typed");
  place.rawAddress.reset();
  EXPECT_EQ(place.line1Address(), "Main St 12");
}

TEST(PlacemarkTest, TextsFollowAReplacedAddressThroughTheBase) {
  const QMTitledAddressPlacemark titled({0, 0}, "Home", "Garden");
  const CLPlacemark& place = titled;
  EXPECT_EQ(place.line1Address(), "Home, Garden");
  EXPECT_EQ(place.addressWithName(), "Home, Garden");
  const QMTitledAddressHolder& holder = titled;
  EXPECT_EQ(holder.addressTitle(), "Home");
  EXPECT_EQ(titled.coordinate, (CLLocationCoordinate2D{0, 0}));
}

}  // namespace
}  // namespace qm
