#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include "qmcore/persistence/DecodableDefault.hpp"
#include "qmcore/persistence/JsonDebugDescriptable.hpp"
#include "qmcore/persistence/JsonHelper.hpp"
#include "qmcore/persistence/NullCodable.hpp"
#include "qmcore/persistence/internal/DebugLogCapture.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {

struct Leg {
  double distance = 0;
  bool operator==(const Leg&) const = default;
};
void to_json(nlohmann::json& j, const Leg& leg) { j = {{"distance", leg.distance}}; }
void from_json(const nlohmann::json& j, Leg& leg) { decodeField(j, "distance", leg.distance); }

// Wrappers first, so that the other fields' errors need only a null note; none at its default.
struct Trip : JsonDebugDescriptable<Trip> {
  NullCodable<std::string> note{"n"};
  DecodableDefault::True shown{false};
  DecodableDefault::Zero views{7};
  DecodableDefault::EmptyList<std::vector<std::int64_t>> tags{{1, 2}};
  DecodableDefault::EmptyMap<std::map<std::string, std::string>> extra{{{"k", "v"}}};
  std::string name = "a/b";
  Date start = Date::fromReferenceDateSeconds(10);
  std::int64_t stops = 3;
  Leg leg{1.5};
  bool operator==(const Trip& o) const {
    return std::tie(note, shown, views, tags, extra, name, start, stops, leg) ==
           std::tie(o.note, o.shown, o.views, o.tags, o.extra, o.name, o.start, o.stops, o.leg);
  }
};
void to_json(nlohmann::json& j, const Trip& t) {
  j = {{"note", t.note},   {"shown", t.shown}, {"views", t.views},
       {"tags", t.tags},   {"extra", t.extra}, {"name", t.name},
       {"start", t.start}, {"stops", t.stops}, {"leg", t.leg}};
}
void from_json(const nlohmann::json& j, Trip& t) {
  decodeField(j, "note", t.note);
  decodeField(j, "shown", t.shown);
  decodeField(j, "views", t.views);
  decodeField(j, "tags", t.tags);
  decodeField(j, "extra", t.extra);
  decodeField(j, "name", t.name);
  decodeField(j, "start", t.start);
  decodeField(j, "stops", t.stops);
  decodeField(j, "leg", t.leg);
}

template <>
struct JsonTypeName<Trip> {
  static constexpr std::string_view value = "Trip";
};

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// The log form of the error that decoding `text` gives; empty when it decodes.
std::string decodingError(std::string_view text) {
  const auto result = JsonHelper::objectResultFromJsonString<Trip>(text);
  return result && result->index() == 1 ? std::get<1>(*result).description() : "";
}

