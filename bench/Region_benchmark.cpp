// Track points per second of MKCoordinateRegion::fromCoordinates over a track of 1,000,000
// points, against one plain minimum/maximum pass over the same points: the least any region
// fit has to do. The region fit also builds the candidate with longitudes moved into [0, 360)
// for tracks across the 180th meridian; doing both in one sweep keeps it at about the peer's
// speed (goal: at least 0.5x).
//
//   build/release/bench/Region_benchmark

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <optional>
#include <vector>

#include "bench/RatioReporter.hpp"
#include "qmcore/geo/MKCoordinateRegion.hpp"

namespace {

constexpr std::size_t kTrackPoints = 1'000'000;

// A wandering track in the Pacific that crosses the 180th meridian back and forth.
const std::vector<qm::CLLocationCoordinate2D>& track() {
  static const std::vector<qm::CLLocationCoordinate2D> points = [] {
    std::vector<qm::CLLocationCoordinate2D> result;
    result.reserve(kTrackPoints);
    for (std::size_t i = 0; i < kTrackPoints; ++i) {
      const double t = static_cast<double>(i) * 1e-4;
      double longitude = 179.0 + 3.0 * std::sin(t) + 0.01 * std::sin(37.0 * t);
      if (longitude > 180.0) longitude -= 360.0;
      result.push_back({-17.0 + 2.0 * std::cos(0.7 * t), longitude});
    }
    return result;
  }();
  return points;
}

void BM_RegionFromCoordinates(benchmark::State& state) {
  const auto& points = track();
  for (auto _ : state) {
    benchmark::DoNotOptimize(qm::MKCoordinateRegion::fromCoordinates(points));
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}
BENCHMARK(BM_RegionFromCoordinates)->Unit(benchmark::kMillisecond);

struct Box {
  double minLatitude, maxLatitude, minLongitude, maxLongitude;
};

void BM_PlainMinMax(benchmark::State& state) {
  const auto& points = track();
  for (auto _ : state) {
    Box box{points[0].latitude, points[0].latitude, points[0].longitude, points[0].longitude};
    for (const qm::CLLocationCoordinate2D& c : points) {
      box.minLatitude = c.latitude < box.minLatitude ? c.latitude : box.minLatitude;
      box.maxLatitude = c.latitude > box.maxLatitude ? c.latitude : box.maxLatitude;
      box.minLongitude = c.longitude < box.minLongitude ? c.longitude : box.minLongitude;
      box.maxLongitude = c.longitude > box.maxLongitude ? c.longitude : box.maxLongitude;
    }
    benchmark::DoNotOptimize(box);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(points.size()));
}
BENCHMARK(BM_PlainMinMax)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  const auto region = qm::MKCoordinateRegion::fromCoordinates(track());
  std::printf("Track region: %s\n", region->formattedDescription().c_str());
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nTrack points per second and ratio against one plain min/max pass:\n");
  reporter.printRatio("BM_RegionFromCoordinates", "BM_PlainMinMax", "points");
  benchmark::Shutdown();
  return 0;
}
