#include "qmcore/formatting/UnitFormatterWrapper.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <memory>
#include <thread>
#include <vector>

namespace qm {
namespace {

class FakeSpeed : public SpeedFormatterDelegate {
 public:
  explicit FakeSpeed(std::optional<std::string> answer) : answer_(std::move(answer)) {}
  std::optional<std::string> autoDecimalTextForMSSpeed(double speed) override {
    asked.push_back(speed);
    return answer_;
  }
  std::vector<double> asked;

 private:
  std::optional<std::string> answer_;
};

class FakeDistance : public DistanceFormatterDelegate {
 public:
  std::string longTextWithLongUnitTypeForDistance(double distance) override {
    return "about " + std::to_string(static_cast<int>(distance)) + " meters";
  }
};

TEST(UnitFormatterWrapper, FallbacksAnswerWithTheRawRoundedNumber) {
  const UnitFormatterWrapper hook;
  const struct {
    double value;
    const char* expected;
  } cases[] = {
      {12.7, "13"}, {1500.4, "1500"},      {3.6, "4"}, {0.0, "0"},
      {2.5, "2"},  // printf's rounding of the exact binary value: ties to even
      {-7.6, "-8"}, {std::nan(""), "nan"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(hook.autoDecimalTextForMSSpeed(c.value), c.expected) << c.value;
    EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(c.value), c.expected) << c.value;
  }
}

TEST(UnitFormatterWrapper, AssignedFormattersAnswerAndThePreviousOnesAreReleased) {
  UnitFormatterWrapper hook;
  std::weak_ptr<SpeedFormatterDelegate> fallback = hook.speedFormatterDelegate();
  auto speed = std::make_shared<FakeSpeed>("42 km/h");
  hook.assignSpeedFormatterDelegate(speed);
  EXPECT_TRUE(fallback.expired());
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(11.7), "42 km/h");
  EXPECT_EQ(speed->asked, std::vector<double>{11.7});
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "1500") << "distance untouched";

  hook.assignDistanceFormatterDelegate(std::make_shared<FakeDistance>());
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "about 1500 meters");

  // The hook keeps its formatter alive on its own.
  std::weak_ptr<FakeSpeed> watched = speed;
  speed.reset();
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(1), "42 km/h");
  hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>(std::nullopt));
  EXPECT_TRUE(watched.expired());
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(1), "") << "no text becomes empty text";

  // Assigning nothing puts the fallbacks back.
  hook.assignSpeedFormatterDelegate(nullptr);
  hook.assignDistanceFormatterDelegate(nullptr);
  EXPECT_EQ(hook.autoDecimalTextForMSSpeed(12.7), "13");
  EXPECT_EQ(hook.longTextWithLongUnitTypeForDistance(1500.4), "1500");
  EXPECT_NE(hook.speedFormatterDelegate(), nullptr);
}

TEST(UnitFormatterWrapper, SharedHookIsOneObject) {
  UnitFormatterWrapper& shared = UnitFormatterWrapper::shared();
  EXPECT_EQ(&shared, &UnitFormatterWrapper::shared());
  const auto saved = shared.speedFormatterDelegate();
  shared.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>("x"));
  EXPECT_EQ(UnitFormatterWrapper::shared().autoDecimalTextForMSSpeed(1), "x");
  shared.assignSpeedFormatterDelegate(saved);
}

TEST(UnitFormatterWrapper, FormattersCanBeReplacedWhileInUse) {
  UnitFormatterWrapper hook;
  std::atomic<bool> done = false;
  std::thread reader([&] {
    while (!done) {
      const std::string text = hook.autoDecimalTextForMSSpeed(1.0);
      ASSERT_TRUE(text == "a" || text == "b" || text == "1") << text;
    }
  });
  for (int i = 0; i < 2000; ++i) {
    hook.assignSpeedFormatterDelegate(std::make_shared<FakeSpeed>(i % 2 ? "a" : "b"));
  }
  done = true;
  reader.join();
}

}  // namespace
}  // namespace qm
