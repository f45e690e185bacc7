#include "qmcore/persistence/UserDefaultsBacked.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <limits>
#include <memory>
#include <string>

#include "qmcore/persistence/QMCoreResource.hpp"
#include "qmcore/testing/FakeEnv.hpp"

namespace qm {

enum class Mode : std::int64_t { kOff = 0, kOn = 1, kAuto = 5 };
template <>
struct EnumRawValues<Mode> {
  static constexpr Mode cases[] = {Mode::kOff, Mode::kOn, Mode::kAuto};
};

namespace {

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
  std::atomic<int> synchronizations = 0;

 private:
  std::shared_ptr<SettingsStore> store_;
};

class UserDefaultsBackedTest : public ::testing::Test {
 protected:
  ::qm::testing::FakeEnv env_;
  std::shared_ptr<CountingStore> standard_ =
      std::make_shared<CountingStore>(env_.standardSettings());
  std::shared_ptr<CountingStore> named_ =
      std::make_shared<CountingStore>(env_.namedSettings("group"));
  UserDefaults defaults_{standard_, standard_};
  UserDefaults namedDefaults_{named_, standard_};
};

TEST_F(UserDefaultsBackedTest, AStoredValueOfAnotherKindReadsAsTheDefaultAndStays) {
  const struct {
    const char* name;
    SettingsValue stored;
    bool intReads, floatReads, doubleReads, boolReads, stringReads;
  } cases[] = {
      {"integer 1", SettingsValue(1), true, true, true, true, false},
      {"integer 2", SettingsValue(2), true, true, true, false, false},
      {"whole double", SettingsValue(2.0), true, true, true, false, false},
      {"double 2.5", SettingsValue(2.5), false, true, true, false, false},
      {"double 0.1 (not a float)", SettingsValue(0.1), false, false, true, false, false},
      {"bool", SettingsValue(true), true, true, true, true, false},
      {"number text", SettingsValue("7"), false, false, false, false, true},
      {"bytes", SettingsValue(SettingsValue::Bytes{1}), false, false, false, false, false},
      {"double 2^63", SettingsValue(9223372036854775808.0), false, true, true, false, false},
      // Integers are compared as integers: widened to a double first, these would pass.
      {"integer 2^24+1 (not a float)", SettingsValue(16777217), true, false, true, false, false},
      {"integer 2^53+1 (not a double)", SettingsValue(std::int64_t{9007199254740993}), true, false,
       false, false, false},
      {"integer 2^63-1 (not a double)", SettingsValue(std::numeric_limits<std::int64_t>::max()),
       true, false, false, false, false},
      {"integer -2^63", SettingsValue(std::numeric_limits<std::int64_t>::min()), true, true, true,
       false, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    standard_->setObject("k", c.stored);
    EXPECT_EQ(UserDefaultsBackedInt(-9, "k", defaults_).wrappedValue() != -9, c.intReads);
    EXPECT_EQ(UserDefaultsBackedFloat(-9.f, "k", defaults_).wrappedValue() != -9.f, c.floatReads);
    EXPECT_EQ(UserDefaultsBacked<double>(-9.0, "k", defaults_).wrappedValue() != -9.0,
              c.doubleReads);
    // A Bool reads the store when both defaults give the same answer.
    EXPECT_EQ(UserDefaultsBackedBool(false, "k", defaults_).wrappedValue() ==
                  UserDefaultsBackedBool(true, "k", defaults_).wrappedValue(),
              c.boolReads);
    EXPECT_EQ(UserDefaultsBackedString("-", "k", defaults_).wrappedValue() != "-", c.stringReads);
    EXPECT_EQ(standard_->objectForKey("k"), c.stored);
  }
  EXPECT_EQ(standard_->synchronizations, 0);
}

TEST_F(UserDefaultsBackedTest, BoolsReadOnlyFromZeroAndOne) {
  const struct {
    SettingsValue stored;
    std::optional<bool> read;  // absent: the default
  } cases[] = {{SettingsValue(true), true},      {SettingsValue(false), false},
               {SettingsValue(1), true},         {SettingsValue(0.0), false},
               {SettingsValue(2), std::nullopt}, {SettingsValue("YES"), std::nullopt}};
  for (const auto& c : cases) {
    standard_->setObject("b", c.stored);
    for (const bool fallback : {false, true}) {
      EXPECT_EQ(UserDefaultsBackedBool(fallback, "b", defaults_).wrappedValue(),
                c.read.value_or(fallback));
    }
  }
}

TEST_F(UserDefaultsBackedTest, ThePresenceTestAsksTheStandardStore) {
  named_->setObject("k", SettingsValue(42));
  named_->setObject("s", SettingsValue("text"));
  named_->setObject("e", SettingsValue(5));
  EXPECT_EQ(UserDefaultsBackedInt(1, "k", namedDefaults_).wrappedValue(), 1);
  EXPECT_EQ(UserDefaultsBackedFloat(1.f, "k", namedDefaults_).wrappedValue(), 1.f);
  EXPECT_EQ(UserDefaultsBackedBool(true, "k", namedDefaults_).wrappedValue(), true);
  EXPECT_EQ(UserDefaultsBackedString("d", "s", namedDefaults_).wrappedValue(), "d");
  EXPECT_EQ(UserDefaultsBackedNullableString("s", namedDefaults_).wrappedValue(), std::nullopt);
  EXPECT_EQ(UserDefaultsBackedEnum<Mode>(Mode::kOff, "e", namedDefaults_).wrappedValue(),
            Mode::kOff);
  EXPECT_EQ(namedDefaults_.integerForKey("k", 3), 3);
  EXPECT_EQ(namedDefaults_.nullableDouble("k", std::nullopt), std::nullopt);

  // Once the standard store has the key (whatever its value), the named store's value is read.
  standard_->setObject("k", SettingsValue("anything"));
  standard_->setObject("e", SettingsValue(0));
  EXPECT_EQ(UserDefaultsBackedInt(1, "k", namedDefaults_).wrappedValue(), 42);
  EXPECT_EQ(UserDefaultsBackedEnum<Mode>(Mode::kOff, "e", namedDefaults_).wrappedValue(),
            Mode::kAuto);
  EXPECT_EQ(namedDefaults_.integerForKey("k", 3), 42);
  EXPECT_EQ(namedDefaults_.doubleForKey("k", 3), 42.0);
  EXPECT_EQ(namedDefaults_.boolForKey("k", false), true);
  EXPECT_EQ(namedDefaults_.nullableDouble("k", std::nullopt), 42.0);
}

TEST_F(UserDefaultsBackedTest, AConverterSkipsThePresenceTestAndDecides) {
  named_->setObject("k", SettingsValue(42));
  const auto evenOnly = [](const std::int64_t& v) { return std::pair{v % 2 == 0, v * 10}; };
  EXPECT_EQ(UserDefaultsBackedInt(1, "k", namedDefaults_, {}, evenOnly).wrappedValue(), 420);
  named_->setObject("k", SettingsValue(43));
  EXPECT_EQ(UserDefaultsBackedInt(1, "k", namedDefaults_, {}, evenOnly).wrappedValue(), 1);
  // Nothing that converts: on to the ordinary read (which the presence test stops here).
  named_->setObject("k", SettingsValue("44"));
  EXPECT_EQ(UserDefaultsBackedInt(1, "k", namedDefaults_, {}, evenOnly).wrappedValue(), 1);
}

TEST_F(UserDefaultsBackedTest, AnOverrideAnsweringTrueWinsOverTheStore) {
  standard_->setObject("k", SettingsValue(42));
  bool overriding = true;
  const UserDefaultsBackedInt property(
      1, "k", defaults_,
      [&] {
        return std::pair<bool, std::int64_t>{overriding, 7};
      },
      [](const std::int64_t&) {
        return std::pair<bool, std::int64_t>{true, 99};
      });
  EXPECT_EQ(property.wrappedValue(), 7);
  overriding = false;
  EXPECT_EQ(property.wrappedValue(), 99);
  EXPECT_EQ(UserDefaultsBackedInt(1, "k", defaults_).getOverridenValue(),
            (std::pair<bool, std::int64_t>{false, 1}));
}

TEST_F(UserDefaultsBackedTest, ScalarWritesSynchroniseRemovalsEnumsAndColoursDoNot) {
  const struct {
    const char* name;
    std::function<void()> write;
    int synchronizations;
  } cases[] = {
      {"int", [&] { UserDefaultsBackedInt(0, "a", defaults_).setWrappedValue(3); }, 1},
      {"float", [&] { UserDefaultsBackedFloat(0, "a", defaults_).setWrappedValue(0.5f); }, 1},
      {"string", [&] { UserDefaultsBackedString("", "a", defaults_).setWrappedValue("x"); }, 1},
      {"bool", [&] { UserDefaultsBackedBool(false, "a", defaults_).setWrappedValue(true); }, 1},
      {"nullable string",
       [&] { UserDefaultsBackedNullableString("a", defaults_).setWrappedValue("x"); }, 1},
      {"nullable string to nil",
       [&] { UserDefaultsBackedNullableString("a", defaults_).setWrappedValue(std::nullopt); }, 0},
      {"enum",
       [&] { UserDefaultsBackedEnum<Mode>(Mode::kOff, "a", defaults_).setWrappedValue(Mode::kOn); },
       0},
      {"colour",
       [&] {
         UserDefaultsBackedColor(Color::black(), "a", defaults_)
             .setWrappedValue(Color::rgba(1, 0, 0, 1));
       },
       0},
      {"enum extension", [&] { defaults_.setEnumValue("a", Mode::kAuto); }, 0},
      {"modify",
       [&] {
         UserDefaultsBackedInt(0, "a", defaults_).modifyWrappedValue([](std::int64_t& v) {
           v += 2;
         });
       },
       1},
  };
  for (const auto& c : cases) {
    const int before = standard_->synchronizations;
    c.write();
    EXPECT_EQ(standard_->synchronizations - before, c.synchronizations) << c.name;
  }
}

TEST_F(UserDefaultsBackedTest, WritesLandInTheStoreAndAreSeenByOtherPropertiesAtOnce) {
  UserDefaultsBackedInt first(0, "n", defaults_);
  const UserDefaultsBackedInt second(0, "n", defaults_);
  first.modifyWrappedValue([](std::int64_t& v) { v += 5; });
  first.modifyWrappedValue([](std::int64_t& v) { v *= 3; });
  EXPECT_EQ(second.wrappedValue(), 15);
  EXPECT_EQ(standard_->objectForKey("n"), SettingsValue(15));

  UserDefaultsBackedNullableString text("t", defaults_);
  text.setWrappedValue("hello");
  EXPECT_EQ(standard_->objectForKey("t"), SettingsValue("hello"));
  text.setWrappedValue(std::nullopt);
  EXPECT_FALSE(standard_->hasKey("t"));
  EXPECT_EQ(text.wrappedValue(), std::nullopt);
  EXPECT_EQ(
      UserDefaultsBackedNullableString(std::string("fallback"), "t", defaults_).wrappedValue(),
      "fallback");

  UserDefaultsBackedEnum<Mode> mode(Mode::kOn, "m", defaults_);
  mode.setWrappedValue(Mode::kAuto);
  EXPECT_EQ(standard_->objectForKey("m"), SettingsValue(5));
  EXPECT_EQ(mode.wrappedValue(), Mode::kAuto);
}

TEST_F(UserDefaultsBackedTest, EnumsReadTheirCasesAndTheDefaultForUnknownRawValues) {
  const struct {
    std::optional<SettingsValue> stored;
    Mode read;
  } cases[] = {{std::nullopt, Mode::kOn},       {SettingsValue(0), Mode::kOff},
               {SettingsValue(5), Mode::kAuto}, {SettingsValue(99), Mode::kOn},
               {SettingsValue(-1), Mode::kOn},  {SettingsValue("5"), Mode::kAuto},
               {SettingsValue(1.9), Mode::kOn}};
  for (const auto& c : cases) {
    if (c.stored) {
      standard_->setObject("m", *c.stored);
    } else {
      standard_->removeObjectForKey("m");
    }
    EXPECT_EQ(UserDefaultsBackedEnum<Mode>(Mode::kOn, "m", defaults_).wrappedValue(), c.read);
    EXPECT_EQ(defaults_.enumValue("m", Mode::kOn), c.read);
  }
}

TEST_F(UserDefaultsBackedTest, ColoursAreTextsAndEmptyOrMissingTextsReadAsTheDefault) {
  const Color fallback = Color::rgba(0, 0, 1, 1);
  UserDefaultsBackedColor colour(fallback, "c", defaults_);
  EXPECT_EQ(colour.wrappedValue(), fallback);
  colour.setWrappedValue(Color::rgba(1, 0.5, 0, 1));
  EXPECT_EQ(standard_->objectForKey("c"), SettingsValue("{1.000, 0.500, 0.000, 1.000}"));
  EXPECT_EQ(colour.wrappedValue(), Color::rgba(1, 0.5, 0, 1));
  standard_->setObject("c", SettingsValue(""));
  EXPECT_EQ(colour.wrappedValue(), fallback);

  // The text is read from the standard store even when another store holds the key.
  named_->setObject("c", SettingsValue("{0, 1, 0, 1}"));
  standard_->setObject("c", SettingsValue("{1, 1, 1, 1}"));
  EXPECT_EQ(UserDefaultsBackedColor(fallback, "c", namedDefaults_).wrappedValue(),
            Color::rgba(1, 1, 1, 1));
  named_->removeObjectForKey("c");
  EXPECT_EQ(UserDefaultsBackedColor(fallback, "c", namedDefaults_).wrappedValue(), fallback);
}

TEST_F(UserDefaultsBackedTest, ADamagedColourTextStopsTheProgram) {
  standard_->setObject("c", SettingsValue("{0.5,0.25,0.125,1}"));
  const UserDefaultsBackedColor colour(Color::black(), "c", defaults_);
  EXPECT_DEATH(colour.wrappedValue(), "stored colour");
}

TEST(QMCoreResourceTest, TheDayButtonColourIndexLivesInTheStandardStore) {
  ::qm::testing::FakeEnv env;
  QMCoreResource resource(env);
  EXPECT_EQ(resource.dayButtonColorIndex.wrappedValue(), 0);
  resource.dayButtonColorIndex.setWrappedValue(3);
  EXPECT_EQ(env.standardSettings()->integerForKey("QMCoreResourceDayButtonColorIndex"), 3);
  EXPECT_EQ(QMCoreResource(env).dayButtonColorIndex.wrappedValue(), 3);
}

}  // namespace
}  // namespace qm
