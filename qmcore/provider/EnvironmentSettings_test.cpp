#include "qmcore/provider/EnvironmentSettings.hpp"

#include <gtest/gtest.h>

#include "qmcore/platform/Locale.hpp"

#include <memory>
#include <vector>

namespace qm {
namespace {

// A delegate with distinct answers, recording the notifications it gets.
class FakeDelegate : public EnvironmentSettingsDelegate {
 public:
  std::int64_t smallToBigFeetThresholdForDistance() override { return 3000; }
  std::int64_t smallToBigMetersThresholdForDistance() override {
    ++metersQueries;
    return 1500;
  }
  std::int64_t northType() override { return 1; }
  bool showsDecimalDotForSpeedUnder100() override { return true; }
  bool defaultMapShowDotsForConnectionPoints() override { return true; }
  bool supportsSync() override { return true; }
  bool unitsAreDrivenBySpeedUnits() override { return true; }
  void synchronizeClientMeasurementUnits() override { ++synchronizations; }
  void switchToDistanceUnit(DistanceUnitType type) override { switches.push_back(type); }

  int metersQueries = 0;
  int synchronizations = 0;
  std::vector<DistanceUnitType> switches;
};

struct Answers {
  std::int64_t feet;
  std::int64_t meters;
  std::int64_t north;
  bool decimalDot;
  bool dots;
  bool sync;
  bool drivenBySpeed;
};

Answers answersOf(const EnvironmentSettings& s) {
  return {s.smallToBigFeetThresholdForDistance(),
          s.smallToBigMetersThresholdForDistance(),
          s.northType(),
          s.showsDecimalDotForSpeedUnder100(),
          s.defaultMapShowDotsForConnectionPoints(),
          s.supportsSync(),
          s.unitsAreDrivenBySpeedUnits()};
}

void expectFallbacks(const EnvironmentSettings& settings) {
  const Answers a = answersOf(settings);
  EXPECT_EQ(a.feet, 2000);
  EXPECT_EQ(a.meters, 1000);
  EXPECT_EQ(a.north, 0);
  EXPECT_FALSE(a.decimalDot);
  EXPECT_FALSE(a.dots);
  EXPECT_FALSE(a.sync);
  EXPECT_FALSE(a.drivenBySpeed);
}

TEST(EnvironmentSettings, AnswersFixedValuesWithoutDelegate) {
  const EnvironmentSettings settings;
  EXPECT_EQ(settings.delegate(), nullptr);
  expectFallbacks(settings);
  // Notifications without a delegate are no-ops.
  settings.synchronizeClientMeasurementUnits();
  settings.switchToDistanceUnit(DistanceUnitType::kNautical);
}

TEST(EnvironmentSettings, ForwardsToDelegateAndAsksTheFeetQueryForMeters) {
  EnvironmentSettings settings;
  const auto delegate = std::make_shared<FakeDelegate>();
  settings.setDelegate(delegate);

  const Answers a = answersOf(settings);
  EXPECT_EQ(a.feet, 3000);
  EXPECT_EQ(a.meters, 3000);
  EXPECT_EQ(delegate->metersQueries, 0);
  EXPECT_EQ(a.north, 1);
  EXPECT_TRUE(a.decimalDot);
  EXPECT_TRUE(a.dots);
  EXPECT_TRUE(a.sync);
  EXPECT_TRUE(a.drivenBySpeed);

  settings.synchronizeClientMeasurementUnits();
  settings.switchToDistanceUnit(DistanceUnitType::kNautical);
  settings.switchToDistanceUnit(DistanceUnitType::kMetric);
  EXPECT_EQ(delegate->synchronizations, 1);
  EXPECT_EQ(delegate->switches,
            (std::vector{DistanceUnitType::kNautical, DistanceUnitType::kMetric}));
}

TEST(EnvironmentSettings, ReleasedOrRemovedDelegateFallsBack) {
  EnvironmentSettings settings;
  auto delegate = std::make_shared<FakeDelegate>();
  settings.setDelegate(delegate);
  EXPECT_EQ(settings.delegate(), delegate);
  EXPECT_EQ(delegate.use_count(), 1) << "the settings must not keep the delegate alive";

  delegate.reset();
  EXPECT_EQ(settings.delegate(), nullptr);
  expectFallbacks(settings);
  settings.synchronizeClientMeasurementUnits();

  auto another = std::make_shared<FakeDelegate>();
  settings.setDelegate(another);
  settings.setDelegate({});
  expectFallbacks(settings);
}

TEST(EnvironmentSettings, IsMetricFollowsTheLocaleMeasurementSystem) {
  const struct {
    const char* locale;
    bool metric;
  } cases[] = {
      {"en_GB", false}, {"en_US", false}, {"de_DE", true},
      {"fr_FR", true},  {"en_AU", true},  {"es_US", false},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(EnvironmentSettings::isMetric(c.locale), c.metric) << c.locale;
  }
}

TEST(EnvironmentSettings, IsMetricReadsTheCurrentLocale) {
  const std::string saved = currentLocaleIdentifier();
  const EnvironmentSettings settings;
  setCurrentLocaleIdentifier("de_DE");
  EXPECT_TRUE(settings.isMetric());
  setCurrentLocaleIdentifier("en_GB");
  EXPECT_FALSE(settings.isMetric());
  setCurrentLocaleIdentifier(saved);
}

TEST(EnvironmentSettings, SharedIsOneInstance) {
  EXPECT_EQ(&EnvironmentSettings::shared(), &EnvironmentSettings::shared());
}

}  // namespace
}  // namespace qm
