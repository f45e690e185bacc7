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

struct Leg {
  double distance = 0;
};
void to_json(nlohmann::json& j, const Leg& leg) { j = {{"distance", leg.distance}}; }
void from_json(const nlohmann::json& j, Leg& leg) { decodeField(j, "distance", leg.distance); }

struct Trip : JsonDebugDescriptable<Trip> {
  std::string name;
  Date start;
  std::int64_t stops = 0;
  Leg leg;
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

Trip sampleTrip() {
  Trip trip;
  trip.name = "a/b";
  trip.start = Date::fromReferenceDateSeconds(10);
  trip.stops = 3;
  trip.leg.distance = 1.5;
  return trip;
}

}  // namespace

template <>
struct JsonTypeName<Trip> {
  static constexpr std::string_view value = "Trip";
};

namespace {

TEST(JsonHelperTest, OnlyThePrettyEncodersEscapeSlashesAndOnlyTheIsoOnesWriteDateTexts) {
  const Trip trip = sampleTrip();
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
    EXPECT_EQ(c.text->find(R"("a/b")") != std::string::npos, !c.escaped) << *c.text;
    EXPECT_EQ(c.text->find(R"("2001-01-01T00:00:10Z")") != std::string::npos, c.isoDates);
    EXPECT_EQ(c.text->find(R"("start":10.0)") != std::string::npos ||
                  c.text->find(R"("start": 10.0)") != std::string::npos,
              !c.isoDates);
    EXPECT_EQ(c.text->find('\n') != std::string::npos, c.multiline);
    EXPECT_LT(c.text->find("\"leg\""), c.text->find("\"name\""));  // keys in order
  }
  EXPECT_EQ(trip.debugDescription(), trip.description());
}

TEST(JsonHelperTest, EachDecoderReadsTheDateFormOfItsEncoderAndLogsWhatItCannotRead) {
  const Trip trip = sampleTrip();
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
  if (!kQMEnableDebugLog) {
    EXPECT_TRUE(log.lines().empty());
    return;
  }
  ASSERT_EQ(log.lines().size(), 3u);  // one line per failed decoding
  EXPECT_THAT(log.lines()[2], ::testing::StartsWith("Error on decoding from json "));
  EXPECT_THAT(log.lines()[2], ::testing::EndsWith(", json: {not json, target type: Trip"));
}

