// Localized texts per second: a string-table lookup per text (CoreStrings::CLSTRING, which
// also reads the current locale) against the per-thread LocalizedTextCache that compass and
// bearing texts use, which looks the texts up again only when the locale changes. Measured in
// French, so that the lookup goes to a table other than the English one.
//
//   build/release/bench/Strings_benchmark

#include <benchmark/benchmark.h>

#include <array>
#include <cstdio>
#include <string_view>

#include "bench/RatioReporter.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/strings/CoreStrings.hpp"
#include "qmcore/strings/LocalizedTextCache.hpp"

namespace {

constexpr std::array<std::string_view, 8> kCardinalKeys = {"N", "NE", "E", "SE",
                                                           "S", "SW", "W", "NW"};

void BM_LookupPerText(benchmark::State& state) {
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(qm::CoreStrings::CLSTRING(kCardinalKeys[i++ % kCardinalKeys.size()]));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LookupPerText);

void BM_LocalizedTextCache(benchmark::State& state) {
  qm::LocalizedTextCache cache(kCardinalKeys);
  size_t i = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(std::string(cache.texts()[i++ % kCardinalKeys.size()]));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_LocalizedTextCache);

}  // namespace

int main(int argc, char** argv) {
  qm::setCurrentLocaleIdentifier("fr_FR");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nTexts per second and the ratio of the cache to a lookup per text:\n");
  reporter.printRatio("BM_LocalizedTextCache", "BM_LookupPerText", "texts");
  benchmark::Shutdown();
  return 0;
}
