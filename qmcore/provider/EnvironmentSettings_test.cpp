#include "qmcore/provider/EnvironmentSettings.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

#include "qmcore/platform/Locale.hpp"
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

// Every question: the answer without a delegate and with a FakeDelegate.
const struct {
  const char* name;
  std::int64_t (*ask)(const EnvironmentSettings&);
  std::int64_t fallback;
  std::int64_t delegated;
} kQuestions[] = {
    {"feet threshold", [](auto& s) { return s.smallToBigFeetThresholdForDistance(); }, 2000, 3000},
    // The metres question is answered by the delegate's feet query, never its metres query.
    {"meters threshold", [](auto& s) { return s.smallToBigMetersThresholdForDistance(); }, 1000,
     3000},
    {"north type", [](auto& s) { return s.northType(); }, 0, 1},
    {"decimal dot", [](auto& s) -> std::int64_t { return s.showsDecimalDotForSpeedUnder100(); }, 0,
     1},
    {"map dots", [](auto& s) -> std::int64_t { return s.defaultMapShowDotsForConnectionPoints(); },
     0, 1},
    {"sync", [](auto& s) -> std::int64_t { return s.supportsSync(); }, 0, 1},
    {"driven by speed", [](auto& s) -> std::int64_t { return s.unitsAreDrivenBySpeedUnits(); }, 0,
     1},
};

void expectAnswers(const EnvironmentSettings& settings, bool delegated) {
  for (const auto& q : kQuestions) {
    EXPECT_EQ(q.ask(settings), delegated ? q.delegated : q.fallback) << q.name;
  }
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
  const auto another = std::make_shared<FakeDelegate>();
  settings.setDelegate(another);
  EXPECT_EQ(settings.delegate(), another);
  settings.setDelegate({});  // removed
  expectAnswers(settings, false);
}

TEST(EnvironmentSettings, IsMetricFollowsTheLocalesRegion) {
  const struct {
    const char* locale;
    bool metric;
  } cases[] = {
      {"en_GB", false}, {"en_US", false}, {"es_US", false}, {"de_DE", true}, {"en_AU", true}};
  const testing::ScopedLocale restored;
  const EnvironmentSettings settings;
  for (const auto& c : cases) {
    EXPECT_EQ(EnvironmentSettings::isMetric(c.locale), c.metric) << c.locale;
    setCurrentLocaleIdentifier(c.locale);
    EXPECT_EQ(settings.isMetric(), c.metric) << c.locale;
  }
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
