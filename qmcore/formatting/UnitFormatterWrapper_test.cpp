#include "qmcore/formatting/UnitFormatterWrapper.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>

#include "qmcore/platform/NotificationCenter.hpp"
#include "qmcore/platform/SettingsStore.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"
#include "qmcore/testing/FakeEnv.hpp"
#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

struct FakeSpeed : SpeedFormatterDelegate {
  explicit FakeSpeed(std::optional<std::string> text) : answer(std::move(text)) {}
  std::optional<std::string> autoDecimalTextForMSSpeed(double) override { return answer; }
  std::optional<std::string> answer;
};

struct FakeDistance : DistanceFormatterDelegate {
  std::string longTextWithLongUnitTypeForDistance(double distance) override {
    return "about " + std::to_string(static_cast<int>(distance)) + " meters";
  }
};

TEST(UnitFormatterWrapper, AssignedFormattersAnswerAndThePreviousOnesAreReleased) {
  UnitFormatterWrapper hook;
  // Without formatters: the raw number, rounded as printf rounds the exact binary value.
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(2.5), "2");
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(-7.6), "-8");

  std::weak_ptr<SpeedFormatterDelegate> previous = hook.speedFormatterDelegate();
  hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>("42 km/h"));
  EXPECT_TRUE(previous.expired());
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(11.7), "42 km/h");  // kept alive by the hook alone
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "1500") << "distance untouched";
  hook.assignDistanceFormatterDelegate(std::make_shared<FakeDistance>());
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "about 1500 meters");

  previous = hook.speedFormatterDelegate();
  hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>(std::nullopt));
  EXPECT_TRUE(previous.expired());
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(1), "") << "no text becomes empty text";

  // Assigning nothing puts the fallbacks back.
  hook.assignSpeedFormatterDelegate(nullptr);
  hook.assignDistanceFormatterDelegate(nullptr);
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(12.7), "13");
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "1500");
}

TEST(UnitFormatterWrapper, AUnitsProviderServesAsTheSpeedFormatter) {
  const testing::ScopedLocale locale("de_DE");  // metric: km/h
  EnvironmentSettings environment;
  testing::FakeEnv env("de_DE");
  const UnitsProvider provider(env, environment);
  UnitFormatterWrapper hook;
  hook.assignSpeedFormatterDelegate(std::make_shared<UnitsProviderSpeedFormatter>(provider));
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(10), provider.autoDecimalTextForMSSpeed(10));
  EXPECT_NE(hook.autoDecimalTextForMSSpeed(10), "10") << "converted to km/h, not the fallback";
}

TEST(UnitFormatterWrapper, AFormatterReplacedDuringACallLivesUntilTheCallEnds) {
  UnitFormatterWrapper hook;
  std::atomic<bool> done = false;
  std::thread reader([&] {
    while (!done) ASSERT_EQ(hook.autoDecimalTextForMSSpeed(1.0).size(), 1u);
  });
  for (int i = 0; i < 2000; ++i)
    hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>("a"));
  done = true;
  reader.join();
}

}  // namespace
}  // namespace qm
