// A place the user picked, kept in a history list, and the JSON form of it and of a coordinate.
//
//   nlohmann::json j = qm::QMPlacemarkHistoryItem{"Home", std::nullopt, {47.37, 8.54}};
//   j.dump();  // {"coordinate":{"latitude":47.37,"longitude":8.54},"title":"Home"}
//   auto item = j.get<qm::QMPlacemarkHistoryItem>();
//
// Coding is through nlohmann/json's `to_json`/`from_json` (found by argument-dependent lookup,
// for `nlohmann::json` and `nlohmann::ordered_json` alike). A coordinate is the object
// {"latitude": degrees, "longitude": degrees}. Encoding leaves an absent title or subtitle out
// (no null). Decoding reads "title" and "subtitle" when present (a null counts as absent) and
// requires "coordinate" with both numbers; a missing or malformed coordinate, or a title that is
// not a string, throws `nlohmann::json::exception`. JSON has no NaN or infinity: such a
// coordinate encodes as null and so does not decode.

#ifndef QMCORE_GEO_QMPLACEMARKHISTORYITEM_HPP_
#define QMCORE_GEO_QMPLACEMARKHISTORYITEM_HPP_

#include <optional>
#include <string>
#include <utility>

#include "qmcore/geo/MapTypes.hpp"

namespace qm {

struct QMPlacemarkHistoryItem {
  std::optional<std::string> title;
  std::optional<std::string> subtitle;
  CLLocationCoordinate2D coordinate;

  bool operator==(const QMPlacemarkHistoryItem&) const = default;
};

template <typename BasicJson>
void to_json(BasicJson& j, const CLLocationCoordinate2D& coordinate) {
  j = BasicJson::object();
  j["latitude"] = coordinate.latitude;
  j["longitude"] = coordinate.longitude;
}

template <typename BasicJson>
void from_json(const BasicJson& j, CLLocationCoordinate2D& coordinate) {
  coordinate.latitude = j.at("latitude").template get<double>();
  coordinate.longitude = j.at("longitude").template get<double>();
}

template <typename BasicJson>
void to_json(BasicJson& j, const QMPlacemarkHistoryItem& item) {
  j = BasicJson::object();
  if (item.title) j["title"] = *item.title;
  if (item.subtitle) j["subtitle"] = *item.subtitle;
  j["coordinate"] = item.coordinate;
}

template <typename BasicJson>
void from_json(const BasicJson& j, QMPlacemarkHistoryItem& item) {
  const auto optionalText = [&j](const char* key) -> std::optional<std::string> {
    const auto it = j.find(key);
    if (it == j.end() || it->is_null()) return std::nullopt;
    return it->template get<std::string>();
  };
  // Read everything before assigning, so that a failure leaves `item` as it was.
  QMPlacemarkHistoryItem decoded{optionalText("title"), optionalText("subtitle"),
                                 j.at("coordinate").template get<CLLocationCoordinate2D>()};
  item = std::move(decoded);
}

}  // namespace qm

#endif  // QMCORE_GEO_QMPLACEMARKHISTORYITEM_HPP_
