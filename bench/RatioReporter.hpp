// A console reporter for Google Benchmark that also remembers each benchmark's rate, so that a
// program can print how much faster one benchmark was than its peer in the same run.
//
//   qm::bench::RatioReporter reporter;
//   benchmark::RunSpecifiedBenchmarks(&reporter);
//   reporter.printRatio("BM_Fast", "BM_Slow");  // "BM_Fast: 3.1e+07 items/s, 7.9x BM_Slow"
//
// Rates come from `state.SetItemsProcessed`; a benchmark that was filtered out or failed is
// reported as missing.

#ifndef QMCORE_BENCH_RATIOREPORTER_HPP_
#define QMCORE_BENCH_RATIOREPORTER_HPP_

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace qm::bench {

class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& run : runs) {
      if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
      const auto it = run.counters.find("items_per_second");
      if (it != run.counters.end()) rates_[run.benchmark_name()] = it->second.value;
    }
  }

  // Items per second of a benchmark by its full name, or 0 when it did not run.
  double rate(const std::string& name) const {
    const auto it = rates_.find(name);
    return it == rates_.end() ? 0.0 : it->second;
  }

  // One line: the subject's rate and its ratio to the peer's.
  void printRatio(const std::string& subject, const std::string& peer,
                  const char* items = "items") const {
    const double a = rate(subject);
    const double b = rate(peer);
    if (a <= 0.0 || b <= 0.0) {
      std::printf("%s vs %s: not measured in this run\n", subject.c_str(), peer.c_str());
      return;
    }
    std::printf("%-40s %12.4g %s/s  %8.2fx %s (%.4g %s/s)\n", subject.c_str(), a, items, a / b,
                peer.c_str(), b, items);
  }

 private:
  std::map<std::string, double> rates_;
};

}  // namespace qm::bench

#endif  // QMCORE_BENCH_RATIOREPORTER_HPP_