TEST(JsonHelperTest, IsoDateTextsFollowTheCalendarAndZones) {
  const struct {
    const char* text;
    std::optional<double> unixSeconds;
  } cases[] = {
      {"1970-01-01T00:00:00Z", 0},
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
  const struct {
    const char* text;
    const char* description;
  } cases[] = {
      {R"({"name":"x","start":0,"stops":1,"leg":{}})",
       "Type: Trip, Key 'distance' not found: No value associated with key \"distance\"., "
       "codingPath: [leg]"},
      {R"({"name":null,"start":0,"stops":1,"leg":{"distance":1}})",
       "Type: Trip, Value 'String' not found: Expected String value but found null instead., "
       "codingPath: [name]"},
      {R"({"name":"x","start":0,"stops":"1","leg":{"distance":1}})",
       "Type: Trip, Type 'Int' mismatch: Expected to decode Int but found a string instead., "
       "codingPath: [stops]"},
      {R"({"name":"x","start":0,"stops":1.5,"leg":{"distance":1}})",
       "Type: Trip, Type 'Int' mismatch: Expected to decode Int but found a number instead., "
       "codingPath: [stops]"},
      {R"({"name":"x","start":0,"stops":1,"leg":{"distance":[]}})",
       "Type: Trip, Type 'Double' mismatch: Expected to decode Double but found an array "
       "instead., codingPath: [leg, distance]"},
      {R"([1, 2])",
       "Type: Trip, Type 'Dictionary' mismatch: Expected to decode Dictionary but found an "
       "array instead., codingPath: []"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    const auto result = JsonHelper::objectResultFromJsonString<Trip>(c.text);
    ASSERT_TRUE(result.has_value());
    ASSERT_EQ(result->index(), 1u);
    const Error& error = std::get<1>(*result);
    EXPECT_EQ(error.domain(), "com.quillmark.account");
    EXPECT_EQ(error.code(), 1006);
    EXPECT_EQ(error.localizedDescription(), c.description);
  }
}

TEST(JsonHelperTest, CorruptTextIsTheCorruptDataError) {
  // The last two hold numbers beyond the double range.
  for (const char* text : {"{\"name\":", "1E400", R"({"name":"x","start":-1e999})"}) {
    SCOPED_TRACE(text);
    const auto corrupt = JsonHelper::objectResultFromJsonString<Trip>(text);
    ASSERT_TRUE(corrupt && corrupt->index() == 1);
    EXPECT_EQ(std::get<1>(*corrupt).code(), 4864);
    EXPECT_NE(std::get<1>(*corrupt).domain(), "com.quillmark.account");
  }
}

TEST(JsonHelperTest, EncodingFailuresAreAbsentAndLoggedExceptByThePlainEncoder) {
  Trip trip = sampleTrip();
  trip.name = "bad \xff utf-8";
  internal::ScopedLogCapture log;
  EXPECT_EQ(JsonHelper::jsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(log.lines().size(), 0u);
  EXPECT_EQ(JsonHelper::compactJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::prettyJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::prettyOrderedByKeyJsonStringFromObject(trip), std::nullopt);
  EXPECT_EQ(JsonHelper::cloneViaJson(trip), std::nullopt);
  EXPECT_THAT(trip.description(), ::testing::StartsWith("json error: "));
  if (!kQMEnableDebugLog) return;
  ASSERT_EQ(log.lines().size(), 3u);
  EXPECT_THAT(log.lines()[0],
              ::testing::StartsWith("[JSON] Error while compact encoding object, error: "));
  EXPECT_THAT(log.lines()[2],
              ::testing::StartsWith("[JSON] Error while pretty encoding object, error: "));
}

// How many rows the store's file holds under `key`, as another reader (python's sqlite3) sees it.
std::string keyCountOnDisk(const std::filesystem::path& file, const std::string& key) {
  return testing::run(
      "python3 -c \"import sqlite3,sys; print(sqlite3.connect(sys.argv[1])"
      ".execute('SELECT count(*) FROM settings WHERE key=?',"
      " (sys.argv[2],)).fetchone()[0])\" '" +
      file.string() + "' '" + key + "'");
}

TEST(JsonHelperTest, TheStoreHelpersWriteRemoveAndSynchroniseOnlyWhenAsked) {
  testing::FakeEnv env;
  // Held, so that only synchronize writes the file (closing the store would write it too).
  const std::shared_ptr<SettingsStore> store = env.standardSettings();
  const std::optional<Trip> trip = sampleTrip();
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", trip, false);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), trip);
  EXPECT_EQ(*store->stringForKey("trip"), *JsonHelper::jsonStringFromObject(*trip));
  EXPECT_EQ(keyCountOnDisk(env.settingsPath(), "trip"), "0\n");
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", trip, true);
  EXPECT_EQ(keyCountOnDisk(env.settingsPath(), "trip"), "1\n");

  // An object that does not encode leaves the stored one.
  Trip bad = sampleTrip();
  bad.name = "\xff";
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(bad), true);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), trip);

  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(), false);
  EXPECT_EQ(JsonHelper::jsonObjectFromUserDefaults<Trip>(env, "trip"), std::nullopt);
  EXPECT_EQ(keyCountOnDisk(env.settingsPath(), "trip"), "1\n");
  JsonHelper::saveJsonObjectToUserDefaults(env, "trip", std::optional<Trip>(), true);
  EXPECT_EQ(keyCountOnDisk(env.settingsPath(), "trip"), "0\n");

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

struct Note {
  NullCodable<std::string> title;
  DecodableDefault::True shown;
  DecodableDefault::False pinned;
  DecodableDefault::Zero views;
  DecodableDefault::EmptyString body;
  DecodableDefault::EmptyList<std::vector<std::int64_t>> tags;
  DecodableDefault::EmptyMap<std::map<std::string, std::string>> extra;
};
void to_json(nlohmann::json& j, const Note& n) {
  j = {{"title", n.title}, {"shown", n.shown}, {"pinned", n.pinned}, {"views", n.views},
       {"body", n.body},   {"tags", n.tags},   {"extra", n.extra}};
}
void from_json(const nlohmann::json& j, Note& n) {
  decodeField(j, "title", n.title);
  decodeField(j, "shown", n.shown);
  decodeField(j, "pinned", n.pinned);
  decodeField(j, "views", n.views);
  decodeField(j, "body", n.body);
  decodeField(j, "tags", n.tags);
  decodeField(j, "extra", n.extra);
}

}  // namespace

