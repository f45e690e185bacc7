// What the heading texts cost beyond printf: UnitsProvider::textForBearing and
// BearingFormatter::textForAzimuth (each looks its letters up in the current locale's string
// table and formats in the POSIX locale), against snprintf of the same format with the letters
// as literals, which is the least any implementation has to do. Compass screens redraw the
// heading text many times a second, so the ratio should stay small (goal: within 5x).
//
//   build/release/bench/HeadingTexts_benchmark

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/formatting/BearingFormatter.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/provider/UnitsProvider.hpp"

namespace {

// Headings around the circle, so that every sector and quadrant is visited.
double nextHeading(double& heading) {
  heading += 7.31;
  if (heading >= 360.0) heading -= 360.0;
  return heading;
}

const char* literalCardinal(double bearing) {
  if (bearing >= 345.0 || bearing < 15.0) return "N";
  if (bearing < 75.0) return "NE";
  if (bearing < 105.0) return "E";
  if (bearing < 165.0) return "SE";
  if (bearing < 195.0) return "S";
  if (bearing < 255.0) return "SW";
  if (bearing < 285.0) return "W";
  return "NW";
}

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
    const double value = nextHeading(heading);
    std::snprintf(buffer, sizeof buffer, "%s%s%.0f", "", literalCardinal(value), value);
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
  qm::setCurrentLocaleIdentifier("de_DE");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nTexts per second and ratios (goal: at least 0.2x plain snprintf):\n");
  reporter.printRatio("BM_TextForBearing", "BM_SnprintfBearing", "texts");
  reporter.printRatio("BM_TextForAzimuth", "BM_SnprintfAzimuth", "texts");
  benchmark::Shutdown();
  return 0;
}
