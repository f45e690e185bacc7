// QMParseISO8601Date against the usual alternatives, on the same one million mixed ISO 8601
// timestamps: glibc's strptime + timegm, and ICU's SimpleDateFormat (directly, and through the
// library's DateFormatter). Goal: at least 8x strptime + timegm.
//
// The million timestamps come in two orders. "interleaved": every timestamp has a shape of its
// own (with or without seconds, fraction, zone; bare dates), the worst case for branch
// prediction in every parser. "runs": the same shapes in runs of 1 to 1000 alike, as bulk
// input arrives (a track file, a log). ICU is about a thousand times slower, so it reads only
// the first kIcuSubset interleaved timestamps; rates are per timestamp either way.
//
//   build/release/bench/ISO8601_benchmark

#include <benchmark/benchmark.h>
#include <unicode/parsepos.h>
#include <unicode/smpdtfmt.h>
#include <unicode/timezone.h>
#include <unicode/unistr.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <limits>
#include <memory>
#include <string>
#include <vector>

#include "bench/RatioReporter.hpp"
#include "qmcore/formatting/ISO8601.hpp"
#include "qmcore/platform/DateFormatter.hpp"
#include "qmcore/platform/InvariantFormat.hpp"

namespace {

constexpr std::size_t kTimestamps = 1'000'000;
constexpr std::size_t kIcuSubset = 20'000;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

enum class Order { kInterleaved, kRuns };

// Zero-terminated timestamps in one buffer: with and without fractions and zones, bare dates,
// blank-separated times. The same on every run and machine (a fixed linear congruential
// generator, not <random>'s distributions, whose results vary between libraries).
class Timestamps {
 public:
  explicit Timestamps(Order order) {
    std::uint64_t state = 0x2545F4914F6CDD1DULL;
    auto next = [&state](std::uint32_t bound) {
      state = state * 6364136223846793005ULL + 1442695040888963407ULL;
      return static_cast<int>((state >> 33) % bound);
    };
    std::vector<std::size_t> offsets;
    int shape = 0;
    int runLeft = 0;
    for (std::size_t i = 0; i < kTimestamps; ++i) {
      if (order == Order::kInterleaved) {
        shape = next(6);
      } else if (runLeft-- == 0) {
        shape = next(6);
        runLeft = next(1000);
      }
      const int year = 1971 + next(66);
      const int month = 1 + next(12);
      const int day = 1 + next(28);
      const int hour = next(24);
      const int minute = next(60);
      const int second = next(60);
      const int millis = next(1000);
      const int zoneMinutes = next(14 * 60) - 7 * 60;
      const char sign = zoneMinutes < 0 ? '-' : '+';
      const int zoneAbs = std::abs(zoneMinutes);
      offsets.push_back(buffer_.size());
      switch (shape) {
        case 0:
          buffer_ += qm::invariantFormat("%04d-%02d-%02dT%02d:%02d:%02dZ", year, month, day, hour,
                                         minute, second);
          break;
        case 1:
          buffer_ += qm::invariantFormat("%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", year, month, day,
                                         hour, minute, second, millis);
          break;
        case 2:
          buffer_ +=
              qm::invariantFormat("%04d-%02d-%02dT%02d:%02d:%02d%c%02d:%02d", year, month, day,
                                  hour, minute, second, sign, zoneAbs / 60, zoneAbs % 60);
          break;
        case 3:
          buffer_ +=
              qm::invariantFormat("%04d-%02d-%02dT%02d:%02d:%02d.%03d%c%02d:%02d", year, month, day,
                                  hour, minute, second, millis, sign, zoneAbs / 60, zoneAbs % 60);
          break;
        case 4:
          buffer_ += qm::invariantFormat("%04d-%02d-%02d", year, month, day);
          break;
        default:
          buffer_ +=
              qm::invariantFormat("%04d-%02d-%02d %02d:%02d", year, month, day, hour, minute);
      }
      buffer_ += '\0';
    }
    for (const std::size_t offset : offsets) texts_.push_back(buffer_.data() + offset);
  }

  const std::vector<const char*>& texts() const { return texts_; }

 private:
  std::string buffer_;
  std::vector<const char*> texts_;
};

const Timestamps& timestamps(Order order = Order::kInterleaved) {
  static const Timestamps interleaved(Order::kInterleaved);
  static const Timestamps runs(Order::kRuns);
  return order == Order::kInterleaved ? interleaved : runs;
}

// What an application would write with the C library: strptime for the fixed parts, strtod
// for the fraction, strptime's %z (which also takes "Z") for the zone, timegm for UTC.
double parseWithStrptime(const char* text) {
  std::tm fields{};
  const char* p = strptime(text, "%Y-%m-%d", &fields);
  if (p == nullptr) return kNaN;
  double fraction = 0.0;
  long offset = 0;
  if (*p == 'T' || *p == ' ') {
    p = strptime(p + 1, "%H:%M", &fields);
    if (p == nullptr) return kNaN;
    if (*p == ':') {
      p = strptime(p + 1, "%S", &fields);
      if (p == nullptr) return kNaN;
      if (*p == '.') {
        char* end = nullptr;
        fraction = std::strtod(p, &end);
        p = end;
      }
    }
    if (*p != '\0') {
      std::tm zone{};
      p = strptime(p, "%z", &zone);
      if (p == nullptr) return kNaN;
      offset = zone.tm_gmtoff;
    }
  }
  if (*p != '\0') return kNaN;
  return static_cast<double>(timegm(&fields) - offset) + fraction;
}

// ICU as an application would use it for mixed input: the candidate patterns in turn until
// one reads the whole text.
class IcuParser {
 public:
  IcuParser() {
    for (const char16_t* pattern : {u"yyyy-MM-dd'T'HH:mm:ss.SSSXXX", u"yyyy-MM-dd'T'HH:mm:ssXXX",
                                    u"yyyy-MM-dd HH:mm", u"yyyy-MM-dd"}) {
      UErrorCode status = U_ZERO_ERROR;
      auto format = std::make_unique<icu::SimpleDateFormat>(icu::UnicodeString(pattern),
                                                            icu::Locale("en_US_POSIX"), status);
      if (U_FAILURE(status)) std::abort();
      format->adoptTimeZone(icu::TimeZone::createTimeZone(u"UTC"));
      formats_.push_back(std::move(format));
    }
  }

