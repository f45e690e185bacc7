// sanitizeForPrintableASCII against a straightforward walk of the same text by ICU's grapheme
// cluster iterator, on pure ASCII log lines and on mostly-ASCII text (log lines and file names
// with a few accented letters). Both must give the same result; the program checks that
// before measuring.

#include <benchmark/benchmark.h>
#include <unicode/brkiter.h>
#include <unicode/locid.h>
#include <unicode/unistr.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "bench/RatioReporter.hpp"
#include "qmcore/persistence/QMASCIIStringSanitizer.hpp"

namespace {

std::vector<std::string> pureAscii() {
  return {
      "2026-11-23 21:55:16.123 [LOG] track 42 saved, 1834 points, 12.4 km in 01:02:03",
      "GET /tiles/14/8529/5975.png HTTP/1.1 200 in 35 ms",
      "Route_Zurich_Lucerne_2026-11-23.gpx",
      "[FILE]: Error when cleaning up temporary directory: Permission denied (13)",
  };
}

std::vector<std::string> mostlyAscii() {
  return {
      "2026-11-23 21:55:16.123 [LOG] track 42 saved near Zürich, 1834 points, 12.4 km",
      "Route_Zürich_Luzern_Grüezi_2026-11-23.gpx",
      "GET /tiles/14/8529/5975.png HTTP/1.1 200 in 35 ms from Montréal office",
      "Photo from São Paulo, Praça da Sé.jpg",
  };
}

// The rule done the plain way: every cluster, kept when it is one code unit from 32 to 126.
std::string walkEveryCluster(const std::string& text) {
  thread_local std::unique_ptr<icu::BreakIterator> iterator = [] {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> made(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    if (U_FAILURE(status)) std::abort();
    return made;
  }();
  const icu::UnicodeString input = icu::UnicodeString::fromUTF8(text);
  iterator->setText(input);
  std::string out;
  int32_t start = iterator->first();
  for (int32_t end = iterator->next(); end != icu::BreakIterator::DONE;
       start = end, end = iterator->next()) {
    if (end - start == 1) {
      const char16_t c = input.charAt(start);
      if (c >= 32 && c <= 126) out += static_cast<char>(c);
    }
  }
  return out;
}

void run(benchmark::State& state, const std::vector<std::string>& texts, bool fast) {
  std::int64_t bytes = 0;
  for (auto _ : state) {
    for (const std::string& text : texts) {
      benchmark::DoNotOptimize(fast ? qm::QMASCIIStringSanitizer::sanitizeForPrintableASCII(text)
                                    : walkEveryCluster(text));
      bytes += static_cast<std::int64_t>(text.size());
    }
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(texts.size()));
  state.SetBytesProcessed(bytes);
}

void BM_SanitizePureAscii(benchmark::State& state) { run(state, pureAscii(), true); }
void BM_ClusterWalkPureAscii(benchmark::State& state) { run(state, pureAscii(), false); }
void BM_SanitizeMostlyAscii(benchmark::State& state) { run(state, mostlyAscii(), true); }
void BM_ClusterWalkMostlyAscii(benchmark::State& state) { run(state, mostlyAscii(), false); }
BENCHMARK(BM_SanitizePureAscii);
BENCHMARK(BM_ClusterWalkPureAscii);
BENCHMARK(BM_SanitizeMostlyAscii);
BENCHMARK(BM_ClusterWalkMostlyAscii);

}  // namespace

int main(int argc, char** argv) {
  for (const auto& texts : {pureAscii(), mostlyAscii()}) {
    for (const std::string& text : texts) {
      if (qm::QMASCIIStringSanitizer::sanitizeForPrintableASCII(text) != walkEveryCluster(text)) {
        std::fprintf(stderr, "results differ for: %s\n", text.c_str());
        return 1;
      }
    }
  }
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf(
      "\nTexts per second and ratios (goal: at least 20x on pure ASCII, 5x on mostly "
      "ASCII):\n");
  reporter.printRatio("BM_SanitizePureAscii", "BM_ClusterWalkPureAscii", "texts");
  reporter.printRatio("BM_SanitizeMostlyAscii", "BM_ClusterWalkMostlyAscii", "texts");
  benchmark::Shutdown();
  return 0;
}
