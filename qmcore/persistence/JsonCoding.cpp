#include "qmcore/persistence/JsonCoding.hpp"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <utility>

namespace qm {
namespace {

thread_local JsonDateStrategy currentStrategy = JsonDateStrategy::kReferenceDateSeconds;

// Days since 1970-01-01 of a proleptic Gregorian date, and back (H. Hinnant's algorithms).
std::int64_t daysFromCivil(std::int64_t y, unsigned m, unsigned d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const unsigned yoe = static_cast<unsigned>(y - era * 400);
  const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
  const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + static_cast<std::int64_t>(doe) - 719468;
}

void civilFromDays(std::int64_t z, std::int64_t& y, unsigned& m, unsigned& d) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const unsigned doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  y = static_cast<std::int64_t>(yoe) + era * 400;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  d = doy - (153 * mp + 2) / 5 + 1;
  m = mp < 10 ? mp + 3 : mp - 9;
  y += m <= 2;
}

// Reads exactly `count` digits at `at`.
bool digits(std::string_view text, std::size_t at, std::size_t count, int& out) {
  if (at + count > text.size()) return false;
  out = 0;
  for (std::size_t i = at; i < at + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return false;
    out = out * 10 + (text[i] - '0');
  }
  return true;
}

std::string kindName(JsonDecodingError::Kind kind) {
  switch (kind) {
    case JsonDecodingError::Kind::kKeyNotFound:
      return "keyNotFound";
    case JsonDecodingError::Kind::kValueNotFound:
      return "valueNotFound";
    case JsonDecodingError::Kind::kTypeMismatch:
      return "typeMismatch";
    case JsonDecodingError::Kind::kDataCorrupted:
      return "dataCorrupted";
  }
  return "dataCorrupted";
}

std::string joinPath(const std::vector<std::string>& path) {
  std::string text = "[";
  for (std::size_t i = 0; i < path.size(); ++i) {
    if (i > 0) text += ", ";
    text += path[i];
  }
  return text + "]";
}

std::string describe(JsonDecodingError::Kind kind, const std::string& subject,
                     const std::vector<std::string>& path, const std::string& debug) {
  return kindName(kind) + "(" + subject + ", codingPath: " + joinPath(path) + ", " + debug + ")";
}

const char* jsonKindName(const nlohmann::json& value) {
  switch (value.type()) {
    case nlohmann::json::value_t::null:
      return "null";
    case nlohmann::json::value_t::boolean:
      return "bool";
    case nlohmann::json::value_t::string:
      return "a string";
    case nlohmann::json::value_t::array:
      return "an array";
    case nlohmann::json::value_t::object:
      return "a dictionary";
    default:
      return "a number";
  }
}

}  // namespace

ScopedJsonDateStrategy::ScopedJsonDateStrategy(JsonDateStrategy strategy)
    : previous_(currentStrategy) {
  currentStrategy = strategy;
}
ScopedJsonDateStrategy::~ScopedJsonDateStrategy() { currentStrategy = previous_; }
JsonDateStrategy ScopedJsonDateStrategy::current() { return currentStrategy; }

std::string iso8601Text(Date date) {
  const double seconds = std::floor(date.timeIntervalSince1970());
  // Beyond years 0 to 9999 the text form has no room; clamp rather than write garbage.
  const double clamped = std::fmin(std::fmax(seconds, -62167219200.0), 253402300799.0);
  const auto total = static_cast<std::int64_t>(clamped);
  std::int64_t days = total / 86400;
  std::int64_t rest = total % 86400;
  if (rest < 0) {
    rest += 86400;
    --days;
  }
  std::int64_t y = 0;
  unsigned m = 0, d = 0;
  civilFromDays(days, y, m, d);
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%04lld-%02u-%02uT%02lld:%02lld:%02lldZ",
                static_cast<long long>(y), m, d, static_cast<long long>(rest / 3600),
                static_cast<long long>(rest / 60 % 60), static_cast<long long>(rest % 60));
  return buffer;
}