TEST(JsonHelperTest, OnlyThePrettyEncodersEscapeSlashesAndOnlyTheIsoOnesWriteDateTexts) {
  const Trip trip;
  const struct {
    const char* name;
    std::optional<std::string> text;
    bool escaped;
    bool isoDates;
    bool multiline;
  } cases[] = {
      {"plain", JsonHelper::jsonStringFromObject(trip), false, false, false},
      {"compact", JsonHelper::compactJsonStringFromObject(trip), false, true, false},
      {"pretty", JsonHelper::prettyJsonStringFromObject(trip), true, false, true},
      {"ordered", JsonHelper::prettyOrderedByKeyJsonStringFromObject(trip), true, false, true},
      {"debug description", trip.description(), false, true, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    ASSERT_TRUE(c.text.has_value());
    EXPECT_EQ(c.text->find(R"("a\/b")") != std::string::npos, c.escaped) << *c.text;
    EXPECT_EQ(c.text->find(R"("2001-01-01T00:00:10Z")") != std::string::npos, c.isoDates);
    EXPECT_EQ(c.text->find('\n') != std::string::npos, c.multiline);
    EXPECT_LT(c.text->find("\"leg\""), c.text->find("\"name\""));  // keys in order
  }
}

TEST(JsonHelperTest, EachDecoderReadsTheDateFormOfItsEncoderAndLogsWhatItCannotRead) {
  const Trip trip;
  const std::string plain = *JsonHelper::jsonStringFromObject(trip);
  const std::string compact = *JsonHelper::compactJsonStringFromObject(trip);
  internal::ScopedLogCapture log;
  EXPECT_EQ(JsonHelper::objectFromJsonString<Trip>(plain), trip);
  EXPECT_EQ(JsonHelper::objectFromJsonStringWithIsoDates<Trip>(compact), trip);
  EXPECT_EQ(JsonHelper::cloneViaJson(trip), trip);
  EXPECT_EQ(std::get<0>(*JsonHelper::objectResultFromJsonString<Trip>(plain)), trip);
  EXPECT_EQ(JsonHelper::objectFromJsonString<Trip>(compact), std::nullopt);
  EXPECT_EQ(JsonHelper::objectFromJsonStringWithIsoDates<Trip>(plain), std::nullopt);
  EXPECT_EQ(JsonHelper::objectFromJsonString<Trip>("{not json"), std::nullopt);
  // One line per failed decoding (the sequence tests check its text).
  EXPECT_EQ(log.lines().size(), kQMEnableDebugLog ? 3u : 0u);
}

TEST(JsonHelperTest, IsoDateTextsFollowTheCalendarAndZones) {
  const struct {
    const char* text;
    double unixSeconds;
  } cases[] = {
      {"2000-02-29T12:30:15Z", 951827415},
      {"2000-02-29T13:30:15+01:00", 951827415},
      {"1969-12-31T23:59:59Z", -1},
  };
  for (const auto& c : cases) {
    const std::optional<Date> date = dateFromISO8601Text(c.text);
    ASSERT_TRUE(date) << c.text;
    EXPECT_EQ(date->timeIntervalSince1970(), c.unixSeconds) << c.text;
    if (std::string_view(c.text).back() == 'Z') {
      EXPECT_EQ(iso8601Text(*date), c.text);
    }
  }
  for (const char* text : {"2001-02-29T00:00:00Z", "2001-01-01T24:00:00Z", "2001-01-01T00:00:00",
                           "2001-01-01T00:00:00.5Z"}) {
    EXPECT_FALSE(dateFromISO8601Text(text)) << text;
  }
}

TEST(JsonHelperTest, ReadableDecodingErrorsNameTheKeyTypeAndPath) {
  EXPECT_EQ(decodingError(R"({"note":null,"name":"x","start":0,"stops":1,"leg":{}})"),
            "Error Domain=com.quillmark.account Code=1006 \"Type: Trip, Key 'distance' not "
            "found: No value associated with key \"distance\"., codingPath: [leg]\"");
  const struct {
    const char* text;
    const char* what;
    const char* path;
  } cases[] = {
      {R"({"note":null,"name":null})", "Value 'String' not found", "[name]"},
      {R"({"note":null,"name":"x","start":0,"stops":"1"})", "'Int' mismatch", "[stops]"},
      {R"({"note":null,"name":"x","start":0,"stops":1.5})", "'Int' mismatch", "[stops]"},
      {R"([1, 2])", "'Dictionary' mismatch", "[]"},
      {R"({"note":null,"name":"x","start":0,"stops":1,"leg":{"distance":[]}})", "'Double' mismatch",
       "[leg, distance]"},
      // A NullCodable's key is required; defaults take only their type, in lists and maps too.
      {R"({})", "Key 'note' not found", "[]"},
      {R"({"note":null,"views":"7"})", "'Int' mismatch", "[views]"},
      {R"({"note":null,"tags":[1,5e99]})", "'Int' mismatch", "[tags, Index 1]"},
      {R"({"note":null,"tags":[true]})", "'Int' mismatch", "[tags, Index 0]"},
      {R"({"note":null,"tags":{"a":1}})", "'Array' mismatch", "[tags]"},
      {R"({"note":null,"extra":{"k":1}})", "'String' mismatch", "[extra, k]"},
  };
  for (const auto& c : cases) {
    const std::string error = decodingError(c.text);
    EXPECT_THAT(error, HasSubstr(c.what)) << c.text;
    EXPECT_THAT(error, EndsWith(std::string("codingPath: ") + c.path + "\"")) << c.text;
  }
  // Not JSON; the last two hold numbers beyond the double range.
  for (const char* text : {"{\"note\":", "1E400", R"({"note":null,"name":"x","start":-1e999})"}) {
    EXPECT_THAT(decodingError(text), StartsWith("Error Domain=NSCocoaErrorDomain Code=4864"))
        << text;
  }
}

TEST(JsonHelperTest, TheStoreHelpersWriteAndRemoveAndSynchroniseWhenAsked) {
  testing::FakeEnv env;
  // Held, so that only synchronize writes the file (closing the store would write it too).
  const std::shared_ptr<SettingsStore> store = env.standardSettings();
  const std::optional<Trip> trip = Trip();
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", trip, true);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), trip);
  EXPECT_EQ(testing::run("python3 -c \"import sqlite3,sys; print(sqlite3.connect(sys.argv[1])"
                         ".execute('SELECT value FROM settings WHERE key=?', ('trip',))"
                         ".fetchone() is not None)\" '" +
                         env.settingsPath().string() + "'"),
            "True\n");
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(), false);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), std::nullopt);
  store->setInteger("number", 5);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "number"), std::nullopt);
}

