#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <any>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/geo/CLPlacemark.hpp"
#include "qmcore/geo/CoordinateFormats.hpp"
#include "qmcore/geo/GeoToCoreGraphicsHelper.hpp"
#include "qmcore/geo/MKCoordinateRegion.hpp"
#include "qmcore/geo/MKPlacemark.hpp"
#include "qmcore/geo/MapZoomHelper.hpp"
#include "qmcore/geo/QMPlacemarkHistoryItem.hpp"
#include "qmcore/geo/QMPlanimeterSettings.hpp"
#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/NonFinite.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

using nlohmann::json;
using testing::kInf;
using testing::kNaN;
using Text = std::optional<std::string>;
constexpr double kPi = 3.141592653589793;
constexpr double kDegree = kPi / 180;
constexpr double kAtZoom0 = 156543.03392;

double cosDegrees(double degrees) { return std::cos(degrees * kPi / 180.0); }

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
      {"empty lines go", rawPlace("\nA\n\nB\nC", "N", "DE"), "A", "B, C", "B, DE", "N, A, B, C"},
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
  const auto titled = [](Text title, Text subtitle) {
    QMTitledAddressPlacemark place({0, 0}, std::move(title), std::move(subtitle));
    static_cast<CLPlacemark&>(place) = springfield();
    return place.formattedAddress();
  };
  EXPECT_EQ(titled("T", "S"), "T, S");
  EXPECT_EQ(titled("T", std::nullopt), "T");
  EXPECT_EQ(titled("", "S"), "S");
  EXPECT_EQ(titled(std::nullopt, ""), kSpringfield);
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
  EXPECT_EQ(json::parse(R"({"coordinate":{"longitude":2,"latitude":1},"title":null})")
                .get<QMPlacemarkHistoryItem>(),
            (QMPlacemarkHistoryItem{std::nullopt, std::nullopt, {1, 2}}));
  // JSON has no NaN: it is written as null, which does not read back (see the malformed rows).
  EXPECT_EQ(json(QMPlacemarkHistoryItem{"x", {}, {kNaN, 1}}).dump(),
            R"({"coordinate":{"latitude":null,"longitude":1.0},"title":"x"})");
}