std::optional<Date> dateFromISO8601Text(std::string_view text) {
  int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
  if (!digits(text, 0, 4, year) || text.size() < 20 || text[4] != '-' ||
      !digits(text, 5, 2, month) || text[7] != '-' || !digits(text, 8, 2, day) || text[10] != 'T' ||
      !digits(text, 11, 2, hour) || text[13] != ':' || !digits(text, 14, 2, minute) ||
      text[16] != ':' || !digits(text, 17, 2, second)) {
    return std::nullopt;
  }
  if (month < 1 || month > 12 || day < 1 || day > 31 || hour > 23 || minute > 59 || second > 60) {
    return std::nullopt;
  }
  std::int64_t offset = 0;
  const std::string_view zone = text.substr(19);
  if (zone != "Z") {
    int zh = 0, zm = 0;
    if (zone.size() != 6 || (zone[0] != '+' && zone[0] != '-') || !digits(zone, 1, 2, zh) ||
        zone[3] != ':' || !digits(zone, 4, 2, zm) || zh > 23 || zm > 59) {
      return std::nullopt;
    }
    offset = (zone[0] == '-' ? -1 : 1) * (zh * 3600 + zm * 60);
  }
  const std::int64_t days =
      daysFromCivil(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
  std::int64_t y = 0;
  unsigned m = 0, d = 0;
  civilFromDays(days, y, m, d);
  if (static_cast<int>(d) != day) return std::nullopt;  // 31 April and the like
  const std::int64_t seconds = days * 86400 + hour * 3600 + minute * 60 + second - offset;
  return Date::fromUnixSeconds(static_cast<double>(seconds));
}

void to_json(nlohmann::json& j, const Date& date) {
  if (currentStrategy == JsonDateStrategy::kISO8601) {
    j = iso8601Text(date);
  } else {
    j = date.timeIntervalSinceReferenceDate();
  }
}

void from_json(const nlohmann::json& j, Date& date) {
  if (currentStrategy == JsonDateStrategy::kISO8601) {
    if (!j.is_string()) throw internal::valueError(j, "String", {});
    const std::optional<Date> parsed = dateFromISO8601Text(j.get_ref<const std::string&>());
    if (!parsed) {
      throw JsonDecodingError(JsonDecodingError::Kind::kDataCorrupted, "Date", {},
                              "Expected date string to be ISO8601-formatted.");
    }
    date = *parsed;
  } else {
    if (!j.is_number()) throw internal::valueError(j, "Double", {});
    date = Date::fromReferenceDateSeconds(j.get<double>());
  }
}

JsonDecodingError::JsonDecodingError(Kind kind, std::string subject,
                                     std::vector<std::string> codingPath,
                                     std::string debugDescription)
    : std::runtime_error(describe(kind, subject, codingPath, debugDescription)),
      kind_(kind),
      subject_(std::move(subject)),
      codingPath_(std::move(codingPath)),
      debugDescription_(std::move(debugDescription)) {}

std::string JsonDecodingError::codingPathDescription() const { return joinPath(codingPath_); }

JsonDecodingError JsonDecodingError::nestedIn(std::string key) const {
  std::vector<std::string> path;
  path.reserve(codingPath_.size() + 1);
  path.push_back(std::move(key));
  path.insert(path.end(), codingPath_.begin(), codingPath_.end());
  return JsonDecodingError(kind_, subject_, std::move(path), debugDescription_);
}

namespace internal {

JsonDecodingError valueError(const nlohmann::json& value, std::string_view typeName,
                             std::vector<std::string> codingPath) {
  const std::string type(typeName);
  if (value.is_null()) {
    return JsonDecodingError(JsonDecodingError::Kind::kValueNotFound, type, std::move(codingPath),
                             "Expected " + type + " value but found null instead.");
  }
  return JsonDecodingError(
      JsonDecodingError::Kind::kTypeMismatch, type, std::move(codingPath),
      "Expected to decode " + type + " but found " + jsonKindName(value) + " instead.");
}

JsonDecodingError fromLibraryError(const nlohmann::json::exception& error,
                                   std::string_view typeName) {
  // nlohmann/json's "key 'x' not found" (out_of_range 403), from records that use `at`.
  if (error.id == 403) {
    const std::string what = error.what();
    const std::size_t open = what.find('\'');
    const std::size_t close = what.rfind('\'');
    const std::string key =
        open != std::string::npos && close > open ? what.substr(open + 1, close - open - 1) : "";
    return JsonDecodingError(JsonDecodingError::Kind::kKeyNotFound, key, {},
                             "No value associated with key \"" + key + "\".");
  }
  return JsonDecodingError(JsonDecodingError::Kind::kDataCorrupted, std::string(typeName), {},
                           error.what());
}

}  // namespace internal
}  // namespace qm
