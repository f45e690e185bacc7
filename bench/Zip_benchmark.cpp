// The library's zip of a 10,000,000-byte log against `zip -q` of the same file run as a
// process, in the same run: the time ratio, and the archive's size against `zip -6`'s.
//   BM_QMFileHelperZip: QMFileHelper::zip of the log (scratch folder, archive, copy, clean-up)
//   BM_RotateLog:       QMFileLogger's forced rotation of the log (archive written, log reset),
//                       timed until both of the logger's queues are idle
//   BM_ZipProcess:      `zip -q -6 out.zip debuglog.log` through the shell
// Prints each rate in archives per second (wall-clock time: the process works in a child),
// the ratio, and both archive sizes.

#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>

#include "bench/RatioReporter.hpp"
#include "qmcore/files/QMFileHelper.hpp"
#include "qmcore/files/QMFileLogger.hpp"
#include "qmcore/platform/Env.hpp"

namespace {

namespace fs = std::filesystem;

constexpr std::size_t kLogBytes = 10'000'000;

// A folder for this run's files, removed at the end, which also serves as the temporary
// directory of the library's zip.
class BenchmarkFolder {
 public:
  BenchmarkFolder() {
    std::string pattern = (fs::temp_directory_path() / "qmcore-zip-bench-XXXXXX").string();
    path_ = mkdtemp(pattern.data());
    fs::create_directories(path_ / "tmp");
    ::setenv("TMPDIR", (path_ / "tmp").c_str(), 1);
    writeLog();
  }
  ~BenchmarkFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  fs::path path(const std::string& name) const { return path_ / name; }
  fs::path log() const { return path_ / "debuglog.log"; }

 private:
  // Log lines as the file logger writes them: a date, a long time stamp, a varied message.
  void writeLog() const {
    std::ofstream out(log(), std::ios::binary);
    std::string text;
    text.reserve(kLogBytes + 200);
    unsigned seed = 12345;
    for (int i = 0; text.size() < kLogBytes; ++i) {
      seed = seed * 1103515245u + 12345u;
      const int second = i / 40;
      char line[200];
      std::snprintf(line, sizeof line,
                    "23-Nov-26 21:%02d:%02d - 2026-11-23 21:%02d:%02d.%06u+0000, debuglog[:] "
                    "[LOG] sample %d value %u at %s\n",
                    second / 60 % 60, second % 60, second / 60 % 60, second % 60,
                    (seed >> 8) % 1000000u, i, seed % 100000u,
                    (seed & 1) != 0 ? "/tmp/debuglog.log" : "logs-archive");
      text += line;
    }
    text.resize(kLogBytes);
    out << text;
  }

  fs::path path_;
};

BenchmarkFolder& folder() {
  static BenchmarkFolder instance;
  return instance;
}

void BM_QMFileHelperZip(benchmark::State& state) {
  const fs::path destination = folder().path("library.zip");
  for (auto _ : state) {
    qm::QMFileHelper::zip(folder().log(), destination, "scratch", qm::Env::Default());
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["archive_bytes"] = static_cast<double>(fs::file_size(destination));
}
BENCHMARK(BM_QMFileHelperZip)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();

void BM_RotateLog(benchmark::State& state) {
  qm::QMFileLogger logger(qm::Env::Default());
  const fs::path log = logger.logPathForLogName("debuglog.log");
  for (auto _ : state) {
    state.PauseTiming();
    fs::copy_file(folder().log(), log, fs::copy_options::overwrite_existing);
    state.ResumeTiming();
    logger.rotateLogIfNeeded("debuglog.log", /*resetAlways=*/true, "bench", "ABCDEFGH", [] {});
    logger.waitUntilAllOperationsAreFinished();
  }
  state.SetItemsProcessed(state.iterations());
  if (fs::file_size(log) != 0) state.SkipWithError("the rotated log was not reset");
}
BENCHMARK(BM_RotateLog)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();

void BM_ZipProcess(benchmark::State& state) {
  const fs::path destination = folder().path("process.zip");
  const std::string command = "cd '" + folder().log().parent_path().string() +
                              "' && rm -f process.zip && zip -q -6 process.zip debuglog.log";
  for (auto _ : state) {
    if (std::system(command.c_str()) != 0) {
      state.SkipWithError("zip failed");
      return;
    }
  }
  state.SetItemsProcessed(state.iterations());
  state.counters["archive_bytes"] = static_cast<double>(fs::file_size(destination));
}
BENCHMARK(BM_ZipProcess)->Unit(benchmark::kMillisecond)->MinTime(2.0)->UseRealTime();

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  folder();
  qm::bench::RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  std::printf("\nZip of a %zu-byte log (time: higher is faster):\n", kLogBytes);
  reporter.printRatio("BM_QMFileHelperZip/min_time:2.000/real_time",
                      "BM_ZipProcess/min_time:2.000/real_time", "archives");
  std::printf("Rotation of a %zu-byte log (archive written, log reset) against zip -q:\n",
              kLogBytes);
  reporter.printRatio("BM_RotateLog/min_time:2.000/real_time",
                      "BM_ZipProcess/min_time:2.000/real_time", "rotations");
  std::error_code error;
  const auto library = fs::file_size(folder().path("library.zip"), error);
  const auto process = fs::file_size(folder().path("process.zip"), error);
  if (!error && process > 0) {
    std::printf("archive size: %ju bytes vs zip -6 %ju bytes: %.4fx\n",
                static_cast<std::uintmax_t>(library), static_cast<std::uintmax_t>(process),
                static_cast<double>(library) / static_cast<double>(process));
  }
  benchmark::Shutdown();
  return 0;
}