  double parse(const char* text) {
    const icu::UnicodeString source = icu::UnicodeString::fromUTF8(text);
    for (const auto& format : formats_) {
      icu::ParsePosition position(0);
      const UDate millis = format->parse(source, position);
      if (position.getErrorIndex() < 0 && position.getIndex() == source.length()) {
        return millis / 1000.0;
      }
    }
    return kNaN;
  }

 private:
  std::vector<std::unique_ptr<icu::SimpleDateFormat>> formats_;
};

// The same through the library's wrapper.
double parseWithDateFormatter(const char* text) {
  static const qm::DateFormatter formatters[] = {
      qm::DateFormatter("yyyy-MM-dd'T'HH:mm:ss.SSSXXX", "en_US_POSIX", "UTC"),
      qm::DateFormatter("yyyy-MM-dd'T'HH:mm:ssXXX", "en_US_POSIX", "UTC"),
      qm::DateFormatter("yyyy-MM-dd HH:mm", "en_US_POSIX", "UTC"),
      qm::DateFormatter("yyyy-MM-dd", "en_US_POSIX", "UTC"),
  };
  for (const qm::DateFormatter& formatter : formatters) {
    if (const auto date = formatter.parse(text)) return date->timeIntervalSince1970();
  }
  return kNaN;
}

// Before measuring: every peer must read every timestamp as QMParseISO8601Date does.
template <typename Parse>
void checkAgreement(const char* peer, Order order, std::size_t count, Parse parse) {
  const auto& texts = timestamps(order).texts();
  std::size_t disagreements = 0;
  for (std::size_t i = 0; i < count; ++i) {
    const double ours = qm::QMParseISO8601Date(texts[i]);
    const double theirs = parse(texts[i]);
    if (!(std::abs(ours - theirs) < 5e-4)) {
      if (++disagreements <= 5) {
        std::fprintf(stderr, "%s disagrees on %s: %.3f vs %.3f\n", peer, texts[i], ours, theirs);
      }
    }
  }
  std::printf("checked %zu timestamps against %s: %zu disagreements\n", count, peer, disagreements);
  if (disagreements != 0) std::exit(1);
}

void BM_QMParseISO8601Date(benchmark::State& state, Order order) {
  const auto& texts = timestamps(order).texts();
  for (auto _ : state) {
    double sum = 0.0;
    for (const char* text : texts) sum += qm::QMParseISO8601Date(text);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
}
BENCHMARK_CAPTURE(BM_QMParseISO8601Date, interleaved, Order::kInterleaved)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_QMParseISO8601Date, runs, Order::kRuns)->Unit(benchmark::kMillisecond);

void BM_StrptimeTimegm(benchmark::State& state, Order order) {
  const auto& texts = timestamps(order).texts();
  for (auto _ : state) {
    double sum = 0.0;
    for (const char* text : texts) sum += parseWithStrptime(text);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
}
BENCHMARK_CAPTURE(BM_StrptimeTimegm, interleaved, Order::kInterleaved)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_StrptimeTimegm, runs, Order::kRuns)->Unit(benchmark::kMillisecond);

void BM_IcuSimpleDateFormat(benchmark::State& state) {
  const auto& texts = timestamps().texts();
  IcuParser icu;
  for (auto _ : state) {
    double sum = 0.0;
    for (std::size_t i = 0; i < kIcuSubset; ++i) sum += icu.parse(texts[i]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kIcuSubset));
}
BENCHMARK(BM_IcuSimpleDateFormat)->Unit(benchmark::kMillisecond);

void BM_DateFormatterParse(benchmark::State& state) {
  const auto& texts = timestamps().texts();
  for (auto _ : state) {
    double sum = 0.0;
    for (std::size_t i = 0; i < kIcuSubset; ++i) sum += parseWithDateFormatter(texts[i]);
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kIcuSubset));
}
BENCHMARK(BM_DateFormatterParse)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  checkAgreement("strptime+timegm", Order::kInterleaved, kTimestamps, parseWithStrptime);
  checkAgreement("strptime+timegm", Order::kRuns, kTimestamps, parseWithStrptime);
  IcuParser icu;
  checkAgreement("ICU", Order::kInterleaved, kIcuSubset,
                 [&icu](const char* text) { return icu.parse(text); });
  checkAgreement("DateFormatter", Order::kInterleaved, kIcuSubset, parseWithDateFormatter);

  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nTimestamps per second and ratios (QMParseISO8601Date goal: >= 8x strptime):\n");
  reporter.printRatio("BM_QMParseISO8601Date/interleaved", "BM_StrptimeTimegm/interleaved",
                      "timestamps");
  reporter.printRatio("BM_QMParseISO8601Date/runs", "BM_StrptimeTimegm/runs", "timestamps");
  reporter.printRatio("BM_QMParseISO8601Date/interleaved", "BM_IcuSimpleDateFormat", "timestamps");
  reporter.printRatio("BM_IcuSimpleDateFormat", "BM_DateFormatterParse", "timestamps");
  benchmark::Shutdown();
  return 0;
}
