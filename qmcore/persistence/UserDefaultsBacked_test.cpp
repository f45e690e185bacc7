#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>

#include "qmcore/persistence/AutoIncrementSequence.hpp"
#include "qmcore/persistence/ColorPersistance.hpp"
#include "qmcore/persistence/UserDefaultsBacked.hpp"
#include "qmcore/persistence/internal/DebugLogCapture.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/FileTesting.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {

enum class Mode : std::int64_t { kOff = 0, kOn = 1, kAuto = 5 };
template <>
struct EnumRawValues<Mode> {
  static constexpr Mode cases[] = {Mode::kOff, Mode::kOn, Mode::kAuto};
};

namespace {

using ::testing::EndsWith;
using ::testing::StartsWith;

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

TEST(AutoIncrementSequenceTest, AnUnreadableRecordGivesTheDefaultWithOneLogLineAndStays) {
  testing::FakeEnv env;
  const std::shared_ptr<SettingsStore> store = env.standardSettings();
  const SettingsValue stored = R"({"start":1,"step":1,"code":"c","value":3})";  // no leadingZeroes
  store->setObject("QMSequenceStorageBaseKey_c", stored);
  internal::ScopedLogCapture log;
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env, "c"),
            AutoIncrementSequence::defaultSequence("c"));
  AutoIncrementSequence::resetSequenceWithCode(env, "c");
  EXPECT_EQ(store->objectForKey("QMSequenceStorageBaseKey_c"), stored);
  if (!kQMEnableDebugLog) return;
  ASSERT_EQ(log.lines().size(), 2u);  // one per read
  EXPECT_THAT(log.lines()[0], StartsWith("Error on decoding from json "));
  EXPECT_THAT(log.lines()[0], EndsWith(", target type: AutoIncrementSequence"));
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

class UserDefaultsBackedTest : public ::testing::Test {
 protected:
  // The keys in the settings file: while the store is held, only a synchronize writes them.
  std::string keysInFile() const {
    return ::qm::testing::run(
        "python3 -c \"import sqlite3,sys; print(sorted(k for (k,) in sqlite3.connect(sys.argv[1])"
        ".execute('SELECT key FROM settings')))\" '" +
        env_.settingsPath().string() + "'");
  }
  ::qm::testing::FakeEnv env_;
  std::shared_ptr<SettingsStore> standard_ = env_.standardSettings();
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
  EXPECT_EQ(keysInFile(), "[]\n");  // reads do not synchronise
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
  EXPECT_EQ(keysInFile(), "['b', 'f', 'n', 't']\n");

  text.setWrappedValue(std::nullopt);
  EXPECT_FALSE(standard_->hasKey("t"));
  UserDefaultsBackedEnum<Mode>(Mode::kOn, "m", defaults_).setWrappedValue(Mode::kAuto);
  EXPECT_EQ(standard_->objectForKey("m"), SettingsValue(5));
  UserDefaultsBackedColor(Color::black(), "c", defaults_).setWrappedValue(Color::white(1, 1));
  EXPECT_EQ(keysInFile(), "['b', 'f', 'n', 't']\n");
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
      {"{0.5, 0.25, 0.125, 1", Color::black()},
      {"0.5, 0.25, 0.125, 1}", Color::black()},
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

}  // namespace
}  // namespace qm
