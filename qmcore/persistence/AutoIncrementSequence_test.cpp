#include "qmcore/persistence/AutoIncrementSequence.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "qmcore/persistence/internal/DebugLogCapture.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

class AutoIncrementSequenceTest : public ::testing::Test {
 protected:
  ::qm::testing::FakeEnv env_;
  std::shared_ptr<SettingsStore> store_ = env_.standardSettings();
};

TEST_F(AutoIncrementSequenceTest, SavedRecordsAreJsonUnderTheVerbatimCodeKeyAndResetToTheStart) {
  AutoIncrementSequence::resetSequenceWithCode(env_, "a b/c");  // nothing stored: nothing written
  EXPECT_TRUE(store_->dictionaryRepresentation().empty());
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env_, "a b/c"),
            (AutoIncrementSequence{1, 1, 0, "a b/c", 1}));
  const AutoIncrementSequence s{5, 2, 3, "a b/c", 42};
  AutoIncrementSequence::saveSequence(env_, s);
  EXPECT_EQ(store_->stringForKey("QMSequenceStorageBaseKey_a b/c"),
            R"({"code":"a b/c","leadingZeroes":3,"start":5,"step":2,"value":42})");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env_, "a b/c"), s);
  AutoIncrementSequence::resetSequenceWithCode(env_, "a b/c");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env_, "a b/c").value, 5);

  // The stored code wins over the requested one, and a reset saves under it.
  store_->setObject("QMSequenceStorageBaseKey_x",
                    R"({"start":1,"step":1,"leadingZeroes":0,"code":"other","value":9})");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env_, "x").code, "other");
  AutoIncrementSequence::resetSequenceWithCode(env_, "x");
  EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env_, "other").value, 1);
}

TEST_F(AutoIncrementSequenceTest, UnreadableRecordsGiveTheDefaultWithOneLogLineAndStay) {
  const struct {
    const char* name;
    SettingsValue stored;
  } cases[] = {
      {"no leadingZeroes", R"({"start":1,"step":1,"code":"c","value":3})"},
      {"not JSON", "{"},
      {"value as text", R"({"start":1,"step":1,"leadingZeroes":0,"code":"c","value":"3"})"},
      {"a number", SettingsValue(12)},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    store_->setObject("QMSequenceStorageBaseKey_c", c.stored);
    internal::ScopedLogCapture log;
    EXPECT_EQ(AutoIncrementSequence::sequenceForCode(env_, "c"),
              AutoIncrementSequence::defaultSequence("c"));
    AutoIncrementSequence::resetSequenceWithCode(env_, "c");
    EXPECT_EQ(store_->objectForKey("QMSequenceStorageBaseKey_c"), c.stored);
    if (!kQMEnableDebugLog) continue;
    ASSERT_EQ(log.lines().size(), 2u);  // one per read
    EXPECT_THAT(log.lines()[0], ::testing::StartsWith("Error on decoding from json "));
    EXPECT_THAT(log.lines()[0], ::testing::EndsWith(", target type: AutoIncrementSequence"));
  }
}

TEST_F(AutoIncrementSequenceTest, FormattedValuesPadWithoutGroupingInTheTableWords) {
  const ::qm::testing::ScopedLocale locale("de_DE");
  AutoIncrementSequence s{1000, 25, 5, "d", 1234};
  EXPECT_EQ(s.localizedDescription(), "Wert: 01234 (Start: 1000, Schritt: 25)");
  s.leadingZeroes = -2;  // no padding
  EXPECT_EQ(s.formattedValue(), "1234");
  s.leadingZeroes = 3;  // a minimum, not a maximum
  EXPECT_EQ(s.formattedValue(), "1234");
}

}  // namespace
}  // namespace qm
