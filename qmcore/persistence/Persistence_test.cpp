#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <tuple>
#include <vector>

#include "qmcore/persistence/AutoIncrementSequence.hpp"
#include "qmcore/persistence/ColorPersistance.hpp"
#include "qmcore/persistence/DecodableDefault.hpp"
#include "qmcore/persistence/JsonDebugDescriptable.hpp"
#include "qmcore/persistence/JsonHelper.hpp"
#include "qmcore/persistence/NullCodable.hpp"
#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"
#include "qmcore/persistence/QMImageFormatDetector.hpp"
#include "qmcore/persistence/UserDefaultsBacked.hpp"
#include "qmcore/persistence/internal/DebugLogCapture.hpp"
#include "qmcore/platform/ImageCodec.hpp"
#include "qmcore/platform/UnicodeText.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {

enum class Mode : std::int64_t { kOff = 0, kOn = 1, kAuto = 5 };
template <>
struct EnumRawValues<Mode> {
  static constexpr Mode cases[] = {Mode::kOff, Mode::kOn, Mode::kAuto};
};

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

TEST(AutoIncrementSequenceTest, SavedRecordsAreJsonUnderTheVerbatimCodeKeyAndResetToTheStart) {
  testing::FakeEnv env;
  const std::shared_ptr<SettingsStore> store = env.standardSettings();
  AutoIncrementSequence::resetSequenceWithCode(env, "a b/c");  // nothing stored: nothing written
  EXPECT_TRUE(store->dictionaryRepresentation().empty());
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "a b/c"),
            (AutoIncrementSequence{1, 1, 0, "a b/c", 1}));
  const AutoIncrementSequence s{5, 2, 3, "a b/c", 42};
  AutoIncrementSequence::saveSequence(env, s);
  EXPECT_EQ(store->stringForKey("QMSequenceStorageBaseKey_a b/c"),
            R"({"code":"a b/c","leadingZeroes":3,"start":5,"step":2,"value":42})");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "a b/c"), s);
  AutoIncrementSequence::resetSequenceWithCode(env, "a b/c");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "a b/c").value, 5);

  // The stored code wins over the requested one, and a reset saves under it.
  store->setObject("QMSequenceStorageBaseKey_x",
                   R"({"start":1,"step":1,"leadingZeroes":0,"code":"other","value":9})");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "x").code, "other");
  AutoIncrementSequence::resetSequenceWithCode(env, "x");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "other").value, 1);
}

TEST(AutoIncrementSequenceTest, UnreadableRecordsGiveTheDefaultWithOneLogLineAndStay) {
  testing::FakeEnv env;
  const std::shared_ptr<SettingsStore> store = env.standardSettings();
  const struct {
    const char* name;
    SettingsValue stored;
  } cases[] = {
      {"no leadingZeroes", R"({"start":1,"step":1,"code":"c","value":3})"},
      {"not JSON", "{"},
      {"a number", SettingsValue(12)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    store->setObject("QMSequenceStorageBaseKey_c", c.stored);
    internal::ScopedLogCapture log;
    EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "c"),
              AutoIncrementSequence::defaultSequence("c"));
    AutoIncrementSequence::resetSequenceWithCode(env, "c");
    EXPECT_EQ(store->objectForKey("QMSequenceStorageBaseKey_c"), c.stored);
    if (!kQMEnableDebugLog) continue;
    ASSERT_EQ(log.lines().size(), 2u);  // one per read
    EXPECT_THAT(log.lines()[0], StartsWith("Error on decoding from json "));
    EXPECT_THAT(log.lines()[0], EndsWith(", target type: AutoIncrementSequence"));
  }
}

TEST(AutoIncrementSequenceTest, FormattedValuesPadWithoutGroupingInTheTableWords) {
  const ::qm::testing::ScopedLocale locale("de_DE");
  AutoIncrementSequence s{1000, 25, 5, "d", 1234};
  EXPECT_EQ(s.localizedDescription(), "Wert: 01234 (Start: 1000, Schritt: 25)");
  s.leadingZeroes = -2;  // no padding
  EXPECT_EQ(s.formattedValue(), "1234");
  s.leadingZeroes = 3;  // a minimum, not a maximum
  EXPECT_EQ(s.formattedValue(), "1234");
}

