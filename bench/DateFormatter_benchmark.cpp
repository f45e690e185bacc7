// What DateFormatter's cache of ICU formatters costs and saves: formatting one XML timestamp
// through the wrapper, against ICU's SimpleDateFormat used directly in the ways a cache could
// work (one shared instance, which is the floor; a clone per call; a new formatter per call,
// which is what the platform's "new formatter per call" amounts to without a cache; one
// instance behind a mutex, under two threads).
//
//   build/release/bench/DateFormatter_benchmark

#include <benchmark/benchmark.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>

#include <cstdio>
#include <memory>
#include <mutex>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/platform/DateFormatter.hpp"

namespace {

constexpr const char16_t* kPattern = u"yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ";

std::unique_ptr<icu::SimpleDateFormat> makeIcuFormat() {
  UErrorCode status = U_ZERO_ERROR;
  auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(kPattern),
                                                        icu::Locale("en_US_POSIX"), status);
  format->adoptTimeZone(icu::TimeZone::createTimeZone(u"Europe/Berlin"));
  return format;
}

std::string formatWith(const icu::SimpleDateFormat& format, double seconds) {
  icu::UnicodeString text;
  format.format(seconds * 1000.0, text);
  std::string result;
  text.toUTF8String(result);
  return result;
}

// Dates a little apart, so that no layer can reuse the previous text.
double nextDate(double& seconds) { return seconds += 1.001; }

void BM_DateFormatterFormat(benchmark::State& state) {
  const qm::DateFormatter formatter("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ", "en_US_POSIX",
                                    "Europe/Berlin");
  double seconds = 1.6e9;
  for (auto _ : state) {
    benchmark::DoNotOptimize(formatter.format(qm::Date::fromUnixSeconds(nextDate(seconds))));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DateFormatterFormat);
BENCHMARK(BM_DateFormatterFormat)->Threads(2)->UseRealTime();

// Locale and time zone read from the current settings at each call.
void BM_DateFormatterFormatCurrentLocale(benchmark::State& state) {
  const qm::DateFormatter formatter("yyyy-MM-dd'T'HH:mm:ss.SSSZZZZZ");
  double seconds = 1.6e9;
  for (auto _ : state) {
    benchmark::DoNotOptimize(formatter.format(qm::Date::fromUnixSeconds(nextDate(seconds))));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_DateFormatterFormatCurrentLocale);

void BM_IcuOneInstance(benchmark::State& state) {
  const auto format = makeIcuFormat();
  double seconds = 1.6e9;
  for (auto _ : state) benchmark::DoNotOptimize(formatWith(*format, nextDate(seconds)));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IcuOneInstance);

void BM_IcuCloneEachCall(benchmark::State& state) {
  const auto prototype = makeIcuFormat();
  double seconds = 1.6e9;
  for (auto _ : state) {
    const std::unique_ptr<icu::SimpleDateFormat> format(prototype->clone());
    benchmark::DoNotOptimize(formatWith(*format, nextDate(seconds)));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IcuCloneEachCall);

void BM_IcuCreateEachCall(benchmark::State& state) {
  double seconds = 1.6e9;
  for (auto _ : state) benchmark::DoNotOptimize(formatWith(*makeIcuFormat(), nextDate(seconds)));
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IcuCreateEachCall);

void BM_IcuOneInstanceLocked(benchmark::State& state) {
  static const auto format = makeIcuFormat();
  static std::mutex mutex;
  double seconds = 1.6e9;
  for (auto _ : state) {
    const std::lock_guard lock(mutex);
    benchmark::DoNotOptimize(formatWith(*format, nextDate(seconds)));
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_IcuOneInstanceLocked)->Threads(2)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nTexts per second and ratios:\n");
  reporter.printRatio("BM_DateFormatterFormat", "BM_IcuOneInstance", "texts");
  reporter.printRatio("BM_DateFormatterFormatCurrentLocale", "BM_IcuOneInstance", "texts");
  reporter.printRatio("BM_DateFormatterFormat", "BM_IcuCloneEachCall", "texts");
  reporter.printRatio("BM_DateFormatterFormat", "BM_IcuCreateEachCall", "texts");
  reporter.printRatio("BM_DateFormatterFormat/real_time/threads:2",
                      "BM_IcuOneInstanceLocked/real_time/threads:2", "texts");
  benchmark::Shutdown();
  return 0;
}
