// qmcore region, zoom, address and coordinates: regions fitted to coordinates, zoom levels and
// ground resolution, the address texts of a place, and the coordinate format catalogs.

#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "qmcore/geo/CoordinateFormats.hpp"
#include "qmcore/geo/MKCoordinateRegion.hpp"
#include "qmcore/geo/MKPlacemark.hpp"
#include "qmcore/geo/MapZoomHelper.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/PostalAddressFormatter.hpp"
#include "tools/qmcore/Commands.hpp"
#include "tools/qmcore/Output.hpp"

namespace qm::tool {
namespace {

std::int64_t parseWhole(const std::string& text, const std::string& what) {
  const double value = parseNumber(text, what);
  // 2^63 is the first double beyond the 64-bit range.
  if (value != std::trunc(value) || value >= 9223372036854775808.0 ||
      value < -9223372036854775808.0) {
    throw UsageError(what + " is not a whole number: '" + text + "'");
  }
  return static_cast<std::int64_t>(value);
}

CLLocationCoordinate2D parseCoordinate(const std::string& text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string::npos || text.find(',', comma + 1) != std::string::npos) {
    throw UsageError("COORDINATE is not LAT,LON: '" + text + "'");
  }
  return {parseNumber(text.substr(0, comma), "LAT"), parseNumber(text.substr(comma + 1), "LON")};
}

// Lines after the first are indented under their label.
std::string indented(const std::string& text) {
  std::string shown;
  for (const char c : text) shown += c == '\n' ? std::string("\n  ") : std::string(1, c);
  return shown;
}

void addRegionCommand(CLI::App& app, ToolContext& context) {
  CLI::App* region = app.add_subcommand(
      "region",
      "The region that encloses the coordinates LAT,LON...: its centre, span, validity and "
      "description (put -- before a first coordinate that begins with '-')");
  auto texts = std::make_shared<std::vector<std::string>>();
  region->add_option("COORDINATE", *texts, "Coordinates in degrees, as LAT,LON")->required();
  region->callback([texts, &context] {
    std::vector<CLLocationCoordinate2D> coordinates;
    for (const std::string& text : *texts) coordinates.push_back(parseCoordinate(text));
    // The list is never empty here: the option is required.
    const MKCoordinateRegion r = *MKCoordinateRegion::fromCoordinates(coordinates);
    Record(Record::Layout::kLabelledLines)
        .field("center latitude", jsonNumber(r.center.latitude), numberText(r.center.latitude))
        .field("center longitude", jsonNumber(r.center.longitude), numberText(r.center.longitude))
        .field("latitude delta", jsonNumber(r.span.latitudeDelta), numberText(r.span.latitudeDelta))
        .field("longitude delta", jsonNumber(r.span.longitudeDelta),
               numberText(r.span.longitudeDelta))
        .field("valid", Json(r.isValid()), r.isValid() ? "true" : "false")
        .field("description", Json(r.formattedDescription()), indented(r.formattedDescription()))
        .print(context);
  });
}

// The options of the zoom subcommands, kept as texts so that each gets its own message.
struct ZoomOptions {
  std::string latitude;
  std::string zoom;
  std::string pitch = "0";
  std::string height;
  std::string altitude;
};

void addZoomCommands(CLI::App& app, ToolContext& context) {
  CLI::App* zoom =
      app.add_subcommand("zoom", "Web-map zoom levels, ground resolution and camera heights");
  zoom->require_subcommand(1);
  auto options = std::make_shared<ZoomOptions>();

  CLI::App* resolution =
      zoom->add_subcommand("resolution",
                           "Metres per pixel at a latitude and zoom level (latitude clamped to "
                           "+-85.0511, zoom to 0..24)");
  resolution->add_option("--latitude", options->latitude, "Degrees")->required();
  resolution->add_option("--zoom", options->zoom, "Zoom level, a whole number")->required();
  resolution->callback([options, &context] {
    const double latitude = parseFiniteNumber(options->latitude, "--latitude");
    const std::int64_t level = parseWhole(options->zoom, "--zoom");
    const double meters = MapZoomHelper::metersPerPixel(latitude, level);
    Record(Record::Layout::kOneLine)
        .jsonField("latitude", latitude)
        .jsonField("zoom", jsonNumber(static_cast<double>(level)))
        .field("meters per pixel", jsonNumber(meters), numberText(meters))
        .print(context);
  });

  CLI::App* altitude = zoom->add_subcommand(
      "altitude", "The camera height in metres at which a viewport shows a zoom level");
  altitude->add_option("--zoom", options->zoom, "Zoom level, a whole number")->required();
  altitude->add_option("--latitude", options->latitude, "Degrees")->required();
  altitude->add_option("--pitch", options->pitch, "Camera pitch in degrees (default 0)");
  altitude->add_option("--height", options->height, "Viewport height in points")->required();
  altitude->callback([options, &context] {
    const std::int64_t level = parseWhole(options->zoom, "--zoom");
    const double latitude = parseFiniteNumber(options->latitude, "--latitude");
    const double pitch = parseFiniteNumber(options->pitch, "--pitch");
    const double height = parseFiniteNumber(options->height, "--height");
    const double meters = MapZoomHelper::altitude(level, latitude, pitch, {0, height});
    Record(Record::Layout::kOneLine)
        .field("altitude", jsonNumber(meters), numberText(meters))
        .print(context);
  });

  CLI::App* level = zoom->add_subcommand(
      "level", "The zoom level a camera at a height shows (rounded, not limited to 0..24)");
  level->add_option("--altitude", options->altitude, "Camera height in metres")->required();
  level->add_option("--latitude", options->latitude, "Degrees")->required();
  level->add_option("--pitch", options->pitch, "Camera pitch in degrees (default 0)");
  level->add_option("--height", options->height, "Viewport height in points")->required();
  level->callback([options, &context] {
    const double meters = parseFiniteNumber(options->altitude, "--altitude");
    const double latitude = parseFiniteNumber(options->latitude, "--latitude");
    const double pitch = parseFiniteNumber(options->pitch, "--pitch");
    const CGSize viewport{0, parseFiniteNumber(options->height, "--height")};
    // The library stops the program for a zoom that is no number; say so instead.
    if (!std::isfinite(MapZoomHelper::zoomLevelValue(meters, latitude, pitch, viewport))) {
      throw UsageError("no zoom level for latitude " + options->latitude + " and altitude " +
                       options->altitude);
    }
    const std::int64_t zoomLevel = MapZoomHelper::zoomLevel(meters, latitude, pitch, viewport);
    Record(Record::Layout::kOneLine)
        .field("zoom level", jsonNumber(static_cast<double>(zoomLevel)), std::to_string(zoomLevel))
        .print(context);
  });
}

struct AddressOptions {
  std::optional<std::string> name, street, number, city, state, postcode, country;
};

// An absent text shows as "(none)" and is null in JSON.
Record& addressField(Record& record, const char* label, const std::optional<std::string>& text) {
  if (!text) return record.field(label, Json(nullptr), "(none)");
  return record.field(label, Json(*text), indented(*text));
}

void addAddressCommand(CLI::App& app, ToolContext& context) {
  CLI::App* address = app.add_subcommand(
      "address",
      "The address texts of a place: the mailing address laid out for its country, lines 1 "
      "and 2, the address with the name and the one-line street address");
  auto options = std::make_shared<AddressOptions>();
  address->add_option("--name", options->name, "The place's name");
  address->add_option("--street", options->street, "Street name");
  address->add_option("--number", options->number, "House number");
  address->add_option("--city", options->city, "City");
  address->add_option("--state", options->state, "State, province or region");
  address->add_option("--postcode", options->postcode, "Postal code");
  address->add_option("--country", options->country,
                      "ISO country code (US, DE, ...): chooses the layout");
  address->callback([options, &context] {
    MKPlacemark place({0, 0});
    place.name = options->name;
    place.thoroughfare = options->street;
    place.subThoroughfare = options->number;
    place.locality = options->city;
    place.administrativeArea = options->state;
    place.postalCode = options->postcode;
    place.ISOcountryCode = options->country;
    if (options->country) {
      place.country = countryDisplayName(*options->country, currentLocaleIdentifier());
    }
    Record record(Record::Layout::kLabelledLines);
    addressField(record, "formattedAddress", place.formattedAddress());
    addressField(record, "line1Address", place.line1Address());
    addressField(record, "line2Address", place.line2Address(true));
    addressField(record, "addressWithName", place.addressWithName());
    addressField(record, "streetAddress", place.streetAddress());
    record.print(context);
  });
}

template <typename Enum>
void printCatalog(const char* catalog, const ToolContext& context) {
  printTextLine(context, catalog);
  for (const Enum value : allCases<Enum>()) {
    const auto code = static_cast<double>(static_cast<std::intptr_t>(value));
    Record(Record::Layout::kOneLine)
        .jsonField("catalog", Json(catalog))
        .field("code", jsonNumber(code), "  " + numberText(code))
        .field("name", localizedName(value))
        .print(context);
  }
}

void addCoordinatesCommand(CLI::App& app, ToolContext& context) {
  CLI::App* coordinates = app.add_subcommand(
      "coordinates",
      "The coordinate systems and formats in display order, with their codes and names in the "
      "current locale");
  coordinates->callback([&context] {
    printCatalog<QMCoordinateType>("QMCoordinateType", context);
    printCatalog<QMGeoCoordinateFormat>("QMGeoCoordinateFormat", context);
    printCatalog<QMUtmCoordinateFormat>("QMUtmCoordinateFormat", context);
  });
}

}  // namespace

void addGeoCommands(CLI::App& app, ToolContext& context) {
  addRegionCommand(app, context);
  addZoomCommands(app, context);
  addAddressCommand(app, context);
  addCoordinatesCommand(app, context);
}

}  // namespace qm::tool