TEST(QMPlacemarkHistoryItemTest, MissingOrMalformedFieldsAreDecodingErrors) {
  const char* cases[] = {
      R"({"title":"Home"})",
      R"({"coordinate":null})",
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

TEST(CoordinateFormatsTest, NamesInDisplayOrderAndTheLanguage) {
  const testing::ScopedLocale locale("de_DE");
  std::vector<std::string> names;
  for (const auto type : allCases<QMCoordinateType>()) names.push_back(localizedName(type));
  for (const auto form : allCases<QMGeoCoordinateFormat>()) names.push_back(localizedName(form));
  for (const auto form : allCases<QMUtmCoordinateFormat>()) names.push_back(localizedName(form));
  // MGRS is listed before UTM; only the angle notations are lower-cased.
  EXPECT_EQ(names,
            (std::vector<std::string>{"Breite, Länge", "MGRS", "UTM", "grad", "grad, minuten",
                                      "grad, minuten, sekunden", "Hemisphäre", "Breitenband"}));
  // Codes without a case name themselves with dashes.
  EXPECT_EQ(localizedName(static_cast<QMCoordinateType>(3)), "---");
  EXPECT_EQ(localizedName(static_cast<QMGeoCoordinateFormat>(-1)), "---");
  EXPECT_EQ(localizedName(static_cast<QMUtmCoordinateFormat>(2)), "---");
}

TEST(MKCoordinateRegionTest, FitsTracks) {
  const struct {
    const char* what;
    std::vector<CLLocationCoordinate2D> track;
    MKCoordinateRegion expected;
  } cases[] = {
      {"one point gets the fixed span", {{47.5, 8.25}}, {{47.5, 8.25}, {1.0, 1.01}}},
      {"across 180: a centre of 180 stays", {{0, 179}, {0, -179}}, {{0, 180}, {0, 2}}},
      {"across 180: a centre beyond comes back", {{-10, 170}, {10, -150}}, {{0, -170}, {20, 40}}},
      {"all west: of two equal boxes the plain one", {{1, -20}, {3, -10}}, {{2, -15}, {2, 10}}},
      {"tie across the meridian at 180 wide", {{0, -90}, {0, 90}}, {{0, 0}, {0, 180}}},
      {"no margin: the box of the points", {{10, 10}, {12, 11}, {11, 14}}, {{11, 12}, {2, 4}}},
      {"minus zero is not negative", {{0, -0.0}, {0, 359}}, {{0, 179.5}, {0, 359}}},
      // (min + max) / 2 would be 0.30000000000000004 here; max - delta / 2 is not.
      {"the centre is measured back from the maximum",
       {{0.1, 0.1}, {0.5, 0.5}},
       {{0.5 - (0.5 - 0.1) * 0.5, 0.5 - (0.5 - 0.1) * 0.5}, {0.5 - 0.1, 0.5 - 0.1}}},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MKCoordinateRegion::fromCoordinates(c.track), c.expected) << c.what;
  }
  EXPECT_FALSE(MKCoordinateRegion::fromCoordinates({}).has_value());
}

TEST(MKCoordinateRegionTest, ANaNInEitherFieldOfAnyPointMakesTheRegionInvalid) {
  for (const std::size_t at : {0u, 1u, 2u}) {  // the first point and both lanes after it
    for (const CLLocationCoordinate2D bad : {CLLocationCoordinate2D{kNaN, 5}, {5, kNaN}}) {
      std::vector<CLLocationCoordinate2D> track{{1, 1}, {2, 2}, {3, 3}};
      track[at] = bad;
      EXPECT_FALSE(MKCoordinateRegion::fromCoordinates(track)->isValid()) << "NaN at " << at;
    }
  }
}

TEST(MKCoordinateRegionTest, ValidityLimits) {
  const struct {
    MKCoordinateRegion region;
    bool valid;
  } cases[] = {
      {{{0, 0}, {180, 360}}, true},       {{{-90, -180}, {1, 1}}, true},
      {{{0, 0}, {0, 1}}, false},          {{{0, 0}, {1, 0}}, false},
      {{{0, 0}, {180.000001, 1}}, false}, {{{0, 0}, {1, 360.000001}}, false},
      {{{90.000001, 0}, {1, 1}}, false},  {{{0, -180.000001}, {1, 1}}, false},
      {{{kNaN, 0}, {1, 1}}, false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MKCoordinateRegionValidator::isValid(c.region), c.valid)
        << c.region.formattedDescription();
  }
  const MKCoordinateRegion region{{47.3769, -8.5417}, {0.0000125, 1.01}};
  EXPECT_EQ(region.formattedDescription(), "◎ 47.376900, -8.541700\n⇿ 0.000013° × 1.010000°");
}

TEST(MapZoomHelperTest, MetersPerPixelClampsLatitudeAndZoom) {
  const struct {
    double latitude;
    std::int64_t zoom;
    double expected;
  } cases[] = {
      {0, -3, kAtZoom0},
      {0, 24, kAtZoom0 / 16777216.0},
      {0, 25, kAtZoom0 / 16777216.0},
      {89, 3, cosDegrees(85.0511) * kAtZoom0 / 8},
      {-89, 3, cosDegrees(-85.0511) * kAtZoom0 / 8},
  };
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::metersPerPixel(c.latitude, c.zoom), c.expected)
        << "latitude " << c.latitude << ", zoom " << c.zoom;
  }
}