// A real store that counts its synchronize calls.
class CountingStore final : public SettingsStore {
 public:
  explicit CountingStore(std::shared_ptr<SettingsStore> store) : store_(std::move(store)) {}
  std::optional<SettingsValue> objectForKey(std::string_view key) const override {
    return store_->objectForKey(key);
  }
  void setObject(std::string_view key, SettingsValue value) override {
    store_->setObject(key, std::move(value));
  }
  void removeObjectForKey(std::string_view key) override { store_->removeObjectForKey(key); }
  bool synchronize() override {
    ++synchronizations;
    return store_->synchronize();
  }
  SettingsValue::Dictionary dictionaryRepresentation() const override {
    return store_->dictionaryRepresentation();
  }
  int synchronizations = 0;

 private:
  std::shared_ptr<SettingsStore> store_;
};

class UserDefaultsBackedTest : public ::testing::Test {
 protected:
  ::qm::testing::FakeEnv env_;
  std::shared_ptr<CountingStore> standard_ =
      std::make_shared<CountingStore>(env_.standardSettings());
  std::shared_ptr<SettingsStore> named_ = env_.namedSettings("group");
  UserDefaults defaults_{standard_, standard_};
  UserDefaults namedDefaults_{named_, standard_};
};

TEST_F(UserDefaultsBackedTest, AStoredValueOfAnotherKindReadsAsTheDefaultAndStays) {
  using Int64 = std::numeric_limits<std::int64_t>;
  const struct {
    const char* name;
    SettingsValue stored;
    bool intReads, floatReads, doubleReads, stringReads;
    std::optional<bool> boolRead;  // absent: the default; only 0 and 1 are Bools
  } cases[] = {
      {"integer 2", 2, true, true, true, false, {}},
      {"whole double", 1.0, true, true, true, false, true},
      {"double 2.5", 2.5, false, true, true, false, {}},
      {"double 0.1 (not a float)", 0.1, false, false, true, false, {}},
      {"bool", false, true, true, true, false, false},
      {"number text", "7", false, false, false, true, {}},
      {"double 2^63", 9223372036854775808.0, false, true, true, false, {}},
      // Integers are compared as integers: widened to a double first, these would pass.
      {"integer 2^24+1 (not a float)", 16777217, true, false, true, false, {}},
      {"2^53+1 (not a double)", std::int64_t{9007199254740993}, true, false, false, false, {}},
      {"2^63-1 (not a double)", Int64::max(), true, false, false, false, {}},
      {"integer -2^63", Int64::min(), true, true, true, false, {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    standard_->setObject("k", c.stored);
    EXPECT_EQ(UserDefaultsBackedInt(-9, "k", defaults_).wrappedValue() != -9, c.intReads);
    EXPECT_EQ(UserDefaultsBackedFloat(-9.f, "k", defaults_).wrappedValue() != -9.f, c.floatReads);
    EXPECT_EQ(UserDefaultsBacked<double>(-9.0, "k", defaults_).wrappedValue() != -9.0,
              c.doubleReads);
    EXPECT_EQ(UserDefaultsBackedString("-", "k", defaults_).wrappedValue() != "-", c.stringReads);
    for (const bool fallback : {false, true}) {
      EXPECT_EQ(UserDefaultsBackedBool(fallback, "k", defaults_).wrappedValue(),
                c.boolRead.value_or(fallback));
    }
    EXPECT_EQ(standard_->objectForKey("k"), c.stored);
  }
  EXPECT_EQ(standard_->synchronizations, 0);
}

TEST_F(UserDefaultsBackedTest, ThePresenceTestAsksTheStandardStore) {
  const UserDefaultsBackedInt number(1, "k", namedDefaults_);
  const UserDefaultsBackedEnum<Mode> mode(Mode::kOff, "k", namedDefaults_);
  named_->setObject("k", SettingsValue(5));
  EXPECT_EQ(number.wrappedValue(), 1);
  EXPECT_EQ(mode.wrappedValue(), Mode::kOff);
  EXPECT_EQ(namedDefaults_.nullableDouble("k", std::nullopt), std::nullopt);
  // Once the standard store has the key (whatever its value), the named store's value is read.
  standard_->setObject("k", SettingsValue("anything"));
  EXPECT_EQ(number.wrappedValue(), 5);
  EXPECT_EQ(mode.wrappedValue(), Mode::kAuto);
  EXPECT_EQ(namedDefaults_.integerForKey("k", 3), 5);
  EXPECT_EQ(namedDefaults_.doubleForKey("k", 3), 5.0);
  EXPECT_EQ(namedDefaults_.boolForKey("k", false), true);
  EXPECT_EQ(namedDefaults_.nullableDouble("k", std::nullopt), 5.0);
  named_->setObject("k", SettingsValue(99));  // a raw value that names no case
  EXPECT_EQ(mode.wrappedValue(), Mode::kOff);
}

TEST_F(UserDefaultsBackedTest, AnOverrideWinsThenAConverterDecidesWithoutThePresenceTest) {
  bool overriding = true;
  const auto override = [&] { return std::pair<bool, std::int64_t>{overriding, 7}; };
  const auto evenOnly = [](const std::int64_t& v) { return std::pair{v % 2 == 0, v * 10}; };
  const UserDefaultsBackedInt property(1, "k", namedDefaults_, override, evenOnly);
  named_->setObject("k", SettingsValue(42));
  EXPECT_EQ(property.wrappedValue(), 7);
  overriding = false;
  EXPECT_EQ(property.wrappedValue(), 420);
  named_->setObject("k", SettingsValue(43));
  EXPECT_EQ(property.wrappedValue(), 1);
  // Nothing that converts: on to the ordinary read (which the presence test stops here).
  named_->setObject("k", SettingsValue("44"));
  EXPECT_EQ(property.wrappedValue(), 1);
}

TEST_F(UserDefaultsBackedTest, WritesLandAtOnceAndSynchroniseExceptRemovalsEnumsAndColours) {
  UserDefaultsBackedInt number(0, "n", defaults_);
  number.modifyWrappedValue([](std::int64_t& v) { v += 5; });
  number.modifyWrappedValue([](std::int64_t& v) { v *= 3; });
  EXPECT_EQ(UserDefaultsBackedInt(0, "n", defaults_).wrappedValue(), 15);  // another on the key
  // A float is kept as the double that holds it; a Bool as a Boolean, not a number.
  UserDefaultsBackedFloat(0, "f", defaults_).setWrappedValue(0.1f);
  EXPECT_EQ(standard_->objectForKey("f"), SettingsValue(static_cast<double>(0.1f)));
  UserDefaultsBackedBool(false, "b", defaults_).setWrappedValue(true);
  EXPECT_EQ(standard_->objectForKey("b"), SettingsValue(true));
  UserDefaultsBackedNullableString text("t", defaults_);
  text.setWrappedValue("hello");
  EXPECT_EQ(standard_->objectForKey("t"), SettingsValue("hello"));
  EXPECT_EQ(standard_->synchronizations, 5);

  text.setWrappedValue(std::nullopt);
  EXPECT_FALSE(standard_->hasKey("t"));
  UserDefaultsBackedEnum<Mode>(Mode::kOn, "m", defaults_).setWrappedValue(Mode::kAuto);
  EXPECT_EQ(standard_->objectForKey("m"), SettingsValue(5));
  UserDefaultsBackedColor(Color::black(), "c", defaults_).setWrappedValue(Color::white(1, 1));
  EXPECT_EQ(standard_->synchronizations, 5);
}

TEST_F(UserDefaultsBackedTest, ColoursAreTextsReadFromTheStandardStoreAndEmptyTextsAreTheDefault) {
  const Color fallback = Color::rgba(0, 0, 1, 1);
  UserDefaultsBackedColor colour(fallback, "c", defaults_);
  EXPECT_EQ(colour.wrappedValue(), fallback);
  colour.setWrappedValue(Color::rgba(1, 0.5, 0, 1));
  EXPECT_EQ(standard_->objectForKey("c"), SettingsValue("{1.000, 0.500, 0.000, 1.000}"));
  standard_->setObject("c", SettingsValue(""));
  EXPECT_EQ(colour.wrappedValue(), fallback);

  // The text is read from the standard store even when another store holds the key.
  const UserDefaultsBackedColor named(fallback, "c", namedDefaults_);
  named_->setObject("c", SettingsValue("{0, 1, 0, 1}"));
  standard_->setObject("c", SettingsValue("{1, 0.5, 0, 1}"));
  EXPECT_EQ(named.wrappedValue(), Color::rgba(1, 0.5, 0, 1));
  named_->removeObjectForKey("c");
  EXPECT_EQ(named.wrappedValue(), fallback);
}

TEST_F(UserDefaultsBackedTest, ADamagedColourTextStopsTheProgram) {
  standard_->setObject("c", SettingsValue("{0.5,0.25,0.125,1}"));
  const UserDefaultsBackedColor colour(Color::black(), "c", defaults_);
  EXPECT_DEATH(colour.wrappedValue(), "stored colour");
}

TEST(ColorPersistanceTest, ReadsTextsOfFourPiecesAndGivesBlackForEveryOtherShape) {
  constexpr float kInf = std::numeric_limits<float>::infinity();
  const struct {
    const char* text;
    Color color;
  } cases[] = {
      {"  {0.5, 0.25, 0.125, 1}\n", Color::rgba(0.5, 0.25, 0.125, 1)},
      // Lenient numbers: the longest numeric prefix, 0 without one, no clamping.
      {"{ 0.5x, -0.25, +2, .5}", Color::rgba(0.5, -0.25, 2, 0.5)},
      {"{inf, nan, 5e-1, 1}", Color::rgba(0, 0, 0.5, 1)},
      {"{1e39, -1e39, 1e-50, }", Color::rgba(kInf, -kInf, 0, 0)},
      // The separator is exactly ", ".
      {"{0.5,0.25,0.125,1}", Color::black()},
      {"{0.5, 0.25, 0.125}", Color::black()},
      {"{0.5, 0.25, 0.125, 1, 1}", Color::black()},
      {"{0.5, 0.25, 0.125, 1", Color::black()},
      {"0.5, 0.25, 0.125, 1}", Color::black()},
      {"", Color::black()},
  };
  for (const auto& c : cases) EXPECT_EQ(colorWithString(c.text), c.color) << c.text;
  // Each piece is read as a 32-bit float.
  EXPECT_EQ(colorWithString("{0.1, 0, 0, 1}").components()[0], static_cast<double>(0.1f));
  EXPECT_TRUE(canProvideRGBComponents(Color::black()));
  const Color cmyk(ColorSpaceModel::kCMYK, {0.1, 0.2, 0.3, 0.4, 0.9});
  EXPECT_FALSE(canProvideRGBComponents(cmyk));
}

TEST(ColorPersistanceTest, WritesThreeDecimalsRoundedAndAlphaFromTheLastComponent) {
  EXPECT_EQ(stringFromColor(Color::rgba(0.12345, 0.9996, 0.0004, 0.5)),
            "{0.123, 1.000, 0.000, 0.500}");
  // A grey repeats in the colour places; of CMYK the first three go; alpha comes last.
  EXPECT_EQ(stringFromColor(Color::white(0.25, 0.75)), "{0.250, 0.250, 0.250, 0.750}");
  EXPECT_EQ(stringFromColor(Color(ColorSpaceModel::kCMYK, {0.1, 0.2, 0.3, 0.4, 0.9})),
            "{0.100, 0.200, 0.300, 0.900}");
  EXPECT_EQ(stringFromColor(Color(ColorSpaceModel::kPattern, {})), "{0.000, 0.000, 0.000, 0.000}");
}

// The rule read literally: every grapheme cluster, kept when it is one scalar from 32 to 126.
std::string walkEveryCluster(std::string_view text) {
  std::string out;
  for (const std::string& cluster : graphemeClusters(text)) {
    if (cluster.size() == 1 && cluster[0] >= 32 && cluster[0] <= 126) out += cluster;
  }
  return out;
}

TEST(QMASCIIStringSanitizerTest, KeepsOnlySingleScalarPrintableCharactersAndCutsAfterwards) {
  const struct {
    std::string_view in;
    const char* out;
    std::optional<std::int64_t> max = std::nullopt;
  } cases[] = {
      {"\x1f\x20\x7e\x7f", " ~"},
      {"cafe\u0301", "caf"},           // e + combining acute: one cluster, dropped
      {"\u06007 apples", " apples"},   // a prepended mark takes the digit after it
      {"\xff\xfe ok \xc3(", " ok ("},  // invalid UTF-8 bytes are dropped
      {"abc", "", 0},
      {"abc", "abc", 3},
      {"e\u0301abc\u00e9def", "abcde", 5},  // cut after dropping
  };
  for (const auto& c : cases) {
    EXPECT_EQ(QMASCIIStringSanitizer::sanitizeForPrintableASCII(c.in, c.max), c.out)
        << ::testing::PrintToString(std::string(c.in));
  }
}

TEST(QMASCIIStringSanitizerDeathTest, ANegativeLengthStopsTheProgram) {
  EXPECT_DEATH(QMASCIIStringSanitizer::sanitizeForPrintableASCII("abc", -1), "maxLength");
}

// Random text of ASCII, accented letters, combining marks, joiners, flags, prepended marks and
// CR LF pairs: the fast ASCII runs must give what the walk over every cluster gives.
TEST(QMASCIIStringSanitizerTest, AgreesWithTheClusterWalkOnRandomMixedText) {
  const std::vector<std::string> pieces = {
      "a",      " ",      "~",      "0",      "\r",     "\n",     "\r\n",       "\t",
      "\x7f",   "\xff",   "\u00e9", "\u0301", "\u0308", "\u200d", "\ufe0f",     "\u20e3",
      "\u0600", "\u0915", "\u094d", "\u093e", "\u1100", "\u1161", "\U0001F1E9", "\U0001F600"};
  std::mt19937 random(20261123);
  std::uniform_int_distribution<std::size_t> pick(0, pieces.size() - 1);
  std::uniform_int_distribution<int> length(0, 40);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (int i = length(random); i > 0; --i) {
      // Mostly ASCII, like real file names and log lines.
      text +=
          random() % 3 == 0 ? pieces[pick(random)] : std::string(1, "abc xyz.-_"[random() % 10]);
    }
    ASSERT_EQ(QMASCIIStringSanitizer::sanitizeForPrintableASCII(text, {}), walkEveryCluster(text))
        << ::testing::PrintToString(text);
  }
}

using Bytes = std::vector<std::uint8_t>;

TEST(QMImageFormatDetectorTest, RecognisesTheSignaturesOnly) {
  // Real PNG and JPEG data are read in the encoding test.
  EXPECT_EQ(QMImageFormatDetector::format(Bytes{0xFF, 0xD8}), QMImageFormat::jpeg);
  EXPECT_EQ(QMImageFormatDetector::format(Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A}),
            QMImageFormat::png);
  for (const Bytes& bytes : {Bytes{0xFF}, Bytes{0xFF, 0xD9, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x0A},
                             Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A},
                             Bytes{0x89, 0x50, 0x4E, 0x47, 0x0D, 0x0A, 0x1A, 0x00}}) {
    EXPECT_EQ(QMImageFormatDetector::format(bytes), QMImageFormat::unknown)
        << ::testing::PrintToString(bytes);
  }
  EXPECT_EQ(QMImageFormatDetector::format(std::nullopt), QMImageFormat::unknown);
}

