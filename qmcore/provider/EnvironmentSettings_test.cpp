#include "qmcore/provider/EnvironmentSettings.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "qmcore/testing/ScopedLocale.hpp"

namespace qm {
namespace {

// Answers unlike every fallback. (The provider's tests check what the settings tell a delegate.)
class FakeDelegate : public EnvironmentSettingsDelegate {
 public:
  std::int64_t smallToBigFeetThresholdForDistance() override { return 3000; }
  std::int64_t smallToBigMetersThresholdForDistance() override { return 1500; }
  std::int64_t northType() override { return 1; }
  bool showsDecimalDotForSpeedUnder100() override { return true; }
  bool defaultMapShowDotsForConnectionPoints() override { return true; }
  bool supportsSync() override { return true; }
  bool unitsAreDrivenBySpeedUnits() override { return true; }
};

// Every question: the answer without a delegate, or with a FakeDelegate.
void expectAnswers(const EnvironmentSettings& settings, bool delegated) {
  EXPECT_EQ(settings.smallToBigFeetThresholdForDistance(), delegated ? 3000 : 2000);
  // The metres question is answered by the delegate's feet query, never its metres query.
  EXPECT_EQ(settings.smallToBigMetersThresholdForDistance(), delegated ? 3000 : 1000);
  EXPECT_EQ(settings.northType(), delegated ? 1 : 0);
  EXPECT_EQ(settings.showsDecimalDotForSpeedUnder100(), delegated);
  EXPECT_EQ(settings.defaultMapShowDotsForConnectionPoints(), delegated);
  EXPECT_EQ(settings.supportsSync(), delegated);
  EXPECT_EQ(settings.unitsAreDrivenBySpeedUnits(), delegated);
}

TEST(EnvironmentSettings, ForwardsEveryQuestionWhileItHasADelegate) {
  EnvironmentSettings settings;
  expectAnswers(settings, false);
  settings.synchronizeClientMeasurementUnits();  // nothing happens
  settings.switchToDistanceUnit(DistanceUnitType::kNautical);

  auto delegate = std::make_shared<FakeDelegate>();
  settings.setDelegate(delegate);
  EXPECT_EQ(delegate.use_count(), 1) << "the settings must not keep the delegate alive";
  expectAnswers(settings, true);

  delegate.reset();  // released by the app
  EXPECT_EQ(settings.delegate(), nullptr);
  expectAnswers(settings, false);
}

// By the region, not the language: Britain measures roads in miles.
TEST(EnvironmentSettings, IsMetricFollowsTheLocalesRegion) {
  const testing::ScopedLocale british("en_GB");
  EXPECT_FALSE(EnvironmentSettings().isMetric());
  EXPECT_TRUE(EnvironmentSettings::isMetric("en_AU"));
}

TEST(EnvironmentSettings, DelegateComingAndGoingWhileOtherThreadsAsk) {
  EnvironmentSettings settings;
  std::atomic<bool> done = false;
  std::atomic<int> failures = 0;
  std::vector<std::thread> askers;
  for (int t = 0; t < 3; ++t) {
    askers.emplace_back([&] {
      do {
        // The delegate's answer or the fallback, whichever is current; nothing else.
        const std::int64_t threshold = settings.smallToBigFeetThresholdForDistance();
        if (threshold != 2000 && threshold != 3000) ++failures;
        if (settings.northType() > 1) ++failures;
      } while (!done);
    });
  }
  for (int i = 0; i < 300; ++i) {
    const auto delegate = std::make_shared<FakeDelegate>();
    settings.setDelegate(delegate);
    if (i % 2 == 0) settings.setDelegate({});
  }  // the last delegate is released with the settings still pointing at it
  done = true;
  for (std::thread& asker : askers) asker.join();
  EXPECT_EQ(failures.load(), 0);
  EXPECT_EQ(settings.delegate(), nullptr);
}

}  // namespace
}  // namespace qm
