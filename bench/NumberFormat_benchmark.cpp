// What the cache of ICU number formatters saves: a fixed-decimals text through
// QMFormatter::stringFromDouble (one cached ICU formatter per style and locale), against the
// same text from an ICU formatter built for each call and dropped, which is what making a new
// platform formatter per call amounts to. The goal is at least 15x.
//
//   build/release/bench/NumberFormat_benchmark

#include <benchmark/benchmark.h>

#include <cstdio>

#include "bench/RatioReporter.hpp"
#include "qmcore/formatting/QMFormatter.hpp"
#include "qmcore/platform/Locale.hpp"
#include "qmcore/platform/NumberFormatter.hpp"
#include "qmcore/platform/internal/NumberFormatterTesting.hpp"

namespace {

// Values a little apart, so that no layer can reuse the previous text.
double nextValue(double& value) { return value += 1.37; }

void BM_StringFromDoubleCached(benchmark::State& state) {
  double value = 1234.5;
  for (auto _ : state)
    benchmark::DoNotOptimize(qm::QMFormatter::stringFromDouble(nextValue(value), 2));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_StringFromDoubleCached);
BENCHMARK(BM_StringFromDoubleCached)->Threads(2)->UseRealTime();

void BM_NewIcuFormatterPerCall(benchmark::State& state) {
  const qm::NumberFormatter formatter = qm::NumberFormatter::withDecimals(2);
  double value = 1234.5;
  for (auto _ : state)
    benchmark::DoNotOptimize(qm::internal::formatWithoutCache(formatter, nextValue(value)));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_NewIcuFormatterPerCall);

// The invariant printf-style text of the same value, for scale.
void BM_InvariantPrintf(benchmark::State& state) {
  double value = 1234.5;
  for (auto _ : state) {
    benchmark::DoNotOptimize(qm::QMFormatter::newStringForFloatPrecision2(nextValue(value)));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_InvariantPrintf);

}  // namespace

int main(int argc, char** argv) {
  qm::setCurrentLocaleIdentifier("de_DE");
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf(
      "\nTexts per second and ratios (goal: cached at least 15x the formatter per call):\n");
  reporter.printRatio("BM_StringFromDoubleCached", "BM_NewIcuFormatterPerCall", "texts");
  reporter.printRatio("BM_StringFromDoubleCached/real_time/threads:2", "BM_NewIcuFormatterPerCall",
                      "texts");
  reporter.printRatio("BM_StringFromDoubleCached", "BM_InvariantPrintf", "texts");
  benchmark::Shutdown();
  return 0;
}