TEST(MapZoomHelperTest, PitchesAreRaisedToAHundredthOfADegreeForwardAndOfARadianBackward) {
  // Forward at least 0.01 degrees, backward 0.01 radians (the map view raises it to 0.01° first).
  const struct {
    double pitch;
    double altitudeRadians, zoomRadians;
  } cases[] = {
      {0.6, 0.6 * kDegree, 0.6 * kDegree},
      {0.5, 0.5 * kDegree, 0.01},
      {0.01, 0.01 * kDegree, 0.01},
      {0.005, 0.01 * kDegree, 0.01},
  };
  const double resolution = MapZoomHelper::metersPerPixel(0, 10);
  for (const auto& c : cases) {
    EXPECT_DOUBLE_EQ(MapZoomHelper::altitude(10, 0, c.pitch, {300, 600}),
                     resolution * 600 / (2 * std::tan(c.altitudeRadians)))
        << c.pitch;
    EXPECT_DOUBLE_EQ(MapZoomHelper::zoomLevelValue(1000, 0, c.pitch, {100, 100}),
                     std::log2(kAtZoom0 / (2 * 1000 * std::tan(c.zoomRadians) / 100)))
        << c.pitch;
  }
  // Backward, the latitude is not clamped: at 89 degrees the forward conversion uses 85.0511.
  EXPECT_DOUBLE_EQ(MapZoomHelper::zoomLevelValue(1000, 89, 45, {100, 100}),
                   std::log2(cosDegrees(89) * kAtZoom0 / (2 * 1000 * std::tan(kPi / 4) / 100)));
}

TEST(MapZoomHelperTest, ZoomLevelsRoundHalvesAwayFromZeroWithoutLimitsAndAreZeroWithoutAView) {
  // The altitude at which a viewport of height 2 at a pitch of 45 degrees shows `zoom`.
  const auto showing = [](double zoom) { return kAtZoom0 / std::pow(2.0, zoom); };
  const struct {
    double altitude, pitch, height;
    std::int64_t expected;
  } cases[] = {
      {showing(10.6), 45, 2, 11},
      {showing(-0.4), 45, 2, 0},
      {showing(-0.6), 45, 2, -1},
      {showing(26.2), 45, 2, 26},
      {1000, 45, 0, 0},
      {1000, 45, kNaN, 0},
      {0, 45, 100, 0},
      {kNaN, 45, 100, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.altitude);
    EXPECT_EQ(MapZoomHelper::zoomLevel(c.altitude, 0, c.pitch, {10, c.height}), c.expected);
    EXPECT_EQ(MapZoomHelper::zoomLevel(MKMapView{c.altitude, c.pitch, 0, c.height}), c.expected);
  }
  EXPECT_EQ(MapZoomHelper::altitude(10, 0, 45, {100, 0}), 0.0);
  EXPECT_EQ(MapZoomHelper::altitude(10, 0, 45, {100, kNaN}), 0.0);
}

TEST(MapZoomHelperDeathTest, AZoomThatIsNoIntegerStops) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(1000, kNaN, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(kInf, 0, 45, {100, 100}), "not a 64-bit integer");
  EXPECT_DEATH(MapZoomHelper::zoomLevel(MKMapView{1000, 45, kNaN, 100}), "not a 64-bit integer");
}

TEST(GeoToCoreGraphicsHelperTest, MapsContainedPointsAndRefusesTheRest) {
  const MKMapRect rect{{100, 200}, {100, 50}};
  const struct {
    const char* what;
    MKMapPoint point;
    std::optional<CGPoint> expected;
  } cases[] = {
      {"origin belongs to the rectangle", {100, 200}, CGPoint{0, 0}},
      {"x and y scale separately", {125, 240}, CGPoint{50, 320}},
      {"far x edge is outside", {200, 225}, std::nullopt},
      {"far y edge is outside", {150, 250}, std::nullopt},
      {"left of the rectangle", {99.9, 225}, std::nullopt},
      {"above the rectangle", {150, 199}, std::nullopt},
      {"NaN point", {kNaN, 225}, std::nullopt},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(GeoToCoreGraphicsHelper::cgPoint(c.point, rect, {200, 400}), c.expected) << c.what;
  }
}

class DotsDelegate : public EnvironmentSettingsDelegate {
 public:
  bool defaultMapShowDotsForConnectionPoints() override { return true; }
};

class PlanimeterSettingsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"QMPlanimeterUnitTypeChanged", "WaypointsCollectionChanged"}) {
      observers_.push_back(
          env_.notificationCenter().addObserver(name, [this](const Notification& n) {
            const auto* number = std::any_cast<std::int64_t>(&n.object);
            posts_.push_back(n.name + (number ? ":" + std::to_string(*number) : ""));
          }));
    }
  }
  testing::FakeEnv env_;
  std::shared_ptr<SettingsStore> store_ = env_.standardSettings();
  EnvironmentSettings environment_;
  std::vector<ObserverHandle> observers_;
  std::vector<std::string> posts_;
};

TEST_F(PlanimeterSettingsTest, EachSwitchStartsAtItsDefaultAndStoresAndPostsEvenWhenUnchanged) {
  using S = QMPlanimeterSettings;
  constexpr const char* kPoints = "WaypointsCollectionChanged:6";
  constexpr const char* kUnits = "QMPlanimeterUnitTypeChanged";
  const struct {
    void (S::*set)(bool);
    bool (S::*get)() const;
    bool byDefault;
    const char* posted;
  } cases[] = {
      {&S::setPolygonAnnotationsAsDots, &S::polygonAnnotationsAsDots, false, kPoints},
      {&S::setRouteAnnotationsAsDots, &S::routeAnnotationsAsDots, false, kPoints},
      {&S::setEditorShowsLengthAnnotations, &S::editorShowsLengthAnnotations, true, kUnits},
      {&S::setEditorShowsAreaCenterAnnotations, &S::editorShowsAreaCenterAnnotations, true, kUnits},
      {&S::setNavigatorShowsRouteLengthAnnotations, &S::navigatorShowsRouteLengthAnnotations, true,
       kUnits},
      {&S::setNavigatorShowsAreaCenterAnnotations, &S::navigatorShowsAreaCenterAnnotations, true,
       kUnits},
  };
  S settings(env_, environment_);
  for (const auto& c : cases) {
    EXPECT_EQ((settings.*c.get)(), c.byDefault);
    posts_.clear();
    (settings.*c.set)(!c.byDefault);
    (settings.*c.set)(!c.byDefault);
    EXPECT_EQ(posts_, (std::vector<std::string>{c.posted, c.posted}));
    // Stored under the key that a fresh instance reads.
    EXPECT_EQ((S(env_, environment_).*c.get)(), !c.byDefault);
  }
  EXPECT_EQ(store_->objectForKey(kQMPolygonAnnotationsAsDotsKey), SettingsValue(true));  // no 1
}

TEST_F(PlanimeterSettingsTest, DotsFollowTheEnvironmentUntilTheUserStoresAValue) {
  const auto delegate = std::make_shared<DotsDelegate>();  // held weakly
  environment_.setDelegate(delegate);
  QMPlanimeterSettings(env_, environment_).setPolygonAnnotationsAsDots(false);
  const QMPlanimeterSettings reread(env_, environment_);
  EXPECT_FALSE(reread.polygonAnnotationsAsDots());
  EXPECT_TRUE(reread.routeAnnotationsAsDots());
}

TEST_F(PlanimeterSettingsTest, OnlyAssigningStoresTheAngleTypeAndInitRereadsItWithoutPosting) {
  QMPlanimeterSettings settings(env_, environment_);
  settings.setAnnotationAngleType(7);
  settings.initAnnotationAngleType();  // nothing stored
  EXPECT_EQ(settings.annotationAngleType(), 0);
  EXPECT_FALSE(store_->hasKey(kQMAnnotationAngleTypeKey));

  settings.assignAnnotationAngleType(2);
  EXPECT_EQ(posts_, std::vector<std::string>{"QMPlanimeterUnitTypeChanged"});
  settings.setAnnotationAngleType(7);
  settings.initAnnotationAngleType();
  EXPECT_EQ(settings.annotationAngleType(), 2);
  EXPECT_EQ(posts_.size(), 1u);  // neither the plain setter nor init posts
}

}  // namespace
}  // namespace qm
