#include "qmcore/persistence/JsonHelper.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

#include "qmcore/persistence/DecodableDefault.hpp"
#include "qmcore/persistence/JsonDebugDescriptable.hpp"
#include "qmcore/persistence/NullCodable.hpp"
#include "qmcore/persistence/internal/DebugLogCapture.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"

namespace qm {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

struct Leg {
  double distance = 0;
};
void to_json(nlohmann::json& j, const Leg& leg) { j = {{"distance", leg.distance}}; }
void from_json(const nlohmann::json& j, Leg& leg) { decodeField(j, "distance", leg.distance); }

struct Trip : JsonDebugDescriptable<Trip> {
  std::string name = "a/b";
  Date start = Date::fromReferenceDateSeconds(10);
  std::int64_t stops = 3;
  Leg leg{1.5};
  bool operator==(const Trip& o) const {
    return name == o.name && start == o.start && stops == o.stops && leg.distance == o.leg.distance;
  }
};
void to_json(nlohmann::json& j, const Trip& t) {
  j = {{"name", t.name}, {"start", t.start}, {"stops", t.stops}, {"leg", t.leg}};
}
void from_json(const nlohmann::json& j, Trip& t) {
  decodeField(j, "name", t.name);
  decodeField(j, "start", t.start);
  decodeField(j, "stops", t.stops);
  decodeField(j, "leg", t.leg);
}

struct Note {
  NullCodable<std::string> title;
  DecodableDefault::True shown;
  DecodableDefault::Zero views;
  DecodableDefault::EmptyList<std::vector<std::int64_t>> tags;
  DecodableDefault::EmptyMap<std::map<std::string, std::string>> extra;
};
void to_json(nlohmann::json& j, const Note& n) {
  j = {{"title", n.title},
       {"shown", n.shown},
       {"views", n.views},
       {"tags", n.tags},
       {"extra", n.extra}};
}
void from_json(const nlohmann::json& j, Note& n) {
  decodeField(j, "title", n.title);
  decodeField(j, "shown", n.shown);
  decodeField(j, "views", n.views);
  decodeField(j, "tags", n.tags);
  decodeField(j, "extra", n.extra);
}

}  // namespace

template <>
struct JsonTypeName<Trip> {
  static constexpr std::string_view value = "Trip";
};
template <>
struct JsonTypeName<Note> {
  static constexpr std::string_view value = "Note";
};

namespace {

// The log form of the error that decoding `text` as T gives; empty when it decodes.
template <typename T>
std::string decodingError(std::string_view text) {
  const auto result = JsonHelper::objectResultFromJsonString<T>(text);
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
      {"pretty ordered", JsonHelper::prettyOrderedByKeyJsonStringFromObject(trip), true, false,
       true},
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
    std::optional<double> unixSeconds;
  } cases[] = {
      {"2000-02-29T12:30:15Z", 951827415},
      {"2000-02-29T13:30:15+01:00", 951827415},
      {"1969-12-31T23:59:59Z", -1},
      {"2001-02-29T00:00:00Z", std::nullopt},
      {"2001-01-01T24:00:00Z", std::nullopt},
      {"2001-01-01T00:00:00", std::nullopt},
      {"2001-01-01T00:00:00.5Z", std::nullopt},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const std::optional<Date> date = dateFromISO8601Text(c.text);
    ASSERT_EQ(date.has_value(), c.unixSeconds.has_value());
    if (!date) continue;
    EXPECT_EQ(date->timeIntervalSince1970(), *c.unixSeconds);
    if (std::string_view(c.text).back() == 'Z') {
      EXPECT_EQ(iso8601Text(*date), c.text);
    }
  }
}

TEST(JsonHelperTest, ReadableDecodingErrorsNameTheKeyTypeAndPath) {
  EXPECT_EQ(decodingError<Trip>(R"({"name":"x","start":0,"stops":1,"leg":{}})"),
            "Error Domain=com.quillmark.account Code=1006 \"Type: Trip, Key 'distance' not "
            "found: No value associated with key \"distance\"., codingPath: [leg]\"");
  const struct {
    std::string (*decode)(std::string_view);
    const char* text;
    const char* what;
    const char* path;
  } cases[] = {
      {decodingError<Trip>, R"({"name":null})", "Value 'String' not found", "[name]"},
      {decodingError<Trip>, R"({"name":"x","start":0,"stops":"1"})", "'Int' mismatch", "[stops]"},
      {decodingError<Trip>, R"({"name":"x","start":0,"stops":1.5})", "'Int' mismatch", "[stops]"},
      {decodingError<Trip>, R"({"name":"x","start":0,"stops":1,"leg":{"distance":[]}})",
       "'Double' mismatch", "[leg, distance]"},
      {decodingError<Trip>, R"([1, 2])", "'Dictionary' mismatch", "[]"},
      // The key of a NullCodable is required; the defaults take only values of their type, in
      // lists and maps too.
      {decodingError<Note>, R"({})", "Key 'title' not found", "[]"},
      {decodingError<Note>, R"({"title":null,"views":"7"})", "'Int' mismatch", "[views]"},
      {decodingError<Note>, R"({"title":null,"tags":[1,5e99]})", "'Int' mismatch",
       "[tags, Index 1]"},
      {decodingError<Note>, R"({"title":null,"tags":[true]})", "'Int' mismatch", "[tags, Index 0]"},
      {decodingError<Note>, R"({"title":null,"tags":{"a":1}})", "'Array' mismatch", "[tags]"},
      {decodingError<Note>, R"({"title":null,"extra":{"k":1}})", "'String' mismatch", "[extra, k]"},
  };
  for (const auto& c : cases) {
    const std::string error = c.decode(c.text);
    EXPECT_THAT(error, HasSubstr(c.what)) << c.text;
    EXPECT_THAT(error, EndsWith(std::string("codingPath: ") + c.path + "\"")) << c.text;
  }
  // Not JSON; the last two hold numbers beyond the double range.
  for (const char* text : {"{\"name\":", "1E400", R"({"name":"x","start":-1e999})"}) {
    EXPECT_THAT(decodingError<Trip>(text), StartsWith("Error Domain=NSCocoaErrorDomain Code=4864"))
        << text;
  }
}