template <>
struct JsonTypeName<Note> {
  static constexpr std::string_view value = "Note";
};

namespace {

TEST(JsonFieldWrappersTest, NullCodableWritesNullAndReadsAnythingElseAsAbsent) {
  const Note empty;
  EXPECT_EQ(nlohmann::json::parse(*JsonHelper::jsonStringFromObject(empty))["title"], nullptr);
  const struct {
    const char* text;
    std::optional<std::string> title;
  } cases[] = {
      {R"({"title":"x"})", "x"},
      {R"({"title":5})", std::nullopt},
      {R"({"title":null})", std::nullopt},
  };
  for (const auto& c : cases) {
    const std::optional<Note> note = JsonHelper::objectFromJsonString<Note>(c.text);
    ASSERT_TRUE(note) << c.text;
    EXPECT_EQ(note->title.wrappedValue, c.title) << c.text;
  }
  // The key itself is still required.
  const auto missing = JsonHelper::objectResultFromJsonString<Note>("{}");
  ASSERT_TRUE(missing && missing->index() == 1);
  EXPECT_THAT(std::get<1>(*missing).localizedDescription(),
              ::testing::StartsWith("Type: Note, Key 'title' not found"));
}

TEST(JsonFieldWrappersTest, DefaultsFillMissingAndNullFieldsButNotWrongTypes) {
  const std::optional<Note> note =
      JsonHelper::objectFromJsonString<Note>(R"({"title":null,"shown":null,"tags":null})");
  ASSERT_TRUE(note);
  EXPECT_TRUE(note->shown.wrappedValue);
  EXPECT_FALSE(note->pinned.wrappedValue);
  EXPECT_EQ(note->views.wrappedValue, 0);
  EXPECT_EQ(note->body.wrappedValue, "");
  EXPECT_TRUE(note->tags.wrappedValue.empty());
  EXPECT_TRUE(note->extra.wrappedValue.empty());
  const std::optional<Note> given = JsonHelper::objectFromJsonString<Note>(
      R"({"title":"t","shown":false,"views":7,"tags":[1,2],"extra":{"k":"v"}})");
  ASSERT_TRUE(given);
  EXPECT_FALSE(given->shown.wrappedValue);
  EXPECT_EQ(given->views.wrappedValue, 7);
  EXPECT_EQ(given->tags.wrappedValue, (std::vector<std::int64_t>{1, 2}));
  EXPECT_EQ(given->extra.wrappedValue.at("k"), "v");

  // A present value of another type fails, in lists and maps too.
  const struct {
    const char* text;
    const char* mismatch;
    const char* path;
  } wrongs[] = {
      {R"({"title":null,"views":"7"})", "Type 'Int' mismatch", "[views]"},
      {R"({"title":null,"tags":[1,5e99]})", "Type 'Int' mismatch", "[tags, Index 1]"},
      {R"({"title":null,"tags":[true]})", "Type 'Int' mismatch", "[tags, Index 0]"},
      {R"({"title":null,"tags":{"a":1}})", "Type 'Array' mismatch", "[tags]"},
      {R"({"title":null,"extra":{"k":1}})", "Type 'String' mismatch", "[extra, k]"},
  };
  for (const auto& c : wrongs) {
    SCOPED_TRACE(c.text);
    const auto wrong = JsonHelper::objectResultFromJsonString<Note>(c.text);
    ASSERT_TRUE(wrong && wrong->index() == 1);
    const std::string description = std::get<1>(*wrong).localizedDescription();
    EXPECT_THAT(description, ::testing::StartsWith(std::string("Type: Note, ") + c.mismatch));
    EXPECT_THAT(description, ::testing::EndsWith(std::string("codingPath: ") + c.path));
  }
}

}  // namespace
}  // namespace qm
