// The file logger against spdlog's asynchronous file logger, writing the same lines into files
// of the same folder in the same run:
//
//   EndToEnd: lines per second from the first logTofile call until every line is in the file
//             (all queues drained);
//   Caller:   calls per second on the logging thread (the time a caller spends per line).
//
// Appends only exist when the debug log is compiled in, so this program is built by the
// "bench-log" preset (see the README).

#include <benchmark/benchmark.h>
#include <spdlog/async.h>
#include <spdlog/async_logger.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/spdlog.h>
#include <stdlib.h>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/files/QMFileLogger.hpp"
#include "qmcore/platform/BuildConfig.hpp"
#include "qmcore/platform/Env.hpp"

namespace {

namespace fs = std::filesystem;

constexpr int kLinesPerBatch = 100'000;
constexpr std::string_view kMessage = "[LOG] sensor update: altitude 1234.5 m, speed 12.3 m/s";

// The folder of both logs, removed at exit.
class Folder {
 public:
  Folder() {
    std::string pattern = (fs::temp_directory_path() / "qmcore-bench-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
  }
  ~Folder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

Folder& folder() {
  static Folder f;
  return f;
}

// The logger's temporary directory is the benchmark's folder.
qm::ProcessEnv& env() {
  static qm::ProcessEnv e = [] {
    setenv("TMPDIR", folder().path().c_str(), 1);
    return qm::ProcessEnv({.settingsPath = std::string(qm::ProcessEnvOptions::kInMemorySettings)});
  }();
  return e;
}

std::shared_ptr<spdlog::async_logger> makeSpdlog(
    std::shared_ptr<spdlog::details::thread_pool> pool) {
  auto sink = std::make_shared<spdlog::sinks::basic_file_sink_mt>(
      (folder().path() / "spdlog.log").string());
  auto logger = std::make_shared<spdlog::async_logger>("bench", sink, std::move(pool),
                                                       spdlog::async_overflow_policy::block);
  // The same line as the file logger's: "23-Nov-26 21:55:16 - message".
  logger->set_pattern("%d-%b-%y %H:%M:%S - %v");
  return logger;
}

std::shared_ptr<spdlog::details::thread_pool> makePool() {
  return std::make_shared<spdlog::details::thread_pool>(spdlog::details::default_async_q_size, 1);
}

void BM_QMFileLogger_EndToEnd(benchmark::State& state) {
  qm::QMFileLogger logger(env());
  for (auto _ : state) {
    for (int i = 0; i < kLinesPerBatch; ++i) logger.logTofile("qmcore.log", kMessage);
    logger.waitUntilAllOperationsAreFinished();
  }
  state.SetItemsProcessed(state.iterations() * kLinesPerBatch);
}
BENCHMARK(BM_QMFileLogger_EndToEnd)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_SpdlogAsync_EndToEnd(benchmark::State& state) {
  for (auto _ : state) {
    {
      // The logger holds its pool weakly: keep it here, destroyed after the logger.
      const auto pool = makePool();
      const auto logger = makeSpdlog(pool);
      for (int i = 0; i < kLinesPerBatch; ++i) logger->info(kMessage);
    }  // the pool's destructor drains its queue and joins its thread
  }
  state.SetItemsProcessed(state.iterations() * kLinesPerBatch);
}
BENCHMARK(BM_SpdlogAsync_EndToEnd)->Unit(benchmark::kMillisecond)->UseRealTime();

void BM_QMFileLogger_Caller(benchmark::State& state) {
  qm::QMFileLogger logger(env());
  for (auto _ : state) logger.logTofile("qmcore.log", kMessage);
  state.SetItemsProcessed(state.iterations());
  // Outside the measured loop: the lines still queued are written before the next run.
  logger.waitUntilAllOperationsAreFinished();
}
BENCHMARK(BM_QMFileLogger_Caller);

void BM_SpdlogAsync_Caller(benchmark::State& state) {
  auto pool = makePool();
  auto logger = makeSpdlog(pool);
  for (auto _ : state) logger->info(kMessage);
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(BM_SpdlogAsync_Caller);

}  // namespace

int main(int argc, char** argv) {
  if (!qm::kQMEnableDebugLog) {
    std::fprintf(stderr,
                 "FileLogger_benchmark: this build has the debug log compiled out, so the file "
                 "logger writes nothing; build it with the bench-log preset.\n");
    return 1;
  }
  benchmark::Initialize(&argc, argv);
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  reporter.printRatio("BM_QMFileLogger_EndToEnd/real_time", "BM_SpdlogAsync_EndToEnd/real_time",
                      "lines");
  reporter.printRatio("BM_QMFileLogger_Caller", "BM_SpdlogAsync_Caller", "calls");
  benchmark::Shutdown();
  return 0;
}