TEST(JsonHelperTest, EncodingFailuresAreAbsentAndLoggedExceptByThePlainEncoder) {
  Trip trip;
  trip.name = "bad \xff utf-8";
  internal::ScopedLogCapture log;
  EXPECT_EQ(JsonHelper::jsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(log.lines().size(), 0u);
  EXPECT_EQ(JsonHelper::compactJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::prettyJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::prettyOrderedByKeyJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::cloneViaJson(trip), std::nullopt);
  EXPECT_THAT(trip.description(), StartsWith("json error: "));
  if (!kQMEnableDebugLog) return;
  ASSERT_EQ(log.lines().size(), 3u);
  EXPECT_THAT(log.lines()[2], StartsWith("[JSON] Error while pretty encoding object, error: "));
}

TEST(JsonHelperTest, TheStoreHelpersWriteAndRemoveAndSynchroniseWhenAsked) {
  testing::FakeEnv env;
  // Held, so that only synchronize writes the file (closing the store would write it too).
  const std::shared_ptr<SettingsStore> store = env.standardSettings();
  const std::optional<Trip> trip = Trip();
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", trip, true);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), trip);
  // Another reader of the file sees the row.
  EXPECT_EQ(testing::run("python3 -c \"import sqlite3,sys; print(sqlite3.connect(sys.argv[1])"
                         ".execute('SELECT value FROM settings WHERE key=?', ('trip',))"
                         ".fetchone() is not None)\" '" +
                         env.settingsPath().string() + "'"),
            "True\n");

  // An object that does not encode leaves the stored one.
  Trip bad;
  bad.name = "\xff";
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(bad), false);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), trip);
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(), false);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), std::nullopt);
  store->setInteger("number", 5);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "number"), std::nullopt);
}

TEST(JsonHelperTest, ConvertToDictionaryTakesObjectsOnly) {
  EXPECT_EQ(JsonHelper::convertToDictionary(R"({"a": [1, "x"]})"),
            nlohmann::json({{"a", {1, "x"}}}));
  EXPECT_EQ(JsonHelper::convertToDictionary("\"text\""), std::nullopt);
  ::testing::internal::CaptureStdout();
  EXPECT_EQ(JsonHelper::convertToDictionary("{oops"), std::nullopt);
  EXPECT_EQ(JsonHelper::convertToDictionary(R"({"a": 1e999})"), std::nullopt);
  const std::string printed = ::testing::internal::GetCapturedStdout();
  EXPECT_EQ(std::count(printed.begin(), printed.end(), '\n'), 2) << printed;
}

TEST(JsonHelperTest, NullAndMissingFieldsReadAsTheDefaultAndNullCodableAnythingElseToo) {
  EXPECT_EQ(nlohmann::json(Note())["title"], nullptr);
  const std::optional<Note> empty =
      JsonHelper::objectFromJsonString<Note>(R"({"title":5,"shown":null,"tags":null})");
  ASSERT_TRUE(empty);
  EXPECT_EQ(empty->title.wrappedValue, std::nullopt);
  EXPECT_TRUE(empty->shown.wrappedValue);
  EXPECT_EQ(empty->views.wrappedValue, 0);
  EXPECT_TRUE(empty->tags.wrappedValue.empty());
  EXPECT_TRUE(empty->extra.wrappedValue.empty());
  const std::optional<Note> given = JsonHelper::objectFromJsonString<Note>(
      R"({"title":"t","shown":false,"tags":[1,2],"extra":{"k":"v"}})");
  ASSERT_TRUE(given);
  EXPECT_EQ(given->title.wrappedValue, "t");
  EXPECT_FALSE(given->shown.wrappedValue);
  EXPECT_EQ(given->tags.wrappedValue, (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(given->extra.wrappedValue.at("k"), "v");
}

}  // namespace
}  // namespace qm
