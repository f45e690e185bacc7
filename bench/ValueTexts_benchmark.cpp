// Display texts per second of the value texts that screens redraw most: distances
// (UnitsProvider::textForDistance, printf in the POSIX locale), lengths
// (stringForLengthInMeters: the unit's ICU number formatter and a string-table lookup) and
// bearings (UnitsProvider::textForBearing, BearingFormatter::textForAzimuth). Each is measured
// against snprintf of the same text with the unit as a literal, the least any implementation has to
// do, so that later changes can be compared by their ratio rather than by machine-dependent rates.
//
//   build/release/bench/ValueTexts_benchmark

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <memory>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/formatting/BearingFormatter.hpp"
#include "qmcore/platform/Env.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/provider/EnvironmentSettings.hpp"
#include "qmcore/provider/UnitsProvider.hpp"

namespace {

// A metric provider over a store of its own (switching to kilometres at 1000 m, lengths at
// 1000 m too), so that the benchmark neither reads nor changes the user's settings.
class Fixture {
 public:
  Fixture() : provider_(env_, environment_) {
    provider_.setGeneralUnitType(0);
    provider_.setAutomaticSwitchValue(1000, *qm::QMLengthUnit::meterUnit());
  }
  const qm::UnitsProvider& provider() const { return provider_; }

 private:
  qm::ProcessEnv env_{{.settingsPath = std::string(qm::ProcessEnvOptions::kInMemorySettings)}};
  qm::EnvironmentSettings environment_;
  qm::UnitsProvider provider_;
};

const qm::UnitsProvider& provider() {
  static const Fixture fixture;
  return fixture.provider();
}

// Distances from 0 to about 2 km, so that both the metre and the kilometre texts are made.
double nextDistance(double& meters) {
  meters += 37.3;
  if (meters >= 2000.0) meters -= 2000.0;
  return meters;
}

double nextHeading(double& heading) {
  heading += 7.31;
  if (heading >= 360.0) heading -= 360.0;
  return heading;
}

void BM_TextForDistance(benchmark::State& state) {
  const qm::UnitsProvider& p = provider();
  double meters = 0.0;
  for (auto _ : state) benchmark::DoNotOptimize(p.textForDistance(nextDistance(meters)));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_TextForDistance);

void BM_SnprintfDistance(benchmark::State& state) {
  double meters = 0.0;
  char buffer[64];
  for (auto _ : state) {
    const double value = nextDistance(meters);
    if (value >= 1000.0) {
      std::snprintf(buffer, sizeof buffer, "%.2f%s", value / 1000.0, "km");
    } else {
      std::snprintf(buffer, sizeof buffer, "%.0f%s", value, "m");
    }
    benchmark::DoNotOptimize(std::string(buffer));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SnprintfDistance);

void BM_StringForLengthInMeters(benchmark::State& state) {
  const qm::UnitsProvider& p = provider();
  double meters = 0.0;
  for (auto _ : state) benchmark::DoNotOptimize(p.stringForLengthInMeters(nextDistance(meters)));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_StringForLengthInMeters);

void BM_SnprintfLength(benchmark::State& state) {
  double meters = 0.0;
  char buffer[64];
  for (auto _ : state) {
    const double value = nextDistance(meters);
    if (value > 1000.0) {
      std::snprintf(buffer, sizeof buffer, "%.3f%s", value / 1000.0, "km");
    } else {
      std::snprintf(buffer, sizeof buffer, "%.1f%s", value, "m");
    }
    benchmark::DoNotOptimize(std::string(buffer));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SnprintfLength);

void BM_TextForBearing(benchmark::State& state) {
  double heading = 0.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(qm::UnitsProvider::textForBearing(nextHeading(heading), "", 0, false));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_TextForBearing);

void BM_SnprintfBearing(benchmark::State& state) {
  double heading = 0.0;
  char buffer[64];
  for (auto _ : state) {
    std::snprintf(buffer, sizeof buffer, "%s%.0f", "NE", nextHeading(heading));
    benchmark::DoNotOptimize(std::string(buffer));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SnprintfBearing);

void BM_TextForAzimuth(benchmark::State& state) {
  double heading = 0.0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(qm::BearingFormatter::textForAzimuth(nextHeading(heading)));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_TextForAzimuth);

void BM_SnprintfAzimuth(benchmark::State& state) {
  double heading = 0.0;
  char buffer[64];
  for (auto _ : state) {
    const double a = nextHeading(heading);
    const bool north = a >= 270.0 || a < 90.0;
    const bool east = a < 180.0;
    const double angle = a >= 270.0   ? 360.0 - a
                         : a >= 180.0 ? a - 180.0
                         : a >= 90.0  ? 180.0 - a
                                      : a;
    const double degrees = std::floor(angle);
    std::snprintf(buffer, sizeof buffer, "%s%.0f°%.0f'%s", north ? "N" : "S", degrees,
                  std::floor((angle - degrees) * 60.0), east ? "E" : "W");
    benchmark::DoNotOptimize(std::string(buffer));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SnprintfAzimuth);

}  // namespace

int main(int argc, char** argv) {
  qm::setCurrentLocaleIdentifier("en_US");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nTexts per second and ratios against snprintf of the same text:\n");
  reporter.printRatio("BM_TextForDistance", "BM_SnprintfDistance", "texts");
  reporter.printRatio("BM_StringForLengthInMeters", "BM_SnprintfLength", "texts");
  reporter.printRatio("BM_TextForBearing", "BM_SnprintfBearing", "texts");
  reporter.printRatio("BM_TextForAzimuth", "BM_SnprintfAzimuth", "texts");
  benchmark::Shutdown();
  return 0;
}