TEST(JsonHelperTest, EncodingFailuresAreAbsentAndLoggedExceptByThePlainEncoderAndStoreNothing) {
  testing::FakeEnv env;
  const std::optional<Trip> stored = Trip();
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", stored, false);
  Trip trip;
  trip.name = "bad \xff utf-8";
  internal::ScopedLogCapture log;
  EXPECT_EQ(JsonHelper::jsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::compactJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::prettyJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::prettyOrderedByKeyJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::cloneViaJson(trip), std::nullopt);
  EXPECT_THAT(trip.description(), StartsWith("json error: "));
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(trip), false);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), stored);  // left as it was
  if (!kQMEnableDebugLog) return;
  ASSERT_EQ(log.lines().size(), 3u);  // none from the plain encoder, alone or inside the clone
  EXPECT_THAT(log.lines()[2], StartsWith("[JSON] Error while pretty encoding object, error: "));
}

TEST(JsonHelperTest, ConvertToDictionaryTakesObjectsOnly) {
  EXPECT_EQ(JsonHelper::convertToDictionary(R"({"a": 1})"), nlohmann::json({{"a", 1}}));
  EXPECT_EQ(JsonHelper::convertToDictionary("\"text\""), std::nullopt);
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(JsonHelper::convertToDictionary("{oops"), std::nullopt);
  EXPECT_EQ(JsonHelper::convertToDictionary(R"({"a": 1e999})"), std::nullopt);
  const std::string printed = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 2) << printed;
}

TEST(JsonHelperTest, NullAndMissingFieldsReadAsTheDefaultAndNullCodableAnythingElseToo) {
  Trip given;
  given.note.wrappedValue.reset();
  nlohmann::json json = given;
  EXPECT_EQ(json["note"], nullptr);
  json.update({{"note", 5}, {"shown", nullptr}, {"tags", nullptr}});
  json.erase("views");
  json.erase("extra");
  const std::optional<Trip> trip = JsonHelper::objectFromJsonString<Trip>(json.dump());
  ASSERT_TRUE(trip);
  EXPECT_EQ(trip->note.wrappedValue, std::nullopt);
  EXPECT_TRUE(trip->shown.wrappedValue);
  EXPECT_EQ(trip->views.wrappedValue, 0);
  EXPECT_TRUE(trip->tags.wrappedValue.empty());
  EXPECT_TRUE(trip->extra.wrappedValue.empty());
}

}  // namespace
}  // namespace qm