TEST(QMImageFormatDetectorTest, EncodesInTheAskedFormatNamedByItsSignature) {
  const Image image(2, 2, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  const auto png = QMImageFormatDetector::imageDataFor(QMImageFormat::png, image, 0.0);
  ASSERT_TRUE(png);
  EXPECT_EQ(QMImageFormatDetector::formatName(QMImageFormatDetector::format(*png)), "PNG");
  EXPECT_EQ(decodeImage(*png), image);  // lossless whatever the quality
  const auto jpeg = QMImageFormatDetector::imageDataFor(QMImageFormat::jpeg, image, 0.7);
  ASSERT_TRUE(jpeg);
  EXPECT_EQ(QMImageFormatDetector::formatName(QMImageFormatDetector::format(*jpeg)), "JPEG");
  EXPECT_EQ(QMImageFormatDetector::formatName(static_cast<QMImageFormat>(7)), "UNKNOWN");

  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::unknown, image, 1), std::nullopt);
  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::png, std::nullopt, 1), std::nullopt);
  EXPECT_EQ(QMImageFormatDetector::imageDataFor(QMImageFormat::jpeg, std::nullopt, 1),
            std::nullopt);
}

TEST(QMImageFormatDetectorDeathTest, AnUnexpectedRawValueStopsTheProgram) {
  EXPECT_DEATH(QMImageFormatDetector::imageDataFor(static_cast<QMImageFormat>(3), std::nullopt, 1),
               "unexpected QMImageFormat");
}

}  // namespace
}  // namespace qm
